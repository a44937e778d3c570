#pragma once

#include <QKeySequence>
#include <QList>
#include <QModelIndex>
#include <QObject>

#include <functional>

class QAbstractItemView;
class QAction;

/// What can be done with the current row of a view: in the row's menu and on keys, available only
/// while there is such a row.
class RowCommands final : public QObject {
    Q_OBJECT

public:
    /// The view's model must be set already.
    explicit RowCommands(QAbstractItemView* view);

    using Act = std::function<void(const QModelIndex& index)>;
    QAction* add(const QString& text, const QList<QKeySequence>& keys, Act act);

private:
    void updateAvailability();

    QAbstractItemView* m_view;
    QList<QAction*> m_actions;
};
