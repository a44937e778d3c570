#include "dialogs/transaction/RiskReviewDialog.h"
#include "services/entries/EntryService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"

#include <QLabel>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using Hands::press;

namespace {

void explain(const QDialog& dialog, const QString& text)
{
    dialog.findChild<QPlainTextEdit*>(u"reviewNote"_s)->setPlainText(text);
}

qint64 addWarnedEntry()
{
    return EntryService::save(
        TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out, 6'000'000), {}, {})
        .entryId;
}

QString storedReview()
{
    return TestDatabase::row(
        u"SELECT risk_level, risk_manual_override, risk_manual_note FROM transactions"_s);
}

} // namespace

class TestRiskReviewDialog final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aLevelAndItsExplanationAreRequired()
    {
        RiskReviewDialog dialog(addWarnedEntry());
        dialog.show();
        QVERIFY(dialog.findChild<QLabel*>(u"riskReasons"_s)->text().contains(u"大额转账"_s));
        ModalAnswerer answers(u"确定"_s);
        press(dialog, u"保存"_s);
        press(dialog, u"正常"_s);
        answers.expectButton(u"确定"_s);
        press(dialog, u"保存"_s);
        explain(dialog, u" 已 "_s);
        answers.expectButton(u"确定"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(storedReview(), u"low|∅|∅"_s);
        const QStringList texts { u"请选择复核等级"_s, u"请填写复核说明"_s,
            u"复核说明需 2–500 个字"_s };
        for (qsizetype i = 0; i < texts.size(); ++i)
            QVERIFY(answers.seen().at(i).text.contains(texts.at(i)));

        explain(dialog, u"已核对合同 "_s);
        press(dialog, u"保存"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(storedReview(), u"normal|normal|已核对合同"_s);
    }

    void anOverrideCanBeTakenBack()
    {
        const qint64 id = addWarnedEntry();
        {
            RiskReviewDialog first(id);
            first.show();
            QVERIFY2(
                !ModalAnswerer::buttonOf(&first, u"恢复自动判定"_s), "nothing to go back from");
        }
        QVERIFY(EntryService::review(id, RiskLevel::High, u"疑点"_s).ok);
        RiskReviewDialog dialog(id);
        dialog.show();
        QVERIFY(ModalAnswerer::buttonOf(&dialog, u"高风险"_s)->isChecked());
        press(dialog, u"恢复自动判定"_s);
        explain(dialog, u"疑点已排除"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(storedReview(), u"low|∅|疑点已排除"_s);
    }

    void aReviewThatCannotBeStoredKeepsTheInput()
    {
        RiskReviewDialog dialog(addWarnedEntry());
        dialog.show();
        press(dialog, u"中风险"_s);
        explain(dialog, u"已核对"_s);
        QVERIFY(TestDatabase::refuseUpdates(u"transactions"_s));
        ModalAnswerer answers(u"确定"_s);
        press(dialog, u"保存"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().at(0).title, u"保存失败"_s);
        answers.expectButton(u"放弃修改"_s);
        press(dialog, u"取消"_s);
        QTRY_VERIFY(!dialog.isVisible());
    }

    void anEntryThatIsGoneIsNotShown()
    {
        ModalAnswerer answers(u"确定"_s);
        QCOMPARE(RiskReviewDialog(77).exec(), static_cast<int>(QDialog::Rejected));
        QCOMPARE(answers.seen().at(0).title, u"无法打开流水"_s);
    }
};

static const RegisteredTest<TestRiskReviewDialog> registered;

#include "TestRiskReviewDialog.moc"
