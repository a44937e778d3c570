#include "db/LinkDao.h"
#include "pages/projects/ContractTableModel.h"
#include "pages/projects/ProjectPage.h"
#include "pages/vouchers/VoucherCard.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "vouchers_page/ArchiveSample.h"

#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryFile>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using TestDatabase::refuse;
using TestDatabase::row;
using TestDatabase::rows;
using TestLedger::addContract;
using TestLedger::addProject;
using TestLedger::hostileName;

namespace {

struct ShownPage {
    explicit ShownPage(qint64 projectId = 0)
    {
        page.resize(1180, 900);
        if (projectId > 0)
            page.applyNavParams({ { u"projectId"_s, projectId } });
        page.refresh();
        page.show();
    }

    template <typename Widget> Widget* find(const QString& name) const
    {
        return page.findChild<Widget*>(name);
    }
    void press(const QString& button) const { find<QPushButton>(button)->click(); }
    QString text(const QString& label) const { return find<QLabel>(label)->text(); }
    bool hasDetail() const { return find<QWidget>(u"ProjectDetail"_s)->isVisible(); }
    QStringList names() const { return Hands::column(find<QListView>(u"projects"_s), 0); }
    QTableView* contracts() const { return find<QTableView>(u"contracts"_s); }
    void chooseContract(int line) const
    {
        contracts()->setCurrentIndex(contracts()->model()->index(line, 0));
    }
    QList<VoucherCard*> cards() const
    {
        QList<VoucherCard*> shown;
        for (auto* card : page.findChildren<VoucherCard*>()) {
            if (card->isVisibleTo(&page))
                shown += card;
        }
        return shown;
    }

    ProjectPage page;
};

// 100.00 yuan received.
qint64 addEntry(qint64 projectId)
{
    Transaction entry = TestLedger::entry(u"2026-02-03"_s, Category::BusinessIncome, Direction::In);
    entry.projectId = projectId;
    return TestLedger::add(entry);
}

} // namespace

class TestProjectPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void searchingFindsNameOrClientAndKeepsTheChoice()
    {
        const qint64 first = addProject(u"展厅"_s, u"宁波"_s);
        addProject(u"民宿"_s, u"湖州"_s);
        ShownPage shown(first);
        auto* search = shown.find<QLineEdit>(u"projectSearch"_s);
        search->setText(u" 湖 "_s);
        QCOMPARE(shown.names(), QStringList { u"民宿"_s });
        QVERIFY(!shown.hasDetail());
        search->setText(u""_s);
        QCOMPARE(shown.text(u"projectName"_s), u"展厅"_s);

        const ShownPage unasked;
        QVERIFY(!unasked.hasDetail());
        auto* list = unasked.find<QListView>(u"projects"_s);
        list->setCurrentIndex(list->model()->index(0, 0));
        QVERIFY(unasked.hasDetail());
    }

    void aHostileNameGoesThroughUnharmed()
    {
        const qint64 id = addProject(hostileName, hostileName);
        addContract(id, hostileName);
        ShownPage shown(id);
        QCOMPARE(shown.names(), QStringList { hostileName });
        QCOMPARE(shown.text(u"projectName"_s), hostileName);
        QCOMPARE(shown.find<QLabel>(u"projectName"_s)->textFormat(), Qt::PlainText);
        QVERIFY(shown.text(u"projectInfo"_s).contains(u">&lt;b&gt;%1&amp;&quot;</td></tr>"_s));
        QCOMPARE(shown.contracts()->model()->index(0, ContractTableModel::Name).data().toString(),
            hostileName);
        ModalAnswerer answers(u"取消"_s);
        shown.press(u"deleteProject"_s);
        QVERIFY(answers.seen().value(0).text.contains(
            u"确认删除项目「%1」？\n项目下的合同登记将一并删除；已归档凭证仅解除关联，不会删除文件。"_s
                .arg(hostileName)));
    }

    void unknownProjectsAreIgnored()
    {
        const qint64 id = addProject(u"甲"_s);
        ShownPage shown(id);
        for (const qint64 unknown : { qint64(-1), qint64(0), id + 1 }) {
            shown.page.applyNavParams({ { u"projectId"_s, unknown } });
            shown.page.refresh();
            QCOMPARE(shown.text(u"projectName"_s), u"甲"_s);
        }
        QSignalSpy asked(&shown.page, &IPage::navigateRequested);
        shown.press(u"viewInLedger"_s);
        QCOMPARE(asked.at(0).at(0).value<PageId>(), PageId::Ledger);
        QCOMPARE(asked.at(0).at(1).toMap(), (NavParams { { u"projectId"_s, id } }));
    }

    void aProjectWithEntriesIsRefusedAtOnce()
    {
        const qint64 id = addProject(u"甲"_s);
        addEntry(id);
        ShownPage shown(id);
        QCOMPARE(shown.text(u"entryTotals"_s),
            u"共 1 笔 · 收入合计 100.00 元 / 支出合计 0.00 元 / 净额 100.00 元"_s);
        ModalAnswerer answers(u"确定"_s);
        shown.press(u"deleteProject"_s);
        QCOMPARE(answers.seen().value(0).title, u"无法删除项目"_s);
        QVERIFY(answers.seen().value(0).text.contains(
            u"该项目下有 1 笔流水，请先在台账中改派或删除后再删除项目。"_s));
    }

    void deletingAProjectKeepsItsVouchers()
    {
        const qint64 id = addProject(u"甲"_s);
        addContract(id, u"合同"_s);
        ArchiveSample::add(u"凭证"_s, 1, id);
        ShownPage shown(id);
        ModalAnswerer answers(u"删除"_s);
        shown.press(u"deleteProject"_s);
        QCOMPARE(row(u"SELECT (SELECT COUNT(*) FROM projects), (SELECT COUNT(*) FROM contracts), "
                     "(SELECT COUNT(*) FROM vouchers), (SELECT COUNT(*) FROM entity_links)"_s),
            u"0|0|1|0"_s);
        QVERIFY(!shown.hasDetail());
        QCOMPARE(shown.names(), QStringList());
    }

    void failedDeletionsChangeNothing_data()
    {
        addColumns<QString, bool, QString>("event", "atCommit", "message");
        addCase("contract", u"DELETE ON contracts"_s, false, u"refused"_s);
        addCase("project", u"DELETE ON projects"_s, false, u"refused"_s);
        addCase("commit", u"DELETE ON projects"_s, true, u"事务提交失败，请重试。"_s);
    }

    void failedDeletionsChangeNothing()
    {
        QFETCH(QString, event);
        QFETCH(bool, atCommit);
        QFETCH(QString, message);
        const qint64 id = addProject(u"甲"_s);
        addContract(id, u"合同"_s);
        ArchiveSample::add(u"凭证"_s, 1, id);
        if (atCommit) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"FOREIGN KEY"_s));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"commit failed"_s));
            QVERIFY(TestDatabase::refuseCommitAfter(event));
        } else {
            QVERIFY(refuse(event));
        }
        const QStringList before = TestDatabase::dump();
        ShownPage shown(id);
        ModalAnswerer answers(u"删除"_s);
        answers.expectButton(u"确定"_s);
        shown.press(u"deleteProject"_s);
        QCOMPARE(answers.seen().value(1).title, u"删除失败"_s);
        QVERIFY(answers.seen().value(1).text.contains(message));
        QCOMPARE(TestDatabase::dump(), before);
        QVERIFY(shown.hasDetail());
    }

    void aSmallWindowShowsContractsWithoutScrollingSideways()
    {
        const qint64 id = addProject(u"甲"_s);
        addContract(id, u"品牌升级设计合同"_s);
        ShownPage shown(id);
        shown.page.resize(1064, 620); // what a window of 1280 x 720 leaves to it
        const QTableView* table = shown.contracts();
        QTRY_COMPARE(table->horizontalScrollBar()->maximum(), 0);
        const auto room = [table](int column) { return table->columnWidth(column) - 16; };
        const QFontMetrics metrics = table->fontMetrics();
        QVERIFY(table->columnWidth(ContractTableModel::Actions)
            > metrics.horizontalAdvance(u"编辑 删除"_s));
        QVERIFY(room(ContractTableModel::Name) >= metrics.horizontalAdvance(u"品牌升级设计合同"_s));
        QVERIFY(room(ContractTableModel::Status) >= metrics.horizontalAdvance(u"已履行完毕"_s));
        QVERIFY(room(ContractTableModel::Amount) >= metrics.horizontalAdvance(u"132,000.00"_s));

        QTextDocument info;
        info.setHtml(shown.text(u"projectInfo"_s));
        const QTextCursor label = info.find(u"项目编号"_s);
        const auto top = [&info](const QTextBlock& block) {
            return info.documentLayout()->blockBoundingRect(block).top();
        };
        QCOMPARE(top(label.block()), top(label.block().next()));
    }

    void contractsAreEditedAndDeletedByTheirButtonsAndKeys()
    {
        const qint64 id = addProject(u"甲"_s);
        addContract(id, u"旧"_s, u"2026-01-01"_s);
        addContract(id, u"新"_s, u"2026-02-01"_s);
        ShownPage shown(id);
        QTableView* table = shown.contracts();
        QVERIFY(QTest::qWaitForWindowActive(&shown.page));
        const int actions = ContractTableModel::Actions;
        QCOMPARE(table->model()->index(0, actions).data(Qt::AccessibleTextRole).toString(),
            u"编辑 删除"_s);
        QCOMPARE(
            table->model()->index(0, ContractTableModel::Amount).data().toString(), u"未约定"_s);
        ModalAnswerer answers([](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"name"_s)->setText(u"改"_s);
            ModalAnswerer::buttonOf(dialog, u"保存"_s)->click();
        });
        Hands::clickCell(table, 1, actions, 0, 2);
        QTRY_COMPARE(
            rows(u"SELECT name FROM contracts ORDER BY id"_s), (QStringList { u"改"_s, u"新"_s }));
        QCOMPARE(table->currentIndex().row(), 1);
        answers.expectButton(u"删除"_s);
        Hands::clickCell(table, 0, actions, 1, 2);
        QTRY_COMPARE(rows(u"SELECT name FROM contracts"_s), QStringList { u"改"_s });
        QCOMPARE(answers.seen().value(1).title, u"确认删除合同"_s);

        QVERIFY(refuse(u"DELETE ON contracts"_s));
        shown.chooseContract(0);
        answers.expectButton(u"删除"_s);
        answers.expectButton(u"确定"_s);
        shown.page.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&shown.page));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Delete);
        QVERIFY(answers.seen().value(3).text.contains(u"refused Unable to fetch row请重试。"_s));
        QCOMPARE(row(u"SELECT COUNT(*) FROM contracts"_s), u"1"_s);
    }

    void aContractTellsAndUntiesItsVouchers()
    {
        const qint64 id = addProject(u"甲"_s);
        const qint64 contract = addContract(id, u"合同"_s);
        const qint64 kept = ArchiveSample::add(u"保留"_s, 1, id);
        const qint64 untied = ArchiveSample::add(u"解除"_s, 1, id);
        for (const qint64 voucher : { kept, untied })
            QVERIFY(LinkDao().link(SourceType::Voucher, voucher, TargetType::Contract, contract));
        ShownPage shown(id);
        shown.chooseContract(0);
        QCOMPARE(shown.text(u"contractVouchers"_s), u"合同「合同」已关联凭证 2 张"_s);
        QVERIFY(QTest::qWaitForWindowActive(&shown.page));
        ModalAnswerer answers([](QDialog* dialog) {
            const auto* list = dialog->findChild<QListWidget*>();
            list->findItems(u"解除"_s, Qt::MatchContains).first()->setCheckState(Qt::Checked);
            ModalAnswerer::buttonOf(dialog, u"解除关联"_s)->click();
        });
        shown.contracts()->setFocus();
        QTest::keyClick(shown.contracts(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(shown.text(u"contractVouchers"_s), u"合同「合同」已关联凭证 1 张"_s);
        QCOMPARE(row(u"SELECT source_id FROM entity_links WHERE target_type = 'contract'"_s),
            QString::number(kept));
        QCOMPARE(row(u"SELECT COUNT(*) FROM entity_links"_s), u"3"_s);
    }

    void removingAVoucherFromTheProjectKeepsItsOtherLinks()
    {
        const qint64 id = addProject(u"甲"_s);
        const qint64 voucher = ArchiveSample::add(u"凭证"_s, 1, id);
        const qint64 entry = addEntry(id);
        QVERIFY(LinkDao().link(SourceType::Voucher, voucher, TargetType::Transaction, entry));
        ShownPage shown(id);
        QVERIFY(refuse(u"DELETE ON entity_links"_s));
        ModalAnswerer answers(u"移除"_s);
        answers.expectButton(u"确定"_s);
        emit shown.cards().first()->unlinkRequested(voucher);
        QCOMPARE(answers.seen().value(1).title, u"移除失败"_s);
        QVERIFY(answers.seen().value(1).text.endsWith(u"请重试。"_s));
        QCOMPARE(shown.cards().size(), 1);
        QCOMPARE(TestDatabase::run({ u"DROP TRIGGER refuse"_s }), u""_s);
        answers.expectButton(u"移除"_s);
        emit shown.cards().first()->unlinkRequested(voucher);
        QCOMPARE(answers.seen().value(2).title, u"移除关联"_s);
        QCOMPARE(rows(u"SELECT target_type FROM entity_links"_s), QStringList { u"transaction"_s });
        QCOMPARE(shown.cards().size(), 0);
    }

    void droppedFilesOpenTheDialogForTheProject()
    {
        const qint64 id = addProject(u"甲"_s);
        ShownPage shown(id);
        QVERIFY(QTest::qWaitForWindowActive(&shown.page));
        auto* group = shown.find<QWidget>(u"ProjectVouchersCard"_s);
        QTemporaryFile receipt;
        QVERIFY(receipt.open() && receipt.write("receipt") > 0);
        ModalAnswerer answers([](QDialog* dialog) { dialog->done(QDialog::Rejected); });
        QVERIFY(Hands::dropFiles(group, { receipt.fileName() }));
        QTRY_COMPARE(answers.seen().size(), 1);
        QCOMPARE(answers.seen().value(0).title, u"添加凭证"_s);
    }

    void whatCannotBeReadIsTold()
    {
        const qint64 id = addProject(u"甲"_s);
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE vouchers RENAME TO gone"_s }), u""_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: .*vouchers"_s));
        ShownPage shown(id);
        bool told = false;
        for (const auto* label : shown.page.findChildren<QLabel*>())
            told = told || (label->isVisible() && label->text().startsWith(u"关联凭证读取失败"_s));
        QVERIFY(told);
    }
};

static const RegisteredTest<TestProjectPage> registered;

#include "TestProjectPage.moc"
