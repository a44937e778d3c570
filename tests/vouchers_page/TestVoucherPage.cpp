#include "core/AppPaths.h"
#include "dialogs/preview/VoucherPreview.h"
#include "dialogs/vouchers/VoucherAddDialog.h"
#include "dialogs/vouchers/VoucherEditDialog.h"
#include "pages/vouchers/VoucherFilterBar.h"
#include "pages/vouchers/VoucherListModel.h"
#include "pages/vouchers/VoucherPage.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "vouchers_page/ArchiveSample.h"
#include "widgets/EmptyState.h"
#include "widgets/Toast.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>

#include <memory>

using namespace Qt::StringLiterals;
using ArchiveSample::add;

namespace {

qint64 addEntry()
{
    return TestLedger::add(TestLedger::entry(u"2026-01-01"_s, Category::Other, Direction::Out));
}

QString textOf(const QWidget& page, const QString& label)
{
    return page.findChild<QLabel*>(label)->text();
}

} // namespace

class TestVoucherPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void cleanup()
    {
        m_page.reset();
        DatabaseTestCase::cleanup();
    }

    void onlyUnlinkedVouchersAreShownWhenAskedFor()
    {
        const qint64 project = TestLedger::addProject(u"展厅"_s);
        add(u"甲"_s, 1, project);
        add(u"乙"_s, 2);
        add(u"丙"_s, 3, 0, { addEntry() });
        open({ { u"linked"_s, u"none"_s } });
        QCOMPARE(names(), QStringList { u"乙"_s });
        QCOMPARE(textOf(*m_page, u"voucherCount"_s), u"共 3 张（未关联 1 张）"_s);
        // A later request is not restricted by the earlier one.
        m_page->findChild<QLineEdit*>(u"keyword"_s)->setText(u"丙"_s);
        go({ { u"projectId"_s, project } });
        QCOMPARE(names(), QStringList { u"甲"_s });
        m_page->findChild<QPushButton*>(u"reset"_s)->click();
        QCOMPARE(names(), (QStringList { u"丙"_s, u"乙"_s, u"甲"_s }));
    }

    void newProjectsAreOfferedWithoutChangingTheSearch()
    {
        const qint64 project = TestLedger::addProject(TestLedger::hostileName);
        add(u"甲"_s, 1, project);
        add(u"乙"_s, 2);
        open({ { u"projectId"_s, project } });
        auto* projects = m_page->findChild<QComboBox*>(u"projectFilter"_s);
        QCOMPARE(projects->currentText(), TestLedger::hostileName);
        TestLedger::addProject(u"另一个"_s);
        QSignalSpy chosen(projects, &QComboBox::currentIndexChanged);
        go({});
        QCOMPARE(projects->count(), 3);
        QCOMPARE(projects->currentData().toLongLong(), project);
        QCOMPARE(chosen.count(), 0);
        QCOMPARE(names(), QStringList { u"甲"_s });
        // Choosing alone does not search.
        projects->setCurrentIndex(0);
        QCOMPARE(names(), QStringList { u"甲"_s });
        QTest::keyClick(m_page->findChild<QLineEdit*>(u"keyword"_s), Qt::Key_Return);
        QCOMPARE(names().size(), 2);
    }

    void theTableTellsWhatAVoucherIs()
    {
        const qint64 project = TestLedger::addProject(TestLedger::hostileName);
        add(TestLedger::hostileName, 1, project, { addEntry(), addEntry() });
        add(u"无关联"_s, 2);
        open({});
        const QAbstractItemModel* model = table()->model();
        QAbstractItemModelTester tester(const_cast<QAbstractItemModel*>(model));
        QStringList headers;
        for (int column = 0; column < model->columnCount(); ++column)
            headers += model->headerData(column, Qt::Horizontal).toString();
        QCOMPARE(headers.join(u','), u"预览,名称,类型,凭证日期,关联对象,大小,添加时间,操作"_s);
        const auto text = [&](int row, int column) { return model->index(row, column).data(); };
        QCOMPARE(text(1, VoucherListModel::Name), TestLedger::hostileName);
        QCOMPARE(text(1, VoucherListModel::Type), u"发票票据"_s);
        QCOMPARE(text(1, VoucherListModel::Date), u"2026-01-01"_s);
        QCOMPARE(text(1, VoucherListModel::Links), u"项目：<b>%1&\"；流水 2 笔"_s);
        QCOMPARE(text(0, VoucherListModel::Links), u"未关联"_s);
        QCOMPARE(model->index(0, VoucherListModel::Actions).data(Qt::AccessibleTextRole),
            u"预览 文件夹 编辑 删除"_s);
        QCOMPARE(
            model->index(0, VoucherListModel::Picture).data(Qt::AccessibleTextRole), u"PNG 文件"_s);
    }

    void headersSortAndTheSelectionStays()
    {
        for (const QString& name : { u"乙"_s, u"甲 10"_s, u"甲 9"_s, u"丁"_s })
            add(name, 1 + static_cast<int>(name.size()));
        open({});
        table()->sortByColumn(VoucherListModel::Name, Qt::AscendingOrder);
        QCOMPARE(names(), (QStringList { u"丁"_s, u"甲 9"_s, u"甲 10"_s, u"乙"_s }));
        select(u"甲 10"_s);
        add(u"丙"_s, 20);
        m_page->refresh();
        QCOMPARE(names().first(), u"丙"_s);
        QCOMPARE(current(), u"甲 10"_s);
    }

    void keysWorkOnTheCurrentRow()
    {
        const qint64 first = add(u"甲"_s, 3);
        add(u"乙"_s, 2);
        open({});
        table()->setFocus();
        QCOMPARE(table()->selectionModel()->selectedRows().size(), 1);
        select(u"甲"_s);
        ModalAnswerer answers;
        const auto leaving = [](const char* expected) {
            return [expected](QDialog* dialog) {
                QVERIFY2(dialog->inherits(expected), dialog->metaObject()->className());
                dialog->reject();
            };
        };
        answers.expect(leaving("VoucherEditDialog"));
        press(Qt::Key_Return);
        answers.expect([first](QDialog* dialog) {
            auto* preview = qobject_cast<VoucherPreview*>(dialog);
            QVERIFY(preview);
            QCOMPARE(preview->shownId(), first);
            QTest::keyClick(preview, Qt::Key_Right);
            QTest::keyClick(preview, Qt::Key_Escape);
        });
        press(Qt::Key_Space);
        QCOMPARE(current(), u"乙"_s); // the one that was looked at last
        answers.expect(leaving("VoucherAddDialog"));
        press(Qt::Key_N, Qt::ControlModifier);
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"keyword"_s);
    }

    void clicksMeetThePictureAndTheButtons()
    {
        add(u"甲"_s, 3);
        open({});
        ModalAnswerer answers;
        answers.expect([](QDialog* dialog) {
            QVERIFY(qobject_cast<VoucherPreview*>(dialog));
            dialog->reject();
        });
        Hands::clickCell(table(), 0, VoucherListModel::Picture);
        QTRY_COMPARE(answers.seen().size(), 1);
        answers.expectButton(u"取消"_s);
        Hands::clickCell(table(), 0, VoucherListModel::Actions, 3, 4);
        QTRY_COMPARE(answers.seen().size(), 2);
        QCOMPARE(answers.seen().last().title, u"确认删除凭证"_s);
    }

    void deletingAsksAndMovesOn()
    {
        add(u"甲"_s, 3);
        add(TestLedger::hostileName, 2);
        add(u"丙"_s, 1);
        open({});
        select(TestLedger::hostileName);
        ModalAnswerer answers;
        answers.expectButton(u"取消"_s);
        press(Qt::Key_Delete);
        QCOMPARE(answers.seen().last().title, u"确认删除凭证"_s);
        QCOMPARE(answers.seen().last().text,
            u"确认删除凭证「<b>%1&\"」？\n将同时删除本地凭证文件副本及其全部关联，且不可恢复。"_s);
        QCOMPARE(names().size(), 3);
        answers.expectButton(u"删除"_s);
        press(Qt::Key_Delete);
        QCOMPARE(names(), (QStringList { u"甲"_s, u"丙"_s }));
        QCOMPARE(current(), u"丙"_s);
        QCOMPARE(m_page->findChild<Toast*>()->text(), u"凭证已删除"_s);
    }

    void deletingInALongLedgerShowsANotice()
    {
        QCOMPARE(TestLedger::addMany(5000), QString());
        add(u"甲"_s, 3, 0, { 1 });
        open({});
        select(u"甲"_s);
        ModalAnswerer answers(u"删除"_s);
        QVERIFY(Hands::showsNotice([this] { press(Qt::Key_Delete); }));
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM vouchers"_s), u"0"_s);
    }

    void afterTheLastVoucherThePageSaysWhatToDo()
    {
        add(u"甲"_s, 3);
        open({});
        QVERIFY(TestDatabase::refuse(u"DELETE ON vouchers"_s));
        select(u"甲"_s);
        ModalAnswerer answers;
        answers.expectButton(u"删除"_s);
        answers.expectButton(u"确定"_s);
        press(Qt::Key_Delete);
        QCOMPARE(answers.seen().last().title, u"删除失败"_s);
        QVERIFY(answers.seen().last().text.endsWith(u"请重试。"_s));
        QCOMPARE(names().size(), 1);
        QCOMPARE(TestDatabase::run({ u"DROP TRIGGER refuse"_s }), u""_s);
        answers.expectButton(u"删除"_s);
        press(Qt::Key_Delete);
        QVERIFY(Hands::shows(
            *m_page, u"点击右上角「添加凭证」上传合同扫描件、银行回单、发票等文件。"_s));
        QCOMPARE(textOf(*m_page, u"voucherCount"_s), u"共 0 张（未关联 0 张）"_s);
    }

    void anArchiveThatCannotBeReadIsNotEmpty()
    {
        add(u"甲"_s, 3);
        open({});
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE vouchers RENAME TO gone"_s }), u""_s);
        for (int statement = 0; statement < 3; ++statement)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: .*vouchers"_s));
        m_page->refresh();
        QVERIFY(m_page->findChild<QWidget*>(u"unreadable"_s)->isVisible());
        QVERIFY(!m_page->findChild<EmptyState*>()->isVisible());
        QCOMPARE(textOf(*m_page, u"voucherCount"_s), u"凭证数量读取失败"_s);
    }

    void cardsLeadToWhatTheyAreLinkedTo()
    {
        const qint64 project = TestLedger::addProject(u"展厅"_s);
        const QList<qint64> entries { addEntry(), addEntry(), addEntry() };
        add(u"甲"_s, 1, project, entries);
        open({});
        m_page->onShowGrid(true);
        QSignalSpy asked(m_page.get(), &IPage::navigateRequested);
        auto* links = m_page->findChild<QLabel*>(u"links"_s);
        QVERIFY(links->text().contains(u">流水#%1 等3笔</a>"_s.arg(entries.first())));
        emit links->linkActivated(u"project:%1"_s.arg(project));
        emit links->linkActivated(u"tx:%1"_s.arg(entries.first()));
        QCOMPARE(asked.at(0).at(0).value<PageId>(), PageId::Projects);
        QCOMPARE(asked.at(0).at(1).toMap(), (QVariantMap { { u"projectId"_s, project } }));
        QCOMPARE(asked.at(1).at(0).value<PageId>(), PageId::Ledger);
        QCOMPARE(asked.at(1).at(1).toMap(), (QVariantMap { { u"txId"_s, entries.first() } }));
        // Which link is to go is chosen where the links can be changed.
        ModalAnswerer answers([](QDialog* dialog) {
            QVERIFY(qobject_cast<VoucherEditDialog*>(dialog));
            dialog->reject();
        });
        for (auto* button : m_page->findChildren<QPushButton*>()) {
            if (button->accessibleName() == u"移除关联 甲"_s)
                button->click();
        }
    }

    void droppedFilesWaitInTheAddDialog()
    {
        open({});
        const QString path = AppPaths::dataDir() + u"/回单 %1.jpg"_s;
        QVERIFY(TestFile::put(path, ArchiveSample::jpeg(10, 10)));
        ModalAnswerer answers([](QDialog* dialog) {
            QVERIFY(qobject_cast<VoucherAddDialog*>(dialog));
            ModalAnswerer::buttonOf(dialog, u"保存入库"_s)->click();
        });
        QVERIFY(Hands::dropFiles(m_page.get(), { path }));
        answers.expectButton(u"确定"_s);
        QTRY_COMPARE(answers.seen().size(), 2);
        QTRY_COMPARE(names(), QStringList { u"回单 %1"_s });
    }

private:
    void open(const NavParams& params)
    {
        m_page = std::make_unique<VoucherPage>();
        m_page->resize(1200, 700);
        m_page->onShowGrid(false);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
        go(params);
    }

    void go(const NavParams& params)
    {
        if (!params.isEmpty())
            m_page->applyNavParams(params);
        m_page->refresh();
    }

    QTableView* table() const { return m_page->findChild<QTableView*>(u"voucherTable"_s); }

    QStringList names() const
    {
        return table()->isVisible() ? Hands::column(table(), VoucherListModel::Name)
                                    : QStringList();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        // This platform does not give the window back when a dialog closes.
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
        QTest::keyClick(table(), key, modifiers);
    }

    void select(const QString& name)
    {
        const auto row = static_cast<int>(names().indexOf(name));
        table()->setFocus();
        table()->setCurrentIndex(table()->model()->index(row, VoucherListModel::Name));
    }

    QString current() const
    {
        return table()->currentIndex().siblingAtColumn(VoucherListModel::Name).data().toString();
    }

    std::unique_ptr<VoucherPage> m_page;
};

static const RegisteredTest<TestVoucherPage> registered;

#include "TestVoucherPage.moc"
