#include "services/projects/ProjectService.h"

#include "db/ContractDao.h"
#include "db/DbTransaction.h"
#include "db/LinkDao.h"
#include "db/ProjectDao.h"
#include "services/projects/ProjectRules.h"
#include "services/RetryText.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace ProjectService {

namespace {

const QString transactionNotOpened = u"数据库事务无法开启，请重试。"_s;
const QString commitFailed = u"事务提交失败，请重试。"_s;

Result success()
{
    return { .ok = true, .message = {} };
}

Result failure(const QString& message)
{
    return { .ok = false, .message = message };
}

Result committed(DbTransaction& transaction)
{
    if (transaction.commit())
        return success();
    qWarning("Transaction commit failed: %s", qUtf8Printable(transaction.lastError()));
    return failure(commitFailed);
}

// How a kind of record is told to the user.
struct Wording {
    QString name;
    QString codeColumn; // as the database names it when a code is taken
};

QString saveProblem(const Wording& wording, const QString& code, const QString& error)
{
    if (!error.contains(u"UNIQUE constraint failed: "_s + wording.codeColumn))
        return error;
    const QString reason = code.isEmpty()
        ? u"已有另一个没有编号的%1，请填写%1编号。"_s.arg(wording.name)
        : u"%1编号「%2」已被使用，请换一个编号。"_s.arg(wording.name, code);
    return u"%1\n\n（%2）"_s.arg(reason, error);
}

// Changing a row that is gone would succeed and write nothing.
template <typename Dao, typename Record> Result save(Record& record, const Wording& wording)
{
    Dao store;
    record = ProjectRules::normalized(record);
    if (record.id > 0 && !store.findById(record.id))
        return failure(store.lastError().isEmpty() ? u"该%1可能已被删除。"_s.arg(wording.name)
                                                   : store.lastError());
    const bool done = record.id > 0 ? store.update(record) : store.insert(record);
    return done ? success() : failure(saveProblem(wording, record.code, store.lastError()));
}

// The reason in the database's words when a contract cannot be read or removed.
QString removeContracts(qint64 projectId)
{
    ContractDao contracts;
    const QList<Contract> ofProject = contracts.listByProject(projectId);
    for (const Contract& contract : ofProject) {
        if (!contracts.remove(contract.id))
            break;
    }
    return contracts.lastError();
}

Result changeLinks(const QList<qint64>& voucherIds, LinkDao& links,
    const std::function<bool(qint64 voucherId)>& change)
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return failure(transactionNotOpened);
    for (const qint64 id : voucherIds) {
        if (!change(id))
            return failure(askingToRetry(links.lastError()));
    }
    return committed(transaction);
}

} // namespace

Result saveProject(Project& project)
{
    return save<ProjectDao>(project, { u"项目"_s, u"projects.code"_s });
}

Result saveContract(Contract& contract)
{
    return save<ContractDao>(contract, { u"合同"_s, u"contracts.code"_s });
}

Result removeProject(qint64 projectId)
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return failure(transactionNotOpened);
    if (const QString reason = removeContracts(projectId); !reason.isEmpty())
        return failure(reason);
    ProjectDao projects;
    if (!projects.remove(projectId))
        return failure(projects.lastError());
    return committed(transaction);
}

Result removeContract(qint64 contractId)
{
    ContractDao contracts;
    return contracts.remove(contractId) ? success() : failure(askingToRetry(contracts.lastError()));
}

Result linkVouchers(TargetType target, qint64 targetId, const QList<qint64>& voucherIds)
{
    LinkDao links;
    return changeLinks(voucherIds, links,
        [&](qint64 id) { return links.link(SourceType::Voucher, id, target, targetId); });
}

Result unlinkVouchers(TargetType target, qint64 targetId, const QList<qint64>& voucherIds)
{
    LinkDao links;
    return changeLinks(voucherIds, links,
        [&](qint64 id) { return links.unlink(SourceType::Voucher, id, target, targetId); });
}

} // namespace ProjectService
