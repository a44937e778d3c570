#include "core/AppPaths.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherBatch.h"
#include "services/vouchers/VoucherRules.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "vouchers_page/ArchiveSample.h"

using namespace Qt::StringLiterals;
using ArchiveSample::source;

class TestVoucherBatch final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void filesAreMarkedBeforeTheyAreArchived_data()
    {
        addColumns<QString, qint64, QString>("name", "size", "state");
        addCase("accepted", u"a.PDF"_s, qint64(4), u"待入库"_s);
        addCase("other type", u"c.gif"_s, qint64(4), u"不支持的类型"_s);
        addCase("no type", u"scan"_s, qint64(4), u"不支持的类型"_s);
        addCase("largest", u"a.png"_s, FileRules::maxFileSize, u"待入库"_s);
        addCase("too large", u"a.png"_s, FileRules::maxFileSize + 1, u"超过 20MB"_s);
        addCase("gone", u"a.jpg"_s, qint64(-1), u"读取失败（占用？）"_s);
    }

    void filesAreMarkedBeforeTheyAreArchived()
    {
        QFETCH(QString, name);
        QFETCH(qint64, size);
        QFETCH(QString, state);
        const QString path = AppPaths::dataDir() + u'/' + name;
        if (size >= 0)
            QVERIFY(TestFile::put(path, QByteArray(size, 'x')));
        QCOMPARE(labelOf(VoucherQueue::inspect(path).state), state);
    }

    void anArchivedContentIsMarkedAsDuplicate()
    {
        const QString path = source(u"a.pdf"_s, "one");
        QVERIFY(VoucherService::importVoucher({ .sourcePath = path }, 0, {}).ok);
        const QueuedFile file = VoucherQueue::inspect(source(u"b.pdf"_s, "one"));
        QCOMPARE(labelOf(file.state), u"⚠ 疑似重复文件（仍可入库）"_s);
        QVERIFY(file.isValid());
    }

    void aDescriptionIsCheckedInOrder_data()
    {
        addColumns<qsizetype, QString, QString, QDate, QString>(
            "files", "name", "note", "date", "problem");
        const QDate day(2025, 3, 31);
        addCase("no file", qsizetype(0), u""_s, u""_s, day,
            u"缺少文件|请先选择至少一个有效文件（JPG/PNG/BMP/PDF，≤20MB）。"_s);
        addCase("no name", qsizetype(1), u"　"_s, QString(501, u'注'), day,
            u"缺少名称|请填写凭证名称。"_s);
        addCase("501", qsizetype(1), u"a"_s, QString(501, u'注'), day,
            u"备注过长|备注不超过 500 字。"_s);
        addCase("500", qsizetype(1), u"a"_s, QString(500, u'注'), day, QString());
        addCase("500 emoji", qsizetype(1), u"a"_s, u"🧾"_s.repeated(500), day, QString());
        addCase("no day", qsizetype(1), u"a"_s, u""_s, QDate(),
            u"日期无效|请填写正确的凭证日期，如 2025-03-31。"_s);
    }

    void aDescriptionIsCheckedInOrder()
    {
        QFETCH(qsizetype, files);
        QFETCH(QString, name);
        QFETCH(QString, note);
        QFETCH(QDate, date);
        QFETCH(QString, problem);
        const auto found = VoucherRules::problemOfImport(
            files, { .name = name, .voucherDate = date, .note = note });
        QCOMPARE(found ? found->title + u'|' + found->text : QString(), problem);
    }

    void archivedDuplicatesAreTold()
    {
        const auto told = VoucherBatch::noticeOf({ { 1, 2, 3 }, {}, 2, {}, 0 });
        QCOMPARE(told.title + u'|' + told.text,
            u"入库完成|成功入库 3 个文件，其中 2 个与库内已有文件内容相同（SHA-256 重复），已按你的确认继续入库。"_s);
    }

    void anErrorAsksToTryAgainOnce()
    {
        QCOMPARE(VoucherRules::failedUpdateText(u"旧关联清除失败"_s), u"旧关联清除失败请重试。"_s);
        QCOMPARE(
            VoucherRules::failedUpdateText(u"事务提交失败，请重试"_s), u"事务提交失败，请重试"_s);
    }

    void whatWasArchivedBeforeTheStopStays()
    {
        VoucherBatch::Order order;
        order.description = { .name = u"回单"_s, .voucherDate = QDate(2025, 1, 2) };
        for (const QString& name : { u"a.pdf"_s, u"b.gif"_s, u"c.pdf"_s, u"d.pdf"_s })
            order.files += VoucherQueue::inspect(source(name, name.toUtf8()));
        const auto outcome = VoucherBatch::run(
            order, [](qsizetype done, qsizetype total) { return total == 3 && done < 2; });
        QCOMPARE(outcome.untried, 1);
        QCOMPARE(outcome.archivedPaths.last(), order.files.at(2).path);
        QCOMPARE(TestDatabase::rows(u"SELECT name, original_file_name FROM vouchers"_s),
            (QStringList { u"回单-01|a.pdf"_s, u"回单-02|c.pdf"_s }));
    }
};

static const RegisteredTest<TestVoucherBatch> registered;

#include "TestVoucherBatch.moc"
