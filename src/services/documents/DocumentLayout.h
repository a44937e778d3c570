#pragma once

#include "services/documents/PageBreaks.h"

#include <QTextBlock>
#include <QTextDocument>

#include <map>

class QPainter;
class QPaintDevice;

/// A document's HTML laid out on sheets of one size, the same for a PDF, a printer and a preview.
/// Table rows are kept whole, the names of a table's columns stand above its rows on every
/// sheet, a heading stays with what follows, and the lines for the signature with what is signed.
class DocumentLayout final {
public:
    /// Lays out for the resolution of `device`; the size of a sheet and the band that stays free
    /// at its foot are in dots of that resolution.
    DocumentLayout(
        const QString& html, QPaintDevice* device, const QSizeF& sheetSize, qreal footHeight);

    int pageCount() const { return static_cast<int>(m_sheets.size()); }
    /// Paints the sheet, counted from 0, with its upper left corner at the painter's origin. Black
    /// on white whatever the program's theme is.
    void paint(QPainter& painter, int index) const;

    /// The HTML as Qt has to be given it: its import drops ideographic blanks, which the line for
    /// the date consists of.
    static QString renderable(const QString& html);

private:
    /// The documents of this program name no other file. One from elsewhere may: it is not read,
    /// be it a device without end, a private file or a place in the network.
    class SelfContained final : public QTextDocument {
        QVariant loadResource(int type, const QUrl& name) override;
    };

    /// A paragraph that was begun on an earlier sheet.
    struct Continuation {
        QTextBlock block;
        int firstLine = 0;
    };

    /// Paints a part of the whole so that it begins at the painter's origin.
    void paintStrip(QPainter& painter, const PageBreaks::Strip& strip) const;
    /// Paints what the strip shows of a paragraph begun earlier; where the next one begins.
    qreal paintContinuation(QPainter& painter, const PageBreaks::Strip& strip) const;

    SelfContained m_document;
    QSizeF m_sheetSize;
    std::map<qreal, Continuation> m_continuations; // by the place where they begin
    QList<PageBreaks::Sheet> m_sheets;
};
