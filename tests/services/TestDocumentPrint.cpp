#include "core/AppPaths.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/PageBreaks.h"
#include "services/DocumentSamples.h"
#include "support/PdfTools.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPageRanges>
#include <QPrinter>
#include <QTimer>

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
        QTest::addColumn<int>("resolution");
        QTest::newRow("as the system sets it") << 0;
        QTest::newRow("a laser printer") << 600;
        QTest::newRow("a fine printer") << 1200;
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
            QVERIFY2(differing < 0.002, qPrintable(QString::number(differing)));
        }
        QVERIFY2(!printedPages().join(QString()).contains(u"本地生成"_s), "no footer on paper");
    }

    void thePrinterGetsThePageOfDocuments()
    {
        QPrinter printer(QPrinter::PrinterResolution);
        usePdfPrinter(printer);
        const QPageLayout layout = printer.pageLayout();
        QCOMPARE(layout.pageSize().id(), QPageSize::A4);
        QCOMPARE(layout.orientation(), QPageLayout::Portrait);
        QCOMPARE(layout.margins(QPageLayout::Millimeter), QMarginsF(25, 25, 25, 25));
    }

    void chosenPagesOnly()
    {
        {
            QPrinter printer(QPrinter::PrinterResolution);
            usePdfPrinter(printer);
            printer.setPageRanges(QPageRanges::fromString(u"1,3"_s));
            QVERIFY(DocumentPdf::print(threePages(), printer));
        }
        QCOMPARE(printedPages().join(u'|'), u"甲|丙"_s);
    }

    void lastPageFirst()
    {
        {
            QPrinter printer(QPrinter::PrinterResolution);
            usePdfPrinter(printer);
            printer.setPageOrder(QPrinter::LastPageFirst);
            QVERIFY(DocumentPdf::print(threePages(), printer));
        }
        QCOMPARE(printedPages().join(u'|'), u"丙|乙|甲"_s);
    }

    void aPrinterThatTakesNoJobIsAFailure()
    {
        QPrinter printer(QPrinter::PrinterResolution);
        usePdfPrinter(printer);
        printer.setOutputFileName(AppPaths::exportsDir());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"QPdf|QPainter|print"_s));
        QVERIFY(!DocumentPdf::print(threePages(), printer));
    }

    void decliningPrintsNothing()
    {
        const QStringList before = QDir::home().entryList(QDir::Files);
        QString title;
        QTimer::singleShot(0, this, [&title] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            title = dialog->windowTitle();
            dialog->reject();
        });
        DocumentPdf::printHtml(threePages(), nullptr);
        QCOMPARE(title, u"打印文书"_s);
        QCOMPARE(QDir::home().entryList(QDir::Files), before);
        QCOMPARE(QDir(AppPaths::exportsDir()).entryList(QDir::Files).size(), 0);
    }

    void sheetsAreCutAtGaps_data()
    {
        QTest::addColumn<QList<Gap>>("gaps");
        QTest::addColumn<double>("bottom");
        QTest::addColumn<QString>("sheets");
        const QList<Gap> even { { 40, 42, Gap::Free }, { 80, 82, Gap::Free },
            { 120, 122, Gap::Free } };
        QTest::newRow("all on one sheet") << even << 100.0 << u"0-100"_s;
        QTest::newRow("as full as it gets") << even << 150.0 << u"0-80 82-150"_s;
        QTest::newRow("forced though all fits")
            << QList<Gap> { { 40, 42, Gap::Forced } } << 90.0 << u"0-40 42-90"_s;
        QTest::newRow("the first forced gap counts") << QList<Gap> { { 20, 20, Gap::Forced },
            { 40, 40, Gap::Forced }, { 90, 90, Gap::Free } }
                                                     << 120.0 << u"0-20 20-40 40-120"_s;
        QTest::newRow("what belongs together stays together") << QList<Gap> { { 40, 40, Gap::Free },
            { 90, 90, Gap::Last } } << 120.0 << u"0-40 40-120"_s;
        QTest::newRow("a row is torn last of all") << QList<Gap> { { 30, 30, Gap::Last },
            { 90, 90, Gap::Torn } } << 120.0 << u"0-30 30-120"_s;
        QTest::newRow("parted when nothing better fits") << QList<Gap> { { 30, 30, Gap::Last },
            { 90, 90, Gap::Last } } << 120.0 << u"0-90 90-120"_s;
        QTest::newRow("a gap that ends at the limit")
            << QList<Gap> { { 100, 103, Gap::Free } } << 150.0 << u"0-100 103-150"_s;
    }

    void sheetsAreCutAtGaps()
    {
        QFETCH(QList<Gap>, gaps);
        QFETCH(double, bottom);
        QStringList sheets;
        for (const auto& sheet : PageBreaks::cut(gaps, 0, bottom, 100))
            sheets += u"%1-%2"_s.arg(QString::number(sheet.top), QString::number(sheet.bottom));
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
