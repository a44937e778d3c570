#include "pages/vouchers/VoucherThumbnail.h"

#include "widgets/Painting.h"
#include "widgets/ThumbnailCache.h"
#include "widgets/ThumbnailPainter.h"

#include <QPainter>

using namespace Qt::StringLiterals;

VoucherThumbnail::VoucherThumbnail(QWidget* parent)
    : QAbstractButton(parent)
{
    setObjectName(u"thumbnail"_s);
    setFixedSize(side, side);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    connect(&ThumbnailCache::instance(), &ThumbnailCache::ready, this, &VoucherThumbnail::onReady);
}

void VoucherThumbnail::setFile(const QString& path)
{
    m_path = path;
    setToolTip(path.isEmpty() ? u"文件缺失"_s : u"点击快速预览"_s);
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
    if (m_path.isEmpty())
        ThumbnailPainter::paintMissing(&painter, rect());
    else
        ThumbnailPainter::paint(&painter, rect(), m_path);
    if (underMouse() || hasFocus())
        Painting::drawFocusRing(painter, rect());
}
