#include "services/risk/RiskPreview.h"

#include "services/OwnerFlows.h"

using namespace Qt::StringLiterals;

namespace {

RiskPreview finding(const RiskRules::RiskResult& result)
{
    const QString reasons = result.reasons.join(u'\n');
    switch (result.level) {
    case RiskLevel::High:
        return { NoticeLevel::Danger, u"保存后将标记为【高风险】：\n"_s + reasons };
    case RiskLevel::Medium: // only the whole ledger tells, so never here
    case RiskLevel::Low:
        return { NoticeLevel::Warning, u"保存后将标记为【预警】：\n"_s + reasons };
    case RiskLevel::Normal:
        break;
    }
    return { NoticeLevel::Info, u"当前关键字段未触发即时风险规则（R1/R3）。"_s };
}

} // namespace

RiskPreview riskPreview(const RiskRules::RiskResult& result, Category category, bool formComplete)
{
    RiskPreview preview = finding(result);
    // The usual thresholds as a rule of thumb, whatever the profile says.
    if (OwnerFlows::isTransferOrRefund(category))
        preview.text
            += u"\n频繁互转规则（近 30 天窗口内达 3 笔且无往来决定书）将在保存后完成完整判定。"_s;
    if (!formComplete)
        preview.text += u"\n（请先完善必填项，预演结果随填写更新）"_s;
    return preview;
}
