#include "theme/ThemeTokens.h"

#include <algorithm>

namespace {

struct TokenRow {
    Token token;
    QStringView name;
    QRgb light;
    QRgb dark;
};

// Texts reach 4.5:1 on every background they are paired with, graphics 3:1 on cards; the tests of
// the theme hold the pairs.
constexpr auto tokenTable = std::to_array<TokenRow>({
    { Token::BgPage, u"bgPage", 0xF3F5F9, 0x14181F },
    { Token::BgCard, u"bgCard", 0xFFFFFF, 0x1F242D },
    { Token::BgNav, u"bgNav", 0xF8FAFD, 0x191D25 },
    { Token::BgTopBar, u"bgTopBar", 0xFFFFFF, 0x191D25 },
    { Token::BgInput, u"bgInput", 0xFFFFFF, 0x161B22 },
    { Token::BgInputDisabled, u"bgInputDisabled", 0xF0F2F6, 0x232934 },
    { Token::BgTableHeader, u"bgTableHeader", 0xEBEFF6, 0x2A313D },
    { Token::BgTableAlt, u"bgTableAlt", 0xF8FAFD, 0x232934 },
    { Token::BgHover, u"bgHover", 0xE9F0FC, 0x2A3342 },
    { Token::BgSelected, u"bgSelected", 0xD6E4FB, 0x264173 },
    { Token::BgTooltip, u"bgTooltip", 0x2B3240, 0xE6EAF1 },
    { Token::Border, u"border", 0xD7DDE7, 0x363E4C },
    { Token::BorderStrong, u"borderStrong", 0x828C9C, 0x7C8798 },
    { Token::FocusRing, u"focusRing", 0x1D5FD1, 0x7FB2FF },
    { Token::TextPrimary, u"textPrimary", 0x1D2330, 0xE6EAF1 },
    { Token::TextSecondary, u"textSecondary", 0x4E5969, 0xB5BDCB },
    { Token::TextTertiary, u"textTertiary", 0x626C7B, 0x97A1B1 },
    { Token::TextDisabled, u"textDisabled", 0x9AA3B1, 0x626C7B },
    { Token::TextTooltip, u"textTooltip", 0xFFFFFF, 0x1D2330 },
    { Token::Link, u"link", 0x1A56C4, 0x82B4FF },
    { Token::Primary, u"primary", 0x1D5FD1, 0x2F6AD9 },
    { Token::PrimaryHover, u"primaryHover", 0x184FB0, 0x3670DE },
    { Token::PrimaryPressed, u"primaryPressed", 0x133F8D, 0x2556B5 },
    { Token::TextOnPrimary, u"textOnPrimary", 0xFFFFFF, 0xFFFFFF },
    { Token::Danger, u"danger", 0xC0271D, 0xC93D33 },
    { Token::DangerHover, u"dangerHover", 0xA01E16, 0xCF4339 },
    { Token::TextOnDanger, u"textOnDanger", 0xFFFFFF, 0xFFFFFF },
    { Token::DangerText, u"dangerText", 0xB3241B, 0xFF9389 },
    { Token::DangerBg, u"dangerBg", 0xFDEDEB, 0x3B2224 },
    { Token::DangerBorder, u"dangerBorder", 0xEFB4AE, 0x7A3A38 },
    { Token::WarningText, u"warningText", 0x8A4B00, 0xF7B955 },
    { Token::WarningBg, u"warningBg", 0xFFF3DF, 0x3A2D17 },
    { Token::WarningBorder, u"warningBorder", 0xEBC07C, 0x77592A },
    { Token::InfoText, u"infoText", 0x1A56C4, 0x8FBBFF },
    { Token::InfoBg, u"infoBg", 0xEAF1FE, 0x1C2C49 },
    { Token::InfoBorder, u"infoBorder", 0xB0C9F5, 0x3A5690 },
    { Token::SuccessText, u"successText", 0x17693A, 0x7DD69E },
    { Token::SuccessBg, u"successBg", 0xE6F5EC, 0x183226 },
    { Token::SuccessBorder, u"successBorder", 0x9FD5B5, 0x356B4C },
    { Token::RiskHighFg, u"riskHighFg", 0xB3241B, 0xFF9389 },
    { Token::RiskHighBg, u"riskHighBg", 0xFDEDEB, 0x3B2224 },
    { Token::RiskMediumFg, u"riskMediumFg", 0x9A4207, 0xFFAE70 },
    { Token::RiskMediumBg, u"riskMediumBg", 0xFFEEDF, 0x3C2919 },
    { Token::RiskLowFg, u"riskLowFg", 0x755600, 0xEBC64B },
    { Token::RiskLowBg, u"riskLowBg", 0xFDF5D3, 0x35301A },
    { Token::RiskNormalFg, u"riskNormalFg", 0x17693A, 0x7DD69E },
    { Token::RiskNormalBg, u"riskNormalBg", 0xE6F5EC, 0x183226 },
    { Token::AmountIn, u"amountIn", 0x0B6464, 0x63D3CB },
    { Token::AmountOut, u"amountOut", 0x9A4207, 0xFFAE70 },
    { Token::StateOnline, u"stateOnline", 0x1B8A4B, 0x4CC57F },
    { Token::ChartBusinessIncome, u"chartBusinessIncome", 0x4C8EFB, 0x4A6EAF },
    { Token::ChartBusinessExpense, u"chartBusinessExpense", 0x9E3E09, 0xF79418 },
    { Token::ChartSalary, u"chartSalary", 0x26705C, 0x7FF8F4 },
    { Token::ChartExpenseReimburse, u"chartExpenseReimburse", 0x833E9F, 0xC08DFD },
    { Token::ChartShareholderIn, u"chartShareholderIn", 0x8B9C01, 0x6C740F },
    { Token::ChartShareholderOut, u"chartShareholderOut", 0xCD6A93, 0xB1526C },
    { Token::ChartTaxFee, u"chartTaxFee", 0x422215, 0xFFD2AD },
    { Token::ChartOther, u"chartOther", 0x2A3345, 0x9B9EA8 },
    { Token::ChartRiskHigh, u"chartRiskHigh", 0x95272C, 0xCA594C },
    { Token::ChartRiskMedium, u"chartRiskMedium", 0xB45A34, 0xFA976D },
    { Token::ChartRiskLow, u"chartRiskLow", 0xBE8C00, 0xFEE103 },
    { Token::ChartRiskNormal, u"chartRiskNormal", 0x6A9292, 0x6C9C9D },
    { Token::ChartIn, u"chartIn", 0x2F7DF0, 0x6EA8FF },
    { Token::ChartOut, u"chartOut", 0xB4530A, 0xF29A4A },
    { Token::ChartNet, u"chartNet", 0x2A3345, 0xD3D9E3 },
});

constexpr bool standsInEnumOrder()
{
    for (std::size_t i = 0; i < tokenTable.size(); ++i) {
        if (static_cast<std::size_t>(tokenTable[i].token) != i)
            return false;
    }
    return tokenTable.size() == static_cast<std::size_t>(tokenCount);
}
static_assert(standsInEnumOrder());

const TokenRow& row(Token token)
{
    return tokenTable[static_cast<std::size_t>(token)];
}

} // namespace

QColor tokenColor(Token token, ThemeMode mode)
{
    return QColor::fromRgb(mode == ThemeMode::Dark ? row(token).dark : row(token).light);
}

QString tokenName(Token token)
{
    return row(token).name.toString();
}

std::optional<Token> tokenFromName(QStringView name)
{
    const auto found = std::find_if(tokenTable.begin(), tokenTable.end(),
        [name](const TokenRow& candidate) { return candidate.name == name; });
    return found != tokenTable.end() ? std::optional(found->token) : std::nullopt;
}
