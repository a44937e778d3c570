#pragma once

#include "widgets/RowDelegate.h"

/// Draws a contract's name, and at the end of the cell how many vouchers are tied to it.
class ContractNameDelegate final : public RowDelegate {
    Q_OBJECT

public:
    using RowDelegate::RowDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
};
