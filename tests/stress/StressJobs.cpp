#include "stress/StressJobs.h"

#include "db/DocumentDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/backup/BackupService.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentService.h"
#include "services/DocumentSamples.h"
#include "services/entries/EntryService.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherBatch.h"
#include "stress/StressFacts.h"
#include "support/TestFile.h"

#include <QDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int fewestVouchers = 3;

// At once and in one piece: what was told survives the kill.
void tell(const QString& what, const QString& key, const QString& value)
{
    const QByteArray line = (what + u'\t' + key + u'\t' + value + u'\n').toUtf8();
    [[maybe_unused]] const ssize_t written
        = ::write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size()));
}

void tellTry(const QString& key, const QString& value)
{
    tell(u"try"_s, key, value);
}

void tellStored(const QString& key, const QString& value)
{
    tell(u"ack"_s, key, value);
}

void tellRefused(const QString& what, const QString& reason)
{
    tell(u"refused"_s, what, reason);
}

void tellOutcome(
    bool done, const QString& key, const QString& value, const QString& what, const QString& reason)
{
    if (done)
        tellStored(key, value);
    else
        tellRefused(what, reason);
}

bool goOn(qsizetype, qsizetype)
{
    return true;
}

QString entryKey(qint64 id)
{
    return u"entry %1"_s.arg(id);
}

QString voucherKey(qint64 id)
{
    return u"voucher %1"_s.arg(id);
}

QString dataKey()
{
    return u"data"_s;
}

// Stands for the content of the prepared backup.
QString preparedValue()
{
    return u"prepared"_s;
}

QString documentKey(const QString& docNo)
{
    return u"document "_s + docNo;
}

QList<qint64> poolEntries()
{
    return StressFacts::ids(u"SELECT id FROM transactions WHERE note = 'pool'"_s);
}

QList<qint64> poolVouchers()
{
    return StressFacts::ids(u"SELECT id FROM vouchers WHERE note = 'pool'"_s);
}

QList<qint64> ownEntries()
{
    return StressFacts::ids(u"SELECT id FROM transactions WHERE note LIKE 'sum:%'"_s);
}

QList<qint64> ownVouchers()
{
    return StressFacts::ids(u"SELECT id FROM vouchers WHERE note LIKE 'links:%'"_s);
}

QList<qint64> without(QList<qint64> all, const QList<qint64>& some)
{
    all.removeIf([&](qint64 id) { return some.contains(id); });
    return all;
}

} // namespace

StressJobs::StressJobs(const QString& root, quint32 seed)
    : m_root(root)
    , m_random(seed)
{
}

bool StressJobs::prepare()
{
    if (!DocumentSamples::storeCompany())
        return false;
    // Enough within a few days to be flagged until a decision covers them.
    for (int day = 0; day < 4; ++day) {
        Transaction entry = DocumentSamples::entry(day);
        entry.note = u"pool"_s;
        if (!TransactionDao().insert(entry))
            return false;
    }
    VoucherBatch::Order order { .description = { .note = u"pool"_s } };
    for (int i = 0; i < 6; ++i)
        order.files += VoucherQueue::inspect(sourceFile());
    const VoucherBatch::Outcome outcome = VoucherBatch::run(order, goOn);
    RiskService().reevaluateAll();
    const BackupResult backup = BackupService().backupTo(m_root);
    tellStored(preparedValue(), StressFacts::dataSignature());
    return outcome.voucherIds.size() == 6 && backup.ok
        && QDir().rename(backup.folder, preparedBackup());
}

QString StressJobs::backupTarget(const QString& root)
{
    return root + u"/target"_s;
}

QString StressJobs::preparedBackup() const
{
    return m_root + u"/prepared"_s;
}

void StressJobs::provideFor(Job job)
{
    while ((job == Job::EditVoucher || job == Job::DeleteVoucher)
        && ownVouchers().size() < fewestVouchers)
        importVouchers();
    if ((job == Job::Regenerate || job == Job::DeleteDocument)
        && DocumentDao().listWithoutContent().isEmpty())
        generate();
    // Put aside when it is regenerated, and nothing may happen to it on the way.
    if (job == Job::Regenerate && m_random.bounded(3) == 0) {
        const DocumentRecord document = DocumentDao().list().first();
        if (!TestFile::put(DocumentFiles::ownFile(document), StressFacts::signedCopy()))
            tellRefused(u"scan"_s, {});
    }
}

void StressJobs::run(Job job)
{
    switch (job) {
    case Job::SaveEntry:
        return saveEntry();
    case Job::ImportVouchers:
        return importVouchers();
    case Job::EditVoucher:
        return editVoucher();
    case Job::DeleteVoucher:
        return deleteVoucher();
    case Job::Generate:
        return generate();
    case Job::Regenerate:
        return regenerate();
    case Job::DeleteDocument:
        return deleteDocument();
    case Job::Backup:
        return backup();
    case Job::Restore:
        return restore();
    case Job::Start:
        return;
    }
}

void StressJobs::saveEntry()
{
    Transaction entry = DocumentSamples::entry(m_random.bounded(300));
    QList<qint64> before;
    const QList<qint64> known = ownEntries();
    if (!known.isEmpty() && m_random.bounded(2) == 0) {
        entry.id = oneOf(known);
        before = StressFacts::vouchersOf(entry.id);
    }
    entry.summary += u" %1"_s.arg(m_random.bounded(1'000'000));
    const QList<qint64> wanted = someOf(poolVouchers());
    entry.note = StressFacts::noteOf(entry, wanted);
    if (entry.id > 0)
        tellTry(entryKey(entry.id), entry.note);
    const auto result = EntryService::save(entry, without(wanted, before), without(before, wanted));
    tellOutcome(result.ok, entryKey(result.entryId), entry.note, u"entry"_s, result.message);
}

void StressJobs::importVouchers()
{
    const QList<qint64> entries = someOf(poolEntries());
    VoucherBatch::Order order { .description = { .note = StressFacts::linksNote(entries) },
        .transactionIds = entries };
    for (int i = 0; i < 2; ++i)
        order.files += VoucherQueue::inspect(sourceFile());
    const VoucherBatch::Outcome outcome = VoucherBatch::run(order, goOn);
    for (const qint64 id : outcome.voucherIds)
        tellStored(voucherKey(id), order.description.note);
    if (!outcome.failures.isEmpty())
        tellRefused(u"import"_s, outcome.failures.join(u' '));
}

void StressJobs::editVoucher()
{
    provideFor(Job::EditVoucher);
    const qint64 id = oneOf(ownVouchers());
    const QList<qint64> entries = someOf(poolEntries());
    const VoucherDescription description { .name = u"改 %1"_s.arg(m_random.bounded(1000)),
        .note = StressFacts::linksNote(entries) };
    tellTry(voucherKey(id), description.note);
    QString error;
    const bool done = VoucherService::updateVoucher(id, description, 0, entries, &error);
    tellOutcome(done, voucherKey(id), description.note, u"edit"_s, error);
}

void StressJobs::deleteVoucher()
{
    provideFor(Job::DeleteVoucher);
    const qint64 id = oneOf(ownVouchers());
    tellTry(voucherKey(id), u"gone"_s);
    QString error;
    const bool done = VoucherService::deleteVoucher(id, &error);
    tellOutcome(done, voucherKey(id), u"gone"_s, u"unvoucher"_s, error);
}

void StressJobs::generate()
{
    const auto expect
        = [](DocType type) { tellTry(documentKey(DocumentDao().nextDocNo(type, 2025)), u"*"_s); };
    DocumentService service;
    DocumentResult result;
    switch (m_random.bounded(3)) {
    case 0:
        expect(DocType::AnnualDecision);
        result = service.generateAnnualDecision(DocumentSamples::annualInput());
        break;
    case 1:
        expect(DocType::FundDecision);
        result = service.generateFundDecision(DocumentSamples::fundInput(poolEntries()));
        break;
    default:
        expect(DocType::IndependenceStatement);
        result = service.generateIndependenceStatement(DocumentSamples::independenceInput());
    }
    tellOutcome(result.ok, documentKey(result.docNo), u"*"_s, u"generate"_s, result.error);
}

void StressJobs::regenerate()
{
    CompanyProfile company = ProfileDao().load();
    company.companyName = u"杭州第%1设计有限公司"_s.arg(m_random.bounded(1'000'000));
    if (!ProfileDao().save(company))
        tellRefused(u"profile"_s, {});
    const QList<DocumentRecord> documents = DocumentDao().listWithoutContent();
    const DocumentRecord& document = documents.at(m_random.bounded(int(documents.size())));
    const DocumentResult result = DocumentService().regenerate(document.id);
    if (!result.ok)
        return tellRefused(u"regenerate"_s, result.error);
    const auto stored = DocumentDao().findById(document.id);
    tellStored(documentKey(result.docNo),
        stored && stored->contentHtml.contains(company.companyName) ? u"*"_s : u"not renewed"_s);
}

// Only ever the newest, so that numbers stay without gaps.
void StressJobs::deleteDocument()
{
    provideFor(Job::DeleteDocument);
    const DocumentRecord document = DocumentDao().list().first();
    tellTry(documentKey(document.docNo), u"gone"_s);
    const DocumentResult result = DocumentService().deleteDocument(document.id);
    tellOutcome(result.ok, documentKey(document.docNo), u"gone"_s, u"undocument"_s, result.error);
}

void StressJobs::backup()
{
    const BackupResult result = BackupService().backupTo(backupTarget(m_root));
    tellOutcome(result.ok, u"backup "_s + result.folder, u"whole"_s, u"backup"_s, result.message);
}

void StressJobs::restore()
{
    tellStored(dataKey(), StressFacts::dataSignature());
    tellTry(dataKey(), preparedValue());
    const RestoreResult result = BackupService().restoreFrom(preparedBackup());
    if (!result.ok)
        return tellRefused(u"restore"_s, result.message);
    tellStored(dataKey(), preparedValue());
    // Something to lose by the next one.
    tellTry(dataKey(), u"*"_s);
    saveEntry();
}

QString StressJobs::sourceFile()
{
    const QString path
        = u"%1/sources/%2.pdf"_s.arg(m_root, QString::number(m_random.bounded(1'000'000)));
    QByteArray bytes(2000 + m_random.bounded(60'000), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(m_random.bounded(256));
    const bool written
        = QDir().mkpath(m_root + u"/sources"_s) && TestFile::put(path, "%PDF-1.4\n" + bytes);
    return written ? path : QString();
}

QList<qint64> StressJobs::someOf(const QList<qint64>& all)
{
    QList<qint64> some;
    for (const qint64 id : all) {
        if (m_random.bounded(2) == 0)
            some += id;
    }
    return some;
}

qint64 StressJobs::oneOf(const QList<qint64>& all)
{
    return all.isEmpty() ? 0 : all.at(m_random.bounded(int(all.size())));
}
