#pragma once

#include "db/Contract.h"
#include "db/Project.h"
#include "db/Transaction.h"

/// How projects and contracts are told to the user. Plain texts: whoever shows them as markup
/// escapes them.
namespace ProjectTexts {

/// A stored day; one that cannot be read is shown as it stands and said to be wrong.
QString dateText(QDate date, const QString& stored);

/// "P-2026-0001 · 进行中 · 预算 120,000.00 元"
QString headline(const Project& project);

/// "2026-01-05 至 未设置"
QString period(const Project& project);

/// "120,000.00", or that none was agreed.
QString amount(const Contract& contract);

/// "共 3 笔 · 收入合计 … 元 / 支出合计 … 元 / 净额 … 元"
QString totals(const ProjectTotals& totals);

} // namespace ProjectTexts
