#include "db/ContractDao.h"
#include "db/DocumentDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Samples.h"
#include "selfcheck/Suites.h"

using namespace Qt::StringLiterals;

namespace {

// Writes, reads, changes and removes a record of one store.
template <typename Dao, typename Record>
void tryStore(Findings& findings, const QString& what, Record record, QString Record::*text)
{
    Dao dao;
    if (!findings.expect(dao.insert(record), u"%1无法写入：%2"_s.arg(what, dao.lastError())))
        return;
    const auto isStored = [&] {
        const auto stored = dao.findById(record.id);
        return stored && (*stored).*text == record.*text;
    };
    findings.expect(isStored(), u"%1写入后读回不一致"_s.arg(what));
    if constexpr (requires { dao.update(record); }) {
        record.*text += u"（改）"_s;
        findings.expect(dao.update(record), u"%1无法修改：%2"_s.arg(what, dao.lastError()));
        findings.expect(isStored(), u"%1修改后读回不一致"_s.arg(what));
    }
    findings.expect(dao.remove(record.id), u"%1无法删除：%2"_s.arg(what, dao.lastError()));
    findings.expect(!dao.findById(record.id), u"%1删除后仍能读到"_s.arg(what));
}

void tryAmountsAndDates(Findings& findings)
{
    TransactionDao entries;
    Transaction entry = Samples::riskyEntry();
    if (!entries.insert(entry))
        return; // reported above
    const std::optional<Transaction> stored = entries.findById(entry.id);
    findings.expect(stored && stored->amountFen == entry.amountFen
            && stored->transDate == entry.transDate && stored->category == entry.category
            && stored->ownerAccountType == entry.ownerAccountType,
        u"流水的金额、日期或分类读回不一致"_s);
}

} // namespace

void Suites::stores(Findings& findings)
{
    tryStore<ProjectDao>(findings, u"项目"_s, Samples::project(), &Project::name);
    tryStore<TransactionDao>(findings, u"流水"_s, Samples::riskyEntry(), &Transaction::summary);
    tryStore<VoucherDao>(findings, u"凭证"_s, Samples::voucher(), &Voucher::name);
    tryStore<DocumentDao>(
        findings, u"文书"_s, Samples::document(u"SELFCHECK"_s), &DocumentRecord::title);
    Project project = Samples::project();
    if (ProjectDao().insert(project))
        tryStore<ContractDao>(findings, u"合同"_s, Samples::contract(project.id), &Contract::name);
    tryAmountsAndDates(findings);
}
