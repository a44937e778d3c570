#include "TourStops.h"

#include "app/MainWindow.h"
#include "core/Codes.h"
#include "dialogs/LoginDialog.h"
#include "Hands.h"
#include "pages/IPage.h"
#include "services/Password.h"

#include <QItemSelectionModel>
#include <QTableView>

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

Problem toEnd(IPage& page)
{
    Hands::scrollToEnd(page);
    return {};
}

// The ledger keeps the filters of the last visit.
Problem withoutFilters(IPage& page)
{
    return Hands::press(page, u"重置"_s);
}

Problem selectRows(const QWidget& window, const QString& tableName, int count)
{
    auto* table = window.findChild<QTableView*>(tableName);
    if (!table || !table->isVisible() || table->model()->rowCount() < count)
        return u"the table %1 does not show %2 rows"_s.arg(tableName, QString::number(count));
    const QAbstractItemModel* rows = table->model();
    table->setCurrentIndex(rows->index(0, 0));
    table->selectionModel()->select(QItemSelection(rows->index(0, 0), rows->index(count - 1, 0)),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return {};
}

Problem selectThreeEntries(IPage& page)
{
    return selectRows(page, u"ledgerTable"_s, 3);
}

// Runs a command of the ledger's table on the newest entry of high risk.
Open onHighRiskEntry(const QString& command)
{
    return [command](MainWindow& window) -> Problem {
        window.onPageNavigateRequested(PageId::Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } });
        if (const Problem problem = selectRows(window, u"ledgerTable"_s, 1))
            return problem;
        return Hands::trigger(window, command);
    };
}

} // namespace

QList<PageStop> pages()
{
    using enum PageId;
    return {
        { u"page-dashboard"_s, Dashboard, {}, {} },
        { u"page-ledger"_s, Ledger, {}, withoutFilters },
        { u"page-ledger-high-risk"_s, Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } }, {} },
        { u"page-ledger-project"_s, Ledger, { { u"projectId"_s, 3 } }, {} },
        { u"page-ledger-selection"_s, Ledger,
            { { u"category"_s, codeOf(Category::ShareholderOut) } }, selectThreeEntries },
        { u"page-documents"_s, Documents, {}, {} },
        { u"page-documents-fund"_s, Documents, { { u"fund"_s, true } }, {} },
        { u"page-projects"_s, Projects, {}, {} },
        { u"page-vouchers"_s, Vouchers, {}, {} },
        { u"page-vouchers-unlinked"_s, Vouchers, { { u"linked"_s, u"none"_s } }, {} },
        { u"page-reports"_s, Reports, {}, {} },
        { u"page-settings"_s, Settings, {}, {} },
        { u"page-settings-end"_s, Settings, {}, toEnd },
    };
}

QList<DialogStop> dialogs()
{
    using enum PageId;
    return {
        { u"dialog-entry-new"_s, u"TransactionDialog"_s, Ledger, {}, byButton(u"＋ 新增流水"_s),
            {} },
        { u"dialog-entry-edit"_s, u"TransactionDialog"_s, Ledger, {}, onHighRiskEntry(u"编辑"_s),
            {} },
        { u"dialog-risk-review"_s, u"RiskReviewDialog"_s, Ledger, {},
            onHighRiskEntry(u"人工复核…"_s), {} },
        { u"dialog-entry-delete"_s, u"MessageBox"_s, Ledger, {}, onHighRiskEntry(u"删除"_s), {} },
        { u"dialog-profile"_s, u"ProfileDialog"_s, Settings, {}, byButton(u"编辑档案"_s), {} },
        { u"dialog-password"_s, u"PasswordDialog"_s, Settings, {}, byButton(u"设置密码"_s), {} },
        { u"dialog-password-refused"_s, u"MessageBox"_s, Settings,
            { { u"PasswordDialog"_s, u"设置密码"_s } }, byButton(u"设置密码"_s), {} },
        { u"dialog-disclaimer"_s, u"DisclaimerDialog"_s, Settings, {}, byButton(u"查看免责声明"_s),
            {} },
        { u"dialog-login"_s, u"LoginDialog"_s, Settings, {}, openLogin, {} },
    };
}

} // namespace TourStops
