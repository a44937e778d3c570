#pragma once

#include "services/vouchers/VoucherLinkSummaries.h"

#include <QAbstractTableModel>
#include <QCollator>
#include <QHash>

#include <vector>

/// The vouchers that a search of the archive found, one to a row.
class VoucherListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Picture, Name, Type, Date, Links, Size, CreatedAt, Actions, ColumnCount };
    enum class Action { Preview, Folder, Edit, Remove };
    static constexpr int IdRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setVouchers(const QList<VoucherCardData>& vouchers);
    const VoucherCardData& at(int row) const { return m_vouchers.at(row); }
    /// -1 for a voucher that is not among them.
    int rowOf(qint64 voucherId) const;

    /// Whether a row comes before another when the table is sorted by this column.
    bool isLess(int left, int right, int column) const;

    /// The texts of a row's buttons, in the order of `Action`.
    static QStringList actionTexts();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const VoucherCardData& data, int column) const;
    QVariant pictureData(int row, int role) const;
    const QString& pathAt(int row) const;
    const QCollatorSortKey& sortKey(int row, int column) const;

    QList<VoucherCardData> m_vouchers;
    // Of the rows that were painted: looking for a file takes time.
    mutable QHash<int, QString> m_paths;
    // Made when the table is sorted by such a column.
    mutable std::vector<QCollatorSortKey> m_names;
    mutable std::vector<QCollatorSortKey> m_links;
};
