#pragma once

#include "services/NoticeLevel.h"
#include "widgets/BannerKind.h"

/// How a notice of the services looks.
[[nodiscard]] constexpr BannerKind bannerKindOf(NoticeLevel level)
{
    switch (level) {
    case NoticeLevel::Danger:
        return BannerKind::Danger;
    case NoticeLevel::Warning:
        return BannerKind::Warning;
    case NoticeLevel::Info:
        break;
    }
    return BannerKind::Info;
}
