#include "services/backup/TestBackup.h"
#include "services/backup/TestBackupPreview.h"
#include "services/backup/TestInterruption.h"
#include "services/backup/TestRestore.h"
#include "services/backup/TestRestoreRepair.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(u"1.0.0"_s);
    return runTests<TestBackup, TestBackupPreview, TestRestore, TestRestoreRepair,
        TestInterruption>(argc, argv);
}
