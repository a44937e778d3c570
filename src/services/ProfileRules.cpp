#include "services/ProfileRules.h"

#include "core/CreditCode.h"
#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace ProfileRules {

namespace {

using Problem = std::optional<FormProblem<Field>>;

Problem missingName(const CompanyProfile& profile)
{
    const QString title = u"信息不完整"_s;
    if (TextRules::isBlank(profile.companyName))
        return { { Field::CompanyName, title, u"请填写公司名称。"_s } };
    if (TextRules::isBlank(profile.shareholderName))
        return { { Field::ShareholderName, title, u"请填写股东姓名。"_s } };
    return {};
}

bool isTooLong(const FieldRow& row, const QString& text)
{
    return TextRules::characterCount(text) > row.longest;
}

} // namespace

Problem firstProblem(const CompanyProfile& profile)
{
    if (const Problem problem = missingName(profile))
        return problem;
    for (const FieldRow& row : fieldRows) {
        if (isTooLong(row, TextRules::asStored(profile.*row.text)))
            return { { row.field, u"请检查填写内容"_s,
                u"%1最多 %2 个字。"_s.arg(row.label.toString(), QString::number(row.longest)) } };
    }
    return {};
}

QString shortened(const FieldRow& row, const QString& text)
{
    // A character takes one or two units, so that none is cut in half.
    if (!isTooLong(row, text))
        return text;
    QString begin = text.first(row.longest);
    if (begin.back().isHighSurrogate())
        begin.chop(1);
    return begin + u'…';
}

QString thresholdProblem(const CompanyProfile& profile)
{
    return profile.largeAmountFen > 0 ? QString() : u"大额转账标准必须大于 0 元。"_s;
}

bool isComplete(const CompanyProfile& profile)
{
    return !missingName(profile);
}

CompanyProfile normalized(CompanyProfile profile)
{
    for (const FieldRow& row : fieldRows)
        profile.*row.text = TextRules::asStored(profile.*row.text);
    profile.creditCode = CreditCode::normalized(profile.creditCode);
    return profile;
}

QString creditCodeRemark(const QString& creditCode)
{
    const QString code = CreditCode::normalized(creditCode);
    if (code.isEmpty() || CreditCode::isValid(code))
        return {};
    return u"该代码与 18 位统一社会信用代码的校验规则不符，请对照营业执照核对（仍可保存）。"_s;
}

} // namespace ProfileRules
