#pragma once

#include "pages/IPage.h"
#include "services/figures/Report.h"
#include "services/figures/Trend.h"

#include <optional>

class Banner;
class BarChart;
class Card;
class FigureTableView;
class HBarChart;
class QLabel;
class ReportRange;
class ShareBar;
class StatCard;

/// What the ledger adds up to over a range of days, compared with earlier ranges, by category,
/// account, risk level and month; exported as CSV and printed. Items lead to their entries.
class ReportPage final : public IPage {
    Q_OBJECT

public:
    explicit ReportPage(QWidget* parent = nullptr);

    /// Fields that make no range leave the figures away: older ones would pass for those asked for.
    void refresh() override;
    QWidget* headerActions() override;

public slots:
    void onExport();
    void onPrint();

private:
    QWidget* buildContent();
    QLayout* buildCards();
    Card* buildCategories();
    Card* buildAccounts();
    Card* buildRisks();
    /// Puts a chart above the table of the same figures; an item chosen in either opens its
    /// entries.
    template <typename Chart>
    void addFigures(
        Card* card, Chart* chart, FigureTableView* table, void (ReportPage::*open)(int));
    Card* buildTrend();

    void showReport();
    void showTotals();
    /// Whether there is something to export or print; tells the user when there is not.
    bool hasReport(const QString& title, const QString& nothing);

    void openCategory(int row);
    void openRisk(int row);
    void openLedger(NavParams params);

    std::optional<Report> m_report; // what is shown
    QList<Trend::Step> m_steps;

    ReportRange* m_range;
    Banner* m_problem;
    Banner* m_unreadable;
    QWidget* m_content = nullptr;
    QLabel* m_compared = nullptr;
    StatCard* m_income = nullptr;
    StatCard* m_expense = nullptr;
    StatCard* m_net = nullptr;
    StatCard* m_count = nullptr;
    HBarChart* m_categoryBars = nullptr;
    FigureTableView* m_categories = nullptr;
    FigureTableView* m_accounts = nullptr;
    ShareBar* m_riskBar = nullptr;
    FigureTableView* m_risks = nullptr;
    Card* m_trendCard = nullptr;
    BarChart* m_trend = nullptr;
};
