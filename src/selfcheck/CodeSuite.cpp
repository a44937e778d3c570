#include "core/Codes.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Suites.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

template <typename Enum> QStringList codesOf()
{
    QStringList codes;
    for (const Enum value : allValues<Enum>())
        codes += codeOf(value);
    return codes;
}

template <typename Enum> void checkTable(Findings& findings, const QString& name)
{
    int index = 0;
    for (const Enum value : allValues<Enum>()) {
        const QString code = codeOf(value);
        findings.expect(static_cast<int>(value) == index++ && fromCode<Enum>(code) == value
                && !code.isEmpty() && !labelOf(value).isEmpty(),
            u"%1的代码 %2 不正确"_s.arg(name, code));
    }
    const QStringList codes = codesOf<Enum>();
    findings.expect(QSet<QString>(codes.begin(), codes.end()).size() == codes.size(),
        u"%1的代码有重复"_s.arg(name));
}

// The database refuses other codes; a file that another program wrote to may hold some.
template <typename Enum>
void checkColumn(Findings& findings, const QString& table, const QString& column)
{
    CheckDao rows;
    const std::optional<QStringList> unknown
        = rows.texts(u"SELECT DISTINCT %2 FROM %1 WHERE %2 IS NOT NULL AND %2 NOT IN ('%3')"_s.arg(
            table, column, codesOf<Enum>().join(u"','")));
    if (!findings.expect(
            unknown.has_value(), u"%1.%2 无法读取：%3"_s.arg(table, column, rows.lastError())))
        return;
    for (const QString& code : *unknown)
        findings.expect(false, u"%1.%2 中有未知代码 %3"_s.arg(table, column, code));
}

void checkStoredCodes(Findings& findings)
{
    const QString entries = u"transactions"_s;
    checkColumn<Direction>(findings, entries, u"direction"_s);
    checkColumn<AccountType>(findings, entries, u"owner_account_type"_s);
    checkColumn<AccountType>(findings, entries, u"counterparty_account_type"_s);
    checkColumn<Category>(findings, entries, u"category"_s);
    checkColumn<RiskLevel>(findings, entries, u"risk_level"_s);
    checkColumn<RiskLevel>(findings, entries, u"risk_auto_level"_s);
    checkColumn<RiskLevel>(findings, entries, u"risk_manual_override"_s);
    checkColumn<ProjectStatus>(findings, u"projects"_s, u"status"_s);
    checkColumn<ContractStatus>(findings, u"contracts"_s, u"status"_s);
    checkColumn<VoucherType>(findings, u"vouchers"_s, u"voucher_type"_s);
    checkColumn<DocType>(findings, u"documents"_s, u"doc_type"_s);
    checkColumn<Direction>(findings, u"documents"_s, u"fund_direction"_s);
    checkColumn<SourceType>(findings, u"entity_links"_s, u"source_type"_s);
    checkColumn<TargetType>(findings, u"entity_links"_s, u"target_type"_s);
}

} // namespace

void Suites::codes(Findings& findings)
{
    checkTable<Direction>(findings, u"收支方向"_s);
    checkTable<AccountType>(findings, u"账户类型"_s);
    checkTable<Category>(findings, u"资金分类"_s);
    checkTable<RiskLevel>(findings, u"风险等级"_s);
    checkTable<ProjectStatus>(findings, u"项目状态"_s);
    checkTable<ContractStatus>(findings, u"合同状态"_s);
    checkTable<VoucherType>(findings, u"凭证类型"_s);
    checkTable<DocType>(findings, u"文书类型"_s);
    checkTable<SourceType>(findings, u"关联来源"_s);
    checkTable<TargetType>(findings, u"关联对象"_s);
    checkStoredCodes(findings);
}
