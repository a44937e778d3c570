#include "services/documents/DocumentLayout.h"

#include "services/documents/DocumentFont.h"
#include "services/documents/PageGaps.h"
#include "services/documents/TableColumns.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTextCursor>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// Table borders are drawn across the edge of a row; the padding of the cells keeps their text
// further away than this.
constexpr qreal borderReachMm = 0.4;

// Ink on paper: without it a dark theme would write in its own light colour.
QPalette paperPalette()
{
    QPalette palette(Qt::lightGray, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black);
    return palette;
}

} // namespace

QVariant DocumentLayout::SelfContained::loadResource(int type, const QUrl& name)
{
    qWarning("A document refers to a file that is not read: %s",
        qUtf8Printable(name.toString().left(200)));
    if (type != QTextDocument::ImageResource)
        return {};
    // Without any picture Qt would try the name as that of a file.
    QImage nothing(1, 1, QImage::Format_ARGB32);
    nothing.fill(Qt::transparent);
    return nothing;
}

DocumentLayout::DocumentLayout(
    const QString& html, QPaintDevice* device, const QSizeF& sheetSize, qreal footHeight)
    : m_sheetSize(sheetSize)
{
    m_document.setDefaultFont(DocumentFont::text());
    m_document.setUndoRedoEnabled(false);
    // The device before the width: only then are the lengths of the layout in its dots. Both while
    // the document is empty and all its text as one change, because each of these steps lays out
    // whatever there is.
    m_document.documentLayout()->setPaintDevice(device);
    m_document.setTextWidth(sheetSize.width());
    QTextCursor filling(&m_document);
    filling.beginEditBlock();
    m_document.setHtml(renderable(html));
    TableColumns::arrange(m_document);
    filling.endEditBlock();
    const PageGaps places(m_document);
    QList<PageBreaks::Gap> gaps;
    for (const PageGaps::Place& place : places.all()) {
        gaps += place.gap;
        if (place.line > 0)
            m_continuations[place.gap.next] = { place.block, place.line };
    }
    m_sheets
        = PageBreaks::cut(gaps, places.top(), places.bottom(), sheetSize.height() - footHeight);
}

void DocumentLayout::paint(QPainter& painter, int index) const
{
    const PageBreaks::Sheet& sheet = m_sheets.at(index);
    painter.save();
    painter.setPen(Qt::black);
    if (sheet.head.height() > 0) {
        paintStrip(painter, sheet.head);
        painter.translate(0, sheet.head.height());
    }
    paintStrip(painter, sheet.content);
    painter.restore();
}

void DocumentLayout::paintStrip(QPainter& painter, const PageBreaks::Strip& strip) const
{
    const qreal reach
        = borderReachMm / 25.4 * m_document.documentLayout()->paintDevice()->logicalDpiY();
    const QRectF content(0, strip.top, m_sheetSize.width(), strip.height());
    painter.save();
    painter.translate(0, -strip.top);
    painter.setClipRect(content.adjusted(-reach, -reach, reach, reach));
    const qreal top = paintContinuation(painter, strip);
    if (top < strip.bottom) {
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = paperPalette();
        // Lines that only touch the edge are another sheet's: they would be invisible here, and
        // still stand in the text of the PDF.
        context.clip
            = QRectF(0, top, content.width(), strip.bottom - top).adjusted(0, 0.5, 0, -0.5);
        m_document.documentLayout()->draw(&painter, context);
    }
    painter.restore();
}

// Line by line, because a layout that is asked to paint part of a paragraph paints the line above
// that part as well.
qreal DocumentLayout::paintContinuation(QPainter& painter, const PageBreaks::Strip& strip) const
{
    const auto found = m_continuations.find(strip.top);
    if (found == m_continuations.end())
        return strip.top;
    const auto& [block, firstLine] = found->second;
    const QRectF box = m_document.documentLayout()->blockBoundingRect(block);
    for (int i = firstLine; i < block.layout()->lineCount(); ++i) {
        const QTextLine line = block.layout()->lineAt(i);
        if (box.top() + line.y() < strip.bottom - 0.5)
            line.draw(&painter, box.topLeft());
    }
    return box.bottom();
}

QString DocumentLayout::renderable(const QString& html)
{
    static const QRegularExpression tagOrBlanks(u"<[^>]*>|\\x{3000}+"_s);
    QString result;
    qsizetype done = 0;
    for (auto it = tagOrBlanks.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (match.capturedView().startsWith(u'<'))
            continue;
        result += QStringView(html).sliced(done, match.capturedStart() - done);
        result += u"<span style=\"white-space:pre-wrap;\">"_s + match.captured() + u"</span>"_s;
        done = match.capturedEnd();
    }
    return result += QStringView(html).sliced(done);
}
