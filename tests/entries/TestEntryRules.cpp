#include "services/entries/EntryRules.h"
#include "support/TestCase.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;

namespace {

const QString dateText = u"请选择交易日期"_s;
const QString amountText = u"金额必须大于 0 且不超过 99,999,999.99 元"_s;
const QString summaryText = u"摘要需 2–64 个字"_s;

template <typename Change> Transaction with(const Change& change)
{
    Transaction entry = TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out);
    change(entry);
    return entry;
}

} // namespace

class TestEntryRules final : public TestCase {
    Q_OBJECT

private slots:
    void theFirstProblemIsTold_data()
    {
        addColumns<Transaction, QString>("entry", "text");
        using Entry = Transaction;
        const auto row = [](const char* name, auto field, const auto& value, const QString& text) {
            addCase(name, with([&](Transaction& entry) { entry.*field = value; }), text);
        };
        row("nothing wrong", &Entry::note, QString(), {});
        row("no date", &Entry::transDate, QDate(), dateText);
        row("amount 0", &Entry::amountFen, 0, amountText);
        row("largest amount", &Entry::amountFen, 9'999'999'999, {});
        row("amount too large", &Entry::amountFen, 10'000'000'000, amountText);
        row("summary of one", &Entry::summary, u"　款 "_s, summaryText);
        row("summary of two", &Entry::summary, u"货款"_s, {});
        row("summary of 64 beyond the BMP", &Entry::summary, u"𠮷"_s.repeated(64) + u' ', {});
        row("summary of 65", &Entry::summary, QString(65, u'款'), summaryText);
        row("blank counterparty", &Entry::counterpartyName, u" 　"_s, u"请填写对方名称"_s);
        row("counterparty of 64", &Entry::counterpartyName, QString(64, u'林'), {});
        row("counterparty of 65", &Entry::counterpartyName, QString(65, u'林'),
            u"对方名称最多 64 个字"_s);
        row("counterparty of direction marks", &Entry::counterpartyName, u"\u202e \u2069"_s,
            u"请填写对方名称"_s);
        row("note of 500", &Entry::note, QString(500, u'备'), {});
        row("note of 501", &Entry::note, QString(501, u'备'), u"备注最多 500 个字"_s);
        addCase("everything wrong: the date comes first", Transaction(), dateText);
        addCase("amount before summary",
            with([](Transaction& e) { e.amountFen = 0, e.summary.clear(); }), amountText);
        addCase("summary before counterparty",
            with([](Transaction& e) { e.summary.clear(), e.counterpartyName.clear(); }),
            summaryText);
    }

    void theFirstProblemIsTold()
    {
        QFETCH(Transaction, entry);
        const auto problem = EntryRules::firstProblem(entry);
        QTEST(problem ? problem->text : QString(), "text");
    }

    void pastedLinesBecomeOneWithoutDirectionMarks()
    {
        const Transaction stored = EntryRules::normalized(with([](Transaction& e) {
            e.summary = u"\n设备款 \r\n\t 第二  期\u2028尾款\n"_s;
            e.counterpartyName = u"甲\n公\u202e司"_s;
            e.note = u"第一行\n第\u2066二行"_s;
        }));
        QCOMPARE(stored.summary, u"设备款 第二  期 尾款"_s);
        QCOMPARE(stored.counterpartyName, u"甲 公司"_s);
        QCOMPARE(stored.note, u"第一行\n第二行"_s);
    }

    void aReviewNeedsAnExplanation_data()
    {
        addColumns<QString, QString>("note", "text");
        addCase("blank", u" 　\n"_s, u"请填写复核说明"_s);
        addCase("one character", u" 已 "_s, u"复核说明需 2–500 个字"_s);
        addCase("two", u"已核"_s, QString());
        addCase("500", QString(500, u'核'), QString());
        addCase("501", QString(501, u'核'), u"复核说明需 2–500 个字"_s);
    }

    void aReviewNeedsAnExplanation()
    {
        QFETCH(QString, note);
        QTEST(EntryRules::reviewProblem(note), "text");
    }

    void projectsAreNamedByCodeAndTheirPast_data()
    {
        addColumns<ProjectStatus, QString>("status", "text");
        addCase("planning", ProjectStatus::Planning, u"P-1 展厅%1"_s);
        addCase("ongoing", ProjectStatus::Ongoing, u"P-1 展厅%1"_s);
        addCase("completed", ProjectStatus::Completed, u"P-1 展厅%1（历史项目）"_s);
        addCase("archived", ProjectStatus::Archived, u"P-1 展厅%1（历史项目）"_s);
    }

    void projectsAreNamedByCodeAndTheirPast()
    {
        QFETCH(ProjectStatus, status);
        QTEST(EntryRules::projectText({ .name = u"展厅%1"_s, .code = u"P-1"_s, .status = status }),
            "text");
    }

    void aCopyTakesValuesOnly()
    {
        const QDate today(2026, 5, 1);
        Transaction pattern = with([](Transaction& e) { e.note = u"备注"_s, e.projectId = 7; });
        Transaction expected = pattern;
        expected.transDate = today;
        pattern.id = 9;
        pattern.riskLevel = pattern.riskAutoLevel = RiskLevel::High;
        pattern.riskManualOverride = RiskLevel::Low;
        pattern.riskManualNote = pattern.createdAt = pattern.riskEvaluatedAt = u"旧"_s;
        pattern.riskReasons = QStringList { u"旧"_s };
        QVERIFY(EntryRules::copyOf(pattern, today) == expected);
    }
};

static const RegisteredTest<TestEntryRules> registered;

#include "TestEntryRules.moc"
