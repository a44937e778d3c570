#include "pages/projects/ContractNameDelegate.h"

#include "pages/projects/ContractTableModel.h"
#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>

namespace {

constexpr int iconSize = 14;
constexpr int countPixels = 12;

} // namespace

void ContractNameDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int count = index.data(ContractTableModel::VoucherCountRole).toInt();
    if (count == 0) {
        RowDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    const QFont small = Painting::sized(option.font, countPixels);
    const QString text = QString::number(count);
    const int countWidth = iconSize + 2 + QFontMetrics(small).horizontalAdvance(text) + padding;

    QStyleOptionViewItem nameCell = option;
    nameCell.rect.adjust(0, 0, padding / 2 - countWidth, 0);
    RowDelegate::paint(painter, nameCell, index);

    const QRect rest = option.rect.adjusted(option.rect.width() - countWidth, 0, -padding, 0);
    painter->save();
    const qreal dpr = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rest.left(), rest.center().y() - iconSize / 2 + 1,
        Icons::pixmap(u"paperclip", Token::TextSecondary, iconSize, dpr));
    painter->setFont(small);
    painter->setPen(Theme::instance().color(Token::TextSecondary));
    painter->drawText(rest, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
    painter->restore();
}
