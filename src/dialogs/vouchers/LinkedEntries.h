#pragma once

#include <QList>
#include <QWidget>

class QListWidget;
class QPushButton;

/// The ledger entries that a voucher proves, a line each, with the buttons to choose others and to
/// drop them all.
class LinkedEntries final : public QWidget {
    Q_OBJECT

public:
    explicit LinkedEntries(QWidget* parent = nullptr);

    QList<qint64> entryIds() const { return m_ids; }
    /// Keeps the order; entries that do not exist are left out.
    void setEntryIds(const QList<qint64>& ids);

private:
    void onPickTx();
    void onClearTx();

    QList<qint64> m_ids;
    QPushButton* m_pick;
    QPushButton* m_clear;
    QListWidget* m_lines;
};
