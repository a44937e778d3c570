#include "services/vouchers/VoucherLinkSummaries.h"

#include "core/TextRules.h"
#include "db/LinkDao.h"

#include <QHash>

#include <functional>

using namespace Qt::StringLiterals;

namespace VoucherLinkSummaries {

namespace {

using Take = std::function<void(VoucherCardData& data, const VoucherTarget& target)>;

// What a name is shown as: a link without a text could not be clicked.
VoucherCardData::Target named(const VoucherTarget& target)
{
    const bool blank = TextRules::isBlank(target.name);
    return { target.targetId, blank ? u"#%1"_s.arg(target.targetId) : target.name };
}

void readLinks(QList<VoucherCardData>& page, TargetType kind, const QList<qint64>& ids,
    const QHash<qint64, qsizetype>& places, const Take& take)
{
    const auto targets = LinkDao().voucherTargets(kind, ids);
    if (!targets) {
        for (VoucherCardData& data : page)
            data.linksKnown = false;
        return;
    }
    for (const VoucherTarget& target : *targets)
        take(page[places.value(target.voucherId)], target);
}

} // namespace

QList<VoucherCardData> of(const QList<Voucher>& vouchers)
{
    QList<VoucherCardData> page;
    QList<qint64> ids;
    QHash<qint64, qsizetype> places;
    page.reserve(vouchers.size());
    for (const Voucher& voucher : vouchers) {
        places.insert(voucher.id, page.size());
        ids += voucher.id;
        page.emplaceBack().voucher = voucher;
    }
    if (page.isEmpty())
        return page;
    readLinks(page, TargetType::Project, ids, places,
        [](VoucherCardData& data, const VoucherTarget& target) { data.projects += named(target); });
    readLinks(page, TargetType::Contract, ids, places,
        [](VoucherCardData& data, const VoucherTarget& target) {
            data.contracts += named(target);
        });
    readLinks(page, TargetType::Transaction, ids, places,
        [](VoucherCardData& data, const VoucherTarget& target) {
            data.transactionIds += target.targetId;
        });
    return page;
}

QString text(const VoucherCardData& data)
{
    if (!data.linksKnown)
        return u"读取失败"_s;
    if (data.isUnlinked())
        return u"未关联"_s;
    QStringList parts;
    for (const auto& project : data.projects)
        parts += u"项目：%1"_s.arg(project.name);
    for (const auto& contract : data.contracts)
        parts += u"合同：%1"_s.arg(contract.name);
    if (!data.transactionIds.isEmpty())
        parts += u"流水 %1 笔"_s.arg(data.transactionIds.size());
    return parts.join(u"；"_s);
}

} // namespace VoucherLinkSummaries
