#include "db/TestDatabaseFiles.h"
#include "db/TestDbTransaction.h"
#include "db/TestMigration.h"
#include "db/TestPlannerStatistics.h"
#include "db/TestSchema.h"
#include "db/TestSqlScript.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runTests<TestSqlScript, TestSchema, TestMigration, TestDatabaseFiles, TestDbTransaction,
        TestPlannerStatistics>(argc, argv);
}
