#include "core/Codes.h"
#include "core/Money.h"
#include "core/TextRules.h"
#include "support/TestCase.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Reads capital numerals the way a person does, so that a generated text can be checked against
// the amount it was made from.
qint64 fenOfCapitals(const QString& text)
{
    static const QString digits = u"零壹贰叁肆伍陆柒捌玖"_s;
    qint64 total = 0;
    qint64 section = 0;
    qint64 digit = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (digits.contains(c))
            digit = digits.indexOf(c);
        else if (c == u'拾' || c == u'佰' || c == u'仟')
            section += std::exchange(digit, 0) * (c == u'拾' ? 10 : c == u'佰' ? 100 : 1000);
        else if (c == u'万' && text.mid(i, 2) == u"万亿"_s)
            total += (std::exchange(section, 0) + std::exchange(digit, 0)) * 1'000'000'000'000, ++i;
        else if (c == u'万' || c == u'亿')
            total += (std::exchange(section, 0) + std::exchange(digit, 0))
                * (c == u'万' ? 10'000 : 100'000'000);
        else if (c == u'元')
            total = (total + section + std::exchange(digit, 0)) * 100;
        else if (c == u'角' || c == u'分')
            total += std::exchange(digit, 0) * (c == u'角' ? 10 : 1);
    }
    return total;
}

template <typename Enum> void addTable(const char* name, const QString& expected)
{
    QString table;
    int index = 0;
    for (const Enum value : allValues<Enum>()) {
        const bool roundTrips = fromCode<Enum>(codeOf(value)) == value;
        const bool inOrder = static_cast<int>(value) == index++;
        table += u"%1=%2%3;"_s.arg(
            codeOf(value), labelOf(value), roundTrips && inOrder ? QString() : u" (broken)"_s);
    }
    addCase(name, table, expected);
}

} // namespace

class TestMoney final : public TestCase {
    Q_OBJECT

private slots:
    void amountsHaveOneText_data()
    {
        addColumns<qint64, QString, QString>("fen", "grouped", "plain");
        addCase("zero", 0LL, u"0.00"_s, u"0.00"_s);
        addCase("below one yuan, negative", -5LL, u"-0.05"_s, u"-0.05"_s);
        addCase("three digits", 99'999LL, u"999.99"_s, u"999.99"_s);
        addCase("a group begins", 100'000LL, u"1,000.00"_s, u"1000.00"_s);
        addCase("the default threshold", 5'000'000LL, u"50,000.00"_s, u"50000.00"_s);
        addCase("six digits", 99'999'999LL, u"999,999.99"_s, u"999999.99"_s);
        addCase("negative, two groups", -123'456'789LL, u"-1,234,567.89"_s, u"-1234567.89"_s);
        addCase("largest", std::numeric_limits<qint64>::max(), u"92,233,720,368,547,758.07"_s,
            u"92233720368547758.07"_s);
        addCase("smallest", std::numeric_limits<qint64>::min(), u"-92,233,720,368,547,758.08"_s,
            u"-92233720368547758.08"_s);
    }

    void amountsHaveOneText()
    {
        QFETCH(qint64, fen);
        QTEST(Money::format(fen), "grouped");
        QTEST(Money::formatPlain(fen), "plain");
    }

    void capitalNumeralsFollowAccountingPractice_data()
    {
        addColumns<qint64, QString>("fen", "capitals");
        const auto row = [](const char* name, qint64 fen, const QString& capitals) {
            addCase(name, fen, capitals);
        };
        row("zero", 0, u"零元整"_s);
        row("five fen alone", 5, u"伍分"_s);
        row("five jiao alone", 50, u"伍角"_s);
        row("jiao and fen alone", 99, u"玖角玖分"_s);
        row("one yuan", 100, u"壹元整"_s);
        row("ten yuan keeps its one", 1'000, u"壹拾元整"_s);
        row("no jiao", 1'005, u"壹拾元零伍分"_s);
        row("no fen", 1'050, u"壹拾元伍角"_s);
        row("inner zero", 10'500, u"壹佰零伍元整"_s);
        row("hundred", 10'000, u"壹佰元整"_s);
        row("two inner zeros", 100'100, u"壹仟零壹元整"_s);
        row("zeros in the middle and decimals", 1'640'902, u"壹万陆仟肆佰零玖元零贰分"_s);
        row("threshold", 5'000'000, u"伍万元整"_s);
        row("no zero between groups", 10'700'053, u"壹拾万柒仟元伍角叁分"_s);
        row("zero after ten thousands", 1'000'500, u"壹万零伍元整"_s);
        row("million and five", 100'000'500, u"壹佰万零伍元整"_s);
        row("a hundred million", 10'000'000'000, u"壹亿元整"_s);
        row("group of zeros inside", 10'001'000'000, u"壹亿零壹万元整"_s);
        row("largest entry", 9'999'999'999, u"玖仟玖佰玖拾玖万玖仟玖佰玖拾玖元玖角玖分"_s);
        row("fourth group", 100'020'000'000'000, u"壹万亿零贰亿元整"_s);
        row("fifth group", 1'000'000'000'000'000'000, u"壹亿亿元整"_s);
        row("negative", -100'500, u"负壹仟零伍元整"_s);
        row("smallest", std::numeric_limits<qint64>::min(),
            u"负玖亿亿贰仟贰佰叁拾叁万亿柒仟贰佰零叁亿陆仟捌佰伍拾肆万柒仟柒佰伍拾捌元零捌分"_s);
    }

    void capitalNumeralsFollowAccountingPractice()
    {
        QFETCH(qint64, fen);
        QTEST(Money::toChineseUpper(fen), "capitals");
    }

    void capitalNumeralsReadBackAsTheAmount()
    {
        // A step that walks through all patterns of zeros, up to the fourth group.
        for (qint64 fen = 1; fen < 900'000'000'000'000'000; fen = fen * 3 + 7)
            QCOMPARE(fenOfCapitals(Money::toChineseUpper(fen)), fen);
        for (qint64 fen = 1; fen < 2'000'000; fen += 101)
            QCOMPARE(fenOfCapitals(Money::toChineseUpper(fen * 1000)), fen * 1000);
    }

    void yuanRoundHalvesAwayFromZero()
    {
        QCOMPARE(Money::fromYuan(0.29), 29); // whose binary fraction lies just below
        QCOMPARE(Money::fromYuan(0.125), 13);
        QCOMPARE(Money::fromYuan(-0.125), -13);
        QCOMPARE(Money::fromYuan(99'999'999.99), 9'999'999'999);
    }

    void codesAndLabelsStandInTableOrder_data()
    {
        addColumns<QString, QString>("table", "expected");
        addTable<Direction>("direction", u"in=收入;out=支出;"_s);
        addTable<AccountType>(
            "account type", u"company=对公账户;private=股东私人账户;unknown=不明;"_s);
        addTable<Category>("category",
            u"business_income=经营收入;business_expense=经营采购/成本支出;salary=工资薪酬;"
            "expense_reimburse=费用报销/归垫;shareholder_in=股东转入（借款/投资款）;"
            "shareholder_out=公司转付股东（借款/备用金/分红等）;tax_fee=税费缴纳;other=其他;"_s);
        addTable<RiskLevel>("risk level", u"high=高风险;medium=中风险;low=预警;normal=正常;"_s);
        addTable<ProjectStatus>("project status",
            u"planning=筹备中;ongoing=进行中;completed=已完成;archived=已归档;"_s);
        addTable<ContractStatus>(
            "contract status", u"active=履行中;completed=已履行完毕;terminated=已终止;"_s);
        addTable<VoucherType>("voucher type",
            u"bank_receipt=银行回单;contract=合同协议;invoice=发票票据;delivery=交付验收;"
            "chat=聊天记录截图;other=其他;"_s);
        addTable<DocType>("document type",
            u"annual_decision=年度股东决定书;fund_decision=公私资金往来决定书;"
            "independence_statement=财产独立声明书;"_s);
        addTable<SourceType>("link source", u"voucher=凭证;document=文书;"_s);
        addTable<TargetType>("link target", u"project=项目;contract=合同;transaction=流水;"_s);
    }

    void codesAndLabelsStandInTableOrder()
    {
        QFETCH(QString, table);
        QTEST(table, "expected");
    }

    // Those that rows can hold are read from damaged rows in the tests of the stores.
    void unknownCodesFallBack()
    {
        const QString code = u"no_such_code"_s;
        QCOMPARE(fromCode<SourceType>(code), SourceType::Voucher);
        QCOMPARE(fromCode<TargetType>(code), TargetType::Project);
        QCOMPARE(codeOf(static_cast<VoucherType>(99)), u"other"_s);
        QCOMPARE(codeOf(static_cast<ProjectStatus>(-1)), u"planning"_s);
    }

    void charactersCountOnceEach()
    {
        QCOMPARE(TextRules::characterCount(u""_s), 0);
        QCOMPARE(TextRules::characterCount(u"设计费回款"_s), 5);
        QCOMPARE(TextRules::characterCount(u"𠮷野家😀"_s), 4); // beyond the basic plane
        QCOMPARE(TextRules::characterCount(QString(QChar(0xD83D))), 1); // a lone half
    }

    void directionMarksAreNotStored()
    {
        const QString marks = u"\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e"
                              "\u2066\u2067\u2068\u2069"_s;
        for (const QChar mark : marks) {
            QCOMPARE(TextRules::asStored(mark + u" 设计"_s + mark + u"费 "_s), u"设计费"_s);
            QCOMPARE(TextRules::oneLine(u"甲"_s + mark + u"\n乙"_s), u"甲 乙"_s);
            QVERIFY(TextRules::isBlank(u" "_s + mark));
            QVERIFY(TextRules::holds(u"a甲"_s + mark + u"乙"_s, u"A甲乙"_s + mark));
        }
        const QString joined = u"👨\u200d👩"_s;
        QVERIFY2(TextRules::asStored(joined) == joined, "joiners are part of what is seen");
    }

    void datesAreStoredInOneForm()
    {
        const auto both = [](const QString& text) {
            return TextRules::dateText(TextRules::dateFromText(text));
        };
        QCOMPARE(TextRules::dateText({ 2025, 11, 30 }), u"2025-11-30"_s);
        QCOMPARE(TextRules::dateFromText(u"2025-11-30"_s), QDate(2025, 11, 30));
        for (const QString& text : { u"0987-01-02"_s, u"0001-01-01"_s, u"9999-12-31"_s, u""_s })
            QCOMPARE(both(text), text);
    }
};

static const RegisteredTest<TestMoney> registered;

#include "TestMoney.moc"
