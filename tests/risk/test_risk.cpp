#include "risk/TestRiskPreview.h"
#include "risk/TestRiskRules.h"
#include "risk/TestRiskService.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    return runTests<TestRiskRules, TestRiskPreview, TestRiskService>(argc, argv);
}
