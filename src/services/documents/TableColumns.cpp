#include "services/documents/TableColumns.h"

#include <QSet>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <numeric>
#include <utility>

namespace TableColumns {

namespace {

constexpr qreal narrowCharacter = 0.6; // of the width of a Chinese one: letters and digits
constexpr qreal spaceBelow = 6; // CSS pixels, as above and below a paragraph
constexpr qreal paddingInCharacters = 1.2; // both sides of a cell together

// The width of a text in Chinese characters; an estimate is enough for dividing a line.
qreal widthOf(const QString& text)
{
    qreal width = 0;
    for (const QChar c : text)
        width += c.unicode() < 0x1100 ? narrowCharacter : 1;
    return width;
}

QList<qreal> longestTexts(const QTextTable* table)
{
    QList<qreal> longest(table->columns(), 1);
    for (int row = 0; row < table->rows(); ++row) {
        for (int column = 0; column < table->columns(); ++column) {
            const QTextTableCell cell = table->cellAt(row, column);
            if (cell.columnSpan() > 1)
                continue;
            for (auto it = cell.begin(); !it.atEnd(); ++it)
                longest[column] = qMax(longest[column], widthOf(it.currentBlock().text()));
        }
    }
    return longest;
}

void arrange(QTextTable* table)
{
    constexpr qreal charactersPerLine = 45; // of a table's text on A4
    QList<qreal> wanted = longestTexts(table);
    for (qreal& width : wanted)
        width += paddingInCharacters;
    QList<QTextLength> widths;
    for (const qreal part : parts(wanted, charactersPerLine))
        widths += QTextLength(QTextLength::PercentageLength, 100 * part / charactersPerLine);
    QTextTableFormat format = table->format();
    format.setColumnWidthConstraints(widths);
    format.setBottomMargin(spaceBelow);
    table->setFormat(format);
}

} // namespace

void arrange(QTextDocument& document)
{
    // Not by way of the frames, which know their children only once the change that made them is
    // closed.
    QSet<QTextTable*> tables;
    for (const QTextFormat& format : document.allFormats()) {
        if (format.objectIndex() >= 0)
            tables += qobject_cast<QTextTable*>(document.objectForFormat(format));
    }
    tables.remove(nullptr);
    for (QTextTable* table : std::as_const(tables)) {
        if (table->format().border() > 0)
            arrange(table);
    }
}

QList<qreal> parts(const QList<qreal>& wanted, qreal available)
{
    QList<qreal> granted(wanted.size(), 0);
    QList<qsizetype> open(wanted.size());
    std::iota(open.begin(), open.end(), 0);
    // Modest columns first, until every column that is left asks for more than an even part.
    for (bool changed = true; changed && !open.isEmpty();) {
        const qreal even = available / static_cast<qreal>(open.size());
        const auto modest = [&](qsizetype i) { return wanted.at(i) <= even; };
        changed = std::any_of(open.begin(), open.end(), modest);
        for (const qsizetype i : QList<qsizetype>(open)) {
            if (!modest(i))
                continue;
            granted[i] = wanted.at(i);
            available -= wanted.at(i);
            open.removeOne(i);
        }
    }
    const bool allModest = open.isEmpty();
    const qsizetype sharers = allModest ? wanted.size() : open.size();
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        if (allModest || open.contains(i))
            granted[i] += available / static_cast<qreal>(sharers);
    }
    return granted;
}

} // namespace TableColumns
