#include "services/documents/DocumentPdf.h"

#include "core/SafeFile.h"
#include "services/documents/DocumentFont.h"
#include "services/documents/DocumentLayout.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace DocumentPdf {

namespace {

constexpr int dotsPerInch = 300;
constexpr qreal dotsPerMm = dotsPerInch / 25.4;
constexpr qreal marginMm = 25;
constexpr qreal footHeight = 8 * dotsPerMm;
constexpr qreal footPointSize = 7.5;

QPageLayout pageLayout()
{
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(marginMm, marginMm, marginMm, marginMm), QPageLayout::Millimeter);
}

void paintFooter(QPainter& painter, const QSizeF& sheet, int page, int pages)
{
    painter.setFont(DocumentFont::sized(footPointSize));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(0, sheet.height() - footHeight, sheet.width(), footHeight),
        Qt::AlignHCenter | Qt::AlignBottom,
        u"本文书由 Brixa本地生成，第 %1 页 / 共 %2 页"_s.arg(
            QString::number(page), QString::number(pages)));
}

// The last line of a PDF, a comment: it tells which text the file shows, and stands there only as
// long as nobody has added a signature or a note.
QByteArray identityOf(const QString& html)
{
    return "%sha256:" + QCryptographicHash::hash(html.toUtf8(), QCryptographicHash::Sha256).toHex()
        + '\n';
}

// The numbers, from 0, of the pages in the order in which they leave the printer.
QList<int> pagesToPrint(const QPrinter& printer, int count)
{
    QList<int> pages;
    const QPageRanges ranges = printer.pageRanges();
    for (int page = 0; page < count; ++page) {
        if (ranges.isEmpty() || ranges.contains(page + 1))
            pages += page;
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(pages.begin(), pages.end());
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    QList<int> all;
    if (printer.collateCopies()) {
        for (int copy = 0; copy < copies; ++copy)
            all += pages;
    } else {
        for (const int page : pages)
            all += QList<int>(copies, page);
    }
    return all;
}

} // namespace

QByteArray render(const QString& html, const QString& title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QPdfWriter writer(&buffer);
    writer.setResolution(dotsPerInch);
    writer.setCreator(u"Brixa"_s);
    writer.setTitle(title);
    writer.setPageLayout(pageLayout());
    QPainter painter;
    if (!buffer.open(QIODevice::WriteOnly) || !painter.begin(&writer))
        return {};
    const QSizeF sheet = writer.pageLayout().paintRect(QPageLayout::Millimeter).size() * dotsPerMm;
    const DocumentLayout layout(html, painter.device(), sheet, footHeight);
    for (int page = 0; page < layout.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        layout.paint(painter, page);
        paintFooter(painter, sheet, page + 1, layout.pageCount());
    }
    return painter.end() ? bytes + identityOf(html) : QByteArray();
}

bool exportPdf(const QString& html, const QString& path, QString* error)
{
    if (!ensureFolderOf(path, error))
        return false;
    // Painted in memory first: a painter says nothing when the disk is full.
    const QByteArray bytes = render(html, titleOf(path));
    if (!bytes.isEmpty() && SafeFile::write(path, bytes))
        return true;
    if (error)
        *error = cannotWrite(path);
    return false;
}

bool isOf(const QString& path, const QString& html)
{
    const QByteArray mark = identityOf(html);
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
        && file.seek(std::max<qint64>(0, file.size() - mark.size()))
        && file.read(mark.size()) == mark;
}

bool isUntouched(const QString& path)
{
    static const QRegularExpression lastLine(u"%sha256:[0-9a-f]{64}\\n\\z"_s);
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
        && lastLine.match(QString::fromLatin1(file.readAll().right(identityOf({}).size())))
               .hasMatch();
}

QString titleOf(const QString& path)
{
    return QFileInfo(path).completeBaseName();
}

bool ensureFolderOf(const QString& path, QString* error)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (QDir().mkpath(folder))
        return true;
    if (error)
        *error = u"无法创建导出目录：%1"_s.arg(folder);
    return false;
}

QString cannotWrite(const QString& path)
{
    return u"无法打开 PDF 输出文件：%1"_s.arg(path);
}

void printHtml(const QString& html, QWidget* parent, const QString& title)
{
    QPrinter printer(QPrinter::PrinterResolution);
    usePageLayout(printer);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(title);
    if (dialog.exec() == QDialog::Accepted)
        print(html, printer);
}

void usePageLayout(QPrinter& printer)
{
    printer.setPageLayout(pageLayout());
}

bool print(const QString& html, QPrinter& printer)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    // Laid out in the dots of the PDF and enlarged to those of the printer: at its own resolution
    // the letters would round to other widths, and lines and pages would break elsewhere.
    QBuffer unused;
    QPdfWriter device(&unused);
    device.setResolution(dotsPerInch);
    const QSizeF sheet = printer.pageRect(QPrinter::Millimeter).size() * dotsPerMm;
    const DocumentLayout layout(html, &device, sheet, footHeight);
    painter.scale(static_cast<qreal>(printer.logicalDpiX()) / dotsPerInch,
        static_cast<qreal>(printer.logicalDpiY()) / dotsPerInch);
    bool first = true;
    for (const int page : pagesToPrint(printer, layout.pageCount())) {
        if (!first && !printer.newPage())
            return false;
        first = false;
        layout.paint(painter, page);
    }
    return painter.end();
}

} // namespace DocumentPdf
