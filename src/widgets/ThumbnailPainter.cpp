#include "widgets/ThumbnailPainter.h"

#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"
#include "widgets/ThumbnailCache.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int glyphSize = 20;

QString glyphOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == u"pdf")
        return u"pdf"_s;
    const bool picture = QStringList { u"jpg"_s, u"jpeg"_s, u"png"_s, u"bmp"_s }.contains(suffix);
    return picture ? u"image"_s : u"file"_s;
}

QRect centred(const QSize& size, const QRect& box)
{
    return { box.topLeft()
            + QPoint((box.width() - size.width()) / 2, (box.height() - size.height()) / 2),
        size };
}

void frame(QPainter* painter, const QRect& picture)
{
    painter->setPen(Theme::instance().color(Token::Border));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(picture.adjusted(0, 0, -1, -1));
}

} // namespace

namespace ThumbnailPainter {

void paint(QPainter* painter, const QRect& box, const QString& absolutePath)
{
    const qreal dpr = painter->device()->devicePixelRatio();
    painter->save();
    const QPixmap picture = ThumbnailCache::instance().thumbnail(absolutePath, box.size(), dpr);
    if (picture.isNull()) {
        frame(painter, box);
        painter->drawPixmap(centred({ glyphSize, glyphSize }, box),
            Icons::pixmap(glyphOf(absolutePath), Token::TextTertiary, glyphSize, dpr));
    } else {
        const QRect place = centred(picture.deviceIndependentSize().toSize(), box);
        painter->drawPixmap(place, picture);
        frame(painter, place);
    }
    painter->restore();
}

void paintMissing(QPainter* painter, const QRect& box)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    Painting::drawSurface(*painter, box, Token::WarningBg, Token::WarningBorder);
    painter->drawPixmap(centred({ glyphSize, glyphSize }, box),
        Icons::pixmap(
            u"warning", Token::WarningText, glyphSize, painter->device()->devicePixelRatio()));
    painter->restore();
}

void follow(QAbstractItemView* view)
{
    QObject::connect(&ThumbnailCache::instance(), &ThumbnailCache::ready, view,
        [view] { view->viewport()->update(); });
}

} // namespace ThumbnailPainter
