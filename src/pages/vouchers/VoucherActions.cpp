#include "pages/vouchers/VoucherActions.h"

#include "db/LinkDao.h"
#include "dialogs/preview/VoucherPreview.h"
#include "dialogs/RiskNotice.h"
#include "dialogs/vouchers/VoucherEditDialog.h"
#include "services/RetryText.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherLinkSummaries.h"
#include "services/vouchers/VoucherService.h"
#include "widgets/BusyNotice.h"
#include "widgets/MessageBox.h"
#include "widgets/Toast.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

qsizetype linkedEntries(qint64 voucherId)
{
    const QList<EntityLink> links = LinkDao().linksBySource(SourceType::Voucher, voucherId);
    return std::count_if(links.begin(), links.end(),
        [](const EntityLink& link) { return link.targetType == TargetType::Transaction; });
}

} // namespace

namespace VoucherActions {

qint64 quickPreview(QWidget* parent, const QList<VoucherCardData>& vouchers, qint64 voucherId)
{
    QList<Voucher> shown;
    shown.reserve(vouchers.size());
    qsizetype position = -1;
    for (const VoucherCardData& data : vouchers) {
        if (data.voucher.id == voucherId)
            position = shown.size();
        shown += data.voucher;
    }
    if (position < 0)
        return 0;
    VoucherPreview preview(shown, position, parent);
    preview.exec();
    return preview.shownId();
}

bool edit(QWidget* parent, const Voucher& voucher)
{
    return VoucherEditDialog(voucher.id, parent).exec() == QDialog::Accepted;
}

bool remove(QWidget* parent, const Voucher& voucher)
{
    if (!MessageBox::ask(parent, u"确认删除凭证"_s,
            u"确认删除凭证「%1」？\n将同时删除本地凭证文件副本及其全部关联，且不可恢复。"_s.arg(
                voucher.name),
            u"删除"_s, u"取消"_s, ButtonRole::Danger))
        return false;
    const qsizetype linked = linkedEntries(voucher.id);
    QString error;
    bool removed = false;
    {
        // Each of them costs an evaluation of the ledger.
        std::optional<BusyNotice> notice;
        if (RiskService::takesNoticeablyLong(linked))
            notice.emplace(parent, u"正在删除凭证…"_s);
        removed = VoucherService::deleteVoucher(voucher.id, &error);
    }
    if (!removed) {
        MessageBox::warn(parent, u"删除失败"_s, askingToRetry(error));
        return false;
    }
    if (linked == 0 || !RiskNotice::warnIfBehind(parent))
        Toast::show(parent->window(), u"凭证已删除"_s);
    return true;
}

} // namespace VoucherActions
