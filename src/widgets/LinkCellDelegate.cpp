#include "widgets/LinkCellDelegate.h"

#include "theme/Theme.h"

#include <QAbstractItemView>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The whole cell is divided, so that a click anywhere in it meets a button.
QRect buttonRect(const QRect& cell, qsizetype count, qsizetype position)
{
    const auto edge = [&](qsizetype part) {
        return cell.left() + static_cast<int>(cell.width() * part / count);
    };
    return { edge(position), cell.top(), edge(position + 1) - edge(position), cell.height() };
}

} // namespace

LinkCellDelegate::LinkCellDelegate(QAbstractItemView* view)
    : RowDelegate(view)
    , m_view(view)
    , m_viewport(view->viewport())
{
    view->viewport()->setMouseTracking(true);
    view->viewport()->installEventFilter(this);
}

QVariant LinkCellDelegate::cellData(const QStringList& actions, int role)
{
    if (role == ActionsRole)
        return actions;
    return role == Qt::AccessibleTextRole ? QVariant(actions.join(u' ')) : QVariant();
}

int LinkCellDelegate::widthFor(const QAbstractItemView* view, const QStringList& actions)
{
    int widest = 0;
    for (const QString& action : actions)
        widest = std::max(widest, view->fontMetrics().horizontalAdvance(action));
    return static_cast<int>(actions.size()) * (widest + 2 * padding);
}

void LinkCellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    const QStringList actions = index.data(ActionsRole).toStringList();
    painter->save();
    painter->setPen(Theme::instance().color(Token::Link));
    for (qsizetype i = 0; i < actions.size(); ++i) {
        QFont font = option.font;
        font.setUnderline(m_hovered == Button { index, static_cast<int>(i) });
        painter->setFont(font);
        painter->drawText(buttonRect(option.rect, actions.size(), i),
            Qt::AlignCenter | Qt::TextSingleLine, actions.at(i));
    }
    painter->restore();
}

LinkCellDelegate::Button LinkCellDelegate::buttonAt(const QPoint& position) const
{
    const QModelIndex index = m_view->indexAt(position);
    if (!index.isValid() || m_view->itemDelegateForIndex(index) != this)
        return {};
    const qsizetype count = index.data(ActionsRole).toStringList().size();
    const QRect cell = m_view->visualRect(index);
    for (qsizetype i = 0; i < count; ++i) {
        if (buttonRect(cell, count, i).contains(position))
            return { index, static_cast<int>(i) };
    }
    return {};
}

void LinkCellDelegate::setHovered(const Button& button)
{
    if (button == m_hovered)
        return;
    const QPersistentModelIndex before = m_hovered.index;
    m_hovered = button;
    if (before.isValid())
        m_view->update(before);
    if (button.action >= 0) {
        m_view->update(button.index);
        m_view->viewport()->setCursor(Qt::PointingHandCursor);
    } else {
        m_view->viewport()->unsetCursor();
    }
}

bool LinkCellDelegate::eventFilter(QObject* watched, QEvent* event)
{
    // By pointer: the last events of a viewport come when its view is gone already.
    if (watched != m_viewport)
        return RowDelegate::eventFilter(watched, event);
    if (event->type() == QEvent::Leave) {
        setHovered({});
    } else if (event->type() == QEvent::MouseMove) {
        setHovered(buttonAt(static_cast<QMouseEvent*>(event)->position().toPoint()));
    } else if (event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_pressed
            = mouse->button() == Qt::LeftButton ? buttonAt(mouse->position().toPoint()) : Button();
    } else if (event->type() == QEvent::MouseButtonRelease) {
        const Button pressed = m_pressed;
        m_pressed = {};
        if (pressed.action >= 0
            && pressed == buttonAt(static_cast<QMouseEvent*>(event)->position().toPoint())) {
            // From the event loop: what follows may be a dialog, and the view is in the middle of
            // its own event.
            QMetaObject::invokeMethod(
                this,
                [this, pressed] {
                    if (pressed.index.isValid())
                        emit triggered(pressed.index, pressed.action);
                },
                Qt::QueuedConnection);
        }
    }
    return false;
}
