#include "db/LinkDao.h"
#include "dialogs/vouchers/VoucherEditDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "widgets/Banner.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using Hands::press;

namespace {

// A voucher of two entries, of the given projects and, when above 0, of the contract.
qint64 addLinked(const QList<qint64>& projects, qint64 contractId)
{
    LinkDao links;
    const auto add = [] {
        return TestLedger::add(TestLedger::entry(u"2025-01-01"_s, Category::Other, Direction::Out));
    };
    const qint64 id = TestLedger::addVoucher(add());
    bool done = links.link(SourceType::Voucher, id, TargetType::Transaction, add());
    for (const qint64 project : projects)
        done = done && links.link(SourceType::Voucher, id, TargetType::Project, project);
    if (contractId > 0)
        done = done && links.link(SourceType::Voucher, id, TargetType::Contract, contractId);
    return done ? id : 0;
}

QStringList storedLinks()
{
    return TestDatabase::rows(u"SELECT target_type, target_id FROM entity_links ORDER BY 1, 2"_s);
}

} // namespace

class TestVoucherEditDialog final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void whatSavingDropsIsSaidBefore()
    {
        const auto archived = ProjectStatus::Archived;
        const qint64 first = TestLedger::addProject(u"展厅"_s, u"客户"_s, archived);
        const qint64 second = TestLedger::addProject(u"导视"_s, u"客户"_s, archived);
        const qint64 contract = TestLedger::addContract(second, u"设计合同"_s);
        VoucherEditDialog dialog(addLinked({ first, second }, contract));
        dialog.show();
        QCOMPARE(dialog.findChild<Banner*>(u"droppedLinks"_s)->text(),
            u"保存后，本凭证与以下对象的关联会被移除：项目「导视」、合同「设计合同」。"_s);
        QVERIFY(dialog.findChild<QComboBox*>(u"voucherProject"_s)
                    ->currentText()
                    .startsWith(u"展厅（P-"_s));
        dialog.findChild<QLineEdit*>(u"voucherName"_s)->setText(u" 新名 "_s);
        press(dialog, u"保存"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(
            TestDatabase::row(u"SELECT name, voucher_date FROM vouchers"_s), u"新名|2025-01-01"_s);
        QCOMPARE(storedLinks(),
            (QStringList { u"project|1"_s, u"transaction|1"_s, u"transaction|2"_s }));
    }

    void clearedEntriesLoseTheirLinksBehindANoticeInALongLedger()
    {
        const qint64 id = addLinked({}, 0);
        QCOMPARE(TestLedger::addMany(5000), QString());
        VoucherEditDialog dialog(id);
        dialog.show();
        QVERIFY(!dialog.findChild<Banner*>(u"droppedLinks"_s));
        QCOMPARE(dialog.findChild<QListWidget*>(u"linkedEntries"_s)->count(), 2);
        press(dialog, u"清空流水"_s);
        QVERIFY(Hands::showsNotice([&dialog] { press(dialog, u"保存"_s); }));
        QCOMPARE(storedLinks(), QStringList());
    }

    void entriesAreChosenAnew()
    {
        VoucherEditDialog dialog(addLinked({}, 0));
        dialog.show();
        ModalAnswerer answers([](QDialog* picker) {
            press(*picker, u"清空勾选"_s);
            press(*picker, u"确定选择"_s);
        });
        press(dialog, u"选择关联流水…"_s);
        QCOMPARE(dialog.findChild<QListWidget*>(u"linkedEntries"_s)->count(), 0);
    }

    void aProjectThatIsNotOfferedStays()
    {
        VoucherEditDialog dialog(addLinked({ 77 }, 0));
        dialog.show();
        QCOMPARE(dialog.findChild<QComboBox*>(u"voucherProject"_s)->currentText(),
            u"项目 #77（历史项目）"_s);
        press(dialog, u"保存"_s);
        QCOMPARE(storedLinks().first(), u"project|77"_s);
    }

    void badInputAndFailuresKeepTheDialogOpen()
    {
        VoucherEditDialog dialog(addLinked({}, 0));
        dialog.show();
        auto* name = dialog.findChild<QLineEdit*>(u"voucherName"_s);
        auto* note = dialog.findChild<QPlainTextEdit*>(u"voucherNote"_s);
        ModalAnswerer answers;
        const auto refused = [&] {
            answers.expectButton(u"确定"_s);
            press(dialog, u"保存"_s);
            return answers.seen().last().title + u'|' + answers.seen().last().text;
        };
        name->setText(u"　"_s);
        QCOMPARE(refused(), u"信息不完整|请填写凭证名称。"_s);
        name->setText(u"a"_s);
        note->setPlainText(QString(501, u'注'));
        QCOMPARE(refused(), u"备注过长|备注不超过 500 字。"_s);
        note->setPlainText({});
        QVERIFY(TestDatabase::refuseUpdates(u"vouchers"_s));
        const QString told = refused();
        QVERIFY2(told.startsWith(u"保存失败|refused"_s) && told.endsWith(u"请重试。"_s),
            qUtf8Printable(told));
        QVERIFY(dialog.isVisible());
        QCOMPARE(storedLinks().size(), 2);
    }

    void aVoucherThatIsGoneCannotBeOpened()
    {
        QTest::ignoreMessage(QtWarningMsg, "Voucher 5 could not be read for editing");
        VoucherEditDialog dialog(5);
        ModalAnswerer answers(u"确定"_s);
        QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Rejected));
        QCOMPARE(answers.seen().at(0).text, u"该凭证已被删除。"_s);
    }
};

static const RegisteredTest<TestVoucherEditDialog> registered;

#include "TestVoucherEditDialog.moc"
