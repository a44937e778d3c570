#include "services/vouchers/VoucherFiles.h"

#include "core/AppPaths.h"
#include "db/VoucherDao.h"
#include "services/vouchers/VoucherAssets.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

void warn(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(parent);
    box.setObjectName(u"MessageBox"_s);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    QPushButton* accept = box.addButton(u"确定"_s, QMessageBox::AcceptRole);
    box.setDefaultButton(accept);
    box.setEscapeButton(accept);
    box.exec();
}

// Where the voucher's file lies, absolute; empty after the user was told why there is none.
QString fileOf(QWidget* parent, qint64 voucherId)
{
    VoucherDao vouchers;
    const std::optional<Voucher> voucher = vouchers.findById(voucherId);
    if (!voucher) {
        if (vouchers.lastError().isEmpty())
            warn(parent, u"凭证不存在"_s, u"该凭证已被删除。"_s);
        else
            warn(parent, u"读取失败"_s, u"凭证记录读取失败：%1"_s.arg(vouchers.lastError()));
        return {};
    }
    const QString path = VoucherAssets::existingFile(voucher->storedPath);
    if (path.isEmpty())
        warn(parent, u"文件缺失"_s,
            u"凭证文件副本不存在：\n%1"_s.arg(AppPaths::toAbsolute(voucher->storedPath)));
    return path;
}

void openInDesktop(QWidget* parent, const QString& path)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        warn(parent, u"无法打开"_s,
            u"系统缺少可打开「%1」的查看程序。"_s.arg(QDir::toNativeSeparators(path)));
}

} // namespace

namespace VoucherFiles {

void openVoucherFile(QWidget* parent, qint64 voucherId)
{
    const QString path = fileOf(parent, voucherId);
    if (!path.isEmpty())
        openInDesktop(parent, path);
}

void showVoucherInFolder(QWidget* parent, qint64 voucherId)
{
    const QString path = fileOf(parent, voucherId);
    if (path.isEmpty())
        return;
    if (!QProcess::startDetached(
            u"explorer.exe"_s, { u"/select,"_s, QDir::toNativeSeparators(path) }))
        openInDesktop(parent, QFileInfo(path).absolutePath());
}

} // namespace VoucherFiles
