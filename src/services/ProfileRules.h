#pragma once

#include "db/CompanyProfile.h"
#include "services/FormProblem.h"

#include <array>
#include <optional>

/// What a company profile must hold before the program can draft documents from it.
namespace ProfileRules {

/// The texts of a profile, in the order in which forms and pages show them.
enum class Field {
    CompanyName,
    CreditCode,
    ShareholderName,
    BankName,
    BankAccount,
    Address,
    Phone
};

struct FieldRow {
    Field field;
    QString CompanyProfile::*text;
    QStringView label; // Chinese
    int longest; // characters
};

inline constexpr auto fieldRows = std::to_array<FieldRow>({
    { Field::CompanyName, &CompanyProfile::companyName, u"公司名称", 100 },
    { Field::CreditCode, &CompanyProfile::creditCode, u"统一社会信用代码", 50 },
    { Field::ShareholderName, &CompanyProfile::shareholderName, u"股东姓名", 100 },
    { Field::BankName, &CompanyProfile::bankName, u"开户银行", 100 },
    { Field::BankAccount, &CompanyProfile::bankAccount, u"对公账号", 50 },
    { Field::Address, &CompanyProfile::address, u"公司地址", 200 },
    { Field::Phone, &CompanyProfile::phone, u"联系电话", 50 },
});

/// The first required name that is missing, then the first text that is too long for a document's
/// head; nothing when the profile may be saved. What an older program stored may be longer.
std::optional<FormProblem<Field>> firstProblem(const CompanyProfile& profile);

/// A stored text of a profile as a page shows it, cut after its longest length.
QString shortened(const FieldRow& row, const QString& text);

/// What forbids storing the thresholds, in Chinese; empty when nothing does. A large amount of 0,
/// as an emptied field gives, would mark every entry without explanation.
QString thresholdProblem(const CompanyProfile& profile);

/// Both names are present, so the first-run wizard need not be shown.
bool isComplete(const CompanyProfile& profile);

/// The profile as it is stored: texts trimmed, the credit code in capitals.
CompanyProfile normalized(CompanyProfile profile);

/// A Chinese remark when a credit code is given that does not check out; empty otherwise. It
/// warns and never blocks: a certificate may be older than the standard.
QString creditCodeRemark(const QString& creditCode);

} // namespace ProfileRules
