#include "services/VoucherSample.h"

#include "core/AppPaths.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace VoucherSample {

QString makeSource(const QString& name, const QByteArray& content)
{
    const QString folder = AppPaths::dataDir() + u"/sources/"_s;
    const bool written = QDir().mkpath(folder) && TestFile::put(folder + name, content);
    return written ? folder + name : QString();
}

bool addEntries(int count)
{
    using namespace TestLedger;
    bool added = true;
    for (int i = 0; i < count; ++i)
        added = added
            && add(entry(u"2025-03-01"_s, Category::BusinessExpense, Direction::Out, 9'000'000))
                > 0;
    return added;
}

qint64 archived(const QString& name, const QList<qint64>& transactionIds)
{
    return VoucherService::importVoucher(
        { .sourcePath = makeSource(name, name.toUtf8()) }, 0, transactionIds)
        .voucherId;
}

QString copyPath()
{
    return AppPaths::dataDir() + u'/' + TestDatabase::row(u"SELECT stored_path FROM vouchers"_s);
}

QString inventory()
{
    const QDir assets(AppPaths::voucherAssetsDir());
    const auto files
        = assets.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    return u"%1 vouchers, %2 links, %3 files"_s.arg(
        TestDatabase::row(u"SELECT COUNT(*) FROM vouchers"_s),
        TestDatabase::row(u"SELECT COUNT(*) FROM entity_links"_s), QString::number(files.size()));
}

QString levels()
{
    return TestDatabase::rows(u"SELECT risk_level FROM transactions ORDER BY id"_s).join(u' ');
}

QStringList refusing(const QString& event, const QString& how)
{
    return { u"CREATE TEMP TRIGGER no BEFORE %1 BEGIN SELECT RAISE(%2, 'refused'); END"_s.arg(
        event, how) };
}

QStringList failingCommit(const QString& event)
{
    return { u"CREATE TABLE late (id INTEGER REFERENCES projects(id) DEFERRABLE INITIALLY "
             "DEFERRED)"_s,
        u"CREATE TEMP TRIGGER late_failure AFTER "_s + event
            + u" BEGIN INSERT INTO late VALUES (99); END"_s };
}

} // namespace VoucherSample
