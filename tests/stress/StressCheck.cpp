#include "stress/StressCheck.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DocumentDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/backup/BackupService.h"
#include "services/backup/RestoreRepair.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentRules.h"
#include "services/repair/CrashRepair.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherAssets.h"
#include "services/vouchers/VoucherService.h"
#include "stress/StressFacts.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace StressCheck {

namespace {

constexpr int poolEntries = 4;
constexpr int poolVouchers = 6;

QString oneLine(const QStringList& lines)
{
    return lines.join(u" / "_s);
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

void checkDatabase(QStringList& problems)
{
    QString detail;
    if (!DatabaseManager::instance().integrityCheck(&detail))
        problems += u"integrity: "_s + detail;
    if (const QStringList broken = TestDatabase::rows(u"PRAGMA foreign_key_check"_s);
        !broken.isEmpty())
        problems += u"foreign keys: "_s + oneLine(broken);
    const QStringList dangling = TestDatabase::rows(
        u"SELECT l.id FROM entity_links l WHERE (source_type = 'voucher' AND NOT EXISTS (SELECT 1 "
        "FROM vouchers WHERE id = source_id)) OR (source_type = 'document' AND NOT EXISTS (SELECT "
        "1 FROM documents WHERE id = source_id)) OR (target_type = 'transaction' AND NOT EXISTS "
        "(SELECT 1 FROM transactions WHERE id = target_id))"_s);
    if (!dangling.isEmpty())
        problems += u"links to nothing: "_s + oneLine(dangling);
}

void checkEntries(QStringList& problems)
{
    int pool = 0;
    for (const Transaction& entry : TransactionDao().search({})) {
        if (entry.note == u"pool"_s)
            ++pool;
        else if (entry.note != StressFacts::noteOf(entry, StressFacts::vouchersOf(entry.id)))
            problems += u"entry %1 is not whole"_s.arg(entry.id);
    }
    if (pool != poolEntries)
        problems += u"%1 entries of the pool"_s.arg(pool);
}

void checkVouchers(QStringList& problems)
{
    int pool = 0;
    for (const Voucher& voucher : VoucherDao().search({})) {
        const bool inPool = voucher.note == u"pool"_s;
        pool += inPool ? 1 : 0;
        if (!inPool && voucher.note != StressFacts::linksNote(StressFacts::entriesOf(voucher.id)))
            problems += u"voucher %1 is not linked as its note says"_s.arg(voucher.id);
        const QString path = VoucherAssets::existingFile(voucher.storedPath);
        if (path.isEmpty())
            problems += u"voucher %1 lost its file"_s.arg(voucher.id);
        else if (VoucherService::computeSha256(path) != voucher.sha256
            || QFileInfo(path).size() != voucher.fileSize)
            problems += u"voucher %1 has another file"_s.arg(voucher.id);
    }
    if (pool != poolVouchers)
        problems += u"%1 vouchers of the pool"_s.arg(pool);
}

// Documents are only ever deleted from the end, so that no number may be missing.
void checkNumbers(const QList<DocumentRecord>& documents, QStringList& problems)
{
    QMap<QString, QList<int>> numbers;
    for (const DocumentRecord& document : documents)
        numbers[document.docNo.chopped(4)] += document.docNo.right(4).toInt();
    for (auto kind = numbers.begin(); kind != numbers.end(); ++kind) {
        QList<int>& given = kind.value();
        std::sort(given.begin(), given.end());
        for (int i = 0; i < given.size(); ++i) {
            if (given.at(i) != i + 1)
                problems += u"%1: number %2 is missing"_s.arg(kind.key(), QString::number(i + 1));
        }
    }
}

void checkDocuments(StressFindings& found)
{
    const QList<DocumentRecord> documents = DocumentDao().list();
    checkNumbers(documents, found.problems);
    QSet<QString> known;
    for (const DocumentRecord& document : documents) {
        const QString path = DocumentFiles::ownFile(document);
        known += path;
        if (!DocumentPdf::isOf(path, document.contentHtml)
            && TestFile::bytesOf(path) != StressFacts::signedCopy())
            found.problems += u"%1 and its PDF are out of step"_s.arg(document.docNo);
        const QList<qint64> links = StressFacts::ids(
            u"SELECT target_id FROM entity_links WHERE source_type = 'document' AND source_id = %1 ORDER BY id"_s
                .arg(document.id));
        if (links != DocumentRules::coveredIds(document))
            found.problems += u"%1 is not linked to what it covers"_s.arg(document.docNo);
    }
    const QStringList reported = DocumentFiles::filesWithoutRow();
    found.filesReported = int(reported.size());
    for (const QString& name : namesIn(AppPaths::exportsDir())) {
        const QString path = AppPaths::exportsDir() + u'/' + name;
        if (!known.contains(path) && !reported.contains(path))
            found.problems += u"nobody knows of exports/"_s + name;
    }
}

void checkLevels(QStringList& problems)
{
    const QStringList before = StressFacts::levels();
    RiskService().reevaluateAll();
    if (StressFacts::levels() != before)
        problems += u"risk levels are behind the ledger"_s;
}

void checkFolders(QStringList& problems)
{
    static const QStringList usual { u"auto_backup_before_restore"_s, u"backups"_s, u"brixa.db"_s,
        u"brixa.db-shm"_s, u"brixa.db-wal"_s, u"exports"_s, u"logs"_s, u"voucher_assets"_s };
    for (const QString& name : namesIn(AppPaths::dataDir())) {
        if (!usual.contains(name))
            problems += u"left in the data directory: "_s + name;
    }
}

QStringList takeBackupsIn(const QString& parent, StressFindings& found)
{
    QStringList whole;
    for (const QString& name : namesIn(parent)) {
        const QString folder = parent + u'/' + name;
        const BackupPreview preview = BackupService::inspect(folder);
        if (!preview.ok)
            ++found.unfinishedBackups;
        else if (!preview.warnings.isEmpty())
            found.problems += u"backup: "_s + oneLine(preview.warnings);
        else if (TestDatabase::rowOfFile(folder + u"/brixa.db"_s, u"PRAGMA integrity_check"_s)
            != u"ok"_s)
            found.problems += u"backup with a damaged database"_s;
        else
            whole += folder;
        QDir(folder).removeRecursively();
    }
    return whole;
}

// What each thing may be now: what was stored last, or what was under way.
QMap<QString, QStringList> expectations(const QStringList& lines)
{
    QMap<QString, QStringList> expected;
    for (const QString& line : lines) {
        const QString what = line.section(u'\t', 0, 0);
        const QString key = line.section(u'\t', 1, 1);
        const QString value = line.section(u'\t', 2, 2);
        if (what == u"ack"_s)
            expected[key] = { value };
        else if (what == u"try"_s)
            expected[key] += value;
    }
    return expected;
}

QString firstOr(const QStringList& rows, const QString& fallback)
{
    return rows.isEmpty() ? fallback : rows.first();
}

QString present(const QString& key, const QStringList& wholeBackups)
{
    const QString kind = key.section(u' ', 0, 0);
    const QString name = key.section(u' ', 1);
    if (kind == u"entry"_s)
        return firstOr(
            TestDatabase::rows(u"SELECT note FROM transactions WHERE id = "_s + name), u"gone"_s);
    if (kind == u"voucher"_s)
        return firstOr(
            TestDatabase::rows(u"SELECT note FROM vouchers WHERE id = "_s + name), u"gone"_s);
    if (kind == u"document"_s)
        return firstOr(
            TestDatabase::rows(u"SELECT '*' FROM documents WHERE doc_no = '%1'"_s.arg(name)),
            u"gone"_s);
    if (kind == u"backup"_s)
        return wholeBackups.contains(name) ? u"whole"_s : u"gone"_s;
    return StressFacts::dataSignature();
}

void checkClaims(const Claims& claims, const QStringList& wholeBackups, QStringList& problems)
{
    for (const QString& line : claims.lines) {
        if (line.startsWith(u"refused"_s))
            problems += u"refused without a fault: "_s + line.section(u'\t', 1);
    }
    auto expected = expectations(claims.lines);
    // A restore takes single records along.
    if (expected.contains(u"data"_s))
        expected = { { u"data"_s, expected.value(u"data"_s) } };
    for (auto item = expected.begin(); item != expected.end(); ++item) {
        QStringList allowed = item.value();
        if (item.key() == u"data"_s && allowed.contains(u"*"_s))
            continue;
        allowed.replaceInStrings(u"prepared"_s, claims.prepared);
        // What was only tried may still be what it was before.
        const bool onlyTried = !claims.lines.join(u'\n').contains(u"ack\t"_s + item.key() + u'\t');
        const QString now = present(item.key(), wholeBackups);
        if (!onlyTried && !allowed.contains(now))
            problems += u"%1 is \"%2\" instead of \"%3\""_s.arg(
                item.key(), now, allowed.join(u"\" or \""_s));
    }
}

} // namespace

QString start(StressFindings* findings)
{
    if (!AppPaths::ensureDirs())
        return u"no folders"_s;
    const bool restoring = QDir(AppPaths::dataDir()).exists(u"restore_swap"_s);
    if (const auto problem = RestoreRepair::run())
        return *problem;
    const CrashRepair repair;
    if (!DatabaseManager::instance().open())
        return DatabaseManager::instance().lastError();
    const QStringList levels = StressFacts::levels();
    const QDir exports(AppPaths::exportsDir());
    const qsizetype formers = exports.entryList({ u"*.old"_s }).size();
    repair.run();
    if (findings) {
        findings->restoresRepaired = restoring ? 1 : 0;
        findings->levelsRepaired = StressFacts::levels() != levels ? 1 : 0;
        findings->documentsRepaired = int(formers - exports.entryList({ u"*.old"_s }).size());
    }
    return {};
}

StressFindings examine(const Claims& claims, const QString& backupTarget)
{
    StressFindings found;
    if (const QString problem = start(&found); !problem.isEmpty()) {
        found.problems += u"the next start stops: "_s + problem;
        return found;
    }
    checkDatabase(found.problems);
    checkEntries(found.problems);
    checkVouchers(found.problems);
    checkDocuments(found);
    checkFolders(found.problems);
    found.copiesReported = int(VoucherAssets::filesWithoutRow().size());
    QStringList whole = takeBackupsIn(backupTarget, found);
    whole += takeBackupsIn(AppPaths::autoBackupBeforeRestoreDir(), found);
    checkClaims(claims, whole, found.problems);
    checkLevels(found.problems);
    DatabaseManager::instance().close();
    return found;
}

} // namespace StressCheck
