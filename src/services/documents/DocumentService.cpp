#include "services/documents/DocumentService.h"

#include "core/AppPaths.h"
#include "db/DbTransaction.h"
#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentTemplates.h"
#include "services/documents/StagedFile.h"
#include "services/risk/RiskService.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

DocumentResult failure(const QString& error)
{
    return { .error = error };
}

DocumentResult success(const DocumentRecord& record, const QString& filePath)
{
    return { .ok = true, .docId = record.id, .docNo = record.docNo, .filePath = filePath };
}

// A document that cannot be read must not be reported as gone.
std::optional<DocumentRecord> findDocument(qint64 id, QString& error)
{
    DocumentDao documents;
    auto record = documents.findById(id);
    if (!record)
        error = documents.lastError().isEmpty()
            ? u"文书记录不存在。"_s
            : u"文书记录读取失败：%1"_s.arg(documents.lastError());
    return record;
}

QString noTransaction()
{
    return u"无法开启数据库事务。"_s;
}

// What a document is drawn up from besides its record.
struct Sources {
    CompanyProfile profile;
    QList<Transaction> entries;
    QString error;
};

CompanyProfile loadProfile(QString& error)
{
    ProfileDao profiles;
    const auto profile = profiles.find();
    if (profile)
        error = DocumentRules::firstProblem(*profile);
    else
        error = profiles.lastError().isEmpty() ? DocumentRules::firstProblem(CompanyProfile())
                                               : profiles.lastError();
    return profile.value_or(CompanyProfile());
}

QList<Transaction> loadEntries(const DocumentRecord& record, QString& error)
{
    QList<Transaction> loaded;
    TransactionDao entries;
    for (const qint64 id : DocumentRules::coveredIds(record)) {
        const auto entry = entries.findById(id);
        if (entry)
            error
                = DocumentRules::firstProblem(*entry, record.fundDirection.value_or(Direction::In));
        else if (entries.lastError().isEmpty())
            error = u"流水 #%1 不存在，请刷新后重试。"_s.arg(id);
        else
            error = u"流水读取失败：%1"_s.arg(entries.lastError());
        if (!error.isEmpty())
            return {};
        loaded += *entry;
    }
    if (!DocumentRules::totalFen(loaded))
        error = u"所选流水的金额合计过大，请分次出具决定书。"_s;
    return loaded;
}

Sources loadSources(const DocumentRecord& record)
{
    Sources sources;
    sources.profile = loadProfile(sources.error);
    if (sources.error.isEmpty())
        sources.entries = loadEntries(record, sources.error);
    return sources;
}

// Paints the document and writes it beside its path; the reason when it could not be written.
QString stage(StagedFile& file, const QString& path, const QString& html)
{
    QString error;
    if (!DocumentPdf::ensureFolderOf(path, &error))
        return error;
    const QByteArray pdf = DocumentPdf::render(html, DocumentPdf::titleOf(path));
    return !pdf.isEmpty() && file.write(pdf) ? QString() : DocumentPdf::cannotWrite(path);
}

// The reason why a row could not be written, which is never empty.
QString reasonOf(const BaseDao& store)
{
    return store.lastError().isEmpty() ? u"文书记录写入失败。"_s : store.lastError();
}

// Covered entries are judged anew after the commit.
QString noteChange(bool coveredEntries)
{
    TransactionDao entries;
    return !coveredEntries || entries.setEvaluationDue() ? QString() : reasonOf(entries);
}

QString insertWithLinks(DocumentRecord& record)
{
    DocumentDao documents;
    if (!documents.insert(record) || record.id <= 0)
        return reasonOf(documents);
    LinkDao links;
    for (const qint64 id : DocumentRules::coveredIds(record)) {
        if (!links.link(SourceType::Document, record.id, TargetType::Transaction, id))
            return reasonOf(links);
    }
    return noteChange(!DocumentRules::coveredIds(record).isEmpty());
}

QString removeWithLinks(qint64 id, bool coveredEntries)
{
    LinkDao links;
    if (!links.unlinkAllFromSource(SourceType::Document, id))
        return reasonOf(links);
    DocumentDao documents;
    return documents.remove(id) ? noteChange(coveredEntries) : reasonOf(documents);
}

DocumentResult rolledBack(DbTransaction& transaction, const QString& error)
{
    transaction.rollback();
    return failure(error);
}

// The reason for the user when the transaction could not be committed.
QString commitProblem(DbTransaction& transaction)
{
    return transaction.commit() ? QString() : u"事务提交失败。"_s;
}

// The file has to be in place before the row is committed, and must not be another document's.
QString placeProblem(
    StagedFile& file, const DocumentRecord& record, const QString& path, StagedFile::Former former)
{
    if (DocumentFiles::isNamedByOther(path, record.id))
        return u"该文件属于另一份文书，未作任何改动：%1"_s.arg(path);
    return file.putInPlace(former) ? QString() : DocumentPdf::cannotWrite(path);
}

// Restored rows give numbers out anew, so that the file under a document's name may show another
// one; and a signed copy may have been scanned over it. Neither is ours to replace.
StagedFile::Former formerOf(const DocumentRecord& record, const QString& path)
{
    return DocumentPdf::isOf(path, record.contentHtml) ? StagedFile::Former::Replaced
                                                       : StagedFile::Former::PutAside;
}

// The file of a document that is gone. What is not its PDF may be a signed copy and is kept.
void removeFile(const DocumentRecord& record, const QString& path)
{
    if (!QFileInfo(path).isFile())
        return;
    const bool done = DocumentPdf::isOf(path, record.contentHtml) ? QFile::remove(path)
                                                                  : StagedFile::putAside(path);
    if (!done)
        qWarning("PDF of a deleted document not removed: %s", qUtf8Printable(path));
}

DocumentResult save(DocumentRecord record)
{
    const QString path = record.filePath;
    StagedFile file(path);
    if (const QString error = stage(file, path, record.contentHtml); !error.isEmpty())
        return failure(error);
    DbTransaction transaction;
    if (!transaction.isOpen())
        return failure(noTransaction());
    if (const QString error = insertWithLinks(record); !error.isEmpty())
        return rolledBack(transaction, error);
    const QString problem = placeProblem(file, record, path, StagedFile::Former::PutAside);
    if (!problem.isEmpty())
        return rolledBack(transaction, problem);
    if (const QString error = commitProblem(transaction); !error.isEmpty())
        return failure(error);
    file.keep();
    return success(record, path);
}

DocumentResult generate(DocumentRecord record)
{
    const Sources sources = loadSources(record);
    if (!sources.error.isEmpty())
        return failure(sources.error);
    record.docNo = DocumentDao().nextDocNo(record.docType, DocumentRules::numberingYear(record));
    record.contentHtml = DocumentTemplates::compose(sources.profile, record, sources.entries);
    record.filePath = AppPaths::exportsDir() + u'/' + DocumentFiles::fileName(record);
    const DocumentResult result = save(record);
    if (result.ok && !sources.entries.isEmpty())
        RiskService().reevaluateAll();
    return result;
}

template <typename Input> DocumentResult generateFrom(const Input& input, const QString& problem)
{
    return problem.isEmpty() ? generate(DocumentRules::draft(input)) : failure(problem);
}

QString previewOf(DocumentRecord record)
{
    record.docNo = u"（生成时自动编号）"_s;
    if (record.docType == DocType::FundDecision && record.fundNature.isEmpty())
        record.fundNature = u"（待填写）"_s;
    QList<Transaction> entries;
    TransactionDao ledger;
    for (const qint64 id : DocumentRules::coveredIds(record)) {
        if (const auto entry = ledger.findById(id))
            entries += *entry;
    }
    return DocumentTemplates::compose(ProfileDao().load(), record, entries);
}

// True as well when the links cannot be read: an evaluation too many costs a moment, one too few
// leaves entries with a level that rests on a document which is gone.
bool mayCoverEntries(qint64 id)
{
    LinkDao store;
    const QList<EntityLink> links = store.linksBySource(SourceType::Document, id);
    return !store.lastError().isEmpty()
        || std::any_of(links.begin(), links.end(),
            [](const EntityLink& link) { return link.targetType == TargetType::Transaction; });
}

} // namespace

DocumentResult DocumentService::generateAnnualDecision(const AnnualDecisionInput& input)
{
    const int currentYear = QDate::currentDate().year();
    return generateFrom(input, DocumentRules::firstProblem(input, currentYear));
}

DocumentResult DocumentService::generateFundDecision(const FundDecisionInput& input)
{
    return generateFrom(input, DocumentRules::firstProblem(input));
}

DocumentResult DocumentService::generateIndependenceStatement(
    const IndependenceStatementInput& input)
{
    return generateFrom(input, DocumentRules::firstProblem(input));
}

DocumentResult DocumentService::regenerate(qint64 id)
{
    QString error;
    const auto record = findDocument(id, error);
    if (!record)
        return failure(error);
    if (const QString damage = DocumentRules::firstProblem(*record); !damage.isEmpty())
        return failure(damage);
    const Sources sources = loadSources(*record);
    if (!sources.error.isEmpty())
        return failure(sources.error);

    const QString html = DocumentTemplates::compose(sources.profile, *record, sources.entries);
    const QString path = DocumentFiles::ownFile(*record);
    StagedFile file(path);
    error = stage(file, path, html);
    if (!error.isEmpty())
        return failure(error);
    DbTransaction transaction;
    if (!transaction.isOpen())
        return failure(noTransaction());
    DocumentDao documents;
    if (!documents.updateContent(id, html))
        return rolledBack(transaction, reasonOf(documents));
    const QString problem = placeProblem(file, *record, path, formerOf(*record, path));
    if (!problem.isEmpty())
        return rolledBack(transaction, problem);
    error = commitProblem(transaction);
    if (!error.isEmpty())
        return failure(error);
    file.keep();
    return success(*record, path);
}

DocumentResult DocumentService::deleteDocument(qint64 id)
{
    QString error;
    const auto record = findDocument(id, error);
    if (!record)
        return failure(error);
    const bool coveredEntries = mayCoverEntries(id);
    const QString path = DocumentFiles::ownFile(*record);
    const bool fileIsItsOwn = !DocumentFiles::isNamedByOther(path, id);
    DbTransaction transaction;
    if (!transaction.isOpen())
        return failure(noTransaction());
    error = removeWithLinks(id, coveredEntries);
    if (!error.isEmpty())
        return rolledBack(transaction, error);
    error = commitProblem(transaction);
    if (!error.isEmpty())
        return failure(error);

    if (fileIsItsOwn)
        removeFile(*record, path);
    if (coveredEntries)
        RiskService().reevaluateAll();
    return { .ok = true };
}

DocumentResult DocumentService::restoreFile(qint64 id)
{
    QString error;
    const auto record = findDocument(id, error);
    if (!record)
        return failure(error);
    const QString path = DocumentFiles::documentFile(*record);
    if (QFileInfo(path).isFile() || DocumentPdf::exportPdf(record->contentHtml, path, &error))
        return success(*record, path);
    return failure(error);
}

QString DocumentService::preview(const AnnualDecisionInput& input)
{
    return previewOf(DocumentRules::draft(input));
}

QString DocumentService::preview(const FundDecisionInput& input)
{
    return previewOf(DocumentRules::draft(input));
}

QString DocumentService::preview(const IndependenceStatementInput& input)
{
    return previewOf(DocumentRules::draft(input));
}
