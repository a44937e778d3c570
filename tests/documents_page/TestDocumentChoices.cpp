#include "services/documents/AnnualItems.h"
#include "services/documents/DocumentQuestions.h"
#include "services/documents/FundSelection.h"
#include "support/TestCase.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;

namespace {

Transaction entry(qint64 id, Direction direction, const QString& date = u"2026-01-02"_s)
{
    Transaction entry = TestLedger::entry(date, Category::ShareholderOut, direction);
    entry.id = id;
    return entry;
}

DocumentRecord numbered(const QString& docNo)
{
    return { .docNo = docNo, .title = u"标题"_s };
}

} // namespace

class TestDocumentChoices final : public TestCase {
    Q_OBJECT

private slots:
    void sentencesFollowTheChoices_data()
    {
        addColumns<AnnualChoices, QStringList, QString>("choices", "sentences", "problem");
        const QStringList reports { u"审议通过公司 2025 年度经营情况报告。"_s,
            u"审议通过公司 2025 年度财务情况报告。"_s };
        const QString kept = u"本年度利润不分配。"_s;
        addCase("as it opens", AnnualChoices { .year = 2025 }, reports + QStringList { kept },
            QString());
        addCase("nothing", AnnualChoices { 2025, false, false, ProfitPlan::NotDecided },
            QStringList(), QString());
        const AnnualChoices paid { 2025, false, true, ProfitPlan::Distributed, 10'050,
            u" 转\u202e账 "_s, { u" 聘任经理\u2066 "_s, u"　"_s } };
        addCase("paid out, and an item of the user's", paid,
            QStringList { reports.at(1),
                u"本年度利润分配方案：向股东分配利润人民币 100.50 元（大写：壹佰元伍角），"
                "分配方式：转账。"_s,
                u"其他事项：聘任经理"_s },
            QString());
        addCase("no amount",
            AnnualChoices { 2025, false, false, ProfitPlan::Distributed, 0, u"转账"_s },
            QStringList(), u"请填写分配利润的金额。"_s);
        addCase("no method",
            AnnualChoices { 2025, false, false, ProfitPlan::Distributed, 1, u" "_s }, QStringList(),
            u"请选择或填写利润分配方式。"_s);
    }

    void sentencesFollowTheChoices()
    {
        QFETCH(AnnualChoices, choices);
        QTEST(AnnualItems::sentences(choices), "sentences");
        QTEST(AnnualItems::firstProblem(choices), "problem");
    }

    void theFirstEntryThatIsThereGivesTheDirection()
    {
        const QList<Transaction> ledger { entry(1, Direction::In), entry(2, Direction::Out),
            entry(3, Direction::Out) };
        const FundSelection selection = FundSelections::choose({ 9, 3, 1, 3, 2 }, ledger);
        QCOMPARE(selection.direction, Direction::Out);
        QCOMPARE(selection.ids, QList<qint64>({ 3, 2 }));
        QCOMPARE(FundSelections::leftOutText(selection),
            u"一份决定书只能包含同一方向的流水，已按第一笔选择「公司资金转付股东」；方向不同的 1 "
            "笔未勾选：「2026-01-02 摘要」，请另行出具决定书。1 笔流水已不存在，未勾选：#9。"_s);
        QCOMPARE(FundSelections::leftOutText(FundSelections::choose({ 2, 3 }, ledger)), QString());
    }

    void entriesThatCannotConcernTheOwnerAreNamed_data()
    {
        addColumns<Category, AccountType, AccountType, bool>("category", "own", "other", "named");
        using enum AccountType;
        const Category paid = Category::BusinessExpense;
        addCase("a supplier paid from company to company", paid, Company, Company, true);
        addCase("other side unknown", paid, Company, Unknown, true);
        addCase("paid by the owner's account", paid, Private, Company, false);
        addCase("paid to a private account", paid, Company, Private, false);
        addCase("a transfer", Category::ShareholderIn, Company, Company, false);
        addCase("a repaid expense", Category::ExpenseReimburse, Company, Unknown, false);
    }

    void entriesThatCannotConcernTheOwnerAreNamed()
    {
        QFETCH(Category, category);
        QFETCH(bool, named);
        QFETCH(AccountType, own);
        QFETCH(AccountType, other);
        Transaction asked = entry(1, Direction::Out);
        asked.category = category;
        asked.ownerAccountType = own;
        asked.counterpartyAccountType = other;
        QCOMPARE(FundSelections::foreignText({ entry(2, Direction::Out), asked }),
            named
                ? u"所选流水中有 1 笔看起来不是公司与股东之间的往来（如「2026-01-02 摘要」）。决定书只应"
                  "覆盖公私往来，请核对后再生成。"_s
                : QString());
    }

    void aDecisionListsItsEntriesFromTheOldest()
    {
        const QList<Transaction> ledger { entry(5, Direction::Out, u"2026-03-01"_s),
            entry(4, Direction::Out, u"2026-01-01"_s), entry(2, Direction::Out, u"2026-01-01"_s),
            entry(1, Direction::In) };
        QList<qint64> ids;
        for (const Transaction& chosen :
            FundSelections::inOrder(ledger, { 1, 2, 4, 5 }, Direction::Out))
            ids += chosen.id;
        QCOMPARE(ids, QList<qint64>({ 2, 4, 5 }));
    }

    void onlyTheHighestNumberOfItsSeriesIsFreed_data()
    {
        addColumns<QString, bool>("docNo", "freed");
        addCase("last of its series", u"KYR-FD-2025-0003"_s, true);
        addCase("one in the middle", u"KYR-FD-2025-0001"_s, false);
        addCase("alone in its year", u"KYR-FD-2024-0001"_s, true);
        addCase("alone in its kind", u"KYR-ND-2025-0001"_s, true);
    }

    void onlyTheHighestNumberOfItsSeriesIsFreed()
    {
        const QList<DocumentRecord> all { numbered(u"KYR-FD-2025-0003"_s),
            numbered(u"KYR-FD-2025-0001"_s), numbered(u"KYR-FD-2024-0001"_s),
            numbered(u"KYR-ND-2025-0001"_s) };
        QFETCH(QString, docNo);
        QTEST(DocumentQuestions::freesItsNumber(numbered(docNo), all), "freed");
    }
};

static const RegisteredTest<TestDocumentChoices> registered;

#include "TestDocumentChoices.moc"
