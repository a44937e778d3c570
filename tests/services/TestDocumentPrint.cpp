#include "core/AppPaths.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/PageBreaks.h"
#include "services/DocumentSamples.h"
#include "support/ModalAnswerer.h"
#include "support/PdfTools.h"
#include "support/TestCase.h"
#include "support/Warnings.h"

#include <QDir>
#include <QPageRanges>
#include <QPrinter>

using namespace Qt::StringLiterals;
using PageBreaks::Gap;

Q_DECLARE_METATYPE(PageBreaks::Gap)

namespace {

QString printedPath()
{
    return AppPaths::exportsDir() + u"/printed.pdf"_s;
}

void usePdfPrinter(QPrinter& printer)
{
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(printedPath());
    DocumentPdf::usePageLayout(printer);
}

// The page without the band of the footer.
QImage body(const QImage& page)
{
    return page.copy(0, 0, page.width(), static_cast<int>(page.height() * (297 - 25 - 8) / 297.0));
}

// The share of the dots that differ visibly.
double difference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 1;
    qint64 different = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            different += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 96;
    }
    return static_cast<double>(different) / (static_cast<double>(a.width()) * a.height());
}

QStringList printedPages()
{
    QStringList pages;
    for (const QString& page : PdfTools::pageTexts(printedPath()))
        pages += PdfTools::withoutBlanks(page);
    return pages;
}

QString threePages()
{
    return u"<p>甲</p><p style=\"page-break-before:always\">乙</p>"
           "<p style=\"page-break-before:always\">丙</p>"_s;
}

} // namespace

class TestDocumentPrint final : public TestCase {
    Q_OBJECT

private slots:
    void aPrintedSheetLooksLikeThePdf_data()
    {
        addColumns<int>("resolution");
        addCase("as the system sets it", 0);
        addCase("a laser printer", 600);
        addCase("a fine printer", 1200);
    }

    void aPrintedSheetLooksLikeThePdf()
    {
        QFETCH(int, resolution);
        const QString html = DocumentSamples::fundHtml(45);
        const QString path = AppPaths::exportsDir() + u"/a.pdf"_s;
        QVERIFY(DocumentPdf::exportPdf(html, path, nullptr));
        {
            QPrinter printer(QPrinter::PrinterResolution);
            usePdfPrinter(printer);
            if (resolution)
                printer.setResolution(resolution);
            QVERIFY(DocumentPdf::print(html, printer));
        }
        const QList<QImage> pdf = PdfTools::pictures(path, 100);
        const QList<QImage> printed = PdfTools::pictures(printedPath(), 100);
        QVERIFY(pdf.size() >= 3);
        QCOMPARE(printed.size(), pdf.size());
        for (qsizetype i = 0; i < pdf.size(); ++i) {
            const double differing = difference(body(pdf.at(i)), body(printed.at(i)));
            // Roundings at the edges of letters; a sheet that is moved by a line differs by 0.08.
            QVERIFY2(differing < 0.004, qPrintable(QString::number(differing)));
        }
        QVERIFY2(!printedPages().join(QString()).contains(u"本地生成"_s), "no footer on paper");
    }

    void pagesAndTheirOrderAreThePrinters_data()
    {
        addColumns<QString, QPrinter::PageOrder, QString>("range", "order", "pages");
        addCase("chosen pages only", u"1,3"_s, QPrinter::FirstPageFirst, u"甲|丙"_s);
        addCase("last page first", QString(), QPrinter::LastPageFirst, u"丙|乙|甲"_s);
    }

    void pagesAndTheirOrderAreThePrinters()
    {
        QFETCH(QString, range);
        QFETCH(QPrinter::PageOrder, order);
        {
            QPrinter printer(QPrinter::PrinterResolution);
            usePdfPrinter(printer);
            printer.setPageRanges(QPageRanges::fromString(range));
            printer.setPageOrder(order);
            QVERIFY(DocumentPdf::print(threePages(), printer));
        }
        QTEST(printedPages().join(u'|'), "pages");
    }

    void aPrinterThatTakesNoJobIsAFailure()
    {
        QPrinter printer(QPrinter::PrinterResolution);
        usePdfPrinter(printer);
        printer.setOutputFileName(AppPaths::exportsDir());
        expectWarnings({ u".*(QPdf|QPainter|print)"_s });
        QVERIFY(!DocumentPdf::print(threePages(), printer));
    }

    void decliningPrintsNothing()
    {
        const QStringList before = QDir::home().entryList(QDir::Files);
        const ModalAnswerer answerer([](QDialog* dialog) { dialog->reject(); });
        DocumentPdf::printHtml(threePages(), nullptr);
        QCOMPARE(answerer.seen().value(0).title, u"打印文书"_s);
        QCOMPARE(QDir::home().entryList(QDir::Files), before);
        QCOMPARE(QDir(AppPaths::exportsDir()).entryList(QDir::Files).size(), 0);
    }

    void sheetsAreCutAtGaps_data()
    {
        addColumns<QList<Gap>, double, QString>("gaps", "bottom", "sheets");
        const auto row = [](const char* name, const QList<Gap>& gaps, double bottom,
                             const QString& sheets) { addCase(name, gaps, bottom, sheets); };
        using enum Gap::Kind;
        const QList<Gap> even { { 40, 42, Free }, { 80, 82, Free }, { 120, 122, Free } };
        row("all on one sheet", even, 100, u"0-100"_s);
        row("as full as it gets", even, 150, u"0-80 82-150"_s);
        row("forced though all fits", { { 40, 42, Forced } }, 90, u"0-40 42-90"_s);
        row("the first forced gap counts",
            { { 20, 20, Forced }, { 40, 40, Forced }, { 90, 90, Free } }, 120,
            u"0-20 20-40 40-120"_s);
        row("what belongs together stays together", { { 40, 40, Free }, { 90, 90, Last } }, 120,
            u"0-40 40-120"_s);
        row("a row is torn last of all", { { 30, 30, Last }, { 90, 90, Torn } }, 120,
            u"0-30 30-120"_s);
        row("parted when nothing better fits", { { 30, 30, Last }, { 90, 90, Last } }, 120,
            u"0-90 90-120"_s);
        row("a gap that ends at the limit", { { 100, 103, Free } }, 150, u"0-100 103-150"_s);
        // The head of 20 leaves 80 of a sheet to the rows.
        constexpr PageBreaks::Strip head { 0, 20 };
        row("a head stands above the rows that follow",
            { { 90, 90, Free, head }, { 160, 160, Free, head }, { 180, 180, Free } }, 190,
            u"0-90 (0-20)90-160 (0-20)160-190"_s);
        row("and above nothing else", { { 90, 90, Free, head }, { 150, 150, Free } }, 240,
            u"0-90 (0-20)90-150 150-240"_s);
        row("a tall head is not repeated", { { 90, 90, Free, { 0, 60 } } }, 150, u"0-90 90-150"_s);
    }

    void sheetsAreCutAtGaps()
    {
        QFETCH(QList<Gap>, gaps);
        QFETCH(double, bottom);
        QStringList sheets;
        const auto text = [](const PageBreaks::Strip& strip) {
            return u"%1-%2"_s.arg(QString::number(strip.top), QString::number(strip.bottom));
        };
        for (const auto& [content, head] : PageBreaks::cut(gaps, 0, bottom, 100))
            sheets
                += (head.height() > 0 ? u"("_s + text(head) + u")"_s : QString()) + text(content);
        QTEST(sheets.join(u' '), "sheets");
    }

    void tallPiecesAreCutThrough()
    {
        QCOMPARE(PageBreaks::cut({}, 0, 250, 100).size(), 3);
        QCOMPARE(PageBreaks::cut({}, 0, 250, 0).size(), 1);
        QCOMPARE(PageBreaks::cut({}, 0, 0, 100).size(), 1);
    }
};

static const RegisteredTest<TestDocumentPrint> registered;

#include "TestDocumentPrint.moc"
