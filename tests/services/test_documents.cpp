#include "services/TestDocumentFiles.h"
#include "services/TestDocumentService.h"
#include "services/TestDocumentTexts.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    return runTests<TestDocumentTexts, TestDocumentService, TestDocumentFiles>(argc, argv);
}
