#pragma once

#include "pages/dashboard/DashboardRows.h"
#include "pages/IPage.h"
#include "services/figures/DashboardFigures.h"
#include "services/figures/TodoList.h"
#include "services/figures/Trend.h"

class BarChart;
class ListCard;
class QVBoxLayout;
class StatCard;

/// What the owner sees first: warnings, key figures, things to see to, the last twelve months and
/// what was done last. Every part leads to where it is dealt with. A ledger without entries shows
/// the first steps instead.
class DashboardPage final : public IPage {
    Q_OBJECT

public:
    explicit DashboardPage(QWidget* parent = nullptr);

    void refresh() override;

private:
    struct Cards {
        StatCard* high;
        StatCard* medium;
        StatCard* low;
        StatCard* unlinked;
        StatCard* income;
        StatCard* expense;
        StatCard* net;
        StatCard* ownerBalance;
    };

    QWidget* buildFigures();
    QLayout* buildCards();
    void makeCards();
    StatCard* addCard(const QString& title, Token edge, const DashboardRows::Destination& to);
    QWidget* buildChart();
    void connectLists();

    void showBanners();
    void showSteps();
    void showCounts();
    void showMonth();
    void showOwnerBalance();
    void showTodo();
    void showChart();
    void showRecent();
    void showProjects();

    void goTo(const DashboardRows::Destination& destination);
    void goToMonth();

    DashboardFigures::Figures m_figures;
    QList<TodoList::Item> m_items;
    QList<Trend::Step> m_months;

    QVBoxLayout* m_banners = nullptr;
    ListCard* m_steps;
    QWidget* m_body = nullptr; // everything that a new ledger does not show
    Cards m_cards {};
    ListCard* m_todo;
    BarChart* m_chart = nullptr;
    ListCard* m_recent;
    ListCard* m_projects;
};
