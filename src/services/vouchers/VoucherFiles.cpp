#include "services/vouchers/VoucherFiles.h"

#include "core/AppPaths.h"
#include "db/VoucherDao.h"
#include "services/DesktopFiles.h"
#include "services/vouchers/VoucherAssets.h"

using namespace Qt::StringLiterals;

namespace {

// Where the voucher's file lies, absolute; empty after the user was told why there is none.
QString fileOf(QWidget* parent, qint64 voucherId)
{
    VoucherDao vouchers;
    const std::optional<Voucher> voucher = vouchers.findById(voucherId);
    if (!voucher) {
        if (vouchers.lastError().isEmpty())
            DesktopFiles::warn(parent, u"凭证不存在"_s, u"该凭证已被删除。"_s);
        else
            DesktopFiles::warn(
                parent, u"读取失败"_s, u"凭证记录读取失败：%1"_s.arg(vouchers.lastError()));
        return {};
    }
    const QString path = VoucherAssets::existingFile(voucher->storedPath);
    if (path.isEmpty())
        DesktopFiles::warn(parent, u"文件缺失"_s,
            u"凭证文件副本不存在：\n%1"_s.arg(AppPaths::toAbsolute(voucher->storedPath)));
    return path;
}

} // namespace

namespace VoucherFiles {

void openVoucherFile(QWidget* parent, qint64 voucherId)
{
    const QString path = fileOf(parent, voucherId);
    if (!path.isEmpty())
        DesktopFiles::openFile(parent, path);
}

void showVoucherInFolder(QWidget* parent, qint64 voucherId)
{
    const QString path = fileOf(parent, voucherId);
    if (!path.isEmpty())
        DesktopFiles::showInFolder(parent, path);
}

} // namespace VoucherFiles
