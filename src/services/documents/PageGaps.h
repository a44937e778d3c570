#pragma once

#include "services/documents/PageBreaks.h"

#include <QTextBlock>

class QAbstractTextDocumentLayout;
class QTextDocument;
class QTextFrame;
class QTextTable;
class QTextTableCell;

/// Finds where a document that is laid out in one piece may be cut into sheets: between the lines
/// of paragraphs and the rows of tables.
class PageGaps final {
public:
    explicit PageGaps(const QTextDocument& document);

    struct Place {
        PageBreaks::Gap gap;
        QTextBlock block; // what begins below the gap, when it is a line
        int line = 0; // its number within the paragraph
    };

    /// Downwards.
    QList<Place> all() const { return m_places; }
    qreal top() const { return m_top; }
    qreal bottom() const { return m_bottom; }

private:
    void visitFrame(const QTextFrame* frame);
    void visitBlock(const QTextBlock& block);
    void visitTable(QTextTable* table);
    void addRow(
        const QTextTable* table, int row, qreal top, qreal bottom, PageBreaks::Gap::Kind gapBefore);
    bool hasHead(const QTextTable* table) const;
    void addPiece(qreal top, qreal bottom, PageBreaks::Gap::Kind gapBefore,
        const QTextBlock& block = {}, int line = 0);
    qreal rowTop(const QTextTable* table, int row) const;
    qreal cellTop(const QTextTableCell& cell) const;

    const QAbstractTextDocumentLayout* m_layout;
    QList<Place> m_places;
    qreal m_top = 0;
    qreal m_bottom = 0;
    bool m_empty = true;
    bool m_keepWithNext = false;
    bool m_forceNext = false;
    PageBreaks::Strip m_head; // of the table whose rows are visited
};
