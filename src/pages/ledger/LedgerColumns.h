#pragma once

#include <QObject>

class QTableView;

/// The widths of the ledger's columns: the texts of users share what the others leave, until the
/// user sets a width; from then on the widths stay as they are.
class LedgerColumns final : public QObject {
    Q_OBJECT

public:
    explicit LedgerColumns(QTableView* table);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QTableView* m_table;
    bool m_fitting = false;
    bool m_setByUser = false;
};
