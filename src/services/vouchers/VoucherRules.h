#pragma once

#include "services/FormProblem.h"
#include "services/vouchers/VoucherService.h"

#include <optional>

/// What the description of a voucher must hold before it can be saved.
namespace VoucherRules {

enum class Field { Files, Name, Date, Note };

inline constexpr int longestNote = 500; // characters, without the white space around the text

/// The first problem of a description that is to be saved; an unset date is one.
std::optional<FormProblem<Field>> problemOfEdit(const VoucherDescription& description);

/// The same for new vouchers, of which there is one per valid file.
std::optional<FormProblem<Field>> problemOfImport(
    qsizetype validFiles, const VoucherDescription& description);

/// What the box says after an update that failed for this reason.
QString failedUpdateText(const QString& error);

} // namespace VoucherRules
