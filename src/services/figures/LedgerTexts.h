#pragma once

#include "db/Transaction.h"
#include "services/figures/Period.h"

#include <QList>
#include <QString>

/// How the ledger words what it shows. Pure functions; all texts are Chinese and plain.
namespace LedgerTexts {

/// Whose account it is, short enough for a column.
QString ownerLabel(AccountType account);
/// The same for the other side, whose private account need not be the owner's.
QString counterpartyLabel(AccountType account);

/// Why an entry has its level: the reasons, a line each, and what a person made of them.
QString riskToolTip(const Transaction& entry);

/// "共 2 笔    收入合计 1.00 元    支出合计 2.00 元"
QString totalsLine(const QList<Transaction>& entries);

/// The question before an entry is deleted.
QString deleteQuestion(const Transaction& entry);

/// "2025-01-01 至 不限"
QString rangeText(const DateRange& range);

} // namespace LedgerTexts
