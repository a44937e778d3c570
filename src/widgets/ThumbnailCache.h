#pragma once

#include <QCache>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QThreadPool>

/// Thumbnails of image files and first PDF pages, decoded beside the window's thread and kept as
/// long as there is room. A file that changes is decoded anew. Belongs to the window's thread.
class ThumbnailCache final : public QObject {
    Q_OBJECT

public:
    static ThumbnailCache& instance();
    ~ThumbnailCache() override;

    /// The picture fitted into `box` device-independent pixels. Null while it is being made, which
    /// `ready` tells the end of, and for a file without one.
    QPixmap thumbnail(const QString& absolutePath, QSize box, qreal dpr);

    /// Whether the file, as it is now, was found to have no picture.
    bool isUnreadable(const QString& absolutePath) const;

signals:
    /// The picture has been made, or cannot be.
    void ready(const QString& absolutePath);

private:
    struct Request {
        QString path;
        QString version; // changes with the file's content
        QSize pixels;
        qreal dpr = 1;

        QString key() const;
    };

    ThumbnailCache();

    static QString versionOf(const QString& path);
    void enqueue(const Request& request);
    void startWaiting();
    void finish(const Request& request, const QImage& image);

    QCache<QString, QPixmap> m_pixmaps; // cost in bytes
    QHash<QString, QString> m_unreadable; // path to version
    QList<Request> m_waiting; // the newest last
    QHash<QString, Request> m_running; // by key
    QThreadPool m_pool;
};
