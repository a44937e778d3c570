#include "services/projects/ProjectRules.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace ProjectRules {

namespace {

const QString incomplete = u"信息不完整"_s;
const QString wrongDate = u"日期有误"_s;

bool isNoDay(QDate date, const QString& text)
{
    return !date.isValid() && !TextRules::isBlank(text);
}

bool isTooLong(const QString& note)
{
    return TextRules::characterCount(note) > longestNote;
}

template <typename Field> FormProblem<Field> tooLong(Field field)
{
    return { field, u"备注过长"_s, u"备注不超过 500 字。"_s };
}

// A list of blanks would make a code that nobody can see.
QString codeAsStored(const QString& code)
{
    return TextRules::isBlank(code) ? QString() : TextRules::withoutDirectionMarks(code);
}

} // namespace

std::optional<FormProblem<ProjectField>> firstProblem(const Project& project)
{
    using Problem = FormProblem<ProjectField>;
    if (TextRules::isBlank(project.name))
        return Problem { ProjectField::Name, incomplete, u"请填写项目名称。"_s };
    if (TextRules::isBlank(project.clientName))
        return Problem { ProjectField::ClientName, incomplete, u"请填写客户名称。"_s };
    if (isNoDay(project.startDate, project.startDateText))
        return Problem { ProjectField::StartDate, wrongDate,
            u"开始日期无法识别，请按 2025-02-03 的格式填写，或留空。"_s };
    if (isNoDay(project.endDate, project.endDateText))
        return Problem { ProjectField::EndDate, wrongDate,
            u"结束日期无法识别，请按 2025-02-03 的格式填写，或留空。"_s };
    if (project.startDate.isValid() && project.endDate.isValid()
        && project.endDate < project.startDate)
        return Problem { ProjectField::EndDate, wrongDate, u"结束日期不能早于开始日期。"_s };
    if (isTooLong(project.note))
        return tooLong(ProjectField::Note);
    return {};
}

std::optional<FormProblem<ContractField>> firstProblem(const Contract& contract)
{
    using Problem = FormProblem<ContractField>;
    if (TextRules::isBlank(contract.name))
        return Problem { ContractField::Name, incomplete, u"请填写合同名称。"_s };
    if (TextRules::isBlank(contract.partyB))
        return Problem { ContractField::PartyB, incomplete, u"请填写对方当事人。"_s };
    if (!contract.signDate.isValid())
        return Problem { ContractField::SignDate, wrongDate,
            u"请按 2025-02-03 的格式填写签订日期。"_s };
    if (isTooLong(contract.note))
        return tooLong(ContractField::Note);
    return {};
}

Project normalized(Project project)
{
    for (QString* text : { &project.name, &project.clientName, &project.manager, &project.note })
        *text = TextRules::asStored(*text);
    project.code = codeAsStored(project.code);
    return project;
}

Contract normalized(Contract contract)
{
    for (QString* text : { &contract.name, &contract.partyB, &contract.note })
        *text = TextRules::asStored(*text);
    contract.code = codeAsStored(contract.code);
    return contract;
}

} // namespace ProjectRules
