#include "db/TransactionDao.h"
#include "pages/ledger/LedgerModel.h"
#include "pages/ledger/LedgerPage.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"
#include "widgets/Banner.h"
#include "widgets/FilterChip.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

using enum Category;

/// The page as the window shows it.
struct Shown {
    Shown()
    {
        page.resize(1180, 700);
        page.show();
        // Keys reach the table only while its window is the active one.
        if (!QTest::qWaitForWindowActive(&page))
            QTest::qFail("The window does not become active", __FILE__, __LINE__);
        page.refresh();
    }

    template <typename Widget> Widget* find(const QString& name = {}) const
    {
        return page.findChild<Widget*>(name);
    }

    void request(const NavParams& params)
    {
        page.applyNavParams(params);
        page.refresh();
    }

    QTableView* table() const { return find<QTableView>(u"ledgerTable"_s); }

    void press(const QString& text) const { Hands::press(page, text); }
    bool says(const QString& text) const { return Hands::shows(page, text); }
    QString summaries() const { return Hands::column(table(), LedgerModel::Summary).join(u' '); }

    QString chips() const
    {
        QStringList texts;
        for (const auto* chip : page.findChildren<FilterChip*>())
            texts += chip->text();
        return texts.join(u'|');
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        table()->setFocus();
        QTest::keyClick(table(), key, modifiers);
    }

    LedgerPage page;
};

qint64 add(const QString& date, const QString& summary, Category category, Direction direction,
    qint64 projectId = 0)
{
    Transaction entry = TestLedger::entry(date, category, direction);
    entry.summary = summary;
    if (projectId > 0)
        entry.projectId = projectId;
    return TestLedger::add(entry);
}

} // namespace

class TestLedgerPage final : public DatabaseTestCase {
    Q_OBJECT

    qint64 m_project = 0;
    QList<qint64> m_ids;

private slots:
    void init()
    {
        DatabaseTestCase::init();
        m_project = TestLedger::addProject(u"官网 & <b>"_s);
        m_ids = { add(u"2025-01-05"_s, u"房租"_s, BusinessExpense, Direction::Out),
            add(u"2025-02-05"_s, u"借款"_s, ShareholderOut, Direction::Out),
            add(u"2025-03-05"_s, u"还款"_s, ShareholderIn, Direction::In),
            add(u"2025-04-05"_s, u"尾款"_s, BusinessIncome, Direction::In, m_project) };
        QVERIFY(TransactionDao().setManualOverride(m_ids[0], RiskLevel::High, {}));
    }

    void requestsRestrictTheLedger_data()
    {
        addColumns<NavParams, QString, QString>("params", "summaries", "chips");
        addCase("risk", NavParams { { u"risk"_s, u"high"_s } }, u"房租"_s, u""_s);
        addCase(
            "unknown risk", NavParams { { u"risk"_s, u"x"_s } }, u"尾款 还款 借款 房租"_s, u""_s);
        addCase("project", NavParams { { u"projectId"_s, 1 } }, u"尾款"_s, u"项目：官网 & <b>"_s);
        addCase("days",
            NavParams { { u"dateFrom"_s, QDate(2025, 2, 1) }, { u"dateTo"_s, QDate(2025, 3, 31) } },
            u"还款 借款"_s, u"日期：2025-02-01 至 2025-03-31"_s);
        addCase("category", NavParams { { u"category"_s, u"shareholder_in"_s } }, u"还款"_s,
            u"分类：股东转入（借款/投资款）"_s);
        addCase("entries", NavParams { { u"txIds"_s, QVariantList { 1LL, 3LL } } }, u"还款 房租"_s,
            u"指定流水：2 笔"_s);
    }
    void requestsRestrictTheLedger()
    {
        QFETCH(const NavParams, params);
        Shown shown;
        shown.request(params);
        QTEST(shown.summaries(), "summaries");
        QTEST(shown.chips(), "chips");
        QCOMPARE(shown.find<QComboBox>(u"riskFilter"_s)->currentText(),
            params.value(u"risk"_s) == u"high"_s ? u"高风险"_s : u"全部"_s);
        shown.press(u"重置"_s);
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 房租"_s);
        QCOMPARE(shown.chips(), QString());
        shown.request(params);
        shown.request({ { u"all"_s, true } });
        QVERIFY2(shown.summaries() == u"尾款 还款 借款 房租"_s, "whatever was filtered before");
    }

    void aChipIsTakenAwayByItsPress()
    {
        Shown shown;
        shown.request({ { u"projectId"_s, m_project }, { u"category"_s, u"business_income"_s } });
        QVERIFY(!shown.find<FilterChip>()->accessibleName().isEmpty());
        QTest::keyClick(shown.find<FilterChip>(), Qt::Key_Delete);
        QCOMPARE(shown.chips(), u"分类：经营收入"_s);
        shown.find<FilterChip>()->click();
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 房租"_s);
        QCOMPARE(shown.find<QComboBox>(u"categoryFilter"_s)->currentText(), u"全部"_s);
    }

    void aRequestedEntryIsSelectedAndNotHidden()
    {
        Shown shown;
        shown.find<QLineEdit>(u"keyword"_s)->setText(u"款"_s);
        shown.request({ { u"txId"_s, m_ids[2] } });
        QCOMPARE(shown.summaries(), u"尾款 还款 借款"_s);
        QCOMPARE(shown.table()->currentIndex().row(), 1);
        shown.request({ { u"txId"_s, m_ids[0] } });
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 房租"_s);
        QCOMPARE(shown.table()->selectionModel()->selectedRows().constFirst().row(), 3);
        shown.request({ { u"txId"_s, 999 } });
        QVERIFY(shown.says(u"该笔流水已不存在"_s));
    }

    void enterSearchesAndAnInvertedRangeIsToldInstead()
    {
        Shown shown;
        auto* keyword = shown.find<QLineEdit>(u"keyword"_s);
        keyword->setText(u"  借款 "_s);
        QTest::keyClick(keyword, Qt::Key_Return);
        QCOMPARE(shown.summaries(), u"借款"_s);
        QCOMPARE(shown.find<QLabel>(u"totals"_s)->text(),
            u"共 1 笔    收入合计 0.00 元    支出合计 100.00 元"_s);
        shown.find<QLineEdit>(u"dateFrom"_s)->setText(u"2025-12-01"_s);
        shown.find<QLineEdit>(u"dateTo"_s)->setText(u"2025-01-01"_s);
        shown.press(u"查询"_s);
        QVERIFY(shown.says(u"开始日期晚于结束日期，请调整后再查询。"_s));
        shown.page.refresh();
        QCOMPARE(shown.summaries(), u"借款"_s);
        shown.press(u"重置"_s);
        QCOMPARE(shown.table()->model()->rowCount(), 4);
        QVERIFY(!shown.find<Banner>(u"filterProblem"_s)->isVisible());
    }

    void anEmptyResultSaysWhatIsHidden()
    {
        Shown shown;
        shown.request({ { u"risk"_s, u"medium"_s } });
        QVERIFY(!shown.table()->isVisible());
        QVERIFY(shown.says(u"暂无资金流水"_s));
        QVERIFY(shown.says(u"登记第一笔流水后将在此展示，系统会自动进行公私混同风险检测。"_s));
        shown.press(u"清除筛选"_s);
        QVERIFY(shown.table()->isVisible());
        QCOMPARE(TestDatabase::run({ u"DELETE FROM transactions"_s }), QString());
        shown.page.refresh();
        ModalAnswerer answers([](QDialog* dialog) { dialog->reject(); });
        shown.press(u"＋ 登记第一笔流水"_s);
        QCOMPARE(answers.seen().size(), 1);
        QVERIFY(!shown.find<QPushButton>(u"EmptyStateNoteAction"_s)->isVisible());
    }

    void anUnreadableLedgerDoesNotLookEmpty()
    {
        Shown shown;
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE transactions RENAME TO gone"_s }), QString());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error"_s));
        shown.page.refresh();
        QVERIFY(shown.find<Banner>(u"unreadable"_s)->text().contains(u"transactions"_s));
        QVERIFY(!shown.says(u"暂无资金流水"_s));
        ModalAnswerer answers(u"确定"_s);
        shown.page.onExport();
        QVERIFY(answers.seen().value(0).text.startsWith(u"流水无法读取："_s));
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE gone RENAME TO transactions"_s }), QString());
        shown.press(u"重试"_s);
        QVERIFY(!shown.find<Banner>(u"unreadable"_s)->isVisible());
        QCOMPARE(shown.table()->model()->rowCount(), 4);
    }

    void theButtonsOfARowActOnItsEntry()
    {
        Shown shown;
        QSignalSpy requests(&shown.page, &IPage::navigateRequested);
        Hands::clickCell(shown.table(), 1, LedgerModel::Actions, 1, 3);
        QTRY_COMPARE(requests.size(), 1);
        QCOMPARE(requests[0][0].value<PageId>(), PageId::Documents);
        QCOMPARE(requests[0][1].toMap().value(u"fund"_s), QVariant(true));
        QCOMPARE(requests[0][1].toMap().value(u"txIds"_s).toList(), QVariantList { m_ids[2] });

        const auto opens = [&shown](int column, int part, int parts, const QString& title) {
            ModalAnswerer answers([](QDialog* dialog) { dialog->reject(); });
            Hands::clickCell(shown.table(), 1, column, part, parts);
            QTRY_COMPARE(answers.seen().size(), 1);
            QVERIFY2(
                answers.seen()[0].title.contains(title), qUtf8Printable(answers.seen()[0].title));
        };
        opens(LedgerModel::Actions, 0, 3, u"流水"_s);
        opens(LedgerModel::Actions, 2, 3, u"确认删除"_s);
        opens(LedgerModel::Vouchers, 0, 1, u"流水"_s);
        opens(LedgerModel::Risk, 0, 1, u"复核"_s);
    }

    void anEditedEntryIsSearchedAgain()
    {
        Shown shown;
        shown.table()->selectRow(2);
        ModalAnswerer answers([this](QDialog* dialog) {
            QCOMPARE(
                TestDatabase::run(
                    { u"UPDATE transactions SET summary = '新' WHERE id = %1"_s.arg(m_ids[1]) }),
                QString());
            RiskService().reevaluateAll();
            dialog->done(QDialog::Accepted);
        });
        shown.key(Qt::Key_Return);
        QCOMPARE(shown.summaries(), u"尾款 还款 新 房租"_s);
        QVERIFY(shown.says(u"修改已保存，风险已重算"_s));
    }

    void deletingReevaluatesTheRestAndTellsAFailure()
    {
        for (int i = 1; i <= 2; ++i)
            add(u"2025-02-0%1"_s.arg(i), u"往来"_s, ShareholderOut, Direction::Out);
        RiskService().reevaluateAll();
        QCOMPARE(TestLedger::autoRisk(m_ids[1]), u"medium|R2(3)"_s);
        Shown shown;
        shown.request({ { u"txId"_s, m_ids[1] + 4 } });
        QVERIFY(TestDatabase::refuse(u"DELETE ON transactions"_s));
        ModalAnswerer answers(u"确认删除"_s);
        answers.expectButton(u"确定"_s);
        shown.key(Qt::Key_Delete);
        QCOMPARE(answers.seen()[1].title, u"删除失败"_s);
        QVERIFY(answers.seen()[1].text.contains(u"refused"_s));
        QCOMPARE(shown.table()->model()->rowCount(), 6);
        QCOMPARE(TestDatabase::run({ u"DROP TRIGGER refuse"_s }), QString());

        answers.expectButton(u"确认删除"_s);
        Hands::clickCell(shown.table(), 3, LedgerModel::Actions, 2, 3);
        QTRY_COMPARE(answers.seen().size(), 3);
        QCOMPARE(answers.seen()[2].text,
            u"确认删除流水「2025-02-02 往来」？删除后不可恢复，已关联文书内容不受影响但该笔将不再受文书覆盖。"_s);
        QTRY_VERIFY(shown.says(u"流水已删除，相关风险已重算"_s));
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 往来 房租"_s);
        QCOMPARE(TestLedger::autoRisk(m_ids[1]), u"normal|"_s);
        QCOMPARE(shown.table()->currentIndex().row(), 3);

        QVERIFY(TestDatabase::refuse(u"UPDATE OF risk_auto_level ON transactions"_s));
        expectWarnings({ u"RiskService: updateRisk failed"_s });
        answers.expectButton(u"确认删除"_s);
        answers.expectButton(u"确定"_s);
        Hands::clickCell(shown.table(), 3, LedgerModel::Actions, 2, 3);
        QTRY_COMPARE(answers.seen().size(), 5);
        QCOMPARE(answers.seen()[4].title, u"风险等级未更新"_s);
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 房租"_s);
    }

    void theCommandsOfARowWorkFromAnywhereOnThePage()
    {
        Shown shown;
        shown.request({ { u"txId"_s, m_ids[2] } });
        auto* search = shown.find<QPushButton>(u"search"_s);
        search->setFocus();
        ModalAnswerer answers;
        for (const Qt::Key key : { Qt::Key_D, Qt::Key_R }) {
            answers.expect([](QDialog* dialog) { dialog->reject(); });
            QTest::keyClick(search, key, Qt::ControlModifier);
            shown.page.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&shown.page));
        }
        QSignalSpy requests(&shown.page, &IPage::navigateRequested);
        QTest::keyClick(search, Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(requests.size(), 1);
        // What deletes, and what a field does itself, stays where the focus is.
        QTest::keyClick(search, Qt::Key_Delete);
        auto* keyword = shown.find<QLineEdit>(u"keyword"_s);
        keyword->setFocus();
        QTest::keyClick(keyword, Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(answers.seen().size(), 2);
    }

    void tabIntoTheTableFindsARow()
    {
        Shown shown;
        auto* reset = shown.find<QPushButton>(u"reset"_s);
        const auto selectedAfterTab = [&] {
            reset->setFocus();
            QTest::keyClick(reset, Qt::Key_Tab);
            const QModelIndexList rows = shown.table()->selectionModel()->selectedRows();
            return shown.table()->hasFocus() && rows.size() == 1 ? rows.first().row() : -1;
        };
        QCOMPARE(selectedAfterTab(), 0);
        shown.request({ { u"txId"_s, m_ids[2] } });
        QCOMPARE(selectedAfterTab(), 1);
        reset->click();
        QVERIFY(!shown.table()->currentIndex().isValid());
        QCOMPARE(selectedAfterTab(), 0);
    }

    void severalRowsAreCopiedAndDecidedTogether()
    {
        Shown shown;
        shown.table()->selectAll();
        QSignalSpy requests(&shown.page, &IPage::navigateRequested);
        shown.press(u"为所选生成往来决定书"_s);
        QCOMPARE(requests[0][1].toMap().value(u"txIds"_s).toList(),
            QVariantList({ m_ids[2], m_ids[1] }));
        shown.key(Qt::Key_C, Qt::ControlModifier);
        const QStringList lines = QApplication::clipboard()->text().split(u'\n');
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines[0].startsWith(u"2025-04-05\t尾款\t收入\t100.00\t对公\t"_s));
        shown.key(Qt::Key_Delete);
        QVERIFY2(!QApplication::activeModalWidget(), "which of them is meant is not clear");
    }

    void selectionAndOrderSurviveARefresh()
    {
        Shown shown;
        shown.table()->sortByColumn(LedgerModel::Summary, Qt::AscendingOrder);
        QCOMPARE(shown.summaries(), u"房租 还款 借款 尾款"_s);
        shown.table()->selectRow(2);
        add(u"2025-01-01"_s, u"安装"_s, Other, Direction::In);
        shown.page.refresh();
        QCOMPARE(shown.summaries(), u"安装 房租 还款 借款 尾款"_s);
        QCOMPARE(shown.table()->selectionModel()->selectedRows().constFirst().row(), 3);
        shown.table()->horizontalHeader()->setSortIndicator(
            LedgerModel::Actions, Qt::AscendingOrder);
        QCOMPARE(shown.summaries(), u"尾款 还款 借款 房租 安装"_s);
    }

    void theExportHoldsJustTheSearchInItsOrder()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"流水.csv"_s);
        Shown shown;
        shown.request({ { u"dateTo"_s, QDate(2025, 3, 31) },
            { u"txIds"_s, QVariantList { m_ids[1], m_ids[2], m_ids[3] } } });
        shown.table()->sortByColumn(LedgerModel::Summary, Qt::DescendingOrder);
        QCOMPARE(shown.summaries(), u"借款 还款"_s);
        QString proposed;
        ModalAnswerer answers([&](QDialog* dialog) {
            auto* name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            proposed = name->text();
            name->setText(path);
            dialog->accept();
        });
        answers.expectButton(u"暂不打开"_s);
        shown.page.onExport();
        QCOMPARE(answers.seen()[0].title, u"导出资金流水 CSV"_s);
        QVERIFY(proposed.startsWith(u"资金流水_起_20250331_"_s));
        QCOMPARE(answers.seen()[1].title, u"导出完成"_s);
        QVERIFY(answers.seen()[1].text.contains(u"已导出 2 笔流水，是否打开所在文件夹？"_s));
        const QString csv = QString::fromUtf8(TestFile::bytesOf(path));
        QVERIFY(csv.indexOf(u"还款"_s) < csv.indexOf(u"借款"_s));
        QCOMPARE(csv.trimmed().count(u'\n'), 2);
    }

    void anExportThatFailsOrHasNothingIsTold()
    {
        const QTemporaryDir folder;
        Shown shown;
        ModalAnswerer answers([&](QDialog* dialog) {
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(folder.filePath(u"x.csv"_s));
            QVERIFY(QDir(folder.path()).removeRecursively());
            dialog->accept();
        });
        answers.expectButton(u"确定"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"CSV export to"_s));
        shown.page.onExport();
        QCOMPARE(answers.seen()[1].title, u"导出失败"_s);
        shown.request({ { u"risk"_s, u"medium"_s } });
        answers.expectButton(u"确定"_s);
        shown.page.onExport();
        QVERIFY(answers.seen()[2].text.contains(u"当前筛选条件下没有可导出的流水"_s));
    }
};

static const RegisteredTest<TestLedgerPage> registered;

#include "TestLedgerPage.moc"
