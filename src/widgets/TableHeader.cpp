#include "widgets/TableHeader.h"

#include "theme/Theme.h"
#include "widgets/RowDelegate.h"

#include <QPainter>
#include <QStyleOptionHeaderV2>

namespace {

constexpr int arrowRoom = 10;
constexpr int bottomLine = 1;

} // namespace

TableHeader::TableHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
}

void TableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const
{
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    // Left to paintSection().
    if (option->textAlignment & Qt::AlignRight)
        option->text.clear();
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    QHeaderView::paintSection(painter, rect, logicalIndex);
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    initStyleOptionForIndex(&option, logicalIndex);
    if (!model() || !(option.textAlignment & Qt::AlignRight))
        return;
    const bool hasArrow = option.sortIndicator != QStyleOptionHeader::None;
    const QRect line = rect.adjusted(
        RowDelegate::padding, 0, -RowDelegate::padding - (hasArrow ? arrowRoom : 0), -bottomLine);
    QFont bold = font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(Theme::instance().color(
        option.state & QStyle::State_MouseOver ? Token::TextPrimary : Token::TextSecondary));
    const QString title = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetrics(bold).elidedText(title, Qt::ElideRight, line.width()));
}
