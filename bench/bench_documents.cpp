// A document of three sheets as PDF, beside the same HTML through plain Qt layout and PDF writing.
// Ours adds the cutting into sheets, the column widths and the footers.

#include "services/documents/DocumentFont.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentRules.h"
#include "services/documents/DocumentTemplates.h"
#include "services/documents/DocumentTexts.h"
#include "support/BenchRun.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int dotsPerInch = 300;

CompanyProfile company()
{
    CompanyProfile profile;
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.creditCode = u"91350100M000100Y43"_s;
    profile.shareholderName = u"林岚"_s;
    return profile;
}

QString annualDecision()
{
    AnnualDecisionInput input { .year = 2025,
        .items = DocumentTexts::annualReportItems(2025),
        .decisionDate = QDate(2026, 3, 31) };
    for (int i = 0; i < 26; ++i)
        input.items += DocumentTexts::otherItem(
            u"同意公司与股东之间的资金往来逐笔出具书面决定，并随附银行回单、合同和发票归档备查。"_s);
    DocumentRecord record = DocumentRules::draft(input);
    record.docNo = u"KYR-ND-2025-0001"_s;
    return DocumentTemplates::compose(company(), record);
}

QString fundDecision()
{
    DocumentRecord record = DocumentRules::draft(FundDecisionInput { .direction = Direction::Out,
        .fundNature = u"备用金"_s,
        .transactionIds = { 1 },
        .decisionDate = QDate(2025, 6, 30) });
    record.docNo = u"KYR-FD-2025-0001"_s;
    QList<Transaction> entries;
    for (int i = 0; i < 30; ++i)
        entries += Transaction { .transDate = QDate(2025, 1, 1).addDays(i),
            .summary = u"借支差旅备用金"_s,
            .direction = Direction::Out,
            .amountFen = 1'234'567,
            .counterpartyName = u"林岚"_s,
            .category = Category::ShareholderOut };
    return DocumentTemplates::compose(company(), record, entries);
}

QByteArray plainPdf(const QString& html)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(25, 25, 25, 25), QPageLayout::Millimeter));
    QTextDocument document;
    document.setDefaultFont(DocumentFont::text());
    document.setHtml(html);
    QPainter painter(&writer);
    document.documentLayout()->setPaintDevice(&writer);
    const QSizeF sheet = writer.pageLayout().paintRectPixels(dotsPerInch).size();
    document.setPageSize(sheet);
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        painter.save();
        painter.translate(0, -page * sheet.height());
        document.drawContents(
            &painter, QRectF(0, page * sheet.height(), sheet.width(), sheet.height()));
        painter.restore();
    }
    painter.end();
    return bytes;
}

void plainAnnual(benchmark::State& state)
{
    const QString html = annualDecision();
    for (auto _ : state)
        benchmark::DoNotOptimize(plainPdf(html));
}

void oursAnnual(benchmark::State& state)
{
    const QString html = annualDecision();
    for (auto _ : state)
        benchmark::DoNotOptimize(DocumentPdf::render(html, u"KYR-ND-2025-0001"_s));
}

void plainFund(benchmark::State& state)
{
    const QString html = fundDecision();
    for (auto _ : state)
        benchmark::DoNotOptimize(plainPdf(html));
}

void oursFund(benchmark::State& state)
{
    const QString html = fundDecision();
    for (auto _ : state)
        benchmark::DoNotOptimize(DocumentPdf::render(html, u"KYR-FD-2025-0001"_s));
}

BENCHMARK(plainAnnual)->Unit(benchmark::kMillisecond);
BENCHMARK(oursAnnual)->Unit(benchmark::kMillisecond);
BENCHMARK(plainFund)->Unit(benchmark::kMillisecond);
BENCHMARK(oursFund)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    return BenchRun::runAll(argc, argv);
}
