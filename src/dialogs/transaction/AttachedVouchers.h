#pragma once

#include "dialogs/transaction/AttachedVoucherModel.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableView;

/// The vouchers of an entry as a list that can be added to, marked and looked into. Nothing is
/// written before the entry is saved.
class AttachedVouchers final : public QWidget {
    Q_OBJECT

public:
    explicit AttachedVouchers(QWidget* parent = nullptr);

    /// Shows the vouchers that are linked to the entry; those of a new one (0) are none.
    void showVouchersOf(qint64 entryId);
    /// Links archived vouchers with the next save.
    void add(const QList<qint64>& voucherIds);

    const AttachedVoucherModel& model() const { return *m_model; }

signals:
    void changed();
    void archivedWanted();
    void newWanted();

private:
    QWidget* buildButtons();
    void connectSignals();
    void openCurrent();
    void toggleCurrent();
    void updateView();
    void updateButtons();

    AttachedVoucherModel* m_model;
    QTableView* m_table;
    QLabel* m_empty;
    QPushButton* m_open = nullptr;
    QPushButton* m_toggle = nullptr;
};
