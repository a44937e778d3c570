#include "core/Money.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Suites.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Amount {
    qint64 fen;
    QStringView grouped;
    QStringView plain;
    QStringView capitals;
};

constexpr auto amounts = std::to_array<Amount>({
    { 0, u"0.00", u"0.00", u"零元整" },
    { 5, u"0.05", u"0.05", u"伍分" },
    { 1'005, u"10.05", u"10.05", u"壹拾元零伍分" },
    { 1'050, u"10.50", u"10.50", u"壹拾元伍角" },
    { 1'640'902, u"16,409.02", u"16409.02", u"壹万陆仟肆佰零玖元零贰分" },
    { 10'700'053, u"107,000.53", u"107000.53", u"壹拾万柒仟元伍角叁分" },
    { 100'000'500, u"1,000,005.00", u"1000005.00", u"壹佰万零伍元整" },
    { 10'001'000'000, u"100,010,000.00", u"100010000.00", u"壹亿零壹万元整" },
    { -123'456, u"-1,234.56", u"-1234.56", u"负壹仟贰佰叁拾肆元伍角陆分" },
});

} // namespace

void Suites::money(Findings& findings)
{
    for (const Amount& amount : amounts) {
        const QString name = amount.plain.toString();
        findings.expect(
            Money::format(amount.fen) == amount.grouped, u"金额 %1 的格式不正确"_s.arg(name));
        findings.expect(
            Money::formatPlain(amount.fen) == amount.plain, u"金额 %1 的写法不正确"_s.arg(name));
        findings.expect(Money::toChineseUpper(amount.fen) == amount.capitals,
            u"金额 %1 的大写不正确"_s.arg(name));
        findings.expect(Money::fromYuan(amount.plain.toDouble()) == amount.fen,
            u"金额 %1 的换算不正确"_s.arg(name));
    }
}
