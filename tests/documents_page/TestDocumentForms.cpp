#include "core/AppPaths.h"
#include "db/LinkDao.h"
#include "PageUnderTest.h"
#include "services/documents/DocumentService.h"
#include "support/DatabaseTestCase.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"

#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QString answered(const ModalAnswerer& answers)
{
    return answers.seen().isEmpty() ? QString() : answers.seen().last().text;
}

QString stored(const QString& columns)
{
    return TestDatabase::rows(u"SELECT %1 FROM documents ORDER BY id"_s.arg(columns)).join(u'/');
}

} // namespace

class TestDocumentForms final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(TestLedger::storeCompany());
    }

    void anAnnualDecisionIsStoredAsThePreviewShowedIt()
    {
        PageUnderTest test;
        test.navigate({ { u"year"_s, 2024 } });
        test.button(u"向股东分配利润"_s)->toggle();
        test.page.findChild<QDoubleSpinBox*>(u"profit"_s)->setValue(10.05);
        QVERIFY(test.shows(u"大写：壹拾元零伍分"_s));
        test.press(u"添加其他事项"_s);
        test.type(u"其他事项 1"_s, u"聘任经理"_s);
        test.press(u"添加其他事项"_s);
        test.type(u"其他事项 2"_s, u"续租办公室"_s);
        test.press(u"上移 其他事项 2"_s);
        QVERIFY(test.previewSays(u"（四）其他事项：续租办公室"_s));
        test.type(u"决定日期"_s, u"2025-02-03"_s);
        test.press(u"生成文书"_s);
        QVERIFY(test.shows(u"已生成文书 KYR-ND-2024-0001"_s));
        QCOMPARE(stored(u"doc_year, doc_date, selected_items"_s),
            u"2024|2025-02-03|[\"审议通过公司 2024 年度经营情况报告。\","
            "\"审议通过公司 2024 年度财务情况报告。\","
            "\"本年度利润分配方案：向股东分配利润人民币 10.05 元（大写：壹拾元零伍分），分配方式："
            "银行转账至股东个人账户。\",\"其他事项：续租办公室\",\"其他事项：聘任经理\"]"_s);
        QVERIFY(test.button(u"本年度利润不分配。"_s)->isChecked());
        QVERIFY2(!test.page.findChild<QWidget*>(u"profit"_s)->isVisible(), "ready for the next");
    }

    void aSecondDecisionOfAYearIsAskedForFirst()
    {
        PageUnderTest test;
        test.press(u"生成文书"_s);
        QVERIFY(test.shows(u"年度已经有一份股东决定书"_s));
        ModalAnswerer answers(u"取消"_s);
        answers.expectButton(u"继续生成"_s);
        test.press(u"生成文书"_s);
        QCOMPARE(stored(u"doc_no"_s).count(u"KYR"_s), 1);
        test.press(u"生成文书"_s);
        QCOMPARE(stored(u"doc_no"_s).count(u"KYR"_s), 2);
    }

    void whatIsMissingIsToldAndTheInputStays_data()
    {
        addColumns<NavParams, QString, QString, QString>("params", "field", "typed", "told");
        const NavParams fund { { u"fund"_s, true }, { u"txIds"_s, QVariantList { 1 } } };
        addCase("annual date", NavParams { { u"year"_s, 2024 } }, u"决定日期"_s, u"2025-13-01"_s,
            u"决定日期无效。"_s);
        addCase("nature", fund, u"资金性质"_s, u" "_s, u"请选择或填写资金性质。"_s);
        addCase(
            "settlement", fund, u"结清日期"_s, u"下周"_s, u"结清日期无效，请填写日期或留空。"_s);
        addCase("no entry", NavParams { { u"fund"_s, true } }, u"补充说明"_s, u"说明"_s,
            u"请至少勾选一笔资金流水。"_s);
        addCase("base date", NavParams { { u"kind"_s, u"independence_statement"_s } },
            u"声明基准日"_s, u""_s, u"声明基准日无效。"_s);
    }

    void whatIsMissingIsToldAndTheInputStays()
    {
        QFETCH(NavParams, params);
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QCOMPARE(Sample::entry(u"2026-01-02"_s, u"备用金"_s, Direction::Out), 1);
        PageUnderTest test;
        test.navigate(params);
        if (params.contains(u"txIds"_s))
            test.type(u"资金性质"_s, u"备用金"_s);
        test.type(field, typed);
        ModalAnswerer answers(u"确定"_s);
        test.press(u"生成文书"_s);
        QTEST(answered(answers), "told");
        QCOMPARE(stored(u"id"_s), QString());
        test.navigate({});
        const QVariant text = test.field(field)->property("plainText");
        const QVariant line = test.field(field)->property("currentText");
        const QVariant kept = text.isValid() ? text
            : line.isValid()                 ? line
                                             : test.field(field)->property("text");
        QCOMPARE(kept.toString(), typed);
    }

    void aFileThatCannotBeWrittenLeavesInputAndNumberAlone()
    {
        PageUnderTest test;
        test.navigate({ { u"year"_s, 2024 } });
        test.press(u"添加其他事项"_s);
        test.type(u"其他事项 1"_s, u"聘任经理"_s);
        QVERIFY(QDir(AppPaths::exportsDir()).removeRecursively());
        QVERIFY(TestFile::put(AppPaths::exportsDir(), "in the way"));
        ModalAnswerer answers(u"确定"_s);
        test.press(u"生成文书"_s);
        QVERIFY(answered(answers).startsWith(u"无法创建导出目录："_s));
        QCOMPARE(qobject_cast<QLineEdit*>(test.field(u"其他事项 1"_s))->text(), u"聘任经理"_s);
        QCOMPARE(stored(u"id"_s), QString());
    }

    void theFiltersShowUncoveredOwnerFlowsOfTheDirection()
    {
        const qint64 covered = Sample::entry(u"2026-01-01"_s, u"旧备用金"_s, Direction::Out);
        Sample::entry(u"2026-01-02"_s, u"备用金"_s, Direction::Out);
        Sample::entry(u"2026-01-03"_s, u"买纸"_s, Direction::Out, Category::BusinessExpense);
        Sample::entry(u"2026-01-04"_s, u"借款"_s, Direction::In, Category::ShareholderIn);
        // Repaid expenses count as transfers when these are frequent, so a decision covers them
        // too.
        Sample::entry(u"2026-01-05"_s, u"报销"_s, Direction::Out, Category::ExpenseReimburse);
        QVERIFY(DocumentService()
                    .generateFundDecision(
                        { Direction::Out, u"备用金"_s, { covered }, QDate(2026, 1, 5), {}, {} })
                    .ok);
        PageUnderTest test;
        test.navigate({ { u"kind"_s, u"fund_decision"_s } });
        QCOMPARE(test.cells(2), QStringList { u"借款"_s });
        test.button(u"公司资金转付股东"_s)->toggle();
        QCOMPARE(test.cells(2), QStringList({ u"报销"_s, u"备用金"_s }));
        test.button(u"仅未覆盖"_s)->toggle();
        test.button(u"仅股东往来"_s)->toggle();
        QCOMPARE(test.cells(2),
            QStringList({ u"报销"_s, u"买纸"_s, u"备用金"_s, u"（已有决定书）旧备用金"_s }));
        test.button(u"全选"_s)->click();
        test.button(u"仅未覆盖"_s)->toggle();
        QCOMPARE(test.cells(2),
            QStringList({ u"+报销"_s, u"+买纸"_s, u"+备用金"_s, u"+（已有决定书）旧备用金"_s }));
        QVERIFY(test.shows(u"已选 4 笔，合计 4,000.00 元"_s));
        QVERIFY(test.shows(u"大写：肆仟元整"_s));
        test.button(u"全选"_s)->click();
        QVERIFY(test.shows(u"已选 0 笔"_s));
    }

    void aFormThatWasAskedForBeginsAtItsFirstField()
    {
        const qint64 id = Sample::entry(u"2026-01-03"_s, u"备用金"_s, Direction::Out);
        PageUnderTest test;
        const auto focusAfter = [&test](const NavParams& params) {
            test.navigate(params);
            return test.page.focusWidget();
        };
        const NavParams wanted { { u"fund"_s, true }, { u"txIds"_s, QVariantList { id } } };
        QCOMPARE(focusAfter(wanted)->objectName(), u"fundNature"_s);
        QCOMPARE(focusAfter({ { u"year"_s, 2024 } })->objectName(), u"year"_s);
        const QWidget* focused = focusAfter({ { u"kind"_s, u"independence_statement"_s } });
        QCOMPARE(focused->objectName(), u"baseDate"_s);
        focused = focusAfter({ { u"kind"_s, u"fund_decision"_s } });
        QVERIFY(focused == test.button(u"公司资金转付股东"_s));
    }

    void requestedEntriesAreTickedAndTheOthersNamed()
    {
        const qint64 paper
            = Sample::entry(u"2026-01-03"_s, u"买纸"_s, Direction::Out, Category::BusinessExpense);
        const qint64 loan
            = Sample::entry(u"2026-01-04"_s, u"借款"_s, Direction::In, Category::ShareholderIn);
        PageUnderTest test;
        test.navigate({ { u"fund"_s, true }, { u"txIds"_s, QVariantList { paper, loan, 99 } } });
        QVERIFY(test.button(u"公司资金转付股东"_s)->isChecked());
        QCOMPARE(test.cells(2), QStringList { u"+买纸"_s });
        QVERIFY(test.shows(u"方向不同的 1 笔未勾选：「2026-01-04 借款」"_s));
        QVERIFY(test.shows(u"#99"_s));
        test.navigate({});
        QCOMPARE(test.cells(2), QStringList { u"+买纸"_s });
        test.navigate({ { u"fund"_s, true }, { u"txIds"_s, QVariantList { loan } } });
        QVERIFY(test.shows(u"此前勾选的 1 笔已取消勾选。"_s));
        QCOMPARE(test.cells(2), QStringList { u"+借款"_s });
    }

    void anEntryThatIsNoOwnersStaysTickedUnderAWarning()
    {
        const qint64 paper = Sample::entry(
            u"2026-01-03"_s, u"<b>纸</b> %2"_s, Direction::Out, Category::BusinessExpense);
        const qint64 petty = Sample::entry(u"2026-01-04"_s, u"备用金"_s, Direction::Out);
        PageUnderTest test;
        test.navigate({ { u"fund"_s, true }, { u"txIds"_s, QVariantList { paper, petty } } });
        QCOMPARE(test.cells(2), QStringList({ u"+备用金"_s, u"+<b>纸</b> %2"_s }));
        QVERIFY(test.shows(
            u"有 1 笔看起来不是公司与股东之间的往来（如「2026-01-03 <b>纸</b> %2」）。决定书只应"_s));
        test.navigate({});
        QVERIFY(test.shows(u"不是公司与股东之间的往来"_s));
        QAbstractItemModel* rows = test.table()->model();
        QVERIFY(rows->setData(rows->index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
        QVERIFY(!test.shows(u"不是公司与股东之间的往来"_s));
    }

    void aFundDecisionCoversWhatWasTickedByKey()
    {
        const qint64 newer = Sample::entry(u"2026-02-01"_s, u"乙"_s, Direction::Out);
        const qint64 older = Sample::entry(u"2026-01-01"_s, u"甲"_s, Direction::Out);
        PageUnderTest test;
        test.navigate({ { u"kind"_s, u"fund_decision"_s } });
        test.button(u"公司资金转付股东"_s)->toggle();
        test.table()->setFocus();
        test.table()->selectAll();
        QTest::keyClick(test.table(), Qt::Key_Space);
        QCOMPARE(test.cells(2), QStringList({ u"+乙"_s, u"+甲"_s }));
        test.type(u"资金性质"_s, u"备用金 <b>%1"_s);
        test.type(u"结清日期"_s, u"2026-12-31"_s);
        test.press(u"生成文书"_s);
        QVERIFY(test.shows(u"已生成文书 KYR-FD-"_s));
        QCOMPARE(stored(u"fund_direction, fund_nature, settle_date, selected_items"_s),
            u"out|备用金 <b>%1|2026-12-31|[\"%2\",\"%3\"]"_s
                .replace(u"%2"_s, QString::number(older))
                .replace(u"%3"_s, QString::number(newer)));
        QCOMPARE(LinkDao().fundDecisionTransactionIds(), QSet<qint64>({ older, newer }));
        QVERIFY2(!test.table(), "covered entries are out of the list");
        QVERIFY(test.shows(u"没有可选的流水"_s));
    }

    void thePreviewOfALongListWaitsToBeAskedFor()
    {
        for (int i = 0; i < 101; ++i)
            Sample::entry(u"2026-01-01"_s, u"借款"_s, Direction::In, Category::ShareholderIn);
        PageUnderTest test;
        test.navigate({ { u"kind"_s, u"fund_decision"_s } });
        test.button(u"全选"_s)->click();
        QVERIFY(test.shows(u"预览不自动更新"_s));
        test.press(u"更新预览"_s);
        QVERIFY(test.previewSays(u"本次往来共 101 笔"_s));
        test.button(u"全选"_s)->click();
        QVERIFY(!test.shows(u"预览不自动更新"_s));
        QVERIFY(test.previewSays(u"本次往来共 0 笔"_s));
    }

    void aNatureOfTheOtherDirectionIsNotKept()
    {
        PageUnderTest test;
        test.navigate({ { u"kind"_s, u"fund_decision"_s } });
        auto* nature = test.page.findChild<QComboBox*>(u"fundNature"_s);
        nature->setCurrentText(u"实缴出资"_s);
        test.button(u"公司资金转付股东"_s)->toggle();
        QCOMPARE(nature->currentText(), QString());
        nature->setEditText(u"自拟性质"_s);
        test.button(u"股东资金转入公司"_s)->toggle();
        QCOMPARE(nature->currentText(), u"自拟性质"_s);
    }

    void anUnreadableLedgerKeepsTheTicks()
    {
        const qint64 id = Sample::entry(u"2026-01-01"_s, u"甲"_s, Direction::Out);
        PageUnderTest test;
        test.navigate({ { u"fund"_s, true }, { u"txIds"_s, QVariantList { id } } });
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO gone"_s }), QString());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: .*"_s));
        test.page.hide(); // the preview would read the ledger as well
        test.navigate({});
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE gone RENAME TO transactions"_s }), QString());
        test.page.show();
        QVERIFY(test.shows(u"流水读取失败："_s));
        QCOMPARE(test.cells(2), QStringList { u"+甲"_s });
    }

    void measuresAndFurtherTextAreStored()
    {
        PageUnderTest test;
        test.navigate({ { u"kind"_s, u"independence_statement"_s } });
        test.button(u"公司资产独立保管、独立使用"_s)->toggle();
        test.type(u"其他独立性措施"_s, u"每年审计"_s);
        QVERIFY(test.previewSays(u"（五）其他独立性措施：每年审计"_s));
        test.type(u"声明基准日"_s, u"2025-12-31"_s);
        test.press(u"生成文书"_s);
        QCOMPARE(
            stored(u"doc_no, doc_date, extra_text"_s), u"KYR-DC-2025-0001|2025-12-31|每年审计"_s);
        QVERIFY(!TestDatabase::row(u"SELECT selected_items FROM documents"_s).contains(u"资产"_s));
        QVERIFY2(test.button(u"公司资产独立保管、独立使用"_s)->isChecked(), "ready for the next");
    }

    void anIncompleteProfileIsPointedOutBeforehand()
    {
        QCOMPARE(TestDatabase::run({ u"UPDATE company_profile SET shareholder_name = ' '"_s }),
            QString());
        PageUnderTest test;
        QVERIFY(test.shows(u"公司档案不完整"_s));
        QSignalSpy asked(&test.page, &IPage::navigateRequested);
        test.press(u"填写公司档案"_s);
        QCOMPARE(asked.first().first().value<PageId>(), PageId::Settings);
    }
};

static const RegisteredTest<TestDocumentForms> registered;

#include "TestDocumentForms.moc"
