#include "app/PageFactory.h"

#include "pages/dashboard/DashboardPage.h"
#include "pages/documents/DocumentPage.h"
#include "pages/ledger/LedgerPage.h"
#include "pages/projects/ProjectPage.h"
#include "pages/reports/ReportPage.h"
#include "pages/settings/SettingsPage.h"
#include "pages/vouchers/VoucherPage.h"

IPage* createPage(PageId id, QWidget* parent)
{
    switch (id) {
    case PageId::Dashboard:
        return new DashboardPage(parent);
    case PageId::Ledger:
        return new LedgerPage(parent);
    case PageId::Documents:
        return new DocumentPage(parent);
    case PageId::Projects:
        return new ProjectPage(parent);
    case PageId::Vouchers:
        return new VoucherPage(parent);
    case PageId::Reports:
        return new ReportPage(parent);
    case PageId::Settings:
        return new SettingsPage(parent);
    }
    return nullptr;
}
