#pragma once

#include "db/CompanyProfile.h"
#include "services/FormProblem.h"

#include <optional>

/// What a company profile must hold before the program can draft documents from it.
namespace ProfileRules {

enum class Field { CompanyName, ShareholderName };

/// The first required name that is missing; nothing when the profile may be saved.
std::optional<FormProblem<Field>> firstProblem(const CompanyProfile& profile);

/// Both names are present, so the first-run wizard need not be shown.
bool isComplete(const CompanyProfile& profile);

/// The profile as it is stored: texts trimmed, the credit code in capitals.
CompanyProfile normalized(CompanyProfile profile);

/// A Chinese remark when a credit code is given that does not check out; empty otherwise. It
/// warns and never blocks: a certificate may be older than the standard.
QString creditCodeRemark(const QString& creditCode);

} // namespace ProfileRules
