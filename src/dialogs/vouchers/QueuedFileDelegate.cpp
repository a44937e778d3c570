#include "dialogs/vouchers/QueuedFileDelegate.h"

#include "dialogs/vouchers/VoucherQueueModel.h"
#include "services/FileRules.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"
#include "widgets/ThumbnailPainter.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize thumbnailSize(48, 40);
constexpr int rowHeight = 56;

Token tokenOf(QueueState state)
{
    switch (state) {
    case QueueState::Ready:
        return Token::SuccessText;
    case QueueState::Duplicate:
        return Token::WarningText;
    default:
        return Token::DangerText;
    }
}

} // namespace

QueuedFileDelegate::QueuedFileDelegate(const VoucherQueueModel* model, QObject* parent)
    : RowDelegate(parent)
    , m_model(model)
{
}

QSize QueuedFileDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return { RowDelegate::sizeHint(option, index).width(), rowHeight };
}

void QueuedFileDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);
    const QRect cell = option.rect.adjusted(padding, 0, -padding, 0);
    const QRect picture(
        cell.topLeft() + QPoint(0, (cell.height() - thumbnailSize.height()) / 2), thumbnailSize);
    ThumbnailPainter::paint(painter, picture, m_model->files().at(index.row()).path);
    paintTexts(painter, cell.adjusted(thumbnailSize.width() + 12, 9, 0, -9), option, index);
}

void QueuedFileDelegate::paintTexts(QPainter* painter, const QRect& box,
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QueuedFile& file = m_model->files().at(index.row());
    const Theme& theme = Theme::instance();
    painter->save();
    painter->setFont(option.font);
    painter->setPen(theme.color(file.isValid() ? Token::TextPrimary : Token::TextSecondary));
    painter->drawText(box, Qt::AlignLeft | Qt::AlignTop,
        option.fontMetrics.elidedText(file.fileName(), Qt::ElideMiddle, box.width()));
    painter->setFont(Painting::sized(option.font, 12));
    painter->setPen(theme.color(tokenOf(file.state)));
    QRect used;
    painter->drawText(box, Qt::AlignLeft | Qt::AlignBottom, labelOf(file.state), &used);
    painter->setPen(theme.color(Token::TextSecondary));
    painter->drawText(box.adjusted(used.width() + 12, 0, 0, 0), Qt::AlignLeft | Qt::AlignBottom,
        FileRules::formatFileSize(file.size));
    painter->restore();
}
