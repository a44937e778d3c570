#include "support/PdfTools.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace PdfTools {

QString run(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    process.start(tool, arguments);
    if (!process.waitForStarted())
        return tool + u" cannot be started: install poppler-utils"_s;
    if (!process.waitForFinished(120'000) || process.exitCode() != 0)
        return tool + u" failed: "_s + QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput());
}

QStringList pageTexts(const QString& path)
{
    QStringList pages = run(u"pdftotext"_s, { u"-raw"_s, path, u"-"_s }).split(u'\f');
    if (pages.size() > 1)
        pages.removeLast(); // a form feed ends the last page too
    return pages;
}

QList<Word> words(const QString& path)
{
    QList<Word> found;
    QXmlStreamReader xml(run(u"pdftotext"_s, { u"-bbox"_s, path, u"-"_s }));
    int page = -1;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "page"_L1)
            ++page;
        if (xml.name() != "word"_L1)
            continue;
        const QXmlStreamAttributes at = xml.attributes();
        const auto number = [&at](QLatin1StringView name) { return at.value(name).toDouble(); };
        const QRectF box(QPointF(number("xMin"_L1), number("yMin"_L1)),
            QPointF(number("xMax"_L1), number("yMax"_L1)));
        found.append({ xml.readElementText(), box, page });
    }
    return found;
}

QString info(const QString& path, const QString& key)
{
    const QString all = run(u"pdfinfo"_s, { u"-enc"_s, u"UTF-8"_s, path });
    for (const QString& line : all.split(u'\n')) {
        if (line.startsWith(key + u':'))
            return line.sliced(key.size() + 1).trimmed();
    }
    return all;
}

QList<QImage> pictures(const QString& path, int dotsPerInch)
{
    const QTemporaryDir folder;
    const QString problem = run(u"pdftoppm"_s,
        { u"-r"_s, QString::number(dotsPerInch), u"-png"_s, path, folder.filePath(u"page"_s) });
    if (!problem.isEmpty())
        qWarning("%s", qUtf8Printable(problem));
    QList<QImage> pages;
    const QDir drawn(folder.path());
    for (const QString& name : drawn.entryList(QDir::Files, QDir::Name))
        pages += QImage(drawn.filePath(name)).convertToFormat(QImage::Format_Grayscale8);
    return pages;
}

QString withoutBlanks(const QString& text)
{
    QString solid;
    for (const QChar c : text) {
        if (!c.isSpace())
            solid += c;
    }
    return solid;
}

} // namespace PdfTools
