#include "support/DatabaseTestCase.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"

#include <QFile>

using namespace Qt::StringLiterals;

void DatabaseTestCase::init()
{
    TestCase::init();
    QVERIFY2(DatabaseManager::instance().open(),
        qUtf8Printable(DatabaseManager::instance().lastError()));
}

void DatabaseTestCase::cleanup()
{
    DatabaseManager::instance().close();
    QVERIFY(!QFile::exists(AppPaths::databasePath() + u"-wal"_s));
    QVERIFY(!QFile::exists(AppPaths::databasePath() + u"-shm"_s));
}
