#include "widgets/TestContrast.h"
#include "widgets/TestTheme.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    return runTests<TestContrast, TestTheme>(argc, argv);
}
