// The ledger and the risk engine beside SQLite's C interface doing the same job.

#include "db/TransactionDao.h"
#include "services/risk/RiskService.h"
#include "support/BenchLedger.h"
#include "support/BenchRun.h"
#include "support/PairedTiming.h"
#include "support/RawLedger.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

int sizeOf(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

void expectEqual(benchmark::State& state, qsizetype ours, size_t raw)
{
    if (ours == 0 || static_cast<size_t>(ours) != raw)
        state.SkipWithError("the two sides do not find the same");
}

void searchAll(benchmark::State& state)
{
    RawLedger& raw = BenchLedger::use(sizeOf(state));
    expectEqual(state, TransactionDao().search({}).size(), raw.search().size());
    measurePair(
        state, [] { benchmark::DoNotOptimize(TransactionDao().search({})); },
        [&] { benchmark::DoNotOptimize(raw.search()); });
}

void searchKeyword(benchmark::State& state)
{
    RawLedger& raw = BenchLedger::use(sizeOf(state));
    const TransactionFilter filter { .keyword = u"单位42"_s };
    expectEqual(state, TransactionDao().search(filter).size(), raw.search("单位42").size());
    measurePair(
        state, [&] { benchmark::DoNotOptimize(TransactionDao().search(filter)); },
        [&] { benchmark::DoNotOptimize(raw.search("单位42")); });
}

void reevaluate(benchmark::State& state)
{
    RawLedger& raw = BenchLedger::use(sizeOf(state));
    measurePair(
        state, [] { RiskService().reevaluateAll(); }, [&] { raw.reevaluate(); });
    const RiskLevelCounts ours = TransactionDao().riskLevelCounts({}, {});
    const RiskLevelCounts theirs = raw.riskLevelCounts();
    if (ours.high != theirs.high || ours.medium != theirs.medium || ours.low != theirs.low)
        state.SkipWithError("the two sides do not find the same");
}

void categoryStatistics(benchmark::State& state)
{
    RawLedger& raw = BenchLedger::use(sizeOf(state));
    expectEqual(state, TransactionDao().categoryStats({}, {}).size(), raw.categoryStats().size());
    measurePair(
        state, [] { benchmark::DoNotOptimize(TransactionDao().categoryStats({}, {})); },
        [&] { benchmark::DoNotOptimize(raw.categoryStats()); });
}

void riskStatistics(benchmark::State& state)
{
    RawLedger& raw = BenchLedger::use(sizeOf(state));
    measurePair(
        state, [] { benchmark::DoNotOptimize(TransactionDao().riskLevelCounts({}, {})); },
        [&] { benchmark::DoNotOptimize(raw.riskLevelCounts()); });
}

// Size by size, because making a ledger takes longer than measuring it.
void registerAll()
{
    struct Job {
        const char* name;
        void (*run)(benchmark::State&);
    };
    constexpr Job jobs[] = { { "search_all", searchAll }, { "search_keyword", searchKeyword },
        { "category_statistics", categoryStatistics }, { "risk_statistics", riskStatistics },
        { "reevaluate", reevaluate } };
    for (const int size : { 1'000, 10'000, 100'000 }) {
        for (const Job& job : jobs)
            benchmark::RegisterBenchmark(job.name, job.run)
                ->Arg(size)
                ->Iterations(size < 100'000 ? 41 : 15)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    BenchRun::keepQuiet();
    registerAll();
    const int status = BenchRun::runAll(argc, argv);
    BenchLedger::close();
    return status;
}
