#include "services/TestVoucherChanges.h"
#include "services/TestVoucherFiles.h"
#include "services/TestVoucherImport.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    return runTests<TestVoucherImport, TestVoucherChanges, TestVoucherFiles>(argc, argv);
}
