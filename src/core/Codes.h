#pragma once

#include "core/CodeTable.h"

// The enumerations of the ledger and the archive. Integer values follow the table order; the
// codes are those that the database's CHECK constraints accept.

enum class Direction { In, Out };

/// Whose account moved the money. `Unknown` only ever describes the counterparty's side.
enum class AccountType { Company, Private, Unknown };

enum class Category {
    BusinessIncome,
    BusinessExpense,
    Salary,
    ExpenseReimburse,
    ShareholderIn,
    ShareholderOut,
    TaxFee,
    Other,
};

/// From most to least severe, so a smaller integer is the graver finding.
enum class RiskLevel { High, Medium, Low, Normal };

enum class ProjectStatus { Planning, Ongoing, Completed, Archived };

enum class ContractStatus { Active, Completed, Terminated };

enum class VoucherType { BankReceipt, Contract, Invoice, Delivery, Chat, Other };

enum class DocType { AnnualDecision, FundDecision, IndependenceStatement };

/// What an entity link starts from.
enum class SourceType { Voucher, Document };

/// What an entity link points to.
enum class TargetType { Project, Contract, Transaction };

template <>
inline constexpr auto codeTable<Direction> = std::to_array<CodeRow<Direction>>({
    { Direction::In, u"in", u"收入" },
    { Direction::Out, u"out", u"支出" },
});

template <>
inline constexpr auto codeTable<AccountType> = std::to_array<CodeRow<AccountType>>({
    { AccountType::Company, u"company", u"对公账户" },
    { AccountType::Private, u"private", u"股东私人账户" },
    { AccountType::Unknown, u"unknown", u"不明" },
});
template <> inline constexpr AccountType codeFallback<AccountType> = AccountType::Unknown;

template <>
inline constexpr auto codeTable<Category> = std::to_array<CodeRow<Category>>({
    { Category::BusinessIncome, u"business_income", u"经营收入" },
    { Category::BusinessExpense, u"business_expense", u"经营采购/成本支出" },
    { Category::Salary, u"salary", u"工资薪酬" },
    { Category::ExpenseReimburse, u"expense_reimburse", u"费用报销/归垫" },
    { Category::ShareholderIn, u"shareholder_in", u"股东转入（借款/投资款）" },
    { Category::ShareholderOut, u"shareholder_out", u"公司转付股东（借款/备用金/分红等）" },
    { Category::TaxFee, u"tax_fee", u"税费缴纳" },
    { Category::Other, u"other", u"其他" },
});
template <> inline constexpr Category codeFallback<Category> = Category::Other;

template <>
inline constexpr auto codeTable<RiskLevel> = std::to_array<CodeRow<RiskLevel>>({
    { RiskLevel::High, u"high", u"高风险" },
    { RiskLevel::Medium, u"medium", u"中风险" },
    { RiskLevel::Low, u"low", u"预警" },
    { RiskLevel::Normal, u"normal", u"正常" },
});
template <> inline constexpr RiskLevel codeFallback<RiskLevel> = RiskLevel::Normal;

template <>
inline constexpr auto codeTable<ProjectStatus> = std::to_array<CodeRow<ProjectStatus>>({
    { ProjectStatus::Planning, u"planning", u"筹备中" },
    { ProjectStatus::Ongoing, u"ongoing", u"进行中" },
    { ProjectStatus::Completed, u"completed", u"已完成" },
    { ProjectStatus::Archived, u"archived", u"已归档" },
});

template <>
inline constexpr auto codeTable<ContractStatus> = std::to_array<CodeRow<ContractStatus>>({
    { ContractStatus::Active, u"active", u"履行中" },
    { ContractStatus::Completed, u"completed", u"已履行完毕" },
    { ContractStatus::Terminated, u"terminated", u"已终止" },
});

template <>
inline constexpr auto codeTable<VoucherType> = std::to_array<CodeRow<VoucherType>>({
    { VoucherType::BankReceipt, u"bank_receipt", u"银行回单" },
    { VoucherType::Contract, u"contract", u"合同协议" },
    { VoucherType::Invoice, u"invoice", u"发票票据" },
    { VoucherType::Delivery, u"delivery", u"交付验收" },
    { VoucherType::Chat, u"chat", u"聊天记录截图" },
    { VoucherType::Other, u"other", u"其他" },
});
template <> inline constexpr VoucherType codeFallback<VoucherType> = VoucherType::Other;

template <>
inline constexpr auto codeTable<DocType> = std::to_array<CodeRow<DocType>>({
    { DocType::AnnualDecision, u"annual_decision", u"年度股东决定书" },
    { DocType::FundDecision, u"fund_decision", u"公私资金往来决定书" },
    { DocType::IndependenceStatement, u"independence_statement", u"财产独立声明书" },
});

// The two ends of a link are never shown to the user as such: their labels name the kind of row.
template <>
inline constexpr auto codeTable<SourceType> = std::to_array<CodeRow<SourceType>>({
    { SourceType::Voucher, u"voucher", u"凭证" },
    { SourceType::Document, u"document", u"文书" },
});

template <>
inline constexpr auto codeTable<TargetType> = std::to_array<CodeRow<TargetType>>({
    { TargetType::Project, u"project", u"项目" },
    { TargetType::Contract, u"contract", u"合同" },
    { TargetType::Transaction, u"transaction", u"流水" },
});
