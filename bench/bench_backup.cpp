// A backup beside what a careful person does by hand: cp -a of database and voucher folder, then
// sync -f. Both write the same files from warm caches and end with everything on the disk.

#include "core/AppPaths.h"
#include "db/Connection.h"
#include "db/DatabaseManager.h"
#include "services/backup/BackupService.h"
#include "support/BenchRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int ledgerEntries = 2000;
constexpr int rounds = 11;

double secondsFor(const std::function<bool()>& work, bool* worked)
{
    QElapsedTimer timer;
    timer.start();
    *worked = work() && *worked;
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool runProgram(const QString& program, const QStringList& arguments)
{
    return QProcess::execute(program, arguments) == 0;
}

// Nothing that was written or removed before may be flushed while the clock runs.
bool settle(const QString& folder)
{
    return QDir(folder).removeRecursively() && QDir().mkpath(folder)
        && runProgram(u"sync"_s, { u"-f"_s, folder });
}

bool copyByHand(const QString& target)
{
    return runProgram(
               u"cp"_s, { u"-a"_s, AppPaths::databasePath(), AppPaths::voucherAssetsDir(), target })
        && runProgram(u"sync"_s, { u"-f"_s, target });
}

bool makeVouchers(int count, int bytesEach)
{
    QByteArray bytes(bytesEach, Qt::Uninitialized);
    for (int i = 0; i < count; ++i) {
        const QString folder
            = AppPaths::voucherAssetsDir() + u"/2025/%1"_s.arg(i % 12 + 1, 2, 10, QChar(u'0'));
        QRandomGenerator(static_cast<quint32>(i))
            .generate(reinterpret_cast<quint32*>(bytes.begin()),
                reinterpret_cast<quint32*>(bytes.begin()) + bytesEach / 4);
        QFile file(folder + u"/%1.jpg"_s.arg(i));
        if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly)
            || file.write(bytes) != bytesEach)
            return false;
    }
    return true;
}

bool makeData(int files, int bytesEach)
{
    DatabaseManager::instance().close();
    if (!QDir(AppPaths::dataDir()).removeRecursively() || !AppPaths::ensureDirs()
        || !DatabaseManager::instance().open() || !makeVouchers(files, bytesEach))
        return false;
    QSqlQuery query(Connection::current());
    return query.exec(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
        "INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
        "owner_account_type, counterparty_name, category) SELECT date('2020-01-01', i || ' days'), "
        "'设计服务费 ' || i, 'in', i * 100, 'company', '往来单位 ' || (i % 50), 'business_income' "
        "FROM n"_s.arg(ledgerEntries));
}

// The two alternate, so that both meet the same weather on a busy machine.
void backup(benchmark::State& state)
{
    if (!makeData(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)))) {
        state.SkipWithError("the data cannot be made");
        return;
    }
    const QTemporaryDir root(AppPaths::exportsDir() + u"/bench-XXXXXX"_s);
    const QString target = root.filePath(u"target"_s);
    std::vector<double> ours;
    std::vector<double> byHand;
    bool worked = true;
    for ([[maybe_unused]] auto iteration : state) {
        worked = settle(target) && worked;
        byHand.push_back(secondsFor([&] { return copyByHand(target); }, &worked));
        worked = settle(target) && worked;
        ours.push_back(secondsFor([&] { return BackupService().backupTo(target).ok; }, &worked));
        state.SetIterationTime(ours.back());
    }
    if (!worked)
        state.SkipWithError("a copy failed");
    state.counters["ours_ms"] = median(ours) * 1000;
    state.counters["cp_sync_ms"] = median(byHand) * 1000;
    state.counters["ratio"] = median(ours) / median(byHand);
}

BENCHMARK(backup)
    ->Args({ 1000, 300'000 })
    ->Args({ 5000, 10'000 })
    ->ArgNames({ "files", "bytes" })
    ->Iterations(rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(u"default.info=false"_s);
    const int status = BenchRun::runAll(argc, argv);
    DatabaseManager::instance().close();
    return status;
}
