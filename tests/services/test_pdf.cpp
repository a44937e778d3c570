#include "services/TestDocumentPdf.h"
#include "services/TestDocumentPrint.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    return runTests<TestDocumentPdf, TestDocumentPrint>(argc, argv);
}
