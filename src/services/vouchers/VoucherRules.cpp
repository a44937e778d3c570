#include "services/vouchers/VoucherRules.h"

#include "core/TextRules.h"
#include "services/RetryText.h"

using namespace Qt::StringLiterals;

namespace VoucherRules {

namespace {

using Problem = std::optional<FormProblem<Field>>;

// The same for both forms, except for what the box about a missing name is called.
Problem problemOf(const VoucherDescription& description, const QString& missingNameTitle)
{
    if (TextRules::isBlank(description.name))
        return { { Field::Name, missingNameTitle, u"请填写凭证名称。"_s } };
    if (TextRules::characterCount(TextRules::asStored(description.note)) > longestNote)
        return { { Field::Note, u"备注过长"_s, u"备注不超过 500 字。"_s } };
    // A mistyped day must not be archived as today.
    if (!description.voucherDate.isValid())
        return { { Field::Date, u"日期无效"_s, u"请填写正确的凭证日期，如 2025-03-31。"_s } };
    return {};
}

} // namespace

Problem problemOfEdit(const VoucherDescription& description)
{
    return problemOf(description, u"信息不完整"_s);
}

Problem problemOfImport(qsizetype validFiles, const VoucherDescription& description)
{
    if (validFiles == 0)
        return { { Field::Files, u"缺少文件"_s,
            u"请先选择至少一个有效文件（JPG/PNG/BMP/PDF，≤20MB）。"_s } };
    return problemOf(description, u"缺少名称"_s);
}

QString failedUpdateText(const QString& error)
{
    return askingToRetry(error);
}

} // namespace VoucherRules
