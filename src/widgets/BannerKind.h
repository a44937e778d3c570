#pragma once

#include "theme/ThemeTokens.h"

/// What a message means. The code is also the name of its icon and of its style.
enum class BannerKind { Info, Warning, Danger, Success };

template <>
inline constexpr auto codeTable<BannerKind> = std::to_array<CodeRow<BannerKind>>({
    { BannerKind::Info, u"info", u"提示" },
    { BannerKind::Warning, u"warning", u"注意" },
    { BannerKind::Danger, u"danger", u"重要" },
    { BannerKind::Success, u"success", u"完成" },
});

/// The colour of the kind's text and icon.
Token textTokenOf(BannerKind kind);
