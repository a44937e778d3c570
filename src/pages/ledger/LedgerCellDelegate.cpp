#include "pages/ledger/LedgerCellDelegate.h"

#include "pages/ledger/LedgerModel.h"
#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Action = LedgerCellDelegate::Action;

struct Button {
    Action action;
    QStringView icon;
    QStringView toolTip;
    Token hoverInk;
};

constexpr auto buttons = std::to_array<Button>({
    { Action::Edit, u"edit", u"编辑该笔流水", Token::Link },
    { Action::Document, u"documents", u"生成公私资金往来决定书", Token::Link },
    { Action::Delete, u"trash", u"删除该笔流水", Token::DangerText },
});

constexpr int buttonSize = 28;
constexpr int iconSize = 16;
constexpr int clipSize = 14;

// The equal part of the cell that belongs to a button.
QRect partOf(const QRect& cell, std::size_t button)
{
    const int width = cell.width() / static_cast<int>(buttons.size());
    return { cell.left() + static_cast<int>(button) * width, cell.top(), width, cell.height() };
}

std::optional<Action> actionAt(const QRect& cell, const QModelIndex& index, QPoint point)
{
    if (!cell.contains(point))
        return std::nullopt;
    if (index.column() == LedgerModel::Vouchers)
        return Action::Vouchers;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (partOf(cell, i).contains(point))
            return buttons.at(i).action;
    }
    return std::nullopt;
}

QRect centred(const QRect& area, int size)
{
    QRect square(0, 0, size, size);
    square.moveCenter(area.center());
    return square;
}

} // namespace

void LedgerCellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.column() == LedgerModel::Vouchers)
        paintVouchers(painter, option, index);
    else
        paintActions(painter, option, index);
    painter->restore();
}

void LedgerCellDelegate::paintActions(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const qreal dpr = painter->device()->devicePixelRatio();
    const bool cellIsHovered = option.state.testFlag(QStyle::State_MouseOver) && m_hovered == index;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const Button& button = buttons.at(i);
        const QRect part = partOf(option.rect, i);
        const bool hovered = cellIsHovered && m_hoveredAction == button.action;
        if (hovered)
            Painting::drawSurface(
                *painter, centred(part, buttonSize), Token::BgCard, Token::BorderStrong);
        painter->drawPixmap(centred(part, iconSize),
            Icons::pixmap(
                button.icon, hovered ? button.hoverInk : Token::TextSecondary, iconSize, dpr));
    }
}

void LedgerCellDelegate::paintVouchers(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int count = index.data().toInt();
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver) && m_hovered == index;
    const Token ink = count > 0 ? Token::Link : Token::TextTertiary;
    const QRect area = option.rect.adjusted(padding, 0, -padding, 0);
    painter->drawPixmap(area.left(), area.center().y() - clipSize / 2,
        Icons::pixmap(u"paperclip", ink, clipSize, painter->device()->devicePixelRatio()));
    QFont font = option.font;
    font.setUnderline(hovered);
    painter->setFont(font);
    painter->setPen(Theme::instance().color(ink));
    painter->drawText(area.adjusted(clipSize + 4, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
        QString::number(count));
}

bool LedgerCellDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseMove && event->type() != QEvent::MouseButtonRelease)
        return RowDelegate::editorEvent(event, model, option, index);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const auto action = actionAt(option.rect, index, mouse->position().toPoint());
    if (event->type() == QEvent::MouseMove) {
        setHovered(option.widget, index, action);
        return false;
    }
    // With Ctrl and Shift rows are chosen.
    if (!action || mouse->button() != Qt::LeftButton || mouse->modifiers() != Qt::NoModifier)
        return false;
    request(*action, index.data(LedgerModel::IdRole).toLongLong());
    return true;
}

void LedgerCellDelegate::setHovered(
    const QWidget* view, const QModelIndex& index, std::optional<Action> action)
{
    if (m_hovered == index && m_hoveredAction == action)
        return;
    const auto* items = qobject_cast<const QAbstractItemView*>(view);
    const QModelIndex earlier = m_hovered;
    m_hovered = index;
    m_hoveredAction = action;
    for (const QModelIndex& cell : { earlier, index }) {
        if (items && cell.isValid())
            items->viewport()->update(items->visualRect(cell));
    }
}

void LedgerCellDelegate::request(Action action, qint64 id)
{
    switch (action) {
    case Action::Edit:
        emit editRequested(id);
        break;
    case Action::Document:
        emit documentRequested(id);
        break;
    case Action::Delete:
        emit deleteRequested(id);
        break;
    case Action::Vouchers:
        emit vouchersRequested(id);
        break;
    }
}

bool LedgerCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || index.column() != LedgerModel::Actions)
        return RowDelegate::helpEvent(event, view, option, index);
    const auto action = actionAt(option.rect, index, event->pos());
    const auto button = std::find_if(buttons.begin(), buttons.end(),
        [&action](const Button& candidate) { return candidate.action == action; });
    if (button == buttons.end())
        return false;
    QToolTip::showText(event->globalPos(), button->toolTip.toString(), view,
        partOf(option.rect, static_cast<std::size_t>(button - buttons.begin())));
    return true;
}
