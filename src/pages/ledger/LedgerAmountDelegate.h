#pragma once

#include "widgets/RowDelegate.h"

/// Amounts with the sign of their direction, so that colour is not the only difference.
class LedgerAmountDelegate final : public RowDelegate {
    Q_OBJECT

public:
    using RowDelegate::RowDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
