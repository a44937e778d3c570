#pragma once

#include "widgets/PageDecoder.h"
#include "widgets/PageZoom.h"

#include <QAbstractScrollArea>
#include <QFutureWatcher>
#include <QTimer>

/// Shows a picture or the pages of a PDF file. Decoded beside the window's thread; what cannot be
/// shown is told in the place of the picture. Ctrl and the wheel zoom, the mouse drags.
class FileView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit FileView(QWidget* parent = nullptr);
    ~FileView() override;

    /// Its first page, fitted. An empty path is a file that is missing.
    void showFile(const QString& absolutePath);
    void setPage(int page);
    int page() const { return m_number; }
    /// 0 while it is not known.
    int pageCount() const { return m_page.pageCount; }

    void setFit(PageZoom::Fit fit);
    void setFactor(qreal factor);
    void zoomIn();
    void zoomOut();
    /// What the page is shown at now.
    qreal factor() const;

    /// Whether the picture itself is there.
    bool hasPicture() const { return !m_page.image.isNull(); }
    /// Why there is no picture; empty when there is one.
    QString message() const;

signals:
    /// Page, number of pages, zoom or message.
    void changed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    PageZoom zoom() const;
    /// Where the page is shown in the viewport.
    QRectF pageRect() const;
    /// Keeps the point of the page that lies under `anchor` there.
    void zoomTo(PageZoom::Fit fit, qreal factor, const QPointF& anchor);
    QPointF center() const;
    void updateScrollBars();
    void load();
    /// Decodes anew where the page is not shown dot for dot.
    void sharpen();
    void onLoaded();
    void onChanged();
    void paintMessage(QPainter& painter) const;

    QString m_path;
    int m_number = 0;
    bool m_loading = false;
    PageZoom::Fit m_fit = PageZoom::Fit::Page;
    qreal m_factor = 1;
    PageDecoder::Page m_page;
    QPoint m_dragged; // where the mouse was
    QTimer m_settled;
    QFutureWatcher<PageDecoder::Page> m_watcher;
};
