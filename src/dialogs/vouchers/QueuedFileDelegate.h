#pragma once

#include "widgets/RowDelegate.h"

class VoucherQueueModel;

/// A file of the queue: its thumbnail, and under its name what is the matter with it.
class QueuedFileDelegate final : public RowDelegate {
    Q_OBJECT

public:
    QueuedFileDelegate(const VoucherQueueModel* model, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintTexts(QPainter* painter, const QRect& box, const QStyleOptionViewItem& option,
        const QModelIndex& index) const;

    const VoucherQueueModel* m_model;
};
