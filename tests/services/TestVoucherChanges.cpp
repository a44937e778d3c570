#include "core/AppPaths.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using namespace VoucherSample;

namespace {

QString linkRows()
{
    return TestDatabase::rows(u"SELECT target_type, target_id FROM entity_links ORDER BY id"_s)
        .join(u' ');
}

// The reason why the voucher could not be changed; "ok" when it was.
QString update(qint64 id, qint64 projectId, const QList<qint64>& transactionIds)
{
    QString error = u"(none)"_s;
    const bool done = VoucherService::updateVoucher(id,
        { .name = u"新名称"_s,
            .voucherType = VoucherType::Invoice,
            .voucherDate = QDate(2025, 5, 6),
            .note = u" 备注 "_s },
        projectId, transactionIds, &error);
    return done && error.isEmpty() ? u"ok"_s : error;
}

QString remove(qint64 id)
{
    QString error = u"(none)"_s;
    const bool done = VoucherService::deleteVoucher(id, &error);
    return done && error.isEmpty() ? u"ok"_s : error;
}

} // namespace

class TestVoucherChanges final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void anUpdateRewritesDescriptionAndLinks()
    {
        QVERIFY(addEntries(3));
        const qint64 id = archived(u"a.pdf"_s, { 1, 2 });
        const QString file
            = u"SELECT original_file_name, stored_path, file_ext, file_size, sha256, "
              "created_at FROM vouchers"_s;
        const QString fileBefore = TestDatabase::row(file);
        QCOMPARE(update(id, 7, { 3, 2 }), u"ok"_s);
        QCOMPARE(
            TestDatabase::row(u"SELECT name, voucher_type, voucher_date, note FROM vouchers"_s),
            u"新名称|invoice|2025-05-06|备注"_s);
        QCOMPARE(linkRows(), u"project|7 transaction|3 transaction|2"_s);
        QCOMPARE(TestDatabase::row(file), fileBefore);
        QCOMPARE(TestFile::bytesOf(copyPath()), QByteArray("a.pdf"));
    }

    void anUpdateDropsContractLinks()
    {
        const qint64 id = archived(u"a.pdf"_s);
        QCOMPARE(
            TestDatabase::run({ u"INSERT INTO entity_links (source_type, source_id, target_type, "
                                "target_id) VALUES ('voucher', 1, 'contract', 4)"_s }),
            QString());
        QCOMPARE(update(id, 0, {}), u"ok"_s);
        QCOMPARE(linkRows(), QString());
    }

    void anUpdateWithoutNameOrDateHasDefaults()
    {
        const qint64 id = archived(u"三月.回单.pdf"_s);
        QVERIFY(VoucherService::updateVoucher(id, { .name = u" "_s }, 0, {}));
        QCOMPARE(TestDatabase::row(u"SELECT name, voucher_type, voucher_date = "
                                   "date('now','localtime'), note FROM vouchers"_s),
            u"三月.回单|other|1|∅"_s);
    }

    void risksFollowTheVoucher()
    {
        QVERIFY(addEntries(3));
        const qint64 id = archived(u"a.pdf"_s, { 1, 2 });
        QCOMPARE(levels(), u"normal normal low"_s);
        QCOMPARE(update(id, 0, { 2, 3 }), u"ok"_s);
        QCOMPARE(levels(), u"low normal normal"_s);
        QCOMPARE(update(id, 0, {}), u"ok"_s);
        QCOMPARE(levels(), u"low low low"_s);
        QCOMPARE(update(id, 0, { 1 }), u"ok"_s);
        QCOMPARE(remove(id), u"ok"_s);
        QCOMPARE(levels(), u"low low low"_s);
    }

    void everyAffectedEntryEvaluatesTheLedgerOnce()
    {
        QVERIFY(addEntries(4));
        const qint64 id = archived(u"a.pdf"_s, { 1, 2 });
        QCOMPARE(
            TestDatabase::run({ u"CREATE TEMP TABLE evaluations (id INTEGER)"_s,
                u"CREATE TEMP TRIGGER count_them AFTER UPDATE OF risk_auto_level ON transactions "
                "WHEN NEW.id = 4 BEGIN INSERT INTO evaluations VALUES (1); END"_s }),
            QString());
        const QString count = u"SELECT COUNT(*) FROM evaluations"_s;
        QCOMPARE(update(id, 7, { 2, 3, 3 }), u"ok"_s);
        QCOMPARE(TestDatabase::row(count), u"3"_s);
        QCOMPARE(remove(id), u"ok"_s);
        QCOMPARE(TestDatabase::row(count), u"5"_s);
    }

    void aFailedChangeChangesNothing_data()
    {
        addColumns<bool, QStringList, QString>("deletes", "obstacle", "error");
        const auto refused
            = [](const char* name, bool deletes, const QString& event, const QString& error) {
                  addCase(name, deletes, refusing(event), error);
              };
        refused("the description", false, u"UPDATE ON vouchers"_s, u"refused"_s);
        refused("the old links", false, u"DELETE ON entity_links"_s, u"旧关联清除失败"_s);
        refused("the project", false, u"INSERT ON entity_links WHEN NEW.target_type = 'project'"_s,
            u"项目关联写入失败"_s);
        refused("the second entry", false, u"INSERT ON entity_links WHEN NEW.target_id = 3"_s,
            u"流水关联写入失败"_s);
        addCase("the commit of an update", false, failingCommit(u"UPDATE ON vouchers"_s),
            u"事务提交失败，请重试"_s);
        refused("the links of a deleted one", true, u"DELETE ON entity_links"_s, u"refused"_s);
        refused("the row of a deleted one", true, u"DELETE ON vouchers"_s, u"refused"_s);
        addCase("the commit of a deletion", true, failingCommit(u"DELETE ON vouchers"_s),
            u"事务提交失败，请重试"_s);
    }

    void aFailedChangeChangesNothing()
    {
        QFETCH(bool, deletes);
        QFETCH(QStringList, obstacle);
        QFETCH(QString, error); // its beginning
        QVERIFY(addEntries(3));
        const qint64 id = archived(u"a.pdf"_s, { 1 });
        QCOMPARE(TestDatabase::run(obstacle), QString());
        const QStringList before = TestDatabase::dump();
        expectWarnings({ u"(SQL error: refused|Transaction commit failed: FOREIGN KEY)"_s });
        const QString told = deletes ? remove(id) : update(id, 7, { 2, 3 });
        QVERIFY2(told.startsWith(error), qUtf8Printable(told));
        QCOMPARE(TestDatabase::dump(), before);
        QCOMPARE(TestFile::bytesOf(copyPath()), QByteArray("a.pdf"));
    }

    void aDeletedVoucherTakesRowLinksAndFile()
    {
        QVERIFY(addEntries(1));
        const qint64 id = archived(u"a.pdf"_s, { 1 });
        QVERIFY(archived(u"b.pdf"_s, { 1 }) > 0);
        QCOMPARE(remove(id), u"ok"_s);
        QCOMPARE(inventory(), u"1 vouchers, 1 links, 1 files"_s);
        QCOMPARE(TestFile::bytesOf(copyPath()), QByteArray("b.pdf"));
        QCOMPARE(levels(), u"normal"_s);

        QVERIFY2(QFile::remove(copyPath()), "a copy that is gone already is no obstacle");
        QCOMPARE(remove(id + 1), u"ok"_s);
        QCOMPARE(inventory(), u"0 vouchers, 0 links, 0 files"_s);
    }

    void aFileThatCannotBeRemovedStaysBehind()
    {
        const qint64 id = archived(u"a.pdf"_s);
        const QString copy = copyPath();
        QVERIFY(QFile::remove(copy) && QDir().mkpath(copy + u"/kept"_s));
        expectWarnings({ u"The voucher file voucher_assets/.* could not be removed: "_s });
        QCOMPARE(remove(id), u"ok"_s);
        QCOMPARE(inventory(), u"0 vouchers, 0 links, 1 files"_s);
    }

    void filesOutsideOfTheArchiveAreNeverRemoved_data()
    {
        addColumns<QString, QString>("storedPath", "linkInside");
        addCase("upwards", u"voucher_assets/../sources/kept.pdf"_s, QString());
        addCase("another folder", u"sources/kept.pdf"_s, QString());
        addCase("absolute", AppPaths::dataDir() + u"/sources/kept.pdf"_s, QString());
        addCase("a folder with the same beginning", u"voucher_assets/../voucher_assets2/kept.pdf"_s,
            QString());
        addCase("empty", QString(), QString());
        addCase("the folder itself", u"voucher_assets"_s, QString());
        addCase("through a linked folder", u"voucher_assets/linked/kept.pdf"_s,
            u"/voucher_assets/linked"_s);
    }

    void filesOutsideOfTheArchiveAreNeverRemoved()
    {
        QFETCH(QString, storedPath);
        QFETCH(QString, linkInside);
        const qint64 id = archived(u"a.pdf"_s);
        const QString kept = makeSource(u"kept.pdf"_s);
        const QString neighbour = AppPaths::dataDir() + u"/voucher_assets2"_s;
        QVERIFY(QDir().mkpath(neighbour) && QFile::copy(kept, neighbour + u"/kept.pdf"_s));
        if (!linkInside.isEmpty())
            QVERIFY(
                QFile::link(AppPaths::dataDir() + u"/sources"_s, AppPaths::dataDir() + linkInside));
        QCOMPARE(TestDatabase::run({ u"UPDATE vouchers SET stored_path = '%1'"_s.arg(storedPath) }),
            QString());
        expectWarnings({ u"The voucher file .*lies outside of the archive's folder"_s });
        QCOMPARE(remove(id), u"ok"_s);
        QVERIFY(QFile::exists(kept));
        QVERIFY(QFile::exists(neighbour + u"/kept.pdf"_s));
        QVERIFY(QDir(AppPaths::voucherAssetsDir()).exists());
    }

    void aFileOfAnotherVoucherStays()
    {
        const qint64 id = archived(u"a.pdf"_s);
        QCOMPARE(
            TestDatabase::run({ u"INSERT INTO vouchers (name, voucher_type, voucher_date, "
                                "original_file_name, stored_path, file_ext, file_size, sha256) "
                                "SELECT 'twin', voucher_type, voucher_date, original_file_name, "
                                "stored_path, file_ext, file_size, sha256 FROM vouchers"_s }),
            QString());
        expectWarnings({ u"The voucher file .* belongs to another voucher too and stays"_s });
        QCOMPARE(remove(id), u"ok"_s);
        QCOMPARE(TestFile::bytesOf(copyPath()), QByteArray("a.pdf"));
        QCOMPARE(remove(id + 1), u"ok"_s);
        QCOMPARE(inventory(), u"0 vouchers, 0 links, 0 files"_s);
    }

    void whatIsGoneCannotBeChanged()
    {
        QCOMPARE(update(9, 0, {}), u"凭证不存在或已被删除"_s);
        QCOMPARE(remove(9), u"凭证不存在或已被删除"_s);
        QVERIFY2(!VoucherService::deleteVoucher(9), "the reason may be left out");
    }

    void aReadThatFailsIsNotTakenForAMissingVoucher()
    {
        const qint64 id = archived(u"a.pdf"_s);
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE entity_links RENAME TO mislaid"_s }), QString());
        expectWarnings({ u"SQL error: no such table: entity_links"_s,
            u"SQL error: no such table: entity_links"_s });
        QVERIFY(update(id, 0, {}).startsWith(u"no such table"_s));
        QVERIFY(remove(id).startsWith(u"no such table"_s));
        QCOMPARE(TestFile::bytesOf(copyPath()), QByteArray("a.pdf"));
    }
};

static const RegisteredTest<TestVoucherChanges> registered;

#include "TestVoucherChanges.moc"
