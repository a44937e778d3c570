#include "widgets/FileView.h"

#include "core/Background.h"
#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 16; // around the page
constexpr int settleMs = 80;
constexpr int textMargin = 48;
constexpr int messagePixels = 14;
constexpr int iconSize = 40;
constexpr int iconGap = 16;

QFuture<PageDecoder::Page> decoded(const QString& path, int page, const PageZoom& zoom)
{
    return inBackground([path, page, zoom] {
        return PageDecoder::decode(path, page, [&zoom](const QSizeF& naturalSize, bool scales) {
            return zoom.pixelsFor(naturalSize, scales);
        });
    });
}

} // namespace

FileView::FileView(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    setObjectName(u"FileView"_s);
    setFocusPolicy(Qt::StrongFocus);
    m_settled.setSingleShot(true);
    m_settled.setInterval(settleMs);
    connect(&m_settled, &QTimer::timeout, this, &FileView::sharpen);
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &FileView::onLoaded);
}

FileView::~FileView()
{
    m_watcher.cancel();
}

void FileView::showFile(const QString& absolutePath)
{
    m_path = absolutePath;
    m_fit = PageZoom::Fit::Page;
    m_page = {};
    setPage(0);
}

void FileView::setPage(int page)
{
    m_number = std::clamp(page, 0, std::max(0, m_page.pageCount - 1));
    // Never the picture of another page than the one that is named.
    m_page.image = {};
    m_page.problem = PageDecoder::Problem::None;
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    load();
    onChanged();
}

void FileView::load()
{
    m_loading = true;
    m_watcher.cancel();
    m_watcher.setFuture(decoded(m_path, m_number, zoom()));
}

void FileView::sharpen()
{
    if (m_loading || m_page.image.isNull())
        return;
    if (zoom().pixelsFor(m_page.naturalSize, m_page.scales) == m_page.image.size())
        return;
    m_watcher.cancel();
    m_watcher.setFuture(decoded(m_path, m_number, zoom()));
}

void FileView::onLoaded()
{
    if (m_watcher.isCanceled() || m_watcher.future().resultCount() == 0)
        return;
    m_loading = false;
    m_page = m_watcher.result();
    onChanged();
    // The view may have changed its size meanwhile.
    m_settled.start();
}

void FileView::onChanged()
{
    updateScrollBars();
    viewport()->update();
    viewport()->setCursor(hasPicture() ? Qt::OpenHandCursor : Qt::ArrowCursor);
    setAccessibleDescription(message());
    emit changed();
}

PageZoom FileView::zoom() const
{
    PageZoom zoom;
    zoom.fit = m_fit;
    zoom.factor = m_factor;
    zoom.room = (maximumViewportSize() - QSize(2 * gap, 2 * gap)).expandedTo({ 1, 1 });
    zoom.scrollBarWidth = verticalScrollBar()->sizeHint().width();
    zoom.dpr = devicePixelRatioF();
    return zoom;
}

qreal FileView::factor() const
{
    return zoom().factorFor(m_page.naturalSize, m_page.scales);
}

void FileView::setFit(PageZoom::Fit fit)
{
    zoomTo(fit, m_factor, center());
}

void FileView::setFactor(qreal factor)
{
    zoomTo(PageZoom::Fit::None, factor, center());
}

void FileView::zoomIn()
{
    setFactor(PageZoom::step(factor(), true));
}

void FileView::zoomOut()
{
    setFactor(PageZoom::step(factor(), false));
}

QPointF FileView::center() const
{
    return QRectF(viewport()->rect()).center();
}

void FileView::zoomTo(PageZoom::Fit fit, qreal factor, const QPointF& anchor)
{
    if (!hasPicture())
        return;
    const QPointF onPage = (anchor - pageRect().topLeft()) / this->factor();
    m_fit = fit;
    m_factor = std::clamp(factor, PageZoom::smallest, PageZoom::largest);
    updateScrollBars();
    const QPointF moved = pageRect().topLeft() + onPage * this->factor() - anchor;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()));
    viewport()->update();
    m_settled.start();
    emit changed();
}

QRectF FileView::pageRect() const
{
    // Whole dots, so that a picture of that size is not scaled once more.
    const QSize size = zoom().shownSize(m_page.naturalSize, m_page.scales).toSize();
    const auto place = [](int length, int shown, const QScrollBar* bar) {
        return std::max(gap, (length - shown) / 2) - bar->value();
    };
    return QRectF(QPointF(place(viewport()->width(), size.width(), horizontalScrollBar()),
                      place(viewport()->height(), size.height(), verticalScrollBar())),
        size);
}

void FileView::updateScrollBars()
{
    const QSizeF shown = zoom().shownSize(m_page.naturalSize, m_page.scales);
    const QSize content = hasPicture()
        ? QSize(qRound(shown.width()) + 2 * gap, qRound(shown.height()) + 2 * gap)
        : QSize();
    const QSize room = maximumViewportSize();
    const int bar = zoom().scrollBarWidth;
    const bool tall = content.height() > room.height();
    const bool wide = content.width() > room.width() - (tall ? bar : 0);
    const bool tallThen = tall || content.height() > room.height() - (wide ? bar : 0);
    const auto setUp = [](QScrollBar* scroll, int length, int page) {
        scroll->setRange(0, std::max(0, length - page));
        scroll->setPageStep(page);
        scroll->setSingleStep(std::max(1, page / 12));
    };
    setUp(horizontalScrollBar(), content.width(), room.width() - (tallThen ? bar : 0));
    setUp(verticalScrollBar(), content.height(), room.height() - (wide ? bar : 0));
}

QString FileView::message() const
{
    if (m_loading)
        return u"正在打开…"_s;
    switch (m_page.problem) {
    case PageDecoder::Problem::None:
        return {};
    case PageDecoder::Problem::Missing:
        return u"文件缺失：原来的位置上已没有这个文件。"_s;
    case PageDecoder::Problem::Locked:
        return u"这个 PDF 文件设有密码，无法在这里显示。请用默认程序打开。"_s;
    case PageDecoder::Problem::TooLarge:
        return m_page.naturalSize.isEmpty()
            ? u"文件过大，无法在这里显示。请用默认程序打开。"_s
            : u"图片过大（%1 × %2 像素），无法在这里显示。请用默认程序打开。"_s.arg(
                QString::number(m_page.naturalSize.toSize().width()),
                QString::number(m_page.naturalSize.toSize().height()));
    case PageDecoder::Problem::Damaged:
        break;
    }
    return u"文件已损坏或不是有效的图片、PDF，无法显示。"_s;
}

void FileView::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::instance();
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), theme.color(Token::BgTableHeader));
    if (!hasPicture()) {
        paintMessage(painter);
        return;
    }
    const QRectF rect = pageRect();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, m_page.image);
    painter.setPen(theme.color(Token::BorderStrong));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.toAlignedRect().adjusted(-1, -1, 0, 0));
}

void FileView::paintMessage(QPainter& painter) const
{
    const QRect room
        = viewport()->rect().adjusted(textMargin, textMargin, -textMargin, -textMargin);
    painter.setFont(Painting::sized(font(), messagePixels));
    painter.setPen(Theme::instance().color(Token::TextPrimary));
    QRect used;
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, message(), &used);
    if (!m_loading)
        painter.drawPixmap(room.center().x() - iconSize / 2, used.top() - iconSize - iconGap,
            Icons::pixmap(u"warning", Token::WarningText, iconSize, devicePixelRatioF()));
}

void FileView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
    m_settled.start();
    emit changed();
}

void FileView::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr qreal perTurn = 1.25;
    constexpr int turn = 120;
    const qreal turns = qreal(event->angleDelta().y()) / turn;
    zoomTo(PageZoom::Fit::None, factor() * std::pow(perTurn, turns), event->position());
    event->accept();
}

void FileView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !hasPicture())
        return;
    m_dragged = event->position().toPoint();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void FileView::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint position = event->position().toPoint();
    const QPoint moved = position - m_dragged;
    m_dragged = position;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void FileView::mouseReleaseEvent(QMouseEvent*)
{
    viewport()->setCursor(hasPicture() ? Qt::OpenHandCursor : Qt::ArrowCursor);
}
