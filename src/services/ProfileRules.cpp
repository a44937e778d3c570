#include "services/ProfileRules.h"

#include "core/CreditCode.h"
#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace ProfileRules {

std::optional<FormProblem<Field>> firstProblem(const CompanyProfile& profile)
{
    const QString title = u"信息不完整"_s;
    if (TextRules::isBlank(profile.companyName))
        return FormProblem<Field> { Field::CompanyName, title, u"请填写公司名称。"_s };
    if (TextRules::isBlank(profile.shareholderName))
        return FormProblem<Field> { Field::ShareholderName, title, u"请填写股东姓名。"_s };
    return {};
}

QString thresholdProblem(const CompanyProfile& profile)
{
    return profile.largeAmountFen > 0 ? QString() : u"大额转账标准必须大于 0 元。"_s;
}

bool isComplete(const CompanyProfile& profile)
{
    return !firstProblem(profile);
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
