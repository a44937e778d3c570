#include "widgets/RowDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

const QStyle* styleOf(const QStyleOptionViewItem& option)
{
    return option.widget ? option.widget->style() : QApplication::style();
}

// What the style itself leaves beside the text of a cell.
int styleMargin(const QStyleOptionViewItem& option)
{
    return styleOf(option)->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
}

} // namespace

void RowDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    QStyleOptionViewItem content = option;
    const int inset = padding - styleMargin(option);
    content.rect.adjust(inset, 0, -inset, 0);
    QStyledItemDelegate::paint(painter, content, index);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int inset = padding - styleMargin(option);
    return QStyledItemDelegate::sizeHint(option, index).grownBy({ inset, 0, inset, 0 });
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString text = index.data(Qt::ToolTipRole).toString();
    if (text.isEmpty() && sizeHint(option, index).width() > option.rect.width())
        text = index.data().toString();
    // Texts of users may look like markup.
    if (!text.isEmpty())
        text = u"<p style=\"white-space: pre-wrap\">%1</p>"_s.arg(text.toHtmlEscaped());
    QToolTip::showText(event->globalPos(), text, view, view->visualRect(index));
    return !text.isEmpty();
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant color = index.data(Qt::ForegroundRole);
    if (color.canConvert<QBrush>())
        option->palette.setBrush(QPalette::HighlightedText, color.value<QBrush>());
    // The whole row shows where the keyboard is.
    option->state.setFlag(QStyle::State_HasFocus, false);
}

void RowDelegate::paintGround(QPainter* painter, const QStyleOptionViewItem& option)
{
    styleOf(option)->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
}
