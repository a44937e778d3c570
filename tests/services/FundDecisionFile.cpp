#include "services/FundDecisionFile.h"

#include "core/AppPaths.h"
#include "services/DocumentSamples.h"
#include "support/TestFile.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace FundDecisionFile {

bool storeLedger()
{
    return DocumentSamples::storeCompany()
        && DocumentSamples::storeEntries(2) == QList<qint64> { 1, 2 };
}

DocumentResult generateFund()
{
    return DocumentService().generateFundDecision(DocumentSamples::fundInput({ 1, 2 }));
}

QString fundName()
{
    return u"KYR-FD-2025-0001_公私资金往来决定书.pdf"_s;
}

QString fundPath()
{
    return AppPaths::exportsDir() + u'/' + fundName();
}

QString cannotWrite()
{
    return u"无法打开 PDF 输出文件："_s + fundPath();
}

QMap<QString, QByteArray> exportsContent()
{
    QMap<QString, QByteArray> content;
    const QDir folder(AppPaths::exportsDir());
    for (const QString& name :
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        content.insert(name, TestFile::bytesOf(folder.filePath(name)));
    return content;
}

} // namespace FundDecisionFile
