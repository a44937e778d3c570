#pragma once

#include <QList>
#include <QTableView>

class LedgerModel;
class LedgerSort;
class QMenu;

/// The entries as a table that can be sorted by any column, with everything that can be done with
/// an entry: by the buttons of its row, by the row's menu and by keys.
class LedgerTable final : public QTableView {
    Q_OBJECT

public:
    /// Where the user is: kept across a new search.
    struct Position {
        QList<qint64> selectedIds; // in the order shown
        qint64 currentId = 0;
        int currentRow = -1;
        int currentColumn = 0;
        int scroll = 0;
    };

    explicit LedgerTable(LedgerModel* ledger, QWidget* parent = nullptr);

    QList<qint64> selectedIds() const;
    Position position() const;
    /// Entries that are gone are left out. When the current one is gone, the one that took its
    /// place becomes current.
    void restore(const Position& position);
    /// Selects an entry and scrolls to it; false when it is not shown.
    bool selectEntry(qint64 id);

    /// Asks for the decision over the selected entries; those that no money between company and
    /// owner moved by are left out where there are others.
    void requestDocument();

signals:
    void editRequested(qint64 id);
    void copyAsNewRequested(qint64 id);
    void reviewRequested(qint64 id);
    void deleteRequested(qint64 id);
    /// The selected entries, or the one whose button was pressed.
    void documentRequested(const QList<qint64>& ids);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Whoever comes by Tab has a row to work on.
    void focusInEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void addDelegates();
    void onClicked(const QModelIndex& index);
    void addCommands();
    /// A command on the single selected entry.
    QAction* addEntryCommand(
        const QString& text, const QList<QKeySequence>& keys, void (LedgerTable::*request)(qint64));
    /// Its keys are the table's alone unless it is given another context.
    QAction* addCommand(const QString& text, const QList<QKeySequence>& keys);
    void addSeparator();
    void copyRows();
    void copyCell();
    QModelIndexList selectedRowIndexes() const;
    qint64 idAt(const QModelIndex& index) const;
    /// Invalid when the entry is not shown.
    QModelIndex indexOf(qint64 id, int column = 0) const;

    LedgerModel* m_ledger;
    LedgerSort* m_sort;
    QList<QAction*> m_entryCommands; // for one entry only
};
