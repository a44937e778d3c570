#pragma once

#include "db/Contract.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QList>

#include <optional>

/// The contracts of a project.
class ContractTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column {
        Code,
        Name,
        OurParty,
        OtherParty,
        Amount,
        SignDate,
        Status,
        Actions,
        ColumnCount
    };
    /// The buttons of the last column, in order.
    enum Action { Edit, Remove };

    /// How many vouchers are tied to the row's contract; invalid when that is not known.
    static constexpr int VoucherCountRole = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    struct Content {
        QList<Contract> contracts;
        std::optional<QHash<qint64, int>> voucherCounts; // by contract
        QString ourParty;
    };
    void setContent(const Content& content);
    const Contract& at(int row) const { return m_content.contracts.at(row); }
    std::optional<int> voucherCount(qint64 contractId) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QString text(const Contract& contract, int column) const;
    QString accessibleName(const Contract& contract) const;

    Content m_content;
};
