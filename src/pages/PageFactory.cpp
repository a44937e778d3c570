#include "pages/PageFactory.h"

#include "pages/documents/DocumentPage.h"
#include "pages/ledger/LedgerPage.h"
#include "pages/projects/ProjectPage.h"
#include "pages/SettingsPage.h"
#include "pages/UpcomingPage.h"
#include "pages/vouchers/VoucherPage.h"

using namespace Qt::StringLiterals;

IPage* createPage(PageId id, QWidget* parent)
{
    const auto upcoming = [&](const QString& title, const QString& text) {
        return new UpcomingPage({ title, pageLabel(id).icon, text }, parent);
    };
    switch (id) {
    case PageId::Dashboard:
        return upcoming(u"首页看板"_s, u"风险提醒、待办事项和收支概览将在这里显示。"_s);
    case PageId::Ledger:
        return new LedgerPage(parent);
    case PageId::Documents:
        return new DocumentPage(parent);
    case PageId::Projects:
        return new ProjectPage(parent);
    case PageId::Vouchers:
        return new VoucherPage(parent);
    case PageId::Reports:
        return upcoming(u"统计报表"_s, u"收支分类汇总和风险分布将在这里统计。"_s);
    case PageId::Settings:
        return new SettingsPage(parent);
    }
    return nullptr;
}
