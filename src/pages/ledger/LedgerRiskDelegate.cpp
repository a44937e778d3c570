#include "pages/ledger/LedgerRiskDelegate.h"

#include "pages/ledger/LedgerModel.h"
#include "widgets/Painting.h"
#include "widgets/RiskBadge.h"

#include <QMouseEvent>
#include <QPainter>

void LedgerRiskDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    painter->save();
    painter->setFont(Painting::sized(option.font, 12));
    RiskBadge::paint(painter, option.rect.adjusted(padding, 0, -2, 0),
        static_cast<RiskLevel>(index.data(LedgerModel::LevelRole).toInt()),
        index.data(LedgerModel::OverriddenRole).toBool());
    painter->restore();
}

bool LedgerRiskDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return RowDelegate::editorEvent(event, model, option, index);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || mouse->modifiers() != Qt::NoModifier)
        return false;
    emit reviewRequested(index.data(LedgerModel::IdRole).toLongLong());
    return true;
}
