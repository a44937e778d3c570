#include "services/entries/EntryService.h"

#include "core/TextRules.h"
#include "db/DbTransaction.h"
#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "services/entries/EntryRules.h"
#include "services/risk/RiskService.h"

using namespace Qt::StringLiterals;

namespace EntryService {

namespace {

QString entryIsGone()
{
    return u"该流水可能已被删除。"_s;
}

// Stores the entry and sets the id of a new one; the reason in Chinese when that fails.
QString write(Transaction& entry)
{
    TransactionDao entries;
    const bool isNew = entry.id <= 0;
    // Changing a row that is gone would succeed and write nothing.
    if (!isNew && !entries.findById(entry.id))
        return entryIsGone();
    if (isNew ? entries.insert(entry) : entries.update(entry) && entries.setEvaluationDue())
        return {};
    return u"流水写入失败，请重试。\n原因：%1"_s.arg(entries.lastError());
}

bool changeLinks(qint64 entryId, const QList<qint64>& added, const QList<qint64>& removed)
{
    LinkDao links;
    for (const qint64 voucher : removed) {
        if (!links.unlink(SourceType::Voucher, voucher, TargetType::Transaction, entryId))
            return false;
    }
    for (const qint64 voucher : added) {
        if (!links.link(SourceType::Voucher, voucher, TargetType::Transaction, entryId))
            return false;
    }
    return true;
}

} // namespace

SaveResult save(const Transaction& entry, const QList<qint64>& addedVoucherIds,
    const QList<qint64>& removedVoucherIds)
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return { .message = u"数据库事务无法开启。"_s };
    Transaction stored = EntryRules::normalized(entry);
    if (const QString reason = write(stored); !reason.isEmpty())
        return { .message = reason };
    if (!changeLinks(stored.id, addedVoucherIds, removedVoucherIds))
        return { .message = u"凭证关联写入失败，请重试。"_s };
    if (!transaction.commit()) {
        const bool hasLinks = !addedVoucherIds.isEmpty() || !removedVoucherIds.isEmpty();
        return { .message
            = hasLinks ? u"凭证关联提交失败，请重试。"_s : u"事务提交失败，请重试。"_s };
    }
    RiskService().reevaluateAll();
    return { .ok = true, .entryId = stored.id };
}

QString remove(qint64 entryId)
{
    DbTransaction transaction;
    TransactionDao entries;
    if (!transaction.isOpen())
        return transaction.lastError();
    if (!entries.remove(entryId) || !entries.setEvaluationDue())
        return entries.lastError();
    return transaction.commit() ? QString() : transaction.lastError();
}

ReviewResult review(qint64 entryId, std::optional<RiskLevel> level, const QString& note)
{
    if (const QString problem = EntryRules::reviewProblem(note); !problem.isEmpty())
        return { .message = problem };
    TransactionDao entries;
    if (!entries.findById(entryId))
        return { .message = entryIsGone() };
    if (!entries.setManualOverride(entryId, level, TextRules::asStored(note)))
        return { .message = u"复核结果写入失败，请重试。\n原因：%1"_s.arg(entries.lastError()) };
    return { .ok = true };
}

} // namespace EntryService
