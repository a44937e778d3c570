#include "figures_pages/ShownFigures.h"
#include "pages/reports/FigureTableView.h"
#include "pages/reports/ReportPage.h"
#include "services/figures/Trend.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "widgets/Banner.h"
#include "widgets/charts/BarChart.h"
#include "widgets/charts/HBarChart.h"
#include "widgets/charts/ShareBar.h"
#include "widgets/SegmentedControl.h"

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

using enum Category;

enum Segment { LastYear = 4, All, Custom };

struct Shown : ShownFigures<ReportPage> {
    void choose(Segment segment) const
    {
        page.findChild<SegmentedControl*>()->setCurrentIndex(segment);
    }
    void setDays(const QString& from, const QString& to) const
    {
        choose(Custom);
        page.findChild<QLineEdit*>(u"dateFrom"_s)->setText(from);
        page.findChild<QLineEdit*>(u"dateTo"_s)->setText(to);
    }

    FigureTableView* table(const QString& name) const
    {
        return page.findChild<FigureTableView*>(name);
    }

    /// The rows of a table, cells joined by commas, amounts without their grouping.
    QStringList rows(const QString& name) const
    {
        const QAbstractItemModel* model = table(name)->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells += model->index(row, column).data().toString().remove(u',');
            rows += cells.join(u',');
        }
        return rows;
    }

    NavParams lastParams() { return asked.takeLast().at(1).value<NavParams>(); }
};

QString thisYear(const QString& day)
{
    return QString::number(QDate::currentDate().year()) + day;
}

} // namespace

class TestReportPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        TestLedger::add(
            TestLedger::entry(thisYear(u"-01-01"_s), BusinessIncome, Direction::In, 123'456'789));
        TestLedger::add(TestLedger::entry(thisYear(u"-01-01"_s), TaxFee, Direction::Out, 100'000));
        TestLedger::add(TestLedger::entry(u"2020-05-06"_s, Salary, Direction::Out, 900'000));
        RiskService().reevaluateAll();
    }

    void thisYearIsShownFirst()
    {
        Shown shown;
        QCOMPARE(shown.rows(u"categoryTable"_s),
            (QStringList { u"经营收入,1,1234567.89,0.00,1234567.89"_s,
                u"税费缴纳,1,0.00,1000.00,-1000.00"_s,
                u"合计,2,1234567.89,1000.00,1233567.89"_s }));
        QCOMPARE(shown.card(u"收入"_s)->value(), u"1,234,567.89 元"_s);
        QCOMPARE(shown.card(u"收入"_s)->foot(), u"较上期 —　同比 —"_s);
        QCOMPARE(shown.rows(u"accountTable"_s).size(), 3);
        QCOMPARE(shown.rows(u"riskTable"_s).size(), 4);
        shown.choose(All);
        QCOMPARE(shown.rows(u"categoryTable"_s).size(), 4);
        // An open range shows the time from the first entry to the last.
        QCOMPARE(
            shown.page.findChild<BarChart*>()->itemCount(), QDate::currentDate().year() - 2019);
        QCOMPARE(shown.card(u"笔数"_s)->foot(), u"时间范围没有起止日期，不作比较"_s);
        shown.choose(LastYear);
        QCOMPARE(shown.rows(u"categoryTable"_s), QStringList { u"合计,0,0.00,0.00,0.00"_s });
        ModalAnswerer answers(u"确定"_s);
        shown.page.onExport();
        QVERIFY(answers.seen().first().text.contains(u"当前时间范围内没有可导出的数据"_s));
    }

    void aRangeThatIsNoneIsToldAndNotQueried_data()
    {
        addColumns<QString, QString, QString>("from", "to", "problem");
        addCase("inverted", u"2020-06-01"_s, u"2020-05-01"_s,
            u"开始日期晚于结束日期，请调整后再查询。"_s);
        addCase("no day", u"2020-13-01"_s, u"2020-05-01"_s,
            u"开始日期不是有效日期，请按 2025-02-03 的格式填写，或留空表示不限。"_s);
    }

    void aRangeThatIsNoneIsToldAndNotQueried()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, problem);
        Shown shown;
        shown.setDays(from, to);
        auto* banner = shown.page.findChild<Banner*>(u"rangeProblem"_s);
        QVERIFY(banner->isVisible());
        QCOMPARE(banner->text(), problem);
        QVERIFY(!shown.table(u"categoryTable"_s)->isVisible());
        {
            ModalAnswerer answers(u"确定"_s);
            shown.page.onExport();
            QVERIFY(answers.seen().first().text.contains(problem));
        }
        shown.setDays(u"2020-05-01"_s, u"2020-05-31"_s);
        QVERIFY(!banner->isVisible());
        QCOMPARE(shown.rows(u"categoryTable"_s).first(), u"工资薪酬,1,0.00,9000.00,-9000.00"_s);
    }

    void itemsOpenJustTheirEntries()
    {
        Shown shown;
        shown.setDays(u"2020-05-01"_s, u"2020-05-31"_s);
        NavParams days { { u"dateFrom"_s, QDate(2020, 5, 1) },
            { u"dateTo"_s, QDate(2020, 5, 31) } };
        const auto with = [&](const QString& key, const QString& code) {
            NavParams params = days;
            params.insert(key, code);
            return params;
        };
        emit shown.page.findChild<HBarChart*>()->activated(0);
        QCOMPARE(shown.lastParams(), with(u"category"_s, u"salary"_s));
        emit shown.page.findChild<ShareBar*>()->activated(1);
        QCOMPARE(shown.lastParams(), with(u"risk"_s, u"medium"_s));
        FigureTableView* categories = shown.table(u"categoryTable"_s);
        categories->setCurrentIndex(categories->model()->index(1, 0));
        QTest::keyClick(categories, Qt::Key_Return);
        QCOMPARE(shown.lastParams(), days); // the total
        shown.setDays(u""_s, u""_s);
        emit shown.page.findChild<ShareBar*>()->activated(0);
        QCOMPARE(shown.lastParams(), (NavParams { { u"risk"_s, u"high"_s } }));
    }

    void theFileHoldsTheFiguresOfTheTables()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"报表.csv"_s);
        Shown shown;
        shown.choose(All);
        ModalAnswerer answers(Hands::choosePath(path));
        answers.expectButton(u"暂不打开"_s);
        shown.page.onExport();
        QCOMPARE(answers.seen()[0].title, u"导出统计报表 CSV"_s);
        QCOMPARE(answers.seen()[1].title, u"导出完成"_s);
        QVERIFY(answers.seen()[1].text.contains(u"统计报表已导出，是否打开所在文件夹？"_s));
        const QString csv = QString::fromUtf8(TestFile::bytesOf(path));
        for (const QString& name : { u"categoryTable"_s, u"riskTable"_s })
            QVERIFY2(
                csv.contains(shown.rows(name).join(u"\r\n"_s) + u"\r\n"_s), qUtf8Printable(csv));
    }

    void paperCarriesTheFiguresOfTheTables()
    {
        const auto report = Report::read({}, QDate::currentDate());
        QVERIFY(report);
        QTextDocument paper;
        paper.setHtml(ReportTexts::html(*report, u"拾光 & <b>设计</b> %1"_s));
        const QString text = paper.toPlainText();
        QVERIFY(text.contains(u"拾光 & <b>设计</b> %1"_s));
        for (const QString& figure : { u"1,234,567.89"_s, u"1,224,567.89"_s, u"工资薪酬"_s })
            QVERIFY(text.contains(figure));
    }

    void whatCannotBeReadShowsNoFigures()
    {
        Shown shown;
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO gone"_s }), u""_s);
        const auto loud = qInstallMessageHandler([](auto, auto&, auto&) {});
        shown.page.refresh();
        qInstallMessageHandler(loud);
        QVERIFY(shown.page.findChild<Banner*>(u"unreadable"_s)->isVisible());
        QVERIFY(!shown.card(u"收入"_s)->isVisible());
    }

    void longRangesGoByYears()
    {
        QList<LedgerStatistics::MonthFigures> months;
        for (QDate month(2020, 1, 1); month < QDate(2023, 2, 1); month = month.addMonths(1))
            months += { month, 100, 30 };
        const DateRange range { QDate(2020, 1, 15), QDate(2023, 1, 20) };
        const auto years = Trend::stepsOf(months, range);
        QCOMPARE(years.size(), 4);
        QCOMPARE(years.first().title, u"2020年"_s);
        QCOMPARE(years.first().netFen(), qint64 { 840 });
        QCOMPARE(years.first().range, (DateRange { range.from, QDate(2020, 12, 31) }));
        QCOMPARE(years.last().range, (DateRange { QDate(2023, 1, 1), range.to }));
        const auto steps = Trend::stepsOf(months.mid(1), {});
        QCOMPARE(steps.size(), Trend::mostMonths);
        QCOMPARE(steps.first().title, u"2020年2月"_s);
        QCOMPARE(steps.first().range, (DateRange { QDate(2020, 2, 1), QDate(2020, 2, 29) }));
    }
};

static const RegisteredTest<TestReportPage> registered;
#include "TestReportPage.moc"
