#pragma once

#include "widgets/RowDelegate.h"

/// Draws a risk level as its badge, or nothing where the cell has no text. The cell's own text is
/// the bare label; the level comes from
/// `LevelRole` as an integer, and `OverriddenRole` tells whether a person set it.
class RiskCellDelegate final : public RowDelegate {
    Q_OBJECT

public:
    using RowDelegate::RowDelegate;

    static constexpr int LevelRole = Qt::UserRole + 110;
    static constexpr int OverriddenRole = Qt::UserRole + 111;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
};
