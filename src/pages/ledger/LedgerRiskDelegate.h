#pragma once

#include "widgets/RowDelegate.h"

/// The risk of an entry as a badge. A click on it asks for the manual review.
class LedgerRiskDelegate final : public RowDelegate {
    Q_OBJECT

public:
    using RowDelegate::RowDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

signals:
    void reviewRequested(qint64 id);
};
