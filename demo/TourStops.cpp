#include "TourStops.h"

#include "app/MainWindow.h"
#include "core/Codes.h"
#include "dialogs/LoginDialog.h"
#include "Hands.h"
#include "services/Password.h"

using namespace Qt::StringLiterals;

namespace TourStops {

namespace {

using Open = std::function<Problem(MainWindow&)>;

// Presses the button of the page, or of its part of the header, that opens the dialog.
Open byButton(const QString& text)
{
    return [text](MainWindow& window) { return Hands::press(window, text); };
}

Problem openLogin(MainWindow& window)
{
    const auto secret = Password::makeSecret(u"shanlan-2025"_s);
    if (!secret)
        return u"no password could be derived"_s;
    LoginDialog(*secret, &Password::waitSecondsAfter, &window).exec();
    return {};
}

Problem toEnd(QWidget& page)
{
    Hands::scrollToEnd(page);
    return {};
}

} // namespace

QList<PageStop> pages()
{
    return {
        { u"page-dashboard"_s, PageId::Dashboard, {}, {} },
        { u"page-ledger"_s, PageId::Ledger, {}, {} },
        { u"page-ledger-high-risk"_s, PageId::Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } },
            {} },
        { u"page-documents"_s, PageId::Documents, {}, {} },
        { u"page-documents-fund"_s, PageId::Documents, { { u"fund"_s, true } }, {} },
        { u"page-projects"_s, PageId::Projects, {}, {} },
        { u"page-vouchers"_s, PageId::Vouchers, {}, {} },
        { u"page-vouchers-unlinked"_s, PageId::Vouchers, { { u"linked"_s, u"none"_s } }, {} },
        { u"page-reports"_s, PageId::Reports, {}, {} },
        { u"page-settings"_s, PageId::Settings, {}, {} },
        { u"page-settings-end"_s, PageId::Settings, {}, toEnd },
    };
}

QList<DialogStop> dialogs()
{
    return {
        { u"dialog-profile"_s, u"ProfileDialog"_s, PageId::Settings, byButton(u"编辑档案"_s), {} },
        { u"dialog-password"_s, u"PasswordDialog"_s, PageId::Settings, byButton(u"设置密码"_s),
            {} },
        { u"dialog-disclaimer"_s, u"DisclaimerDialog"_s, PageId::Settings,
            byButton(u"查看免责声明"_s), {} },
        { u"dialog-login"_s, u"LoginDialog"_s, PageId::Settings, openLogin, {} },
    };
}

} // namespace TourStops
