#include "services/documents/DocumentRules.h"
#include "services/documents/DocumentTemplates.h"
#include "services/documents/DocumentTexts.h"
#include "services/documents/TableColumns.h"
#include "services/DocumentSamples.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;

namespace {

// What all three documents are built from.
QString paragraph(const QString& html)
{
    return u"<p style=\"line-height:180%; margin:6px 0; font-size:10.5pt;\">"_s + html + u"</p>"_s;
}

QString heading(const QString& text)
{
    return paragraph(u"<b>"_s + text + u"</b>"_s);
}

QString info(const QString& label, const QString& value)
{
    return u"<tr><td width=\"30%\" style=\"font-size:10.5pt;\">"_s + label
        + u"：</td><td style=\"font-size:10.5pt;\">"_s + value + u"</td></tr>"_s;
}

// Whose title the owner bears and what the day is called depends on the document.
struct Names {
    QString owner = u"股东（法定代表人）"_s;
    QString day = u"决定日期"_s;
};

QString top(const QString& title, const QString& subtitle, const QString& day,
    const QString& number, const Names& names = {})
{
    const QString rows = info(names.owner, u"林岚"_s)
        + info(u"统一社会信用代码"_s, u"91350100M000100Y43"_s) + info(names.day, day)
        + info(u"文书编号"_s, number);
    return u"<html><body style=\"font-family:'Microsoft YaHei';\"><p style=\"text-align:center; "
           "font-size:16pt; font-weight:bold; color:#000000;\">"_s
        + title + u"</p><p style=\"text-align:center; font-size:10.5pt; color:#4E5969;\">"_s
        + subtitle + u"</p><table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\">"_s + rows
        + u"</table><hr/>"_s;
}

const QString foot
    = u"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" style=\"margin-top:32px;\"><tr>"
      "<td width=\"50%\" style=\"font-size:10.5pt; vertical-align:bottom;\">股东（签名）："
      "＿＿＿＿＿＿＿＿＿＿</td><td width=\"50%\" style=\"font-size:10.5pt; vertical-align:bottom; "
      "text-align:right;\">日期：\u3000\u3000\u3000\u3000年\u3000\u3000月\u3000\u3000日</td></tr>"
      "<tr><td colspan=\"2\" style=\"font-size:10.5pt; text-align:right; padding-top:20px;\">"
      "（盖章处）</td></tr></table></body></html>"_s;

QString cell(const QString& alignment, const QString& html)
{
    return u"<td style=\"border:1px solid #000000; padding:5px; font-size:10pt; text-align:"_s
        + alignment + u";\">"_s + html + u"</td>"_s;
}

QString centred(const QStringList& texts)
{
    QString html;
    for (const QString& text : texts)
        html += cell(u"center"_s, text);
    return html;
}

} // namespace

class TestDocumentTexts final : public TestCase {
    Q_OBJECT

private slots:
    void offeredSentences()
    {
        QCOMPARE(DocumentTexts::annualReportItems(2025),
            (QStringList { u"审议通过公司 2025 年度经营情况报告。"_s,
                u"审议通过公司 2025 年度财务情况报告。"_s }));
        QCOMPARE(DocumentTexts::profitDistributed(10'700'053, u"%1 转账"_s),
            u"本年度利润分配方案：向股东分配利润人民币 107,000.53 元（大写：壹拾万柒仟元伍角叁分），"
            "分配方式：%1 转账。"_s);
        QCOMPARE(DocumentTexts::profitKept(), u"本年度利润不分配。"_s);
        QCOMPARE(DocumentTexts::otherItem(u"聘任经理"_s), u"其他事项：聘任经理"_s);
        QCOMPARE(DocumentTexts::independenceMeasures(),
            (QStringList { u"公司开设独立银行账户，经营款项通过对公账户结算"_s,
                u"股东个人财产与公司财产分别建账、分别登记"_s,
                u"股东与公司之间资金往来均出具书面股东决定并留存凭证"_s,
                u"依法建立财务会计制度，独立核算"_s, u"公司资产独立保管、独立使用"_s }));
        QCOMPARE(DocumentTexts::directionLabel(Direction::In), u"股东资金转入公司"_s);
        QCOMPARE(DocumentTexts::directionLabel(Direction::Out), u"公司资金转付股东"_s);
        QCOMPARE(DocumentTexts::kindName(DocType::FundDecision), u"公私资金往来决定书"_s);
        QCOMPARE(DocumentTexts::kindName(static_cast<DocType>(7)), u"法定文书"_s);
    }

    void itemsAreNumberedInChinese()
    {
        QStringList numbers;
        for (const int number : { 1, 9, 10, 11, 19, 20, 21, 90, 99, 100 })
            numbers += DocumentTexts::itemNumber(number);
        QCOMPARE(numbers.join(QString()),
            u"（一）（九）（十）（十一）（十九）（二十）（二十一）（九十）（九十九）（100）"_s);
    }

    void usersTextsAreNeverMarkup()
    {
        const auto html = DocumentTemplates::escapedLines;
        QCOMPARE(html(u"<b>\"A&B\"</b>"_s), u"&lt;b&gt;&quot;A&amp;B&quot;&lt;/b&gt;"_s);
        QCOMPARE(html(u"100% %1"_s), u"100&#37; &#37;1"_s);
        QCOMPARE(html(u"a\nb\r\nc\rd"_s), u"a<br/>b<br/>c<br/>d"_s);
        QCOMPARE(html(u"a<br/>b"_s), u"a&lt;br/&gt;b"_s);
        QCOMPARE(html(u"甲\u202edcba\u2069乙"_s), u"甲dcba乙"_s);
    }

    void theAnnualDecisionReads()
    {
        CompanyProfile company = DocumentSamples::company();
        company.companyName = u"甲&乙"_s;
        DocumentRecord record = DocumentRules::draft(AnnualDecisionInput { .year = 2025,
            .items = { u"第一项 %2。"_s, u"第二项。"_s },
            .decisionDate = { 2026, 3, 31 } });
        record.docNo = u"KYR-ND-2025-0001"_s;
        const QString expected = top(u"2025年度股东决定书"_s, u"甲&amp;乙 2025 年度"_s,
                                     u"2026-03-31"_s, u"KYR-ND-2025-0001"_s)
            + heading(u"一、总则"_s)
            + paragraph(
                u"甲&amp;乙 为一人有限责任公司，不设股东会。根据《中华人民共和国公司法》及公司"
                "章程的有关规定，股东就公司 2025 年度经营管理的重大事项，作出如下书面决定："_s)
            + heading(u"二、决定事项"_s) + paragraph(u"（一）第一项 &#37;2。"_s)
            + paragraph(u"（二）第二项。"_s) + heading(u"三、生效与置备"_s)
            + paragraph(u"本决定自作出之日起生效。以上决定由股东作出，签名后置备于公司。"_s) + foot;
        QCOMPARE(DocumentTemplates::compose(company, record), expected);
    }

    void theFundDecisionReads()
    {
        DocumentRecord record = DocumentRules::draft(DocumentSamples::fundInput({ 1, 2 }));
        record.docNo = u"KYR-FD-2025-0001"_s;
        record.fundNature = u"50%备用金"_s;
        Transaction second = DocumentSamples::entry(1);
        second.summary = u"<i>摘要</i>"_s;
        second.ownerAccountType = AccountType::Private;
        const QString expected = top(u"公私资金往来决定书"_s, u"杭州山岚设计有限公司"_s,
                                     u"2025-06-30"_s, u"KYR-FD-2025-0001"_s)
            + heading(u"一、往来性质与金额"_s)
            + paragraph(
                u"经股东决定：公司资金转付股东，资金性质为<b>50&#37;备用金</b>，并约定于 "
                "2025-12-31 前结清/偿还。本次往来共 2 笔，金额合计人民币 37,037.01 元（大写："
                "叁万柒仟零叁拾柒元零壹分）。"_s)
            + heading(u"二、资金往来明细"_s)
            + u"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"5\" border=\"1\" "
              "style=\"border-collapse:collapse;\"><tr>"_s
            + centred({ u"<b>序号</b>"_s, u"<b>日期</b>"_s, u"<b>摘要</b>"_s, u"<b>本方账户</b>"_s,
                u"<b>对方名称</b>"_s, u"<b>金额（元）</b>"_s, u"<b>资金分类</b>"_s })
            + u"</tr><tr>"_s
            + centred({ u"1"_s, u"2025-01-01"_s, u"备用金"_s, u"对公账户"_s, u"林岚"_s })
            + cell(u"right"_s, u"12,345.67"_s)
            + centred({ u"公司转付股东（借款/备用金/分红等）"_s }) + u"</tr><tr>"_s
            + centred({ u"2"_s, u"2025-01-02"_s, u"&lt;i&gt;摘要&lt;/i&gt;"_s, u"股东私人账户"_s,
                u"林岚"_s })
            + cell(u"right"_s, u"24,691.34"_s)
            + centred({ u"公司转付股东（借款/备用金/分红等）"_s })
            + u"</tr><tr><td colspan=\"5\" style=\"border:1px solid #000000; padding:5px; "
              "font-size:10pt;\"><b>合计（大写）：人民币 叁万柒仟零叁拾柒元零壹分</b></td>"_s
            + cell(u"right"_s, u"37,037.01"_s) + centred({ QString() }) + u"</tr></table>"_s
            + heading(u"三、独立性声明条款"_s)
            + paragraph(
                u"上述资金往来均系公司与股东之间的独立资金安排，性质明确、用途清晰，已如实、完整"
                "记入公司账簿及银行流水。公司财产与股东个人财产相互独立、分别核算，不存在财产混同"
                "情形；股东不对公司债务承担连带责任。"_s)
            + paragraph(u"补充说明：凭票据报销，<br/>余款退回对公账户。"_s)
            + paragraph(u"以上决定由股东作出，签名后置备于公司。"_s) + foot;
        QCOMPARE(DocumentTemplates::compose(
                     DocumentSamples::company(), record, { DocumentSamples::entry(0), second }),
            expected);
    }

    void theIndependenceStatementReads()
    {
        DocumentRecord record
            = DocumentRules::draft(IndependenceStatementInput { .baseDate = { 2025, 12, 31 },
                .measures = { u"甲"_s },
                .furtherMeasures = u" 乙\n丙 "_s });
        record.docNo = u"KYR-DC-2025-0001"_s;
        const QString expected
            = top(u"财产独立声明书"_s, u"杭州山岚设计有限公司"_s, u"2025-12-31"_s,
                  u"KYR-DC-2025-0001"_s, { u"声明人（股东）"_s, u"声明基准日"_s })
            + heading(u"一、声明"_s)
            + paragraph(
                u"声明人作为 杭州山岚设计有限公司（以下简称\"公司\"）的唯一股东，郑重声明：公司"
                "财产与声明人个人财产相互独立，产权边界清晰、分别建账核算，不存在任何财产混同情形。"
                "公司以其全部财产对其债务承担责任，声明人以其认缴的出资额为限对公司承担责任。"_s)
            + heading(u"二、已采取的独立性措施"_s) + paragraph(u"（一）甲"_s)
            + paragraph(u"（二）其他独立性措施：乙<br/>丙"_s) + heading(u"三、承诺条款"_s)
            + paragraph(u"本声明所述内容真实、准确、完整。如有不实，股东愿依法承担相应责任。"_s)
            + foot;
        QCOMPARE(DocumentTemplates::compose(DocumentSamples::company(), record), expected);
    }

    void optionalPartsAreLeftOut()
    {
        FundDecisionInput fund = DocumentSamples::fundInput({ 1 });
        fund.settleDate = {};
        fund.extraText = u" 　"_s;
        const QString decision = DocumentTemplates::compose(
            DocumentSamples::company(), DocumentRules::draft(fund), { DocumentSamples::entry(0) });
        QVERIFY(!decision.contains(u"并约定于"_s));
        QVERIFY(!decision.contains(u"补充说明"_s));
        IndependenceStatementInput independence = DocumentSamples::independenceInput();
        independence.furtherMeasures = u" "_s;
        QVERIFY(!DocumentTemplates::compose(
            DocumentSamples::company(), DocumentRules::draft(independence))
                     .contains(u"其他独立性措施"_s));
    }

    void inputIsChecked_data()
    {
        addColumns<QString, QString>("problem", "expected");
        const auto row = [](const char* name, const QString& problem, const QString& expected) {
            addCase(name, problem, expected);
        };
        const auto annual = [](int year, const QStringList& items, QDate date) {
            return DocumentRules::firstProblem({ year, items, date }, 2026);
        };
        const QStringList items { u"甲"_s };
        const QDate date(2026, 3, 31);
        const QString year = u"决定年份超出有效范围。"_s;
        row("annual: 1999", annual(1999, items, date), year);
        row("annual: 2000", annual(2000, items, date), {});
        row("annual: this year", annual(2026, items, date), {});
        row("annual: next year", annual(2027, items, date), year);
        row("annual: year before items", annual(0, {}, {}), year);
        row("annual: items before date", annual(2025, {}, {}), u"请至少勾选一项决定事项。"_s);
        row("annual: no date", annual(2025, items, {}), u"决定日期无效。"_s);

        FundDecisionInput fund = DocumentSamples::fundInput({ 1 });
        row("fund: in order", DocumentRules::firstProblem(fund), {});
        fund.decisionDate = {};
        row("fund: no date", DocumentRules::firstProblem(fund), u"决定日期无效。"_s);
        fund.fundNature = u" 　"_s;
        row("fund: nature before date", DocumentRules::firstProblem(fund),
            u"请选择或填写资金性质。"_s);
        fund.transactionIds = {};
        row("fund: entries first", DocumentRules::firstProblem(fund),
            u"请至少勾选一笔资金流水。"_s);

        IndependenceStatementInput statement = DocumentSamples::independenceInput();
        row("statement: in order", DocumentRules::firstProblem(statement), {});
        statement.measures = {};
        row("statement: own words alone do not suffice", DocumentRules::firstProblem(statement),
            u"请至少勾选一项独立性措施。"_s);
        statement.baseDate = {};
        row("statement: date first", DocumentRules::firstProblem(statement), u"声明基准日无效。"_s);
    }

    void inputIsChecked()
    {
        QFETCH(QString, problem);
        QTEST(problem, "expected");
    }

    void selectionsAreReadBack()
    {
        DocumentRecord fund = DocumentRules::draft(DocumentSamples::fundInput({ 7, 3, 7, 5, 3 }));
        QCOMPARE(fund.selectedItems, u"[\"7\",\"3\",\"5\"]"_s);
        QCOMPARE(DocumentRules::coveredIds(fund), (QList<qint64> { 7, 3, 5 }));
        FundDecisionInput turned = DocumentSamples::fundInput({ 7 });
        turned.fundNature = u"\u202e备用金"_s;
        turned.extraText = u"用\u2067于差旅"_s;
        const DocumentRecord stored = DocumentRules::draft(turned);
        QCOMPARE(stored.title, u"公私资金往来决定书（备用金）"_s);
        QCOMPARE(stored.extraText, u"用于差旅"_s);
        DocumentRecord annual = DocumentRules::draft(
            AnnualDecisionInput { .year = 2025, .items = { u"甲\"乙\n"_s, u"丙"_s } });
        QCOMPARE(DocumentRules::selectedTexts(annual), (QStringList { u"甲\"乙\n"_s, u"丙"_s }));
        QVERIFY(DocumentRules::coveredIds(annual).isEmpty());
        annual.selectedItems = u"[\"damaged"_s;
        const QString unreadable = u"文书保存的勾选内容无法读取，未作任何改动。"_s;
        QCOMPARE(DocumentRules::firstProblem(annual), unreadable);
        fund.selectedItems = u"[\"7\",\"x\"]"_s;
        QCOMPARE(DocumentRules::firstProblem(fund), unreadable);
    }

    void columnsShareTheWidth()
    {
        using Widths = QList<qreal>;
        const auto parts = [](const Widths& wanted) { return TableColumns::parts(wanted, 60); };
        QCOMPARE(parts({ 10, 20 }), (Widths { 25, 35 }));
        QCOMPARE(parts({ 10, 200 }), (Widths { 10, 50 }));
        QCOMPARE(parts({ 5, 21, 200 }), (Widths { 5, 21, 34 })); // once the first was served
        QCOMPARE(parts({ 90, 200 }), (Widths { 30, 30 }));
        QCOMPARE(parts({}), Widths());
    }
};

static const RegisteredTest<TestDocumentTexts> registered;

#include "TestDocumentTexts.moc"
