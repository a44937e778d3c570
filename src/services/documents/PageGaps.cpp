#include "services/documents/PageGaps.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintDevice>
#include <QTextDocument>
#include <QTextTable>

using PageBreaks::Gap;

namespace {

bool isHeading(const QTextBlock& block)
{
    if (block.text().isEmpty())
        return false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        if (it.fragment().charFormat().fontWeight() < QFont::Bold)
            return false;
    }
    return true;
}

QList<qreal> lineTopsOf(const QTextTableCell& cell, const QAbstractTextDocumentLayout* layout)
{
    QList<qreal> tops;
    for (auto it = cell.begin(); !it.atEnd(); ++it) {
        const QTextBlock block = it.currentBlock();
        if (!block.isValid())
            continue; // a table within the cell
        const qreal top = layout->blockBoundingRect(block).top();
        for (int i = 0; i < block.layout()->lineCount(); ++i)
            tops += top + block.layout()->lineAt(i).y();
    }
    return tops;
}

} // namespace

PageGaps::PageGaps(const QTextDocument& document)
    : m_layout(document.documentLayout())
{
    visitFrame(document.rootFrame());
}

void PageGaps::visitFrame(const QTextFrame* frame)
{
    for (auto it = frame->begin(); !it.atEnd(); ++it) {
        if (auto* table = qobject_cast<QTextTable*>(it.currentFrame()))
            visitTable(table);
        else if (it.currentFrame())
            visitFrame(it.currentFrame());
        else
            visitBlock(it.currentBlock());
    }
}

void PageGaps::visitBlock(const QTextBlock& block)
{
    const QRectF box = m_layout->blockBoundingRect(block);
    // Qt ends a document after a table with an empty paragraph, which it lays over the last row.
    if (!block.next().isValid() && block.text().isEmpty() && box.top() < m_bottom)
        return;
    const QTextFormat::PageBreakFlags breaks = block.blockFormat().pageBreakPolicy();
    Gap::Kind before = m_keepWithNext ? Gap::Last : Gap::Free;
    if (m_forceNext || breaks & QTextFormat::PageBreak_AlwaysBefore)
        before = Gap::Forced;
    for (int i = 0; i < block.layout()->lineCount(); ++i) {
        const QRectF line = block.layout()->lineAt(i).rect();
        addPiece(
            box.top() + line.top(), box.top() + line.bottom(), i ? Gap::Free : before, block, i);
    }
    m_forceNext = breaks & QTextFormat::PageBreak_AlwaysAfter;
    m_keepWithNext = isHeading(block);
}

void PageGaps::visitTable(QTextTable* table)
{
    const QRectF box = m_layout->frameBoundingRect(table);
    const QTextFormat::PageBreakFlags breaks = table->format().pageBreakPolicy();
    const bool ruled = table->format().border() > 0;
    // Tables without rules hold the lines for the signature, which must not stand alone on a
    // sheet, and the particulars under the title.
    Gap::Kind before = m_keepWithNext || !ruled ? Gap::Last : Gap::Free;
    if (m_forceNext || breaks & QTextFormat::PageBreak_AlwaysBefore)
        before = Gap::Forced;
    qreal top = box.top();
    for (int row = 1; row < table->rows(); ++row) {
        const qreal next = rowTop(table, row);
        addRow(table, row - 1, top, next, before);
        if (row == 1 && hasHead(table))
            m_head = { rowTop(table, 0), next };
        // The head of a table stays with its first entry, the total with the last one.
        const bool together = !ruled || row == 1 || row == table->rows() - 1;
        before = together ? Gap::Last : Gap::Free;
        top = next;
    }
    addRow(table, table->rows() - 1, top, box.bottom(), before);
    m_head = {};
    m_forceNext = breaks & QTextFormat::PageBreak_AlwaysAfter;
    m_keepWithNext = false;
}

// Names of the columns, which the rows on the following sheets need too.
bool PageGaps::hasHead(const QTextTable* table) const
{
    if (table->format().border() <= 0)
        return false;
    for (int column = 0; column < table->columns(); ++column) {
        if (!isHeading(table->cellAt(0, column).firstCursorPosition().block()))
            return false;
    }
    return true;
}

// In one piece, unless a cell is so long that the row may not fit on a sheet.
void PageGaps::addRow(
    const QTextTable* table, int row, qreal top, qreal bottom, Gap::Kind gapBefore)
{
    constexpr qsizetype linesThatAlwaysFit = 20;
    QList<qreal> lineTops;
    for (int column = 0; column < table->columns(); ++column) {
        const QList<qreal> tops = lineTopsOf(table->cellAt(row, column), m_layout);
        if (tops.size() > lineTops.size())
            lineTops = tops;
    }
    if (lineTops.size() > linesThatAlwaysFit) {
        for (const qreal lineTop : lineTops.mid(1)) {
            addPiece(top, lineTop, gapBefore);
            top = lineTop;
            gapBefore = Gap::Torn;
        }
    }
    addPiece(top, bottom, gapBefore);
}

// What is never cut; the gap before it began where the piece above ended.
void PageGaps::addPiece(
    qreal top, qreal bottom, Gap::Kind gapBefore, const QTextBlock& block, int line)
{
    if (m_empty)
        m_top = top;
    else
        m_places.append({ { qMin(m_bottom, top), top, gapBefore, m_head }, block, line });
    m_empty = false;
    m_bottom = bottom;
}

// The rule between a row and the one above it.
qreal PageGaps::rowTop(const QTextTable* table, int row) const
{
    qreal top = m_layout->documentSize().height();
    for (int column = 0; column < table->columns(); ++column) {
        const QTextTableCell cell = table->cellAt(row, column);
        if (cell.row() == row)
            top = qMin(top, cellTop(cell));
    }
    return top;
}

qreal PageGaps::cellTop(const QTextTableCell& cell) const
{
    constexpr qreal cssDotsPerInch = 96;
    const QTextTableCellFormat format = cell.format().toTableCellFormat();
    const qreal scale = m_layout->paintDevice()->logicalDpiY() / cssDotsPerInch;
    const qreal text = m_layout->blockBoundingRect(cell.firstCursorPosition().block()).top();
    return text - (format.topPadding() + format.topBorder() / 2) * scale;
}
