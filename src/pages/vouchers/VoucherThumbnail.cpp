#include "pages/vouchers/VoucherThumbnail.h"

#include "theme/Icons.h"
#include "widgets/Painting.h"
#include "widgets/ThumbnailCache.h"
#include "widgets/ThumbnailPainter.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int glyphSize = 24;

} // namespace

VoucherThumbnail::VoucherThumbnail(QWidget* parent)
    : QAbstractButton(parent)
{
    setObjectName(u"thumbnail"_s);
    setFixedSize(side, side);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    connect(&ThumbnailCache::instance(), &ThumbnailCache::ready, this, &VoucherThumbnail::onReady);
}

void VoucherThumbnail::setFile(const QString& path)
{
    m_path = path;
    setToolTip(path.isEmpty() ? u"文件缺失"_s : u"点击预览"_s);
    update();
}

void VoucherThumbnail::onReady(const QString& path)
{
    if (path == m_path)
        update();
}

void VoucherThumbnail::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_path.isEmpty()) {
        Painting::drawSurface(painter, rect(), Token::WarningBg, Token::WarningBorder);
        painter.drawPixmap((width() - glyphSize) / 2, (height() - glyphSize) / 2,
            Icons::pixmap(u"warning", Token::WarningText, glyphSize, devicePixelRatioF()));
    } else {
        ThumbnailPainter::paint(&painter, rect(), m_path);
    }
    if (underMouse())
        Painting::drawFocusRing(painter, rect());
}
