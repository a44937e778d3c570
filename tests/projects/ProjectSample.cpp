#include "projects/ProjectSample.h"

#include "db/LinkDao.h"
#include "db/VoucherDao.h"
#include "support/TestLedger.h"

using namespace Qt::StringLiterals;

namespace ProjectSample {

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
