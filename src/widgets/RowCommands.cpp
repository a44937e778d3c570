#include "widgets/RowCommands.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QItemSelectionModel>

#include <utility>

RowCommands::RowCommands(QAbstractItemView* view)
    : QObject(view)
    , m_view(view)
{
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &RowCommands::updateAvailability);
    connect(view->model(), &QAbstractItemModel::modelReset, this, &RowCommands::updateAvailability,
        Qt::QueuedConnection);
}

QAction* RowCommands::add(const QString& text, const QList<QKeySequence>& keys, Act act)
{
    auto* action = new QAction(text, m_view);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setShortcutVisibleInContextMenu(true);
    connect(action, &QAction::triggered, this, [this, act = std::move(act)] {
        if (const QModelIndex index = m_view->currentIndex(); index.isValid())
            act(index);
    });
    m_view->addAction(action);
    m_actions += action;
    updateAvailability();
    return action;
}

void RowCommands::updateAvailability()
{
    for (QAction* action : m_actions)
        action->setEnabled(m_view->currentIndex().isValid());
}
