#include "db/ContractDao.h"
#include "db/ProjectDao.h"
#include "dialogs/projects/ContractDialog.h"
#include "dialogs/projects/ProjectDialog.h"
#include "services/projects/ProjectService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "widgets/AmountField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using TestLedger::addContract;
using TestLedger::addProject;

namespace {

QLineEdit* edit(const QWidget& dialog, const QString& name)
{
    return dialog.findChild<QLineEdit*>(name);
}

void save(QDialog& dialog)
{
    dialog.show();
    ModalAnswerer::buttonOf(&dialog, u"保存"_s)->click();
}

bool isAccepted(const QDialog& dialog)
{
    return dialog.result() == QDialog::Accepted;
}

} // namespace

class TestProjectDialogs final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewProjectIsStoredWithACode()
    {
        ProjectDialog dialog(0);
        edit(dialog, u"name"_s)->setText(u" %1 <b>展厅</b> "_s);
        edit(dialog, u"clientName"_s)->setText(u"客户"_s);
        dialog.findChild<QComboBox*>()->setCurrentText(u"进行中"_s);
        edit(dialog, u"startDate"_s)->setText(u"2026.1.5"_s);
        dialog.findChild<QCheckBox*>()->setChecked(true);
        dialog.findChild<AmountField*>()->setAmountFen(12'345'678);
        edit(dialog, u"manager"_s)->setText(u"林岚"_s);
        dialog.findChild<QPlainTextEdit*>()->setPlainText(u"备注"_s);
        QVERIFY(Hands::show(dialog));
        QTest::keyClick(&dialog, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(isAccepted(dialog));
        QCOMPARE(TestDatabase::row(u"SELECT id, name, code, client_name, status, start_date, "
                                   "end_date, budget_fen, manager, note FROM projects"_s),
            u"%1|%1 <b>展厅</b>|P-%2-0001|客户|ongoing|2026-01-05|∅|12345678|林岚|备注"_s
                .replace(u"%1|"_s, QString::number(dialog.projectId()) + u'|')
                .replace(u"%2"_s, QString::number(QDate::currentDate().year())));
    }

    void savingWithoutAChangeAltersNothing()
    {
        const qint64 id = addProject(u"很长的项目名称"_s.repeated(9));
        QCOMPARE(
            TestDatabase::run({ u"UPDATE projects SET code = '', budget_fen = NULL"_s }), u""_s);
        const qint64 contract = addContract(id, u"合同"_s);
        QCOMPARE(
            TestDatabase::run({ u"UPDATE contracts SET amount_fen = 123456789012345"_s }), u""_s);
        const QString projectRow = u"SELECT name, code, client_name, status, start_date, end_date, "
                                   "budget_fen, manager, note FROM projects"_s;
        const QString contractRow
            = u"SELECT project_id, name, code, party_b, amount_fen, sign_date, status, note "
              "FROM contracts"_s;
        const QStringList before { TestDatabase::row(projectRow), TestDatabase::row(contractRow) };
        ProjectDialog project(id);
        save(project);
        ContractDialog contractDialog(0, contract);
        save(contractDialog);
        QVERIFY(isAccepted(project) && isAccepted(contractDialog));
        QCOMPARE((QStringList { TestDatabase::row(projectRow), TestDatabase::row(contractRow) }),
            before);
    }

    void aNewContractIsStored()
    {
        const qint64 project = addProject(u"甲"_s);
        ContractDialog dialog(project, 0);
        QCOMPARE(dialog.findChild<AmountField*>()->text(), u"未约定金额"_s);
        edit(dialog, u"name"_s)->setText(u"设计合同"_s);
        edit(dialog, u"partyB"_s)->setText(u"乙方公司"_s);
        edit(dialog, u"signDate"_s)->setText(u"20260203"_s);
        dialog.findChild<QComboBox*>()->setCurrentText(u"已履行完毕"_s);
        save(dialog);
        QVERIFY(isAccepted(dialog));
        const auto stored = ContractDao().findById(dialog.contractId());
        QVERIFY(stored);
        QCOMPARE(stored->projectId, project);
        QCOMPARE(stored->code, u"HT-%1-0001"_s.arg(QDate::currentDate().year()));
        QCOMPARE(stored->amountFen, 0);
        QCOMPARE(stored->signDate, QDate(2026, 2, 3));
        QCOMPARE(stored->status, ContractStatus::Completed);
    }

    void anIncompleteFormSaysWhatIsMissingAndStays()
    {
        ModalAnswerer answers(u"确定"_s);
        ProjectDialog dialog(0);
        edit(dialog, u"name"_s)->setText(u"甲"_s);
        save(dialog);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().value(0).title, u"信息不完整"_s);
        QVERIFY(answers.seen().value(0).text.contains(u"请填写客户名称。"_s));
        QTRY_COMPARE(dialog.focusWidget(), edit(dialog, u"clientName"_s));
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM projects"_s), u"0"_s);
        answers.expectButton(u"放弃修改"_s);
        dialog.reject();
    }

    void aBrokenStoredDateIsShownAndNotSaved()
    {
        const qint64 id = addProject(u"甲"_s);
        const qint64 contract = addContract(id, u"合同"_s);
        QCOMPARE(TestDatabase::run({ u"UPDATE contracts SET sign_date = '2026-02-30'"_s,
                     u"UPDATE projects SET end_date = '年底'"_s }),
            u""_s);
        ModalAnswerer answers(u"确定"_s);
        ContractDialog dialog(id, contract);
        QCOMPARE(edit(dialog, u"signDate"_s)->text(), u"2026-02-30"_s);
        save(dialog);
        QCOMPARE(answers.seen().value(0).title, u"日期有误"_s);
        answers.expectButton(u"确定"_s);
        ProjectDialog project(id);
        QCOMPARE(edit(project, u"endDate"_s)->text(), u"年底"_s);
        save(project);
        QVERIFY(!isAccepted(dialog) && !isAccepted(project));
        QCOMPARE(TestDatabase::row(u"SELECT sign_date, end_date FROM contracts, projects"_s),
            u"2026-02-30|年底"_s);
    }

    void aFailedSaveKeepsTheInput()
    {
        const qint64 id = addProject(u"甲"_s);
        QVERIFY(TestDatabase::refuseUpdates(u"projects"_s));
        ModalAnswerer answers(u"确定"_s);
        ProjectDialog dialog(id);
        edit(dialog, u"name"_s)->setText(u"乙"_s);
        save(dialog);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().value(0).title, u"保存失败"_s);
        QVERIFY(answers.seen().value(0).text.contains(u"refused"_s));
        answers.expectButton(u"放弃修改"_s);
        dialog.reject();
    }

    void aCodeThatIsTakenIsTold()
    {
        Project first { .name = u"甲"_s, .code = u"<b>%1"_s, .clientName = u"客户"_s };
        QVERIFY(ProjectService::saveProject(first).ok);
        Project second { .name = u"乙"_s, .code = first.code, .clientName = u"客户"_s };
        const QRegularExpression logged(u"SQL error: UNIQUE constraint failed: .*code"_s);
        QTest::ignoreMessage(QtWarningMsg, logged);
        const QString told = ProjectService::saveProject(second).message;
        QVERIFY2(
            told.startsWith(u"项目编号「<b>%1」已被使用，请换一个编号。"_s), qUtf8Printable(told));

        Contract contract { .projectId = first.id, .name = u"合同"_s, .code = u"A"_s };
        contract.signDate = QDate(2026, 1, 2);
        QVERIFY(ProjectService::saveContract(contract).ok);
        contract.code.clear();
        QVERIFY(ProjectService::saveContract(contract).ok);
        Contract other { .projectId = first.id, .name = u"合同"_s, .code = u"B"_s };
        other.signDate = contract.signDate;
        QVERIFY(ProjectService::saveContract(other).ok);
        other.code.clear();
        QTest::ignoreMessage(QtWarningMsg, logged);
        QVERIFY(ProjectService::saveContract(other).message.startsWith(
            u"已有另一个没有编号的合同，请填写合同编号。"_s));
    }

    void aRecordThatIsGoneIsToldAndWritesNothing()
    {
        const qint64 id = addProject(u"甲"_s);
        ProjectDialog open(id);
        QVERIFY(ProjectDao().remove(id));
        ModalAnswerer answers(u"确定"_s);
        save(open);
        QVERIFY(answers.seen().value(0).text.contains(u"该项目可能已被删除。"_s));
        answers.expectButton(u"确定"_s);
        QCOMPARE(ProjectDialog(id).exec(), static_cast<int>(QDialog::Rejected));
        answers.expectButton(u"确定"_s);
        QCOMPARE(ContractDialog(id, 7).exec(), static_cast<int>(QDialog::Rejected));
        QCOMPARE(answers.seen().value(1).title, u"无法打开项目"_s);
        QCOMPARE(answers.seen().value(2).title, u"无法打开合同"_s);
    }
};

static const RegisteredTest<TestProjectDialogs> registered;

#include "TestProjectDialogs.moc"
