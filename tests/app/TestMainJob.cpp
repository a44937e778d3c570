#include "app/MainWindow.h"
#include "app/PageFactory.h"
#include "core/AppPaths.h"
#include "pages/ledger/LedgerModel.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "widgets/AmountField.h"
#include "widgets/Banner.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>

using namespace Qt::StringLiterals;
using Hands::press;

namespace {

template <typename Widget> Widget* part(const QWidget* window, const QString& name)
{
    auto* found = window->findChild<Widget*>(name);
    if (!found)
        qFatal("no %s", qUtf8Printable(name));
    return found;
}

QString column(const QTableView* table, int column)
{
    return Hands::column(table, column).join(u' ');
}

QString previewed(const QDialog* dialog)
{
    return part<Banner>(dialog, u"riskPreview"_s)->text().section(u'\n', 0, 0);
}

// Two payments to the owner of one month: with a third one they are a cluster.
bool storeCompany()
{
    bool stored = TestLedger::storeCompany();
    for (const auto* date : { "2025-03-01", "2025-03-10" })
        stored = stored
            && TestLedger::add(
                   TestLedger::entry(QLatin1String(date), Category::ShareholderOut, Direction::Out))
                > 0;
    RiskService().reevaluateAll();
    return stored;
}

} // namespace

/// What the program is for, once from the first key to the last, in the window of the user.
class TestMainJob final : public DatabaseTestCase {
    Q_OBJECT

    // Records a payment of 60,000 yuan to the owner and attaches the bank's receipt.
    void recordPayment(QDialog* dialog, QStringList& previews)
    {
        part<QLineEdit>(dialog, u"transDate"_s)->setText(u"2025-03-20"_s);
        part<QRadioButton>(dialog, u"directionOut"_s)->setChecked(true);
        part<AmountField>(dialog, u"amount"_s)->setAmountFen(6'000'000);
        part<QLineEdit>(dialog, u"counterpartyName"_s)->setText(u"林岚"_s);
        part<QLineEdit>(dialog, u"summary"_s)->setText(u"备用金"_s);
        part<QComboBox>(dialog, u"ownerAccount"_s)->setCurrentText(u"股东私人账户"_s);
        previews += previewed(dialog); // the category follows the direction: a business expense
        part<QComboBox>(dialog, u"ownerAccount"_s)->setCurrentText(u"对公账户"_s);
        part<QComboBox>(dialog, u"category"_s)->setCurrentText(labelOf(Category::ShareholderOut));
        previews += previewed(dialog);
        press(*dialog, u"从本地添加新凭证…"_s);
        previews += previewed(dialog);
        press(*dialog, u"保存"_s);
    }

private slots:
    void aPaymentIsRecordedProvedAndDecided()
    {
        QVERIFY(storeCompany());
        const QString receipt = AppPaths::dataDir() + u"/三月回单.pdf"_s;
        QVERIFY(TestFile::put(receipt, "%PDF-1.4"));
        MainWindow window(createPage);
        window.resize(1280, 800);
        QVERIFY(Hands::show(window));
        QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
        const auto* ledger = part<QTableView>(&window, u"ledgerTable"_s);
        QTRY_COMPARE(column(ledger, LedgerModel::Risk), u"正常 正常"_s);

        QStringList previews;
        {
            ModalAnswerer answers([&](QDialog* dialog) { recordPayment(dialog, previews); });
            answers.expect([](QDialog* dialog) { press(*dialog, u"选择文件…（可多选）"_s); });
            answers.expect(Hands::choosePath(receipt));
            answers.expectButton(u"保存入库"_s);
            answers.expectButton(u"确定"_s);
            QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
        }
        QCOMPARE(previews,
            QStringList({ u"保存后将标记为【高风险】："_s, u"保存后将标记为【预警】："_s,
                u"当前关键字段未触发即时风险规则（R1/R3）。"_s }));
        QCOMPARE(column(ledger, LedgerModel::Summary), u"备用金 摘要 摘要"_s);
        QCOMPARE(column(ledger, LedgerModel::Vouchers), u"1 0 0"_s);
        QCOMPARE(column(ledger, LedgerModel::Risk), u"中风险 中风险 中风险"_s);

        Hands::clickCell(ledger, 0, LedgerModel::Actions);
        auto* nature = part<QComboBox>(&window, u"fundNature"_s);
        QTRY_VERIFY(nature->isVisible());
        nature->setCurrentText(u"备用金"_s);
        press(window, u"生成文书"_s);
        QCOMPARE(TestDatabase::rows(u"SELECT doc_type, fund_direction, fund_nature, "
                                    "(SELECT GROUP_CONCAT(target_id) FROM entity_links WHERE "
                                    "source_type = 'document') FROM documents"_s),
            QStringList { u"fund_decision|out|备用金|3"_s });
        const QDir exports(AppPaths::exportsDir());
        const QStringList pdfs = exports.entryList({ u"*.pdf"_s });
        QCOMPARE(pdfs.size(), 1);
        QVERIFY(TestFile::bytesOf(exports.filePath(pdfs.first())).startsWith("%PDF-"));

        press(window, pageLabel(PageId::Ledger).text);
        QTRY_VERIFY(ledger->isVisible());
        QCOMPARE(column(ledger, LedgerModel::Risk), u"正常 中风险 中风险"_s);
    }
};

static const RegisteredTest<TestMainJob> registered;

#include "TestMainJob.moc"
