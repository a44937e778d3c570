#include "support/BenchLedger.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "services/risk/RiskService.h"
#include "support/LedgerGenerator.h"
#include "support/RawLedger.h"

#include <QDir>
#include <QFile>

#include <memory>

using namespace Qt::StringLiterals;

namespace BenchLedger {

namespace {

int currentSize = 0;
std::unique_ptr<RawLedger> rawLedger;

QString rawPath()
{
    return AppPaths::dataDir() + u"/raw.db"_s;
}

void require(bool done, const char* what)
{
    if (!done)
        qFatal("The ledger of the benchmark cannot be made: %s", what);
}

void open()
{
    require(DatabaseManager::instance().open(), "open");
}

void makeFiles(int entries)
{
    require(QDir(AppPaths::dataDir()).removeRecursively() && AppPaths::ensureDirs(), "folder");
    open();
    DatabaseManager::instance().close();
    LedgerGenerator::fill(AppPaths::databasePath(), entries);
    open();
    RiskService().reevaluateAll();
    DatabaseManager::instance().close();
    RawDatabase(AppPaths::databasePath()).run("DROP TABLE sqlite_stat1");
    // Both sides read a copy: one written in a single go lies better than one that grew.
    const QString grown = AppPaths::dataDir() + u"/grown.db"_s;
    require(QFile::rename(AppPaths::databasePath(), grown), "rename");
    require(QFile::copy(grown, AppPaths::databasePath()), "copy");
    require(QFile::copy(grown, rawPath()), "copy");
    RawDatabase(rawPath()).run("ANALYZE entity_links");
}

} // namespace

RawLedger& use(int entries)
{
    if (currentSize != entries) {
        close();
        makeFiles(entries);
        open();
        // The statistics that opening wrote would otherwise make every page be looked up in the
        // write-ahead log first, on our side only.
        require(DatabaseManager::instance().checkpoint(), "checkpoint");
        rawLedger = std::make_unique<RawLedger>(rawPath());
        currentSize = entries;
    }
    return *rawLedger;
}

void close()
{
    rawLedger.reset();
    DatabaseManager::instance().close();
    currentSize = 0;
    QDir(AppPaths::dataDir()).removeRecursively();
}

} // namespace BenchLedger
