#include "widgets/ThumbnailDelegate.h"

#include "widgets/ThumbnailPainter.h"

#include <QAbstractItemView>
#include <QStyle>

ThumbnailDelegate::ThumbnailDelegate(QSize thumbnailSize, QAbstractItemView* view)
    : RowDelegate(view)
    , m_size(thumbnailSize)
{
    ThumbnailPainter::follow(view);
}

void ThumbnailDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    const QRect box = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter,
        m_size, option.rect.adjusted(padding, 0, 0, 0));
    if (const QString path = index.data(FilePathRole).toString(); path.isEmpty())
        ThumbnailPainter::paintMissing(painter, box);
    else
        ThumbnailPainter::paint(painter, box, path);
}
