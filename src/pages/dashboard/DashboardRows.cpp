#include "pages/dashboard/DashboardRows.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "dialogs/NoticeKind.h"
#include "services/figures/LedgerTexts.h"
#include "widgets/AmountInk.h"
#include "widgets/RiskBadge.h"

using namespace Qt::StringLiterals;

namespace DashboardRows {

namespace {

Token inkOf(RiskLevel level)
{
    switch (level) {
    case RiskLevel::High:
        return Token::RiskHighFg;
    case RiskLevel::Medium:
        return Token::RiskMediumFg;
    case RiskLevel::Low:
        return Token::RiskLowFg;
    case RiskLevel::Normal:
        break;
    }
    return Token::RiskNormalFg;
}

QString orDash(const QString& text)
{
    return TextRules::isBlank(text) ? u"—"_s : text;
}

RowButton::Content stepRow(const QString& title, const QString& text, bool isDone)
{
    return { .icon = isDone ? u"success"_s : u"clock"_s,
        .iconColour = isDone ? Token::SuccessText : Token::TextTertiary,
        .title = title,
        .text = text,
        .end = isDone ? u"已完成"_s : u"去完成"_s,
        .endColour = isDone ? Token::SuccessText : Token::Link };
}

Destination settingsAt(const QString& section)
{
    return { PageId::Settings, { { u"section"_s, section } } };
}

} // namespace

RowButton::Content todoRow(const TodoList::Item& item)
{
    const BannerKind kind = bannerKindOf(item.severity);
    return { .icon = codeOf(kind),
        .iconColour = textTokenOf(kind),
        .title = item.title,
        .text = item.text,
        .name = u"%1：%2"_s.arg(labelOf(kind), item.title) };
}

Destination destinationOf(const TodoList::Item& item)
{
    using TodoList::Target;
    switch (item.target) {
    case Target::Ledger:
        return { PageId::Ledger, item.parameters };
    case Target::Vouchers:
        return { PageId::Vouchers, item.parameters };
    case Target::FundDecision:
    case Target::AnnualDecision:
    case Target::IndependenceStatement:
    case Target::DocumentArchive:
        break;
    }
    return { PageId::Documents, item.parameters };
}

RowButton::Content entryRow(const Transaction& entry)
{
    const bool isIn = entry.direction == Direction::In;
    const QString amount = (isIn ? u"+"_s : u"-"_s) + Money::format(entry.amountFen);
    const QString date = TextRules::dateText(entry.transDate);
    return { .title = entry.summary,
        .text = QStringList { date, LedgerTexts::ownerLabel(entry.ownerAccountType),
            orDash(entry.counterpartyName), labelOf(entry.category) }
                    .join(u"　"_s),
        .end = amount,
        .endColour = amountInk(entry.direction),
        .remark = RiskBadge::text(entry.riskLevel, entry.riskManualOverride.has_value()),
        .remarkColour = inkOf(entry.riskLevel),
        .name = QStringList { date, entry.summary, amount }.join(u' ') };
}

RowButton::Content projectRow(const Project& project)
{
    return { .icon = u"projects"_s,
        .title = project.name,
        .text = QStringList { project.code, orDash(project.clientName) }.join(u"　"_s),
        .name = project.code + u' ' + project.name };
}

QList<RowButton::Content> stepRows(const DashboardFigures::Steps& steps)
{
    return {
        stepRow(u"① 完善公司档案"_s, u"公司名称和股东姓名会写入软件起草的文书。"_s, steps.profile),
        stepRow(u"② 登记第一笔流水"_s,
            u"把对公账户、股东私人账户的收支逐笔登记，系统会自动检查公私混同的风险。"_s,
            steps.entry),
        stepRow(u"③ 上传凭证"_s,
            u"银行回单、合同和发票是证明款项用途的证据，请上传并关联到流水。"_s, steps.voucher),
    };
}

Destination destinationOfStep(int step)
{
    switch (step) {
    case 0:
        return settingsAt(u"profile"_s);
    case 1:
        return { PageId::Ledger, {} };
    default:
        return { PageId::Vouchers, {} };
    }
}

QString actionOf(DashboardBanners::Target target)
{
    using DashboardBanners::Target;
    switch (target) {
    case Target::SelfCheck:
        return u"查看自检"_s;
    case Target::Profile:
        return u"完善档案"_s;
    case Target::Backup:
        break;
    }
    return u"去备份"_s;
}

Destination destinationOf(DashboardBanners::Target target)
{
    using DashboardBanners::Target;
    switch (target) {
    case Target::SelfCheck:
        return settingsAt(u"selfcheck"_s);
    case Target::Profile:
        return settingsAt(u"profile"_s);
    case Target::Backup:
        break;
    }
    return settingsAt(u"backup"_s);
}

Destination ledgerOf(const DateRange& range)
{
    NavParams params;
    if (range.from.isValid())
        params.insert(u"dateFrom"_s, range.from);
    if (range.to.isValid())
        params.insert(u"dateTo"_s, range.to);
    return { PageId::Ledger, params };
}

} // namespace DashboardRows
