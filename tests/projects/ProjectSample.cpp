#include "projects/ProjectSample.h"

#include "core/TextRules.h"
#include "db/ContractDao.h"
#include "db/LinkDao.h"
#include "db/ProjectDao.h"
#include "db/VoucherDao.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;

namespace ProjectSample {

qint64 addProject(const QString& name, const QString& client)
{
    Project project;
    project.name = name;
    project.clientName = client;
    return ProjectDao().insert(project) ? project.id : 0;
}

qint64 addContract(qint64 projectId, const QString& name, const QString& date)
{
    Contract contract;
    contract.projectId = projectId;
    contract.name = name;
    contract.partyB = u"对方"_s;
    contract.signDate = TextRules::dateFromText(date);
    return ContractDao().insert(contract) ? contract.id : 0;
}

qint64 addEntry(qint64 projectId)
{
    Transaction entry = TestLedger::entry(u"2026-02-03"_s, Category::BusinessIncome, Direction::In);
    entry.projectId = projectId;
    return TestLedger::add(entry);
}

qint64 addVoucher(qint64 projectId, const QString& name)
{
    Voucher voucher;
    voucher.name = name;
    voucher.voucherType = VoucherType::Invoice;
    voucher.voucherDate = QDate(2026, 2, 3);
    const bool done = VoucherDao().insert(voucher)
        && LinkDao().link(SourceType::Voucher, voucher.id, TargetType::Project, projectId);
    return done ? voucher.id : 0;
}

} // namespace ProjectSample
