#pragma once

#include "db/CompanyProfile.h"
#include "db/Transaction.h"
#include "services/documents/DocumentRules.h"

/// A small company and its documents, for tests of wording, files and paper.
namespace DocumentSamples {

CompanyProfile company();

/// An entry as the ledger of the company holds it, not yet stored; `number` tells them apart.
Transaction entry(int number, Direction direction = Direction::Out);
QList<Transaction> entries(int count);

AnnualDecisionInput annualInput();
FundDecisionInput fundInput(const QList<qint64>& ids);
IndependenceStatementInput independenceInput();

/// Whole documents under a number, ready for paper.
QString annualHtml(const QStringList& furtherItems = {});
QString fundHtml(int entryCount);
QString fundHtml(const QList<Transaction>& covered);
QString independenceHtml();

/// Stores the company's profile in the open database.
[[nodiscard]] bool storeCompany();
/// Stores entries on consecutive days from the first of a month; their ids, or fewer on failure.
QList<qint64> storeEntries(int count, Direction direction = Direction::Out);

} // namespace DocumentSamples
