#include "statistics/TestDashboardBanners.h"
#include "statistics/TestLedgerStatistics.h"
#include "statistics/TestPeriod.h"
#include "statistics/TestTodoFacts.h"
#include "statistics/TestTodoList.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runTests<TestPeriod, TestLedgerStatistics, TestTodoList, TestTodoFacts,
        TestDashboardBanners>(argc, argv);
}
