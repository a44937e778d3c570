#include "core/AppPaths.h"
#include "db/TransactionDao.h"
#include "dialogs/transaction/TransactionDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/InputMethod.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "widgets/AmountField.h"
#include "widgets/Banner.h"
#include "widgets/DateEditor.h"
#include "widgets/FileIntake.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>

using namespace Qt::StringLiterals;
using Hands::press;

namespace {

template <typename Widget> Widget* part(const QWidget& dialog, const QString& name)
{
    return dialog.findChild<Widget*>(name);
}

void fill(const QDialog& dialog)
{
    part<AmountField>(dialog, u"amount"_s)->setAmountFen(6'000'000);
    part<QLineEdit>(dialog, u"counterpartyName"_s)->setText(u"甲公司 %1"_s);
    part<QLineEdit>(dialog, u"summary"_s)->setText(u"设备款"_s);
}

QString preview(const QDialog& dialog)
{
    return part<Banner>(dialog, u"riskPreview"_s)->text();
}

// The list of vouchers as the user reads it, a line each.
QStringList vouchers(const QDialog& dialog)
{
    const auto* table = part<QTableView>(dialog, u"attachedVouchers"_s);
    QStringList lines = Hands::column(table, 0);
    const QStringList changes = Hands::column(table, 1);
    for (qsizetype row = 0; row < lines.size(); ++row)
        lines[row] += u'|' + changes.at(row);
    return lines;
}

int linkCount()
{
    return TestDatabase::row(u"SELECT COUNT(*) FROM entity_links"_s).toInt();
}

qint64 addLargeEntry()
{
    return TestLedger::add(
        TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out, 6'000'000));
}

} // namespace

class TestTransactionDialog final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewEntryIsTypedAsTabLeadsAndStored()
    {
        TransactionDialog dialog(qint64(0));
        QVERIFY(Hands::show(dialog));
        QCOMPARE(dialog.windowTitle(), u"登记资金流水"_s);
        part<QRadioButton>(dialog, u"directionOut"_s)->setChecked(true);
        QStringList reached;
        const auto typeAndTab = [&](const QString& text, int times) {
            InputMethod::commit(text);
            reached += Hands::namesByTab(dialog, times);
        };
        typeAndTab(u"20250203"_s, 2);
        const auto* amount = part<AmountField>(dialog, u"amount"_s)->findChild<QLineEdit*>();
        QTRY_VERIFY(!amount->selectedText().isEmpty());
        typeAndTab(u"1234.5"_s, 4);
        typeAndTab(u" 甲 %1 公司"_s, 2);
        typeAndTab(u"设备款"_s, 1);
        typeAndTab(u"两台服务器"_s, 2);
        QCOMPARE(reached.join(u' '),
            u"交易日期 收入 金额（元） 本方账户 资金分类 关联项目 对方名称 对方账户类型 摘要 备注 "
            "添加已归档凭证…"_s);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(dialog.entryId() > 0);
        QCOMPARE(TestDatabase::row(
                     u"SELECT trans_date, direction, amount_fen, owner_account_type, category, "
                     "project_id, counterparty_name, counterparty_account_type, summary, note, "
                     "risk_evaluated_at IS NOT NULL FROM transactions"_s),
            u"2025-02-03|out|123450|company|business_expense|∅|甲 %1 公司|unknown|设备款|两台服务器|1"_s);
    }

    void aProblemIsToldAtItsField_data()
    {
        addColumns<QString, QString, QString>("field", "value", "text");
        addCase("date", u"transDate"_s, u"2025-02-30"_s, u"请选择交易日期"_s);
        addCase(
            "amount", u"amount"_s, u"100000000"_s, u"金额必须大于 0 且不超过 99,999,999.99 元"_s);
        addCase(
            "emptied amount", u"amount"_s, u""_s, u"金额必须大于 0 且不超过 99,999,999.99 元"_s);
        addCase("summary", u"summary"_s, QString(65, u'款'), u"摘要需 2–64 个字"_s);
        addCase("counterparty", u"counterpartyName"_s, u" "_s, u"请填写对方名称"_s);
        addCase("note", u"note"_s, QString(501, u'备'), u"备注最多 500 个字"_s);
    }

    void aProblemIsToldAtItsField()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, text);
        TransactionDialog dialog(qint64(0));
        QVERIFY(Hands::show(dialog));
        fill(dialog);
        if (auto* area = part<QPlainTextEdit>(dialog, field))
            area->setPlainText(value);
        else if (auto* amount = part<AmountField>(dialog, field))
            amount->findChild<QLineEdit*>()->setText(value);
        else
            part<QLineEdit>(dialog, field)->setText(value);
        QVERIFY(preview(dialog).endsWith(u"\n（请先完善必填项，预演结果随填写更新）"_s));
        ModalAnswerer answers(u"确定"_s);
        press(dialog, u"保存"_s);
        QVERIFY(dialog.isVisible());
        QVERIFY(answers.seen().at(0).text.contains(text));
        QTRY_COMPARE(dialog.focusWidget()->objectName(), field);
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM transactions"_s), u"0"_s);
    }

    void aFailedSaveKeepsTheInput()
    {
        const qint64 id = addLargeEntry();
        QVERIFY(TestDatabase::refuseUpdates(u"transactions"_s));
        TransactionDialog dialog(id);
        dialog.show();
        part<QLineEdit>(dialog, u"summary"_s)->setText(u"改过的摘要"_s);
        ModalAnswerer answers(u"确定"_s);
        press(dialog, u"保存"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(answers.seen().at(0).title, u"保存失败"_s);
        QCOMPARE(part<QLineEdit>(dialog, u"summary"_s)->text(), u"改过的摘要"_s);
    }

    void aMarkedVoucherIsUnlinkedBySavingOnly()
    {
        const qint64 id = addLargeEntry();
        QVERIFY(TestLedger::addVoucher(id) > 0);
        const QString line = u"[其他] 回单  2025-01-01|"_s;
        {
            TransactionDialog dialog(id);
            dialog.show();
            QCOMPARE(vouchers(dialog), QStringList { line + u"已关联"_s });
            QVERIFY(!preview(dialog).contains(u"大额转账"_s));
            press(dialog, u"移除关联"_s);
            QCOMPARE(vouchers(dialog), QStringList { line + u"移除关联（保存后生效）"_s });
            QVERIFY2(preview(dialog).contains(u"大额转账"_s), "counts what will be left");
            ModalAnswerer answers(u"放弃修改"_s);
            press(dialog, u"取消"_s);
            QTRY_VERIFY(!dialog.isVisible());
        }
        QCOMPARE(linkCount(), 1);
        TransactionDialog dialog(id);
        QVERIFY(Hands::show(dialog));
        auto* table = part<QTableView>(dialog, u"attachedVouchers"_s);
        for (const QString& change :
            { u"移除关联（保存后生效）"_s, u"已关联"_s, u"移除关联（保存后生效）"_s }) {
            table->setFocus();
            QTest::keyClick(table, Qt::Key_Delete);
            QCOMPARE(vouchers(dialog), QStringList { line + change });
        }
        QTest::keyClick(&dialog, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(linkCount(), 0);
        QCOMPARE(TestLedger::autoRisk(id), u"low|R3"_s);
    }

    void anArchivedProjectStaysTheEntrysProject()
    {
        Transaction entry = TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out);
        entry.projectId = TestLedger::addProject(u"展厅 %1"_s, u"甲"_s, ProjectStatus::Archived);
        TransactionDialog dialog(TestLedger::add(entry));
        dialog.show();
        QCOMPARE(dialog.windowTitle(), u"编辑资金流水"_s);
        QVERIFY(part<QComboBox>(dialog, u"project"_s)
                    ->currentText()
                    .endsWith(u" 展厅 %1（历史项目）"_s));
        press(dialog, u"保存"_s);
        QCOMPARE(TransactionDao().findById(dialog.entryId())->projectId, entry.projectId);
        TransactionDialog other(qint64(0));
        QCOMPARE(part<QComboBox>(other, u"project"_s)->count(), 1);
    }

    void theRisksAreToldWhileTheFormIsFilledIn()
    {
        TransactionDialog dialog(qint64(0));
        fill(dialog);
        auto* banner = part<Banner>(dialog, u"riskPreview"_s);
        QCOMPARE(banner->kind(), BannerKind::Warning);
        part<QComboBox>(dialog, u"ownerAccount"_s)->setCurrentIndex(1);
        QCOMPARE(banner->kind(), BannerKind::Danger);
        QVERIFY(preview(dialog).startsWith(u"保存后将标记为【高风险】：\n私户收取经营款项"_s));
        part<QPlainTextEdit>(dialog, u"note"_s)->setPlainText(u"见设备合同"_s);
        QVERIFY(!preview(dialog).contains(u"大额转账"_s));
        part<QComboBox>(dialog, u"category"_s)
            ->setCurrentIndex(static_cast<int>(Category::ShareholderIn));
        QCOMPARE(banner->kind(), BannerKind::Info);
        QVERIFY(preview(dialog).contains(u"频繁互转规则"_s));
    }

    void choicesFollowUntilTheUserMakesThem()
    {
        Transaction known = TestLedger::entry(u"2025-03-01"_s, Category::Other, Direction::Out);
        known.counterpartyName = u"林岚"_s;
        known.counterpartyAccountType = AccountType::Private;
        QVERIFY(TestLedger::add(known) > 0);
        TransactionDialog dialog(qint64(0));
        auto* name = part<QLineEdit>(dialog, u"counterpartyName"_s);
        auto* account = part<QComboBox>(dialog, u"counterpartyAccount"_s);
        name->setText(u"林岚"_s);
        QCOMPARE(account->currentText(), u"股东私人账户"_s);
        name->setText(u"林岚岚"_s);
        QCOMPARE(account->currentText(), u"不明"_s);
        account->setCurrentIndex(0);
        name->setText(u"林岚"_s);
        QCOMPARE(account->currentText(), u"对公账户"_s);
        auto* category = part<QComboBox>(dialog, u"category"_s);
        category->setCurrentIndex(static_cast<int>(Category::TaxFee));
        part<QRadioButton>(dialog, u"directionOut"_s)->setChecked(true);
        QCOMPARE(category->currentText(), u"税费缴纳"_s);
    }

    void enterTakesAKnownNameAndDoesNotSave()
    {
        QVERIFY(addLargeEntry() > 0);
        TransactionDialog dialog(qint64(0));
        QVERIFY(Hands::show(dialog));
        fill(dialog);
        auto* name = part<QLineEdit>(dialog, u"counterpartyName"_s);
        name->setFocus();
        name->selectAll();
        InputMethod::commit(u"方"_s);
        QTRY_VERIFY(name->completer()->popup()->isVisible());
        QTest::keyClick(name->completer()->popup(), Qt::Key_Down);
        QTest::keyClick(name->completer()->popup(), Qt::Key_Return);
        QCOMPARE(name->text(), u"对方"_s);
        QVERIFY(dialog.isVisible());
    }

    void aCopyStartsWithValuesAndToday()
    {
        const qint64 id = addLargeEntry();
        QVERIFY(TestLedger::addVoucher(id) > 0);
        TransactionDialog dialog(*TransactionDao().findById(id));
        dialog.show();
        QCOMPARE(dialog.windowTitle(), u"登记资金流水"_s);
        QCOMPARE(part<DateEditor>(dialog, u"transDate"_s)->date(), QDate::currentDate());
        QVERIFY(vouchers(dialog).isEmpty());
        press(dialog, u"保存"_s);
        QVERIFY(dialog.entryId() > id);
        QCOMPARE(TransactionDao().findById(dialog.entryId())->amountFen, 6'000'000);
        QCOMPARE(linkCount(), 1);
    }

    void anEntryThatIsGoneIsNotShown()
    {
        ModalAnswerer answers(u"确定"_s);
        QCOMPARE(TransactionDialog(qint64(77)).exec(), static_cast<int>(QDialog::Rejected));
        QCOMPARE(answers.seen().at(0).title, u"无法打开流水"_s);
        QVERIFY(answers.seen().at(0).text.contains(u"该流水可能已被删除。"_s));
    }

    void pickedVouchersAreAttachedAndMarkedOnesKept()
    {
        const qint64 id = addLargeEntry();
        QVERIFY(TestLedger::addVoucher(id) > 0 && TestLedger::addVoucher(0) > 0);
        QCOMPARE(
            TestDatabase::run({ u"UPDATE vouchers SET stored_path = 'voucher_assets/a.pdf'"_s }),
            QString());
        TransactionDialog dialog(id);
        dialog.show();
        press(dialog, u"移除关联"_s);
        ModalAnswerer answers([](QDialog* picker) {
            press(*picker, u"全选当前列表"_s);
            press(*picker, u"确定添加"_s);
        });
        press(dialog, u"添加已归档凭证…"_s);
        const QString line = u"[其他] 回单  2025-01-01|"_s;
        QCOMPARE(vouchers(dialog),
            (QStringList { line + u"已关联"_s, line + u"新增关联（保存后生效）"_s }));
        press(dialog, u"保存"_s);
        QCOMPARE(linkCount(), 2);
    }

    void droppedFilesAreArchivedAndStayThereWhenTheEntryIsNot()
    {
        const QString file = AppPaths::dataDir() + u"/三月回单.png"_s;
        QVERIFY(TestFile::put(file, "picture"));
        TransactionDialog dialog(qint64(0));
        QVERIFY(Hands::show(dialog));
        ModalAnswerer answers(u"保存入库"_s);
        answers.expectButton(u"确定"_s);
        auto* note = part<QPlainTextEdit>(dialog, u"note"_s);
        QVERIFY2(Hands::dropFiles(note, { file }), "the sender keeps its file");
        QTRY_COMPARE(vouchers(dialog).size(), 1);
        QVERIFY(vouchers(dialog).at(0).contains(u"三月回单"_s));
        QCOMPARE(note->toPlainText(), QString());

        QTRY_VERIFY(!QApplication::activeModalWidget());
        answers.expectButton(u"放弃修改"_s);
        press(dialog, u"取消"_s);
        QTRY_VERIFY(!dialog.isVisible());
        QVERIFY(answers.seen().constLast().text.contains(u"刚才入库的 1 个凭证会保留在凭证库中"_s));
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM vouchers"_s), u"1"_s);
        QCOMPARE(linkCount(), 0);
    }

    void aPastedPictureIsTakenByTheVoucherDialogAndTextIsNot()
    {
        TransactionDialog dialog(qint64(0));
        QVERIFY(Hands::show(dialog));
        QSignalSpy offered(dialog.findChild<FileIntake*>(), &FileIntake::offered);
        auto* summary = part<QLineEdit>(dialog, u"summary"_s);
        summary->setFocus();
        QGuiApplication::clipboard()->setText(u"设备款"_s);
        QTest::keyClick(summary, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(summary->text(), u"设备款"_s);

        ModalAnswerer answers(u"取消"_s);
        answers.expectButton(u"放弃修改"_s);
        QImage picture(4, 4, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QGuiApplication::clipboard()->setImage(picture);
        QTest::keyClick(summary, Qt::Key_V, Qt::ControlModifier);
        QTRY_COMPARE(offered.size(), 1);
        const QString pasted = offered.at(0).at(0).toStringList().value(0);
        QVERIFY(QFileInfo(pasted).fileName().startsWith(u"粘贴图片_"_s));
        QCOMPARE(QImage(pasted).size(), picture.size());
        QCOMPARE(answers.seen().at(0).title, u"添加凭证"_s);
        QCOMPARE(summary->text(), u"设备款"_s);
    }
};

static const RegisteredTest<TestTransactionDialog> registered;

#include "TestTransactionDialog.moc"
