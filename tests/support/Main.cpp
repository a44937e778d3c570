#include "support/TestCase.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runRegisteredTests(argc, argv);
}
