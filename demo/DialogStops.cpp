#include "app/MainWindow.h"
#include "core/AppPaths.h"
#include "core/Codes.h"
#include "dialogs/LoginDialog.h"
#include "dialogs/RestorePreviewDialog.h"
#include "dialogs/vouchers/VoucherQueuePanel.h"
#include "Hands.h"
#include "services/backup/BackupService.h"
#include "services/Password.h"
#include "TourStops.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QImage>
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

// The same once the page shows what is asked for.
Open byButtonAt(PageId page, const NavParams& params, const QString& text)
{
    return [page, params, text](MainWindow& window) {
        window.onPageNavigateRequested(page, params);
        return Hands::press(window, text);
    };
}

Open onProject(qint64 id, const QString& button)
{
    return byButtonAt(PageId::Projects, { { u"projectId"_s, id } }, button);
}

// Runs a command of the table in the page of a project that has contracts and entries.
Open onProjectRow(const QString& table, const QString& command)
{
    return [table, command](MainWindow& window) {
        window.onPageNavigateRequested(PageId::Projects, { { u"projectId"_s, 3 } });
        return Hands::triggerOnRow(window, table, command);
    };
}

Open onDocument(const QString& command)
{
    return byButtonAt(PageId::Documents, { { u"docId"_s, 2 } }, command);
}

// Runs a command of the ledger's table on the newest entry of high risk.
Open onHighRiskEntry(const QString& command)
{
    return [command](MainWindow& window) {
        window.onPageNavigateRequested(PageId::Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } });
        return Hands::triggerOnRow(window, u"ledgerTable"_s, command);
    };
}

Open onVoucher(const QString& command)
{
    return [command](MainWindow& window) -> Problem {
        if (const Problem problem = Hands::press(window, u"重置"_s))
            return problem;
        if (const Problem problem = Hands::press(window, u"列表"_s))
            return problem;
        return Hands::triggerOnRow(window, u"voucherTable"_s, command);
    };
}

Problem openLogin(MainWindow& window)
{
    const auto secret = Password::makeSecret(u"shanlan-2025"_s);
    if (!secret)
        return u"no password could be derived"_s;
    LoginDialog(*secret, &Password::waitSecondsAfter, &window).exec();
    return {};
}

Problem openRestorePreview(MainWindow& window)
{
    const QDir backups(AppPaths::backupsDir());
    const QStringList made = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (made.isEmpty())
        return u"there is no backup to restore"_s;
    const QString folder = backups.filePath(made.first());
    RestorePreviewDialog(folder, BackupService::inspect(folder), &window).exec();
    return {};
}

Problem waitForContent(QDialog& dialog)
{
    Hands::waitUntilStill(dialog);
    return {};
}

// Three new scans, and one file that is in the archive already.
Problem fillQueue(QDialog& dialog)
{
    const QDir originals(QCoreApplication::applicationDirPath() + u"/originals"_s);
    const QStringList known = originals.entryList({ u"*.png"_s }, QDir::Files, QDir::Name);
    auto* queue = dialog.findChild<VoucherQueuePanel*>();
    if (!queue || known.size() < 4 || !originals.mkpath(u"new"_s))
        return u"there is nothing to queue"_s;
    QStringList files { originals.filePath(known.first()) };
    for (int number = 1; number < 4; ++number) {
        const QString name = u"new/扫描_2025-12-18_0%1.jpg"_s.arg(number);
        if (!QImage(originals.filePath(known.at(number))).save(originals.filePath(name)))
            return u"%1 cannot be written"_s.arg(name);
        files.insert(number - 1, originals.filePath(name));
    }
    queue->add(files);
    dialog.findChild<QComboBox*>(u"voucherProject"_s)->setCurrentIndex(2);
    return waitForContent(dialog);
}

Problem tickThreeRows(QDialog& dialog)
{
    auto* table = dialog.findChild<QTableView*>(u"pickerTable"_s);
    if (!table || table->model()->rowCount() < 4)
        return u"there is nothing to pick"_s;
    for (int row = 1; row < 4; ++row)
        table->model()->setData(table->model()->index(row, 0), Qt::Checked, Qt::CheckStateRole);
    return waitForContent(dialog);
}

QList<DialogStop> ledgerDialogs()
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
    };
}

QList<DialogStop> documentDialogs()
{
    using enum PageId;
    return {
        { u"dialog-document-again"_s, u"MessageBox"_s, Documents, {}, onDocument(u"重新生成"_s),
            {} },
        { u"dialog-document-delete"_s, u"MessageBox"_s, Documents, {}, onDocument(u"删除"_s), {} },
        { u"dialog-document-second"_s, u"MessageBox"_s, Documents, {},
            byButtonAt(Documents, { { u"year"_s, 2024 } }, u"生成文书"_s), {} },
    };
}

QList<DialogStop> projectDialogs()
{
    using enum PageId;
    const QString box = u"MessageBox"_s;
    return {
        { u"dialog-project-new"_s, u"ProjectDialog"_s, Projects, {}, byButton(u"＋ 新增项目"_s),
            {} },
        { u"dialog-project-edit"_s, u"ProjectDialog"_s, Projects, {}, onProject(3, u"编辑"_s), {} },
        { u"dialog-project-refused"_s, box, Projects, {}, onProject(3, u"删除"_s), {} },
        { u"dialog-project-delete"_s, box, Projects, {}, onProject(9, u"删除"_s), {} },
        { u"dialog-contract-new"_s, u"ContractDialog"_s, Projects, {},
            onProject(3, u"＋ 登记合同"_s), {} },
        { u"dialog-contract-edit"_s, u"ContractDialog"_s, Projects, {},
            onProjectRow(u"contracts"_s, u"编辑"_s), {} },
        { u"dialog-contract-delete"_s, box, Projects, {}, onProjectRow(u"contracts"_s, u"删除"_s),
            {} },
        { u"dialog-contract-unlink"_s, u"UnlinkVouchersDialog"_s, Projects, {},
            onProjectRow(u"contracts"_s, u"解除关联"_s), {} },
        { u"dialog-project-unlink"_s, box, Projects, {}, onProject(3, u"移除关联"_s), {} },
        { u"dialog-voucher-picker"_s, u"VoucherPickerDialog"_s, Projects, {},
            onProject(3, u"关联已有凭证"_s), tickThreeRows },
    };
}

QList<DialogStop> voucherDialogs()
{
    using enum PageId;
    return {
        { u"dialog-voucher-add"_s, u"VoucherAddDialog"_s, Vouchers, {}, byButton(u"＋ 添加凭证"_s),
            fillQueue },
        { u"dialog-entry-picker"_s, u"TxPickerDialog"_s, Vouchers,
            { { u"VoucherAddDialog"_s, u"选择关联流水…"_s } }, byButton(u"＋ 添加凭证"_s),
            tickThreeRows },
        { u"dialog-voucher-edit"_s, u"VoucherEditDialog"_s, Vouchers, {}, onVoucher(u"编辑"_s),
            {} },
        { u"dialog-voucher-preview"_s, u"VoucherPreview"_s, Vouchers, {}, onVoucher(u"快速预览"_s),
            {} },
        { u"dialog-voucher-delete"_s, u"MessageBox"_s, Vouchers, {}, onVoucher(u"删除"_s), {} },
    };
}

QList<DialogStop> settingsDialogs()
{
    using enum PageId;
    return {
        { u"dialog-profile"_s, u"ProfileDialog"_s, Settings, {}, byButton(u"编辑档案"_s), {} },
        { u"dialog-password"_s, u"PasswordDialog"_s, Settings, {}, byButton(u"设置密码"_s), {} },
        { u"dialog-password-refused"_s, u"MessageBox"_s, Settings,
            { { u"PasswordDialog"_s, u"设置密码"_s } }, byButton(u"设置密码"_s), {} },
        { u"dialog-restore-preview"_s, u"RestorePreviewDialog"_s, Settings, {}, openRestorePreview,
            {} },
        { u"dialog-disclaimer"_s, u"DisclaimerDialog"_s, Settings, {}, byButton(u"查看免责声明"_s),
            {} },
        { u"dialog-login"_s, u"LoginDialog"_s, Settings, {}, openLogin, {} },
    };
}

} // namespace

QList<DialogStop> dialogs()
{
    return ledgerDialogs() + documentDialogs() + projectDialogs() + voucherDialogs()
        + settingsDialogs();
}

} // namespace TourStops
