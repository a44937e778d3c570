#pragma once

#include "db/Transaction.h"
#include "pages/IPage.h"
#include "pages/ledger/FilterChips.h"
#include "pages/ledger/LedgerScope.h"

class Banner;
class EmptyState;
class LedgerFilterCard;
class LedgerModel;
class LedgerTable;
class QLabel;
class QPushButton;
class QStackedWidget;

/// The fund ledger: looked through by filters, and where entries are registered, edited, reviewed
/// and deleted. The parameters of a request are those of `LedgerScope`.
class LedgerPage final : public IPage {
    Q_OBJECT

public:
    explicit LedgerPage(QWidget* parent = nullptr);

    /// Searches by what the fields ask for now; selection and scroll position survive. Fields that
    /// cannot be searched by leave the last search in force.
    void refresh() override;
    void applyNavParams(const NavParams& params) override;
    QWidget* headerActions() override;

public slots:
    /// Searches by the fields from the top, or says what is wrong with them.
    void runSearch();
    void onAdd();
    void onEdit(qint64 id);
    void onDelete(qint64 id);
    /// Asks for the fund decision's form with the entry ticked.
    void onFundDecision(qint64 id);
    void onExport();

private:
    QWidget* buildBody();
    QWidget* buildFoot();
    void addShortcuts();
    void connectTable();

    void load();
    void showFound();
    void showWanted();
    void showEmpty();
    void showChips();
    void showSelection();
    QList<FilterChips::Chip> chips() const;
    bool isRestricted() const;

    void onReset();
    void onChipRemoved(const QString& key);
    void onCopyAsNew(qint64 id);
    void onReview(qint64 id);
    void onFundDecisions(const QList<qint64>& ids);
    /// After an entry was stored: searches again and shows the entry.
    void showStored(qint64 id);
    /// The same, and says what was done and whether the risk levels have followed it.
    void showChanged(qint64 id, const QString& done);

    LedgerScope m_scope;
    TransactionFilter m_applied; // what the rows were found by
    bool m_fromTop = true; // whether the next search forgets where the user was

    LedgerModel* m_model;
    LedgerFilterCard* m_filters;
    Banner* m_problem;
    Banner* m_unreadable;
    FilterChips* m_chips;
    QStackedWidget* m_body = nullptr;
    LedgerTable* m_table = nullptr;
    EmptyState* m_empty = nullptr;
    QLabel* m_totals = nullptr;
    QLabel* m_selection = nullptr;
    QPushButton* m_decide = nullptr;
};
