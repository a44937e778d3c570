#include "pages/PageId.h"

#include <array>

namespace {

struct LabelRow {
    QStringView text;
    QStringView icon;
};

constexpr auto labels = std::to_array<LabelRow>({
    { u"首页看板", u"dashboard" },
    { u"资金台账", u"ledger" },
    { u"文书中心", u"documents" },
    { u"项目合同", u"projects" },
    { u"凭证归档", u"vouchers" },
    { u"统计报表", u"reports" },
    { u"系统设置", u"settings" },
});
static_assert(labels.size() == pageCount);

} // namespace

PageLabel pageLabel(PageId id)
{
    const LabelRow& row = labels.at(static_cast<std::size_t>(id));
    return { .text = row.text.toString(), .icon = row.icon.toString() };
}
