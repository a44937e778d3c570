#include "services/repair/CrashRepair.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "services/documents/DocumentFiles.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherAssets.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

// Closing the database folds its log into it and removes the log.
CrashRepair::CrashRepair()
    : m_leftOpen(QFileInfo(AppPaths::databasePath() + u"-wal"_s).size() > 0)
{
}

void CrashRepair::run() const
{
    if (DatabaseManager::instance().isReadOnly())
        return;
    DocumentFiles::repair();
    if (m_leftOpen || RiskService::isBehind()) {
        qInfo("The last session left levels behind or did not close the database: evaluating anew");
        RiskService().reevaluateAll();
    }
    if (!m_leftOpen)
        return;
    for (const QString& path : VoucherAssets::filesWithoutRow())
        qInfo("No voucher names the file %s; it is left alone", qUtf8Printable(path));
}
