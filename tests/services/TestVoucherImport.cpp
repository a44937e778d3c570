#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DbTransaction.h"
#include "services/FileRules.h"
#include "services/vouchers/Sha256.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace VoucherSample;

namespace {

const QString nothing = u"0 vouchers, 0 links, 0 files"_s;

VoucherImportResult import(const QString& path, const QList<qint64>& transactionIds = {})
{
    return VoucherService::importVoucher({ .sourcePath = path }, 0, transactionIds);
}

QByteArray patterned(qint64 size)
{
    QByteArray content(size, '\0');
    for (qsizetype i = 0; i < size; ++i)
        content[i] = static_cast<char>(i * 31 % 251);
    return content;
}

} // namespace

class TestVoucherImport final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aFileIsArchivedWithItsDescription()
    {
        const auto result
            = VoucherService::importVoucher({ .sourcePath = makeSource(u"Scan.JPG"_s, "abc"),
                                                .name = u" 三月回单 "_s,
                                                .voucherType = VoucherType::BankReceipt,
                                                .voucherDate = QDate(2025, 3, 9),
                                                .note = u"　原件在档 "_s },
                7, {});
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QVERIFY(!result.duplicate && result.error.isEmpty());
        const QRegularExpression form(
            u"^voucher_assets/[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\\.jpg$"_s);
        QVERIFY2(form.match(result.storedPath).hasMatch(), qUtf8Printable(result.storedPath));
        QCOMPARE(
            TestDatabase::row(u"SELECT id, name, voucher_type, voucher_date, original_file_name, "
                              "stored_path, file_ext, file_size, sha256, note FROM vouchers"_s),
            u"%1|三月回单|bank_receipt|2025-03-09|Scan.JPG|%2|jpg|3|"
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad|原件在档"_s.arg(
                QString::number(result.voucherId), result.storedPath));
        QCOMPARE(TestDatabase::row(u"SELECT source_type, source_id, target_type, target_id FROM "
                                   "entity_links"_s),
            u"voucher|%1|project|7"_s.arg(result.voucherId));
        QCOMPARE(inventory(), u"1 vouchers, 1 links, 1 files"_s);
    }

    void theCopyIsTheFile_data()
    {
        QTest::addColumn<qint64>("size");
        addCase("empty", qint64 { 0 });
        addCase("one byte", qint64 { 1 });
        addCase("some pages", qint64 { 100'003 });
        addCase("the largest that is accepted", qint64 { 20'971'520 });
    }

    void theCopyIsTheFile()
    {
        QFETCH(qint64, size);
        const QByteArray content = patterned(size);
        const QString source = makeSource(u"大文件.pdf"_s, content);
        const auto result = import(source);
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QVERIFY2(TestFile::bytesOf(copyPath()) == content, "the copy differs");
        QVERIFY2(TestFile::bytesOf(source) == content, "the source has changed");
        const auto digest = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        QCOMPARE(TestDatabase::row(u"SELECT sha256, file_size FROM vouchers"_s),
            u"%1|%2"_s.arg(QString::fromLatin1(digest), QString::number(size)));
    }

    void theNameDefaultsToTheFilesOwn_data()
    {
        addColumns<QString, QString, QString>("file", "name", "stored");
        addCase("given", u"a.pdf"_s, u"合同"_s, u"合同"_s);
        addCase("none", u"回单.pdf"_s, QString(), u"回单"_s);
        addCase("blanks only", u"回单.pdf"_s, u" 　"_s, u"回单"_s);
        addCase("dots within", u"v1.2 报价.final.PDF"_s, QString(), u"v1.2 报价.final"_s);
        addCase("placeholders", u"%1 %2.png"_s, QString(), u"%1 %2"_s);
        addCase("direction marks given", u"a.pdf"_s, u"合\u202e同"_s, u"合同"_s);
        addCase("direction marks in the file's name", u"回\u202e单.pdf"_s, QString(), u"回单"_s);
        addCase("nothing before the dot", u".jpg"_s, QString(), u".jpg"_s);
    }

    void theNameDefaultsToTheFilesOwn()
    {
        QFETCH(QString, file);
        QFETCH(QString, name);
        const auto result = VoucherService::importVoucher(
            { .sourcePath = makeSource(file), .name = name }, 0, {});
        QVERIFY2(result.ok, qUtf8Printable(result.error));
        QTEST(TestDatabase::row(u"SELECT name FROM vouchers"_s), "stored");
        QCOMPARE(TestDatabase::row(u"SELECT original_file_name FROM vouchers"_s), file);
        QCOMPARE(
            TestDatabase::row(u"SELECT voucher_date = date('now','localtime') FROM vouchers"_s),
            u"1"_s);
        QCOMPARE(TestDatabase::row(u"SELECT note FROM vouchers"_s), u"∅"_s);
    }

    void refusedFilesLeaveNothing_data()
    {
        addColumns<QString, QString>("path", "error");
        const QString folder = AppPaths::dataDir() + u"/sources/"_s;
        const QString unsupported = u"不支持的文件类型 .%1（仅支持 JPG/PNG/BMP/PDF）"_s;
        addCase("missing", folder + u"无%1.jpg"_s, u"源文件不存在："_s + folder + u"无%1.jpg"_s);
        addCase(
            "a folder", folder + u"folder.jpg"_s, u"源文件不存在："_s + folder + u"folder.jpg"_s);
        addCase("no path", QString(), u"源文件不存在："_s);
        addCase("other type", folder + u"a.gif"_s, unsupported.arg(u"gif"_s));
        addCase("other type in capitals", folder + u"b.jpg.EXE"_s, unsupported.arg(u"exe"_s));
        addCase("no extension", folder + u"jpg"_s, unsupported.arg(QString()));
        addCase("one byte too large", folder + u"%2.pdf"_s,
            u"文件 %2.pdf 大小 20.00 MB，超过单文件 20MB 上限"_s);
    }

    void refusedFilesLeaveNothing()
    {
        QFETCH(QString, path);
        for (const QString& name : { u"a.gif"_s, u"b.jpg.EXE"_s, u"jpg"_s })
            QVERIFY(!makeSource(name).isEmpty());
        QVERIFY(!makeSource(u"%2.pdf"_s, QByteArray(20'971'521, 'x')).isEmpty());
        QVERIFY(QDir().mkpath(AppPaths::dataDir() + u"/sources/folder.jpg"_s));
        const QStringList before = TestDatabase::dump();
        const auto result = import(path);
        QVERIFY(!result.ok && result.voucherId == 0 && result.storedPath.isEmpty());
        QTEST(result.error, "error");
        QCOMPARE(inventory(), nothing);
        QCOMPARE(TestDatabase::dump(), before);
    }

    void aFileThatCannotBeReadLeavesNothing()
    {
#ifdef Q_OS_LINUX
        // A file of the kernel that claims a size and gives an error or fewer bytes when it is
        // read.
        const QString link = AppPaths::dataDir() + u"/mem.pdf"_s;
        QVERIFY(QFile::link(u"/proc/self/mem"_s, link));
        const auto result = import(link);
        QVERIFY(!result.ok);
        QCOMPARE(result.error, u"文件读取失败（可能被占用）：mem.pdf"_s);
        QCOMPARE(inventory(), nothing);
#endif
    }

    void theSameContentIsADuplicateAndStored()
    {
        const QString source = makeSource(u"a.pdf"_s);
        bool duplicate = true;
        const auto first
            = VoucherService::importVoucher({ .sourcePath = source }, 0, {}, &duplicate);
        QVERIFY(first.ok && !first.duplicate && !duplicate);
        const auto second
            = VoucherService::importVoucher({ .sourcePath = source }, 0, {}, &duplicate);
        QVERIFY(second.ok && second.duplicate && duplicate);
        QVERIFY(first.storedPath != second.storedPath);
        QCOMPARE(inventory(), u"2 vouchers, 0 links, 2 files"_s);
    }

    void linksSettleTheRisksOfTheirEntries()
    {
        QVERIFY(addEntries(3));
        QVERIFY(import(makeSource(u"a.pdf"_s), { 1, 3, 1 }).ok);
        QCOMPARE(levels(), u"normal low normal"_s);
        QCOMPARE(
            TestDatabase::rows(u"SELECT target_type, target_id FROM entity_links ORDER BY id"_s),
            (QStringList { u"transaction|1"_s, u"transaction|3"_s }));
    }

    void theLedgerIsEvaluatedOncePerLinkedEntry()
    {
        QVERIFY(addEntries(3));
        QCOMPARE(
            TestDatabase::run({ u"CREATE TEMP TABLE evaluations (id INTEGER)"_s,
                u"CREATE TEMP TRIGGER count_them AFTER UPDATE OF risk_auto_level ON transactions "
                "WHEN NEW.id = 2 BEGIN INSERT INTO evaluations VALUES (1); END"_s }),
            QString());
        QVERIFY(import(makeSource(u"a.pdf"_s)).ok);
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM evaluations"_s), u"0"_s);
        QVERIFY(import(makeSource(u"a.pdf"_s), { 1, 3, 1 }).ok);
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM evaluations"_s), u"2"_s);
    }

    void whatFailsLeavesNeitherRowNorCopy_data()
    {
        addColumns<QStringList, QString, QStringList>("obstacle", "error", "warnings");
        const QString links = u"凭证关联写入失败"_s;
        const QStringList sqlError { u"SQL error: refused"_s };
        const QString lostBegin = u"Transaction rollback failed: .*no transaction"_s;
        addCase("the row", refusing(u"INSERT ON vouchers"_s), u"refused"_s, sqlError);
        addCase("the link to the project",
            refusing(u"INSERT ON entity_links WHEN NEW.target_type = 'project'"_s), links,
            sqlError);
        addCase("the second of three entries",
            refusing(u"INSERT ON entity_links WHEN NEW.target_id = 2"_s), links, sqlError);
        addCase("the whole transaction at the last link",
            refusing(u"INSERT ON entity_links WHEN NEW.target_id = 3"_s, u"ROLLBACK"_s), links,
            sqlError + QStringList { lostBegin });
        addCase("the commit", failingCommit(u"INSERT ON vouchers"_s), u"事务提交失败，请重试"_s,
            QStringList { u"Transaction commit failed: FOREIGN KEY constraint failed"_s });
    }

    void whatFailsLeavesNeitherRowNorCopy()
    {
        QFETCH(QStringList, obstacle);
        QFETCH(QString, error);
        QFETCH(QStringList, warnings);
        QVERIFY(addEntries(3));
        QCOMPARE(TestDatabase::run(obstacle), QString());
        const QStringList before = TestDatabase::dump();
        expectWarnings(warnings);
        const auto result = VoucherService::importVoucher(
            { .sourcePath = makeSource(u"a.pdf"_s) }, 7, { 1, 2, 3 });
        QVERIFY(!result.ok && result.voucherId == 0 && result.storedPath.isEmpty());
        QVERIFY2(result.error.startsWith(error), qUtf8Printable(result.error));
        QCOMPARE(inventory(), nothing);
        QCOMPARE(TestDatabase::dump(), before);
        const DbTransaction next;
        QVERIFY2(next.isOpen(), "the failed transaction is still open");
    }

    void aDuplicateIsKnownAlthoughTheImportFails()
    {
        QVERIFY(archived(u"a.pdf"_s) > 0);
        bool duplicate = false;
        expectWarnings({ u"Rejected entity_link combo: voucher/2 -> transaction/-1"_s });
        const auto result = VoucherService::importVoucher(
            { .sourcePath = makeSource(u"b.pdf"_s, "a.pdf") }, 0, { -1 }, &duplicate);
        QVERIFY(!result.ok && result.duplicate && duplicate);
        QCOMPARE(result.error, u"凭证关联写入失败"_s);
        QCOMPARE(inventory(), u"1 vouchers, 0 links, 1 files"_s);

        const QString source = makeSource(u"c.pdf"_s);
        DatabaseManager::instance().close();
        expectWarnings({ u"SQL error: 数据库未打开"_s });
        QCOMPARE(import(source).error, u"数据库事务无法开启"_s);
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(inventory(), u"1 vouchers, 0 links, 1 files"_s);
    }

    void aFullDiskLeavesNothing()
    {
#ifdef Q_OS_UNIX
        const QString source = makeSource(u"回单.pdf"_s, patterned(20'000));
        VoucherImportResult result;
        expectWarnings({ u"The voucher file voucher_assets/.*\\.pdf could not be written: "_s });
        {
            const FullDisk disk(4096);
            result = import(source);
        }
        QVERIFY(!result.ok);
        QCOMPARE(result.error, u"复制文件到凭证库失败（磁盘空间或占用）：回单.pdf"_s);
        QCOMPARE(inventory(), nothing);
        QVERIFY(import(source).ok);
#endif
    }

    void aFileInTheFoldersPlaceLeavesNothing()
    {
        QVERIFY(QDir(AppPaths::voucherAssetsDir()).removeRecursively());
        QVERIFY(TestFile::put(AppPaths::voucherAssetsDir(), "in the way"));
        expectWarnings({ u"The voucher file .* could not be written: "_s });
        const auto result = import(makeSource(u"a.pdf"_s));
        QCOMPARE(result.error, u"复制文件到凭证库失败（磁盘空间或占用）：a.pdf"_s);
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM vouchers"_s), u"0"_s);
        QCOMPARE(TestFile::bytesOf(AppPaths::voucherAssetsDir()), QByteArray("in the way"));
    }

    void aMissingFolderIsMadeAnew()
    {
        QVERIFY(QDir(AppPaths::voucherAssetsDir()).removeRecursively());
        QVERIFY(import(makeSource(u"a.pdf"_s)).ok);
        QCOMPARE(inventory(), u"1 vouchers, 0 links, 1 files"_s);
    }

    void aFailedEvaluationKeepsTheVoucher()
    {
        QVERIFY(addEntries(1));
        QVERIFY(TestDatabase::refuseUpdates(u"transactions"_s));
        expectWarnings({ u"The ledger cannot be marked as behind"_s, u"SQL error: refused"_s,
            u"RiskService: updateRisk failed for tx 1"_s, u"SQL error: refused"_s,
            u"RiskService: the ledger cannot be marked as behind"_s });
        QVERIFY(import(makeSource(u"a.pdf"_s), { 1 }).ok);
        QCOMPARE(inventory(), u"1 vouchers, 1 links, 1 files"_s);
    }

    void anEvaluationThatLosesTheTransactionLosesTheCopyToo()
    {
        QVERIFY(addEntries(1));
        QCOMPARE(TestDatabase::run({ u"CREATE TEMP TRIGGER no BEFORE UPDATE ON transactions BEGIN "
                                     "SELECT RAISE(ROLLBACK, 'refused'); END"_s }),
            QString());
        expectWarnings({ u"SQL error: refused"_s, u"The ledger cannot be marked as behind"_s,
            u"RiskService: no transaction for the evaluation"_s,
            u"Transaction commit failed: .*no transaction"_s,
            u"Transaction rollback failed: .*no transaction"_s });
        const auto result = import(makeSource(u"a.pdf"_s), { 1 });
        QCOMPARE(result.error, u"事务提交失败，请重试"_s);
        QCOMPARE(inventory(), nothing);
    }

    void anOuterTransactionDecidesTogether()
    {
        QVERIFY(addEntries(2));
        DbTransaction outer;
        QVERIFY(import(makeSource(u"a.pdf"_s), { 1 }).ok);
        expectWarnings({ u"Rejected entity_link combo: "_s });
        QVERIFY(!import(makeSource(u"b.pdf"_s), { 2, 0 }).ok);
        QVERIFY(outer.commit());
        QCOMPARE(inventory(), u"1 vouchers, 1 links, 1 files"_s);
        QCOMPARE(levels(), u"normal low"_s);
    }

    void aDigestMayBeTakenInPieces()
    {
        const QByteArray content = patterned(1'000);
        const QString digest = QString::fromLatin1(
            QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
        bool ok = false;
        QCOMPARE(VoucherService::computeSha256(makeSource(u"any.bin"_s, content), &ok), digest);
        QVERIFY(ok);
        QCOMPARE(Sha256::hexDigestOf(content), digest);
        Sha256 pieces;
        for (qsizetype i = 0; i < content.size(); i += 7)
            pieces.add(
                QByteArrayView(content).sliced(i, std::min<qsizetype>(7, content.size() - i)));
        QCOMPARE(pieces.hexDigest(), digest);
        QVERIFY2(pieces.hexDigest().isEmpty(), "a digest ends once");
    }

    void aDigestNeedsAReadableFile()
    {
        for (const QString& path :
            { AppPaths::dataDir() + u"/missing.pdf"_s, AppPaths::dataDir() }) {
            bool ok = true;
            QVERIFY(VoucherService::computeSha256(path, &ok).isEmpty());
            QVERIFY(!ok);
        }
    }

    void sizesAreReadable()
    {
        QCOMPARE(FileRules::formatFileSize(0), u"0 B"_s);
        QCOMPARE(FileRules::formatFileSize(1023), u"1023 B"_s);
        QCOMPARE(FileRules::formatFileSize(1024), u"1.0 KB"_s);
        QCOMPARE(FileRules::formatFileSize(1536), u"1.5 KB"_s);
        QCOMPARE(FileRules::formatFileSize(1'048'575), u"1024.0 KB"_s);
        QCOMPARE(FileRules::formatFileSize(1'048'576), u"1.00 MB"_s);
        QCOMPARE(FileRules::formatFileSize(3'221'225'472), u"3072.00 MB"_s);
    }

    void theDialogOffersTheAcceptedTypes()
    {
        QCOMPARE(FileRules::fileDialogFilter(),
            u"凭证文件 (*.jpg *.jpeg *.png *.bmp *.pdf);;所有文件 (*.*)"_s);
    }
};

static const RegisteredTest<TestVoucherImport> registered;

#include "TestVoucherImport.moc"
