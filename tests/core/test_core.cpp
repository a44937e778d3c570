#include "core/TestFiles.h"
#include "core/TestMoney.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runTests<TestMoney, TestFiles>(argc, argv);
}
