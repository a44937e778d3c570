#include "core/AppPaths.h"
#include "services/documents/DocumentPdf.h"
#include "services/DocumentSamples.h"
#include "support/FileSizeLimit.h"
#include "support/PdfTools.h"
#include "support/TestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTextDocument>

#include <limits>

using namespace Qt::StringLiterals;
using DocumentSamples::fundHtml;
using PdfTools::withoutBlanks;

namespace {

const QRegularExpression footer(u"本文书由Brixa本地生成，第(\\d+)页/共(\\d+)页"_s);

const QString columnNames = u"序号日期摘要本方账户对方名称金额（元）资金分类"_s;

QString pdfPath()
{
    return AppPaths::exportsDir() + u"/KYR-FD-2025-0001_文书.v1.pdf"_s;
}

// Writes the document; the reason when it could not be written.
QString exported(const QString& html)
{
    QString error;
    return DocumentPdf::exportPdf(html, pdfPath(), &error) ? QString() : error;
}

QString composedText(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    return withoutBlanks(document.toPlainText());
}

// The text layer without the footers and what a sheet repeats of the table that it continues.
QString readText()
{
    QString text;
    for (const QString& page : PdfTools::pageTexts(pdfPath())) {
        const QString read = withoutBlanks(page);
        text += text.contains(columnNames) && read.startsWith(columnNames)
            ? read.sliced(columnNames.size())
            : read;
    }
    return text.remove(footer);
}

// The rows of a picture that hold a line from edge to edge of the table.
QList<int> linesAcross(const QImage& page)
{
    QList<int> lines;
    for (int y = 0; y < page.height(); ++y) {
        int dark = 0;
        for (int x = 0; x < page.width(); ++x)
            dark += qGray(page.pixel(x, y)) < 128;
        if (dark > page.width() * 0.7)
            lines += y;
    }
    return lines;
}

} // namespace

class TestDocumentPdf final : public TestCase {
    Q_OBJECT

private slots:
    void theTextLayerIsTheComposedText_data()
    {
        addColumns<QString>("html");
        addCase("annual decision", DocumentSamples::annualHtml());
        addCase("fund decision of three entries", fundHtml(3));
        addCase("fund decision over many sheets", fundHtml(60));
        addCase("lines over many sheets",
            DocumentSamples::annualHtml(QStringList(120, u"股东决定增加一项内部管理制度。"_s)));
        addCase("independence statement", DocumentSamples::independenceHtml());
        addCase("markup and signs",
            DocumentSamples::annualHtml(
                { u"<b>100%</b> &amp; \"A4\" %1 C3PO 2025年；"_s, u"第一行\r\n第二行"_s }));
        addCase("rare names", DocumentSamples::annualHtml({ u"龢堃喆犇镕瓛翀燊赟"_s }));
    }

    void theTextLayerIsTheComposedText()
    {
        QFETCH(QString, html);
        QCOMPARE(exported(html), QString());
        QCOMPARE(readText(), composedText(html));
    }

    void everyCommonCharacterIsReadBack_data()
    {
        addColumns<int, int>("first", "last");
        constexpr int step = 0x800;
        for (int first = 0x4E00; first <= 0x9FA5; first += step)
            QTest::addRow("from U+%X", first) << first << qMin(first + step - 1, 0x9FA5);
    }

    void everyCommonCharacterIsReadBack()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QString all;
        for (int c = first; c <= last; ++c)
            all += QChar(c);
        for (char16_t c = 0x21; c < 0x7F; ++c)
            all += QChar(c) + u"中A"_s;
        QCOMPARE(exported(u"<p>"_s + all.toHtmlEscaped() + u"</p>"_s), QString());
        const QString read = readText();
        const auto different = std::mismatch(all.begin(), all.end(), read.begin(), read.end());
        QCOMPARE(different.second - read.begin(), all.size());
        QCOMPARE(read.size(), all.size());
    }

    void fontsAreEmbedded()
    {
        QCOMPARE(exported(fundHtml(3)), QString());
        QStringList lines
            = PdfTools::run(u"pdffonts"_s, { pdfPath() }).split(u'\n', Qt::SkipEmptyParts);
        QVERIFY2(lines.size() > 2, qUtf8Printable(lines.join(u'\n')));
        for (const QString& line : lines.mid(2)) {
            const QStringList cells = line.simplified().split(u' ');
            // … encoding, embedded, subset, with Unicode, object number and generation.
            QCOMPARE(cells.value(cells.size() - 5), u"yes"_s);
            QCOMPARE(cells.value(cells.size() - 3), u"yes"_s);
        }
    }

    void theFileNamesItself()
    {
        QCOMPARE(exported(fundHtml(1)), QString());
        QCOMPARE(PdfTools::info(pdfPath(), u"Title"_s), u"KYR-FD-2025-0001_文书.v1"_s);
        QCOMPARE(PdfTools::info(pdfPath(), u"Creator"_s), u"Brixa"_s);
    }

    void everySheetIsA4WithItsFooter_data()
    {
        addColumns<QString, int>("html", "sheets");
        addCase("one sheet", DocumentSamples::independenceHtml(), 1);
        addCase("three sheets", fundHtml(25), 3);
        addCase("thirty sheets", fundHtml(390), 31);
        addCase("an empty document", QString(), 1);
    }

    void everySheetIsA4WithItsFooter()
    {
        QFETCH(QString, html);
        QFETCH(int, sheets);
        QCOMPARE(exported(html), QString());
        QCOMPARE(PdfTools::info(pdfPath(), u"Page size"_s), u"595 x 842 pts (A4)"_s);
        const QStringList pages = PdfTools::pageTexts(pdfPath());
        const auto count = QString::number(pages.size());
        QCOMPARE(PdfTools::info(pdfPath(), u"Pages"_s), count);
        QCOMPARE(pages.size(), sheets);
        for (qsizetype i = 0; i < pages.size(); ++i) {
            const auto match = footer.match(withoutBlanks(pages.at(i)));
            QVERIFY2(match.hasMatch(), qUtf8Printable(pages.at(i)));
            QCOMPARE(match.captured(1), QString::number(i + 1));
            QCOMPARE(match.captured(2), count);
        }
    }

    void nothingLeavesItsPlace_data()
    {
        addColumns<QString>("html");
        addCase("a long table", fundHtml(60));
        addCase("many lines",
            DocumentSamples::annualHtml(QStringList(120, u"股东决定增加一项内部管理制度。"_s)));
        QList<Transaction> wide { DocumentSamples::entry(0), DocumentSamples::entry(1) };
        wide[0].summary = QString(90, u'W');
        wide[0].counterpartyName = QString(40, u'W');
        wide[0].amountFen = std::numeric_limits<qint64>::max() / 2;
        wide[1].summary = QString(200, u'摘');
        addCase("words wider than their column", DocumentSamples::fundHtml(wide));
        wide[1].summary = QString(3000, u'摘');
        addCase("a row taller than a sheet", DocumentSamples::fundHtml(wide));
    }

    void nothingLeavesItsPlace()
    {
        QFETCH(QString, html);
        QCOMPARE(exported(html), QString());
        const QList<PdfTools::Word> words = PdfTools::words(pdfPath());
        QVERIFY(words.size() > 100);
        constexpr double pointsPerMm = 72 / 25.4;
        constexpr double band = (297 - 25 - 8) * pointsPerMm;
        constexpr double foot = (297 - 25) * pointsPerMm;
        int inBand = 0;
        for (const PdfTools::Word& word : words) {
            const bool isFooter = word.box.top() > band - 1;
            inBand += isFooter;
            QVERIFY2(
                word.box.bottom() <= (isFooter ? foot + 1 : band + 0.5), qUtf8Printable(word.text));
            QVERIFY2(word.box.left() >= 25 * pointsPerMm - 1, qUtf8Printable(word.text));
            QVERIFY2(word.box.right() <= (210 - 25) * pointsPerMm + 1, qUtf8Printable(word.text));
        }
        // "本文书由 Brixa本地生成，第 1 页 / 共 3 页" is eight words.
        QCOMPARE(inBand, 8 * PdfTools::info(pdfPath(), u"Pages"_s).toInt());
    }

    void theDateLineKeepsItsBlanks()
    {
        QCOMPARE(exported(DocumentSamples::independenceHtml()), QString());
        QMap<QString, QRectF> boxes;
        for (const PdfTools::Word& word : PdfTools::words(pdfPath())) {
            if (word.text == u"年"_s || word.text == u"月"_s || word.text == u"日"_s
                || word.text == u"日期："_s)
                boxes.insert(word.text, word.box);
        }
        QCOMPARE(boxes.size(), 4);
        const auto gap = [&boxes](const QString& from, const QString& to) {
            return qRound((boxes.value(to).left() - boxes.value(from).right()) / 10.5);
        };
        QCOMPARE(gap(u"日期："_s, u"年"_s), 4);
        QCOMPARE(gap(u"年"_s, u"月"_s), 2);
        QCOMPARE(gap(u"月"_s, u"日"_s), 2);
    }

    void tableRowsAreNotTornApart()
    {
        QCOMPARE(exported(fundHtml(60)), QString());
        const QRegularExpression date(u"2025-\\d\\d-\\d\\d(?=备|借|归)"_s);
        int entries = 0;
        for (const QString& page : PdfTools::pageTexts(pdfPath())) {
            const QString text = withoutBlanks(page);
            const auto begun = text.count(date);
            // Whoever reads a sheet sees what its columns are.
            QCOMPARE(text.count(columnNames), begun > 0 ? 1 : 0);
            QCOMPARE(text.count(u"公司转付股东（借款/备用金/分红等）"_s), begun);
            entries += static_cast<int>(begun);
        }
        QCOMPARE(entries, 60);
    }

    void everyPartOfTheTableIsClosedByLines()
    {
        QCOMPARE(exported(fundHtml(60)), QString());
        const QList<QImage> pages = PdfTools::pictures(pdfPath(), 150);
        QVERIFY(pages.size() >= 3);
        // A sheet in the middle shows only rows: a line above the first and one below the last.
        const QList<int> lines = linesAcross(pages.at(1));
        QVERIFY2(lines.size() > 10, "the rows are ruled");
        const int pageTop = qRound(25 / 25.4 * 150);
        QVERIFY2(qAbs(lines.first() - pageTop) <= 3, qPrintable(QString::number(lines.first())));
        for (int y = lines.last() + 3; y < qRound((297 - 25 - 8) / 25.4 * 150); ++y) {
            for (int x = 0; x < pages.at(1).width(); ++x)
                QVERIFY2(qGray(pages.at(1).pixel(x, y)) > 128, "ink below the last line");
        }
    }

    void theSignatureNeverStandsAlone()
    {
        // Whatever the length, the last sheet holds the sentence that is signed.
        for (int count = 8; count < 24; ++count) {
            QCOMPARE(exported(fundHtml(count)), QString());
            QCOMPARE(readText(), composedText(fundHtml(count)));
            const QString last = withoutBlanks(PdfTools::pageTexts(pdfPath()).last());
            QVERIFY2(last.contains(u"签名后置备于公司。"_s), qUtf8Printable(last));
            QVERIFY2(last.contains(u"股东（签名）"_s) && last.contains(u"（盖章处）"_s),
                qUtf8Printable(last));
        }
    }

    void requestedPageBreaksAreKept()
    {
        const QString html = u"<p>甲</p><p style=\"page-break-before:always\">乙</p>"
                             "<p style=\"page-break-after:always\">丙</p><p>丁</p>"_s;
        QCOMPARE(exported(html), QString());
        QStringList pages;
        for (const QString& page : PdfTools::pageTexts(pdfPath()))
            pages += withoutBlanks(page).remove(footer);
        QCOMPARE(pages.join(u'|'), u"甲|乙丙|丁"_s);
    }

    void aDarkThemeStillPrintsBlack()
    {
        const QString html = DocumentSamples::annualHtml();
        QCOMPARE(exported(html), QString());
        const QList<QImage> light = PdfTools::pictures(pdfPath(), 60);
        const QPalette before = QApplication::palette();
        QPalette dark(Qt::white, Qt::black);
        dark.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(dark);
        const QString error = exported(html);
        QApplication::setPalette(before);
        QCOMPARE(error, QString());
        QVERIFY(!light.isEmpty());
        QVERIFY(light == PdfTools::pictures(pdfPath(), 60));
    }

    void aFullDiskKeepsTheOldFile()
    {
        QCOMPARE(exported(fundHtml(1)), QString());
        const QByteArray before = TestFile::bytesOf(pdfPath());
        QString error;
        {
            const FileSizeLimit fullDisk(4096);
            error = exported(fundHtml(2));
        }
        QCOMPARE(error, u"无法打开 PDF 输出文件："_s + pdfPath());
        QCOMPARE(TestFile::bytesOf(pdfPath()), before);
        QCOMPARE(exported(fundHtml(2)), QString());
    }
};

static const RegisteredTest<TestDocumentPdf> registered;

#include "TestDocumentPdf.moc"
