#include "core/AppPaths.h"
#include "dialogs/vouchers/VoucherAddDialog.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "vouchers_page/ArchiveSample.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTimer>

using namespace Qt::StringLiterals;
using ArchiveSample::source;
using Hands::press;

namespace {

// Of different contents each.
QStringList sources(const QStringList& names)
{
    QStringList paths;
    for (const QString& name : names)
        paths += source(name, name.toUtf8());
    return paths;
}

QLineEdit* nameEdit(const QDialog& dialog)
{
    return dialog.findChild<QLineEdit*>(u"voucherName"_s);
}

QAbstractItemView* queue(const QDialog& dialog)
{
    return dialog.findChild<QAbstractItemView*>(u"voucherQueue"_s);
}

QStringList queued(const QDialog& dialog)
{
    return Hands::column(queue(dialog), 0, Qt::AccessibleTextRole);
}

// Presses the button and answers the box that tells the result; what it said.
QString save(const QDialog& dialog)
{
    ModalAnswerer answers(u"确定"_s);
    press(dialog, u"保存入库"_s);
    const auto& seen = answers.seen();
    return seen.isEmpty() ? QString() : seen.first().title + u'|' + seen.first().text;
}

QStringList vouchers()
{
    return TestDatabase::rows(u"SELECT name, original_file_name FROM vouchers ORDER BY id"_s);
}

} // namespace

class TestVoucherAddDialog final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void severalFilesAreNumberedAndLinked()
    {
        const qint64 entryId = TestLedger::add(
            TestLedger::entry(u"2025-01-01"_s, Category::Other, Direction::Out, 123'456));
        VoucherAddDialog dialog({ .projectId = TestLedger::addProject(u"展厅"_s),
            .transactionIds = { entryId },
            .files = sources({ u"a.pdf"_s, u"c.gif"_s, u"b.pdf"_s }) });
        dialog.show();
        QCOMPARE(nameEdit(dialog)->text(), u"a"_s);
        QCOMPARE(queued(dialog),
            (QStringList {
                u"a.pdf 待入库 5 B"_s, u"c.gif 不支持的类型 5 B"_s, u"b.pdf 待入库 5 B"_s }));
        QCOMPARE(Hands::column(dialog.findChild<QAbstractItemView*>(u"linkedEntries"_s), 0),
            QStringList { u"#1  2025-01-01  摘要  1,234.56 元"_s });
        nameEdit(dialog)->setText(u" 回单 "_s);
        dialog.findChild<QComboBox*>(u"voucherType"_s)->setCurrentText(u"发票票据"_s);
        dialog.findChild<QLineEdit*>(u"voucherDate"_s)->setText(u"20250331"_s);
        dialog.findChild<QPlainTextEdit*>(u"voucherNote"_s)->setPlainText(u"原件在档"_s);
        QCOMPARE(save(dialog), u"入库完成|成功入库 2 个文件。"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(dialog.importedIds(), (QList<qint64> { 1, 2 }));
        QCOMPARE(
            TestDatabase::rows(u"SELECT name, voucher_type, voucher_date, note FROM vouchers"_s),
            (QStringList { u"回单-01|invoice|2025-03-31|原件在档"_s,
                u"回单-02|invoice|2025-03-31|原件在档"_s }));
        QCOMPARE(
            TestDatabase::rows(u"SELECT source_id, target_type, target_id FROM entity_links"_s),
            (QStringList {
                u"1|project|1"_s, u"1|transaction|1"_s, u"2|project|1"_s, u"2|transaction|1"_s }));
    }

    void whatIsMissingIsToldAndNothingIsStored_data()
    {
        addColumns<QStringList, QString, QString>("files", "date", "title");
        addCase("no file", QStringList(), u"2025-01-01"_s, u"缺少文件"_s);
        addCase("no valid file", QStringList { u"c.gif"_s }, u"2025-01-01"_s, u"缺少文件"_s);
        addCase("mistyped day", QStringList { u"a.pdf"_s }, u"2025-02-31"_s, u"日期无效"_s);
    }

    void whatIsMissingIsToldAndNothingIsStored()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, date);
        QFETCH(QString, title);
        VoucherAddDialog dialog({ .files = sources(files) });
        dialog.show();
        dialog.findChild<QLineEdit*>(u"voucherDate"_s)->setText(date);
        QCOMPARE(save(dialog).section(u'|', 0, 0), title);
        QVERIFY(dialog.isVisible());
        QCOMPARE(vouchers(), QStringList());
    }

    void afterAPartialFailureOnlyTheFailedFilesWait()
    {
        const QStringList files = sources({ u"a.pdf"_s, u"b %1.pdf"_s, u"c.pdf"_s });
        VoucherAddDialog dialog({ .files = files });
        dialog.show();
        QVERIFY(QFile::remove(files.at(1)));
        QCOMPARE(save(dialog),
            u"部分失败|成功 2 个，失败 1 个：\nb %1.pdf：源文件不存在："_s + files.at(1));
        QVERIFY(dialog.isVisible());
        QCOMPARE(queued(dialog), QStringList { u"b %1.pdf 待入库 8 B"_s });
        QCOMPARE(vouchers(), (QStringList { u"a-01|a.pdf"_s, u"a-03|c.pdf"_s }));
        ModalAnswerer answers(u"放弃修改"_s);
        press(dialog, u"取消"_s);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(dialog.importedIds(), (QList<qint64> { 1, 2 }));
    }

    void aStopLeavesTheRestInTheQueue()
    {
        VoucherAddDialog dialog({ .files = sources({ u"a.pdf"_s, u"b.pdf"_s }) });
        dialog.show();
        QTimer impatience;
        connect(&impatience, &QTimer::timeout, &dialog, [&impatience] {
            const auto* notice = QApplication::activeModalWidget();
            if (!notice || notice->objectName() != u"BusyNotice")
                return;
            impatience.stop();
            press(*notice, u"停止"_s);
        });
        impatience.start(0);
        QCOMPARE(save(dialog), u"已停止入库|已成功入库 0 个文件，其余 2 个仍在队列中。"_s);
        QCOMPARE(queued(dialog).size(), 2);
        QCOMPARE(save(dialog), u"入库完成|成功入库 2 个文件。"_s);
    }

    void allFailuresAreListedAndTheQueueStays()
    {
        QVERIFY(TestDatabase::refuse(u"INSERT ON vouchers"_s));
        VoucherAddDialog dialog({ .files = sources({ u"a.pdf"_s }) });
        dialog.show();
        const QString told = save(dialog);
        QVERIFY2(told.startsWith(u"入库失败|全部文件入库失败：\na.pdf：refused"_s),
            qUtf8Printable(told));
        QCOMPARE(queued(dialog).size(), 1);
        QVERIFY(dialog.importedIds().isEmpty());
        QVERIFY(QDir(AppPaths::voucherAssetsDir()).isEmpty());
    }

    void filesLeaveTheQueueByKeyAndButton()
    {
        VoucherAddDialog dialog({ .files = sources({ u"a.pdf"_s, u"b.pdf"_s, u"c.pdf"_s }) });
        dialog.show();
        queue(dialog)->setCurrentIndex(queue(dialog)->model()->index(0, 0));
        QTest::keyClick(queue(dialog), Qt::Key_Delete);
        QCOMPARE(nameEdit(dialog)->text(), u"b"_s);
        press(dialog, u"移出队列"_s);
        QCOMPARE(queued(dialog), QStringList { u"c.pdf 待入库 5 B"_s });
        QCOMPARE(save(dialog), u"入库完成|成功入库 1 个文件。"_s);
        QCOMPARE(vouchers(), QStringList { u"c|c.pdf"_s });
    }

    void tabReachesEverythingByItsLabelInOrder()
    {
        VoucherAddDialog dialog({});
        QVERIFY(Hands::show(dialog));
        QCOMPARE(Hands::namesByTab(dialog, 10).join(u'|'),
            u"选择文件…（可多选）|凭证名称|凭证类型|凭证日期|备注|所属项目|选择关联流水…|关联流水|取消|保存入库"_s);
    }

    void filesAreDroppedAndPastedButNotTwice()
    {
        VoucherAddDialog dialog({});
        QVERIFY(Hands::show(dialog));
        for (int i = 0; i < 2; ++i)
            QVERIFY(Hands::dropFiles(&dialog, { source(u"a.pdf"_s, "a") }));
        QTRY_COMPARE(queued(dialog), QStringList { u"a.pdf 待入库 1 B"_s });
        QImage picture(4, 4, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QApplication::clipboard()->setImage(picture);
        nameEdit(dialog)->setFocus();
        QTest::keyClick(nameEdit(dialog), Qt::Key_V, Qt::ControlModifier);
        QTRY_COMPARE(queued(dialog).size(), 2);
        const QRegularExpression pasted(u"^粘贴图片_\\d{8}_\\d{6}\\.png 待入库 "_s);
        QVERIFY2(
            pasted.match(queued(dialog).last()).hasMatch(), qUtf8Printable(queued(dialog).last()));
        // Whether or not the second has passed by now, none replaces another.
        for (int i = 3; i <= 5; ++i) {
            picture.fill(QColor(0, 0, i));
            QApplication::clipboard()->setImage(picture);
            QTest::keyClick(nameEdit(dialog), Qt::Key_V, Qt::ControlModifier);
            QTRY_COMPARE(queued(dialog).size(), i);
        }
        save(dialog);
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(DISTINCT sha256), COUNT(*) FROM vouchers"_s),
            u"5|5"_s);
    }
};

static const RegisteredTest<TestVoucherAddDialog> registered;

#include "TestVoucherAddDialog.moc"
