#include "figures_pages/ShownFigures.h"
#include "pages/dashboard/DashboardPage.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "widgets/Banner.h"
#include "widgets/charts/BarChart.h"
#include "widgets/RowButton.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

using enum Category;

/// The page as the window shows it.
struct Shown : ShownFigures<DashboardPage> {
    QString value(const QString& title) const { return card(title)->value(); }

    QList<RowButton*> rows(const QString& list) const
    {
        QList<RowButton*> shown;
        for (auto* row : page.findChild<QWidget*>(list)->findChildren<RowButton*>()) {
            if (row->isVisible())
                shown += row;
        }
        return shown;
    }

    QStringList banners() const
    {
        QStringList texts;
        for (const auto* banner : page.findChildren<Banner*>()) {
            if (banner->isVisible())
                texts += banner->text();
        }
        return texts;
    }

    /// The last request, as "page {key=value …}".
    QString lastRequest()
    {
        if (asked.isEmpty())
            return u"none"_s;
        const auto arguments = asked.takeLast();
        QStringList params;
        const auto map = arguments.at(1).value<NavParams>();
        for (auto it = map.begin(); it != map.end(); ++it) {
            const QString value = it->typeId() == QMetaType::QVariantList
                ? it->toStringList().join(u',')
                : it->toString();
            params += it.key() + u'=' + value;
        }
        return QString::number(static_cast<int>(arguments.at(0).value<PageId>())) + u' '
            + params.join(u' ');
    }
};

QString day(QDate date)
{
    return date.toString(Qt::ISODate);
}

qint64 addToday(Category category, Direction direction, qint64 fen, AccountType account)
{
    Transaction entry = TestLedger::entry(day(QDate::currentDate()), category, direction, fen);
    entry.ownerAccountType = account;
    return TestLedger::add(entry);
}

} // namespace

class TestDashboardPage final : public DatabaseTestCase {
    Q_OBJECT

    qint64 m_private = 0;
    qint64 m_fromOwner = 0;
    qint64 m_project = 0;

    void fillLedger()
    {
        QVERIFY(TestLedger::storeCompany());
        addToday(BusinessIncome, Direction::In, 500'000, AccountType::Company);
        m_private = addToday(BusinessExpense, Direction::Out, 120'050, AccountType::Private);
        m_fromOwner = addToday(ShareholderIn, Direction::In, 30'000, AccountType::Company);
        m_project = TestLedger::addProject(u"官网 & <b>"_s);
        QVERIFY(TestLedger::addVoucher(0) > 0);
        RiskService().reevaluateAll();
    }

private slots:
    void aNewLedgerShowsItsFirstStepsUntilAllAreDone()
    {
        Shown shown;
        const auto steps = shown.rows(u"steps"_s);
        QCOMPARE(steps.size(), 3);
        QVERIFY(!shown.card(u"高风险流水"_s)->isVisible());
        steps.at(0)->click();
        QCOMPARE(shown.lastRequest(), u"6 section=profile"_s);
        steps.at(1)->click();
        QCOMPARE(shown.lastRequest(), u"1 "_s);
        steps.at(2)->click();
        QCOMPARE(shown.lastRequest(), u"4 "_s);

        addToday(BusinessIncome, Direction::In, 1, AccountType::Company);
        shown.page.refresh();
        QStringList ends;
        for (const RowButton* step : shown.rows(u"steps"_s))
            ends += step->content().end;
        QCOMPARE(ends, (QStringList { u"去完成"_s, u"已完成"_s, u"去完成"_s }));
        QVERIFY(shown.card(u"高风险流水"_s)->isVisible());
        fillLedger();
        shown.page.refresh();
        QVERIFY(!shown.page.findChild<QWidget*>(u"steps"_s)->isVisible());
    }

    void cardsShowTheFiguresAndLeadToTheirEntries_data()
    {
        addColumns<QString, QString, QString>("title", "value", "request");
        const QDate today = QDate::currentDate();
        const QString month
            = u"1 dateFrom=%1 dateTo=%2"_s.arg(day(QDate(today.year(), today.month(), 1)),
                day(QDate(today.year(), today.month(), today.daysInMonth())));
        addCase("high", u"高风险流水"_s, u"1 笔"_s, u"1 risk=high"_s);
        addCase("medium", u"中风险流水"_s, u"0 笔"_s, u"1 risk=medium"_s);
        addCase("low", u"预警流水"_s, u"0 笔"_s, u"1 risk=low"_s);
        addCase("vouchers", u"未关联凭证"_s, u"1 张"_s, u"4 linked=none"_s);
        addCase("income", u"本月收入"_s, u"5,300.00 元"_s, month);
        addCase("expense", u"本月支出"_s, u"1,200.50 元"_s, month);
        addCase("net", u"本月净额"_s, u"4,099.50 元"_s, month);
        addCase("owner", u"股东往来净额（本年）"_s, u"300.00 元"_s, u"1 txIds=3"_s);
    }

    void cardsShowTheFiguresAndLeadToTheirEntries()
    {
        fillLedger();
        QFETCH(QString, title);
        Shown shown;
        QTEST(shown.value(title), "value");
        shown.card(title)->click();
        QTEST(shown.lastRequest(), "request");
    }

    void theFootTellsWhoseAccountAndWhoOwesWhom()
    {
        fillLedger();
        Shown shown;
        QCOMPARE(shown.card(u"本月净额"_s)->foot(), u"对公 5,300.00｜私户 -1,200.50"_s);
        QCOMPARE(shown.card(u"股东往来净额（本年）"_s)->foot(), u"公司欠股东：转入多于转付"_s);
        addToday(ShareholderOut, Direction::Out, 80'000, AccountType::Company);
        shown.page.refresh();
        QCOMPARE(shown.value(u"股东往来净额（本年）"_s), u"-500.00 元"_s);
        QCOMPARE(shown.card(u"股东往来净额（本年）"_s)->foot(), u"股东欠公司：转付多于转入"_s);
    }

    void everythingLeadsToWhatItNames()
    {
        fillLedger();
        Shown shown;
        QCOMPARE(shown.rows(u"recent"_s).size(), 3);
        shown.rows(u"recent"_s).first()->click();
        QCOMPARE(shown.lastRequest(), u"1 txId=%1"_s.arg(m_fromOwner));
        shown.rows(u"projects"_s).first()->click();
        QCOMPARE(shown.lastRequest(), u"3 projectId=%1"_s.arg(m_project));

        const auto todo = shown.rows(u"todo"_s);
        QCOMPARE(todo.first()->text(), u"1 笔高风险流水待处理"_s);
        todo.first()->click();
        QCOMPARE(shown.lastRequest(), u"1 risk=high"_s);
        for (RowButton* row : todo) {
            if (row->text().contains(u"财产独立声明书"_s))
                row->click();
        }
        QCOMPARE(shown.lastRequest(), u"2 kind=independence_statement"_s);
        QTest::keyClick(todo.first(), Qt::Key_Return);
        QCOMPARE(shown.lastRequest(), u"1 risk=high"_s);

        auto* chart = shown.page.findChild<BarChart*>();
        QCOMPARE(chart->itemCount(), 12);
        QVERIFY(chart->itemLines(11).contains(u"支出 1,200.50 元"_s));
        emit chart->activated(11);
        QVERIFY(shown.lastRequest().startsWith(u"1 dateFrom="_s));

        QCOMPARE(shown.banners().size(), 1);
        QVERIFY(shown.banners().first().startsWith(u"还没有备份过数据"_s));
        shown.page.findChild<Banner*>()->findChild<QPushButton*>(u"BannerAction"_s)->click();
        QCOMPARE(shown.lastRequest(), u"6 section=backup"_s);
    }

    void whatCannotBeReadIsNeverZero()
    {
        fillLedger();
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO gone"_s }), u""_s);
        const auto silent = qInstallMessageHandler([](auto, auto&, auto&) {});
        Shown shown;
        qInstallMessageHandler(silent);
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE gone RENAME TO transactions"_s }), u""_s);
        QVERIFY(shown.banners().first().contains(u"部分数据没有读出来"_s));
        for (const QString& title :
            { u"高风险流水"_s, u"未关联凭证"_s, u"本月收入"_s, u"股东往来净额（本年）"_s })
            QCOMPARE(shown.value(title), u"—"_s);
        QCOMPARE(shown.page.findChild<BarChart*>()->itemCount(), 0);
        QCOMPARE(shown.page.findChild<BarChart*>()->accessibleDescription(), u"数据没有读出来"_s);
        QVERIFY(shown.rows(u"steps"_s).isEmpty());
    }
};

static const RegisteredTest<TestDashboardPage> registered;
#include "TestDashboardPage.moc"
