#include "db/TestDamagedRows.h"
#include "db/TestDocumentDao.h"
#include "db/TestLedgerFiguresDao.h"
#include "db/TestProfileDao.h"
#include "db/TestProjectDao.h"
#include "db/TestTransactionDao.h"
#include "db/TestVoucherDao.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runTests<TestTransactionDao, TestProjectDao, TestProfileDao, TestVoucherDao,
        TestDocumentDao, TestLedgerFiguresDao, TestDamagedRows>(argc, argv);
}
