#pragma once

#include "services/NoticeLevel.h"
#include "services/risk/RiskRules.h"

/// What the form of a ledger entry says about the entry's risk while it is being filled in.
struct RiskPreview {
    NoticeLevel level = NoticeLevel::Info;
    QString text; // Chinese, plain, lines separated by "\n"

    bool operator==(const RiskPreview&) const = default;
};

/// The preview of an instant evaluation. Transfers between company and owner are told that the
/// frequency rule is only decided after saving; an incomplete form, that more is to come.
[[nodiscard]] RiskPreview riskPreview(
    const RiskRules::RiskResult& result, Category category, bool formComplete);
