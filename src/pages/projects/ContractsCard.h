#pragma once

#include <QWidget>

class Card;
class ContractTableModel;
class DetailTable;
class ElidedLabel;
class QLabel;
struct Contract;

/// The contracts of a project, what can be done with them, and the vouchers tied to each.
class ContractsCard final : public QWidget {
    Q_OBJECT

public:
    explicit ContractsCard(QWidget* parent = nullptr);

    /// Shows the contracts of a project; the reason in Chinese when they cannot be read.
    [[nodiscard]] QString showProject(qint64 projectId);

signals:
    /// Something was written.
    void changed();

private:
    void buildTable();
    void buildVoucherLine();
    void addCommands();
    /// The contract of the table's current row; null without one.
    const Contract* current() const;
    void showVoucherLine();
    void onAddContract();
    void onEdit(const Contract& contract);
    void onRemove(const Contract& contract);
    void onLinkVouchers(const Contract& contract);
    void onUnlinkVouchers(const Contract& contract);

    qint64 m_projectId = 0;
    Card* m_card;
    ContractTableModel* m_model;
    DetailTable* m_table = nullptr;
    QLabel* m_empty;
    QWidget* m_voucherLine = nullptr;
    ElidedLabel* m_voucherText = nullptr;
};
