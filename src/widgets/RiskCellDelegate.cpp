#include "widgets/RiskCellDelegate.h"

#include "widgets/Painting.h"
#include "widgets/RiskBadge.h"

#include <QPainter>

void RiskCellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    if (ground.text.isEmpty())
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(Painting::sized(option.font, 12));
    RiskBadge::paint(painter, option.rect.adjusted(padding, 0, -padding, 0),
        static_cast<RiskLevel>(index.data(LevelRole).toInt()), index.data(OverriddenRole).toBool());
    painter->restore();
}
