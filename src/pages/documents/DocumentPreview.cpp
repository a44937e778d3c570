#include "pages/documents/DocumentPreview.h"

#include "services/documents/DocumentPdf.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int delayMs = 250;
constexpr int gap = 16; // around and between the sheets
constexpr qreal dotsPerPoint = 96.0 / 72; // of a sheet in its natural size
constexpr int keptSheets = 8;

} // namespace

DocumentPreview::DocumentPreview(Composer compose, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_compose(std::move(compose))
    , m_document(new QPdfDocument(this))
    , m_sheets(keptSheets)
{
    setObjectName(u"DocumentPreview"_s);
    setAccessibleName(u"文书预览"_s);
    setFocusPolicy(Qt::StrongFocus);
    // Always there: a bar that comes and goes would change the width that decides on it.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setMinimumWidth(320);
    m_timer.setSingleShot(true);
    m_timer.setInterval(delayMs);
    connect(&m_timer, &QTimer::timeout, this, &DocumentPreview::showNow);
}

void DocumentPreview::schedule()
{
    m_outdated = true;
    if (isVisible())
        m_timer.start();
}

void DocumentPreview::hold()
{
    m_timer.stop();
    m_outdated = false;
}

void DocumentPreview::setNaturalSize(bool natural)
{
    m_naturalSize = natural;
    updateScrollRange();
    viewport()->update();
}

void DocumentPreview::showEvent(QShowEvent* event)
{
    QAbstractScrollArea::showEvent(event);
    if (m_outdated)
        showNow();
}

void DocumentPreview::showNow()
{
    m_timer.stop();
    m_outdated = false;
    const QString html = m_compose();
    if (html == m_html)
        return;
    m_html = html;
    m_sheets.clear();
    m_document->close();
    m_pdf.close();
    m_pdf.setData(DocumentPdf::render(html, accessibleName()));
    m_pdf.open(QIODevice::ReadOnly);
    m_document->load(&m_pdf);
    QString words;
    for (int i = 0; i < m_document->pageCount(); ++i)
        words += m_document->getAllText(i).text();
    setAccessibleDescription(words);
    updateScrollRange();
    viewport()->update();
}

void DocumentPreview::updateScrollRange()
{
    QPoint end;
    if (m_document->pageCount() > 0)
        end = sheetRect(m_document->pageCount() - 1).bottomRight() + scrolled() + QPoint(gap, gap);
    const auto setUp = [this](QScrollBar* bar, int length, int page) {
        bar->setRange(0, std::max(0, length - page));
        bar->setPageStep(page);
        bar->setSingleStep(fontMetrics().height() * 2);
    };
    setUp(verticalScrollBar(), end.y(), viewport()->height());
    setUp(horizontalScrollBar(), end.x(), viewport()->width());
}

QPoint DocumentPreview::scrolled() const
{
    return { horizontalScrollBar()->value(), verticalScrollBar()->value() };
}

QRect DocumentPreview::sheetRect(int index) const
{
    const QSizeF natural = m_document->pagePointSize(index) * dotsPerPoint;
    const QSizeF room(viewport()->width() - 2 * gap, natural.height());
    const QSize size = (m_naturalSize || room.width() > natural.width()
            ? natural
            : natural.scaled(room, Qt::KeepAspectRatio))
                           .toSize();
    const QPoint place(std::max(gap, (viewport()->width() - size.width()) / 2),
        gap + index * (size.height() + gap));
    return { place - scrolled(), size };
}

QImage DocumentPreview::sheet(int index, QSize size)
{
    const qreal dpr = devicePixelRatioF();
    const QSize dots = size * dpr;
    if (const QImage* kept = m_sheets.object(index); kept && kept->size() == dots)
        return *kept;
    QImage image = m_document->render(index, dots);
    image.setDevicePixelRatio(dpr);
    m_sheets.insert(index, new QImage(image));
    return image;
}

void DocumentPreview::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::instance();
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), theme.color(Token::BgTableHeader));
    for (int i = 0; i < m_document->pageCount(); ++i) {
        const QRect rect = sheetRect(i);
        if (!rect.intersects(viewport()->rect()))
            continue;
        // Paper is white in every theme.
        painter.fillRect(rect, Qt::white);
        painter.drawImage(rect.topLeft(), sheet(i, rect.size()));
        painter.setPen(theme.color(Token::BorderStrong));
        painter.drawRect(rect.adjusted(-1, -1, 0, 0));
    }
}

void DocumentPreview::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollRange();
}
