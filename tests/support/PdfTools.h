#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

/// What other programs see in a PDF file, by the tools of poppler-utils. A tool that is missing
/// or fails gives its complaint as the text, so that the comparison fails and says why.
namespace PdfTools {

/// The output of a tool on a file.
QString run(const QString& tool, const QStringList& arguments);

/// The text layer in the order in which it was painted, page by page.
QStringList pageTexts(const QString& path);

/// A word of the text layer; positions in points from the upper left corner of the sheet.
struct Word {
    QString text;
    QRectF box;
    int page = 0;
};
QList<Word> words(const QString& path);

/// The value of a line of pdfinfo, such as "Pages".
QString info(const QString& path, const QString& key);

/// The pages as pictures; none when they could not be drawn.
QList<QImage> pictures(const QString& path, int dotsPerInch);

/// Without any white space, ideographic blanks included.
QString withoutBlanks(const QString& text);

} // namespace PdfTools
