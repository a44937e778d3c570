#pragma once

#include "services/vouchers/VoucherLinkSummaries.h"

#include <QTableView>

class QSortFilterProxyModel;
class VoucherListModel;

/// The vouchers as a table that can be sorted by any column, with everything that can be done with
/// one: by the buttons of its row, by the row's menu and by keys.
class VoucherTable final : public QTableView {
    Q_OBJECT

public:
    explicit VoucherTable(QWidget* parent = nullptr);

    /// Current row and place stay; when the current voucher is gone, the one that took its place
    /// becomes current.
    void setVouchers(const QList<VoucherCardData>& vouchers);
    /// In the order shown.
    QList<VoucherCardData> vouchers() const;

    /// Makes a voucher the current one and scrolls to it, if it is shown.
    void selectVoucher(qint64 voucherId);

signals:
    void previewRequested(qint64 id);
    void quickPreviewRequested(qint64 id);
    void folderRequested(qint64 id);
    void editRequested(qint64 id);
    void deleteRequested(qint64 id);

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    using Request = void (VoucherTable::*)(qint64 id);
    void setUpColumns();
    void connectClicks();
    void addCommands();
    void onActionTriggered(const QModelIndex& index, int action);
    static qint64 idAt(const QModelIndex& index);
    QModelIndex indexOf(qint64 voucherId, int column) const;

    VoucherListModel* m_model;
    QSortFilterProxyModel* m_sort;
};
