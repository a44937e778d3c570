#include "widgets/ThumbnailCache.h"

#include "widgets/ThumbnailDecoder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype memoryLimit = qsizetype(48) * 1024 * 1024;
constexpr int threadCount = 2;

// More than one screen of rows: what was scrolled past is asked for again when it comes back.
constexpr qsizetype mostWaiting = 96;

ThumbnailCache* existing = nullptr;

void endDecoding()
{
    delete existing;
    existing = nullptr;
}

} // namespace

ThumbnailCache& ThumbnailCache::instance()
{
    if (!existing) {
        existing = new ThumbnailCache;
        // Pixmaps and threads must be gone before the application is.
        qAddPostRoutine(endDecoding);
    }
    return *existing;
}

ThumbnailCache::ThumbnailCache()
{
    m_pixmaps.setMaxCost(memoryLimit);
    m_pool.setMaxThreadCount(threadCount);
}

ThumbnailCache::~ThumbnailCache()
{
    m_waiting.clear();
    m_pool.waitForDone();
}

QString ThumbnailCache::Request::key() const
{
    return u"%1|%2x%3|%4"_s.arg(
        version, QString::number(pixels.width()), QString::number(pixels.height()), path);
}

QString ThumbnailCache::versionOf(const QString& path)
{
    const QFileInfo info(path);
    return u"%1,%2"_s.arg(
        QString::number(info.size()), QString::number(info.lastModified().toMSecsSinceEpoch()));
}

QPixmap ThumbnailCache::thumbnail(const QString& absolutePath, QSize box, qreal dpr)
{
    if (absolutePath.isEmpty())
        return {};
    const Request request { absolutePath, versionOf(absolutePath), (QSizeF(box) * dpr).toSize(),
        dpr };
    if (m_unreadable.value(absolutePath) == request.version)
        return {};
    if (const QPixmap* pixmap = m_pixmaps.object(request.key()))
        return *pixmap;
    enqueue(request);
    return {};
}

bool ThumbnailCache::isUnreadable(const QString& absolutePath) const
{
    const auto found = m_unreadable.constFind(absolutePath);
    return found != m_unreadable.cend() && *found == versionOf(absolutePath);
}

void ThumbnailCache::enqueue(const Request& request)
{
    const QString key = request.key();
    if (m_running.contains(key))
        return;
    m_waiting.removeIf([&](const Request& waiting) { return waiting.key() == key; });
    m_waiting.append(request);
    if (m_waiting.size() > mostWaiting)
        m_waiting.removeFirst();
    startWaiting();
}

void ThumbnailCache::startWaiting()
{
    while (m_running.size() < threadCount && !m_waiting.isEmpty()) {
        const Request request = m_waiting.takeLast();
        m_running.insert(request.key(), request);
        m_pool.start([this, request] {
            const QImage image = ThumbnailDecoder::decode(request.path, request.pixels);
            // The cache outlives its threads; what is not delivered by then goes with it.
            QMetaObject::invokeMethod(
                this, [this, request, image] { finish(request, image); }, Qt::QueuedConnection);
        });
    }
}

void ThumbnailCache::finish(const Request& request, const QImage& image)
{
    m_running.remove(request.key());
    if (image.isNull()) {
        m_unreadable.insert(request.path, request.version);
    } else {
        m_unreadable.remove(request.path);
        QPixmap pixmap = QPixmap::fromImage(image);
        pixmap.setDevicePixelRatio(request.dpr);
        m_pixmaps.insert(request.key(), new QPixmap(pixmap), image.sizeInBytes());
    }
    startWaiting();
    emit ready(request.path);
}
