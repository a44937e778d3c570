#pragma once

#include "pages/IPage.h"
#include "services/vouchers/VoucherLinkSummaries.h"

class Banner;
class EmptyState;
class QLabel;
class QStackedWidget;
class VoucherCardGrid;
class VoucherFilterBar;
class VoucherTable;

/// The archive of voucher files, as cards or as a table. Takes "linked" with the value "none" for
/// the vouchers without any link, and "projectId".
class VoucherPage final : public IPage {
    Q_OBJECT

public:
    explicit VoucherPage(QWidget* parent = nullptr);

    /// Searches again with the filters as they are; what is selected and in sight stays.
    void refresh() override;
    void applyNavParams(const NavParams& params) override;
    QWidget* headerActions() override;

public slots:
    void onSearch();
    void onReset();
    void onAddVoucher();
    void onShowGrid(bool grid);

private:
    QWidget* buildBody();
    /// Grid and table ask for the same things.
    template <typename View> void connectView(View* view);
    void addShortcuts();

    /// Shows what was found in the present mode.
    void showFound();
    void showEmpty();
    void showCounts();
    void addFiles(const QStringList& files);
    void onQuickPreview(qint64 id);
    void onEdit(qint64 id);
    void onDelete(qint64 id);
    const VoucherCardData* find(qint64 id) const;

    QList<VoucherCardData> m_found;
    bool m_fromTop = true; // the next result is another one
    VoucherFilterBar* m_filters;
    Banner* m_unreadable;
    QStackedWidget* m_body = nullptr;
    VoucherCardGrid* m_grid = nullptr;
    VoucherTable* m_table = nullptr;
    EmptyState* m_empty = nullptr;
    QLabel* m_count;
};
