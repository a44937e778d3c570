#include "db/TransactionDao.h"
#include "dialogs/pickers/TxPickerDialog.h"
#include "dialogs/pickers/VoucherPickerDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTableView>

using namespace Qt::StringLiterals;
using Hands::press;
using TestLedger::add;
using TestLedger::entry;

namespace {

QTableView* table(const QDialog& dialog)
{
    return dialog.findChild<QTableView*>(u"pickerTable"_s);
}

void search(const QDialog& dialog, const QString& keyword)
{
    dialog.findChild<QLineEdit*>(u"pickerSearch"_s)->setText(keyword);
}

QString count(const QDialog& dialog)
{
    return dialog.findChild<QLabel*>(u"pickerCount"_s)->text();
}

// Entries 1 to 3: amounts 900.00, 1,000.00 and 50.00, the last day first in the table.
bool addThree()
{
    Transaction lamp = entry(u"2025-01-01"_s, Category::BusinessExpense, Direction::Out, 90'000);
    lamp.summary = u"灯具"_s;
    Transaction fee = entry(u"2025-01-02"_s, Category::BusinessIncome, Direction::In, 100'000);
    fee.summary = u"安装费"_s;
    Transaction tax = entry(u"2025-01-03"_s, Category::TaxFee, Direction::Out, 5'000);
    tax.summary = u"增值税"_s;
    return add(lamp) == 1 && add(fee) == 2 && add(tax) == 3;
}

} // namespace

class TestPickers final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theFormerChoiceIsTickedAndReplacedInTableOrder()
    {
        QVERIFY(addThree());
        QVERIFY(TransactionDao().updateAutoRisk(2, RiskLevel::High, { u"原因"_s }));
        TxPickerDialog picker({ 1, 99 });
        const QAbstractItemModelTester tester(table(picker)->model());
        picker.show();
        QCOMPARE(count(picker), u"已选 1 笔"_s);
        QCOMPARE(table(picker)->model()->index(0, 3).data().toString(), u"对方"_s);
        QCOMPARE(Hands::column(table(picker), 4),
            (QStringList { u"50.00"_s, u"1,000.00"_s, u"900.00"_s }));
        QCOMPARE(
            Hands::column(table(picker), 6), (QStringList { QString(), u"高风险"_s, QString() }));
        table(picker)->setFocus();
        table(picker)->selectRow(0);
        QTest::keyClick(table(picker), Qt::Key_Space);
        press(picker, u"确定选择"_s);
        QCOMPARE(picker.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(picker.selectedIds(), (QList<qint64> { 3, 1 }));
    }

    void ticksSurviveSearchAndSortAndFollowTheMouse()
    {
        QVERIFY(addThree());
        TxPickerDialog picker({});
        picker.show();
        QTableView* view = table(picker);
        search(picker, u" 税 "_s);
        QCOMPARE(Hands::column(view, 2), QStringList { u"增值税"_s });
        press(picker, u"全选当前列表"_s);
        search(picker, u"1000.00"_s);
        press(picker, u"全选当前列表"_s);
        QCOMPARE(count(picker), u"已选 2 笔"_s);
        search(picker, {});
        view->sortByColumn(4, Qt::AscendingOrder);
        QCOMPARE(Hands::column(view, 4), (QStringList { u"50.00"_s, u"900.00"_s, u"1,000.00"_s }));
        QCOMPARE(picker.selectedIds(), (QList<qint64> { 3, 2 }));
        view->sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(Hands::column(view, 2), (QStringList { u"安装费"_s, u"灯具"_s, u"增值税"_s }));
        press(picker, u"清空勾选"_s);
        QVERIFY2(picker.selectedIds().isEmpty(), "nothing ticked, nothing linked");
        Hands::clickCell(view, 0, 0);
        QCOMPARE(picker.selectedIds(), QList<qint64> { 2 });
        Hands::clickCell(view, 1, 2);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {},
            view->visualRect(view->model()->index(1, 2)).center());
        QCOMPARE(picker.selectedIds(), (QList<qint64> { 2, 1 }));
    }

    void aLedgerThatCannotBeReadIsNoChoice()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^SQL error"_s));
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO gone"_s }), QString());
        TxPickerDialog picker({ 1 });
        picker.show();
        QVERIFY(!ModalAnswerer::buttonOf(&picker, u"确定选择"_s));
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE gone RENAME TO transactions"_s }), QString());
    }

    void vouchersThatAreThereAlreadyAreLeftOut()
    {
        for (int i = 0; i < 3; ++i)
            QVERIFY(TestLedger::addVoucher(0) > 0);
        VoucherPickerDialog picker({ 2 });
        const QAbstractItemModelTester tester(table(picker)->model());
        picker.show();
        press(picker, u"全选当前列表"_s);
        press(picker, u"确定添加"_s);
        QCOMPARE(picker.selectedIds(), (QList<qint64> { 3, 1 }));
    }

    void anEmptyArchiveSaysWhatToDo()
    {
        VoucherPickerDialog picker({});
        picker.show();
        QVERIFY(!table(picker)->isVisible());
        QVERIFY(Hands::shows(picker, u"凭证库为空，请先使用「从本地添加新凭证」上传文件"_s));
    }
};

static const RegisteredTest<TestPickers> registered;

#include "TestPickers.moc"
