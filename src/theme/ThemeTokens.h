#pragma once

#include "core/CodeTable.h"

#include <QColor>

#include <optional>

enum class ThemeMode { Light, Dark };

// The code is what the profile row stores; an unknown one means the light theme.
template <>
inline constexpr auto codeTable<ThemeMode> = std::to_array<CodeRow<ThemeMode>>({
    { ThemeMode::Light, u"light", u"浅色" },
    { ThemeMode::Dark, u"dark", u"深色" },
});

/// Every colour of the program by its purpose. Nothing outside the table behind this enumeration
/// names a colour value.
enum class Token {
    BgPage,
    BgCard,
    BgNav,
    BgTopBar,
    BgInput,
    BgInputDisabled,
    BgTableHeader,
    BgTableAlt,
    BgHover,
    BgSelected,
    BgTooltip,
    Border,
    BorderStrong,
    FocusRing,
    TextPrimary,
    TextSecondary,
    TextTertiary,
    TextDisabled,
    TextTooltip,
    Link,
    Primary,
    PrimaryHover,
    PrimaryPressed,
    TextOnPrimary,
    Danger,
    DangerHover,
    TextOnDanger,
    DangerText,
    DangerBg,
    DangerBorder,
    WarningText,
    WarningBg,
    WarningBorder,
    InfoText,
    InfoBg,
    InfoBorder,
    SuccessText,
    SuccessBg,
    SuccessBorder,
    RiskHighFg,
    RiskHighBg,
    RiskMediumFg,
    RiskMediumBg,
    RiskLowFg,
    RiskLowBg,
    RiskNormalFg,
    RiskNormalBg,
    AmountIn,
    AmountOut,
    StateOnline,
    ChartBusinessIncome,
    ChartBusinessExpense,
    ChartSalary,
    ChartExpenseReimburse,
    ChartShareholderIn,
    ChartShareholderOut,
    ChartTaxFee,
    ChartOther,
    ChartRiskHigh,
    ChartRiskMedium,
    ChartRiskLow,
    ChartRiskNormal,
    ChartIn,
    ChartOut,
    ChartNet,
};

inline constexpr int tokenCount = static_cast<int>(Token::ChartNet) + 1;

QColor tokenColor(Token token, ThemeMode mode);

/// The name under which the style sheet refers to a token: "bgPage" for `Token::BgPage`.
QString tokenName(Token token);

/// The token of a style sheet name.
std::optional<Token> tokenFromName(QStringView name);
