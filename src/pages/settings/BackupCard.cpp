#include "pages/settings/BackupCard.h"

#include "core/AppPaths.h"
#include "dialogs/RestorePreviewDialog.h"
#include "services/backup/BackupService.h"
#include "services/DesktopFiles.h"
#include "services/figures/DashboardBanners.h"
#include "widgets/Banner.h"
#include "widgets/BusyNotice.h"
#include "widgets/ButtonRole.h"
#include "widgets/MessageBox.h"
#include "widgets/StartFolder.h"
#include "widgets/Toast.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Remembered for the session.
QString& lastFolder()
{
    static QString folder;
    return folder;
}

// Empty when the user chose none.
QString askForFolder(QWidget* parent, const QString& title)
{
    // The disk with the last backup may have been taken away.
    const QString folder
        = QFileDialog::getExistingDirectory(parent, title, StartFolder::firstOf({ lastFolder() }));
    if (!folder.isEmpty())
        lastFolder() = folder;
    return folder;
}

// Calls the work with a progress callback behind a painted notice.
template <typename Work>
auto workBehindNotice(QWidget* parent, const QString& title, const QString& text, Work work)
{
    BusyNotice notice(parent, text);
    notice.setWindowTitle(title);
    return work([&notice](int done, int total) { notice.setProgress(done, total); });
}

} // namespace

BackupCard::BackupCard(QWidget* parent)
    : SettingsCard(u"数据备份"_s, parent)
    , m_last(makeValue())
    , m_warning(new Banner(BannerKind::Warning, this))
{
    setHint(u"备份包含数据库与全部凭证文件。请把备份保存到另一个磁盘或 U 盘。"_s);
    m_last->setObjectName(u"lastBackup"_s);
    m_warning->setObjectName(u"backupWarning"_s);
    m_warning->hide();
    body()->addWidget(m_warning);
    body()->addWidget(m_last);

    QHBoxLayout* line = addButtonLine();
    QPushButton* backUp = makeButton(u"立即备份"_s, ButtonRole::Primary, this);
    QPushButton* restore = makeButton(u"从备份恢复"_s, ButtonRole::Default, this);
    line->addWidget(backUp);
    line->addWidget(restore);
    line->addStretch();
    connect(backUp, &QPushButton::clicked, this, &BackupCard::onBackUp);
    connect(restore, &QPushButton::clicked, this, &BackupCard::onRestore);
}

void BackupCard::showProfile(const CompanyProfile& profile)
{
    m_last->setText(profile.lastBackupAt.isEmpty() ? u"最近备份：未备份"_s
                                                   : u"最近备份：%1"_s.arg(profile.lastBackupAt));
    QString warning;
    const auto notices
        = DashboardBanners::noticesOf({ .today = QDate::currentDate(), .profile = profile });
    for (const DashboardBanners::Notice& notice : notices) {
        if (notice.target == DashboardBanners::Target::Backup)
            warning = notice.text;
    }
    m_warning->setText(warning);
    m_warning->setVisible(!warning.isEmpty());
}

void BackupCard::onBackUp()
{
    const QString parentFolder = askForFolder(this, u"选择备份保存位置"_s);
    if (parentFolder.isEmpty())
        return;
    const BackupResult result = workBehindNotice(this, u"数据备份"_s,
        u"正在备份数据库与凭证文件…"_s, [&](const BackupProgress::Callback& progress) {
            return BackupService(progress).backupTo(parentFolder);
        });
    if (!result.ok) {
        MessageBox::warn(this, u"备份失败"_s, result.message);
        return;
    }
    emit profileChanged();
    emit statusChanged();
    const QString folder = QDir::toNativeSeparators(result.folder);
    QString text = result.isComplete
        ? u"备份已生成：\n%1\n\n包含数据库与全部凭证文件。"_s.arg(folder)
        : u"备份已生成：\n%1\n\n包含数据库与现有的凭证文件。"_s.arg(folder);
    // The backup counts, but not everything went as it should.
    if (!result.message.isEmpty())
        text += u"\n\n"_s + result.message;
    if (MessageBox::ask(this, u"备份完成"_s, text, u"打开文件夹"_s, u"关闭"_s))
        DesktopFiles::openFolder(this, result.folder);
    Toast::show(window(), u"数据备份完成"_s);
}

void BackupCard::onRestore()
{
    const QString folder = chooseBackup();
    if (folder.isEmpty())
        return;
    const bool sure = MessageBox::ask(this, u"从备份恢复"_s,
        u"恢复将用所选备份【覆盖当前全部数据】。\n\n系统会先把当前数据自动备份到：\n%1\n\n"
        "恢复完成后软件将自动重启。确认恢复？"_s.arg(
            QDir::toNativeSeparators(AppPaths::autoBackupBeforeRestoreDir())),
        u"确认恢复（覆盖当前数据）"_s, u"取消"_s, ButtonRole::Danger);
    if (sure)
        restoreFrom(folder);
}

QString BackupCard::chooseBackup()
{
    const QString folder = askForFolder(this, u"选择要恢复的备份目录"_s);
    if (folder.isEmpty())
        return {};
    // Reads the backup's whole database.
    const BackupPreview preview = workBehindNotice(this, u"数据恢复"_s, u"正在读取所选备份…"_s,
        [&](const BackupProgress::Callback&) { return BackupService::inspect(folder); });
    if (!preview.ok) {
        MessageBox::warn(this, u"不是有效备份"_s, preview.message);
        return {};
    }
    RestorePreviewDialog dialog(folder, preview, this);
    return dialog.exec() == QDialog::Accepted ? folder : QString();
}

void BackupCard::restoreFrom(const QString& folder)
{
    tellOfRestore(workBehindNotice(this, u"数据恢复"_s, u"正在恢复并校验数据…"_s,
        [&](const BackupProgress::Callback& progress) {
            return BackupService(progress).restoreFrom(folder);
        }));
}

void BackupCard::tellOfRestore(const RestoreResult& result)
{
    if (result.ok) {
        MessageBox::info(this, u"恢复完成"_s, u"数据已恢复，软件将立即重启。"_s);
        emit restartRequested();
        return;
    }
    const QString safetyCopy = result.autoBackupFolder.isEmpty()
        ? AppPaths::autoBackupBeforeRestoreDir()
        : result.autoBackupFolder;
    const QString text = u"%1\n\n若数据异常，可从自动备份目录取回：\n%2"_s.arg(
        result.message, QDir::toNativeSeparators(safetyCopy));
    if (result.databaseOpen) {
        MessageBox::warn(this, u"恢复失败"_s, text);
        emit profileChanged();
        emit statusChanged();
        return;
    }
    MessageBox::critical(this, u"恢复失败"_s,
        text + u"\n\n数据库目前无法打开，软件将关闭；下次启动时会先恢复原来的数据。"_s);
    emit endRequested();
}
