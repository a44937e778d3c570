#pragma once

#include "db/CompanyProfile.h"
#include "db/DocumentRecord.h"
#include "db/Transaction.h"

#include <QList>
#include <QStringList>

struct AnnualDecisionInput {
    int year = 0;
    QStringList items; // finished sentences, in the order of the document
    QDate decisionDate;
};

struct FundDecisionInput {
    Direction direction = Direction::In; // In: from the owner to the company
    QString fundNature;
    QList<qint64> transactionIds; // in the order of the document
    QDate decisionDate;
    QDate settleDate; // invalid: none agreed
    QString extraText;
};

struct IndependenceStatementInput {
    QDate baseDate;
    QStringList measures; // finished sentences
    QString furtherMeasures; // the user's own words, may be empty
};

#include <optional>

/// What the three statutory documents ask for before they are drawn up, and the records that
/// follow from what was entered. Pure: nothing is read or written.
namespace DocumentRules {

/// The first thing that is missing or wrong, in Chinese; empty when the input is in order.
QString firstProblem(const AnnualDecisionInput& input, int currentYear);
QString firstProblem(const FundDecisionInput& input);
QString firstProblem(const IndependenceStatementInput& input);
/// The same for the company that is to appear in the document.
QString firstProblem(const CompanyProfile& profile);
/// The same for a ledger entry that a fund decision is to cover.
QString firstProblem(const Transaction& entry, Direction direction);
/// The same for a stored document that is to be drawn up again from its selection.
QString firstProblem(const DocumentRecord& record);

/// The record of a new document, still without number, content and file.
DocumentRecord draft(const AnnualDecisionInput& input);
/// An entry that is named twice is covered once, at its first place.
DocumentRecord draft(const FundDecisionInput& input);
DocumentRecord draft(const IndependenceStatementInput& input);

/// The year in which a document is numbered.
int numberingYear(const DocumentRecord& record);

/// The chosen sentences of a record; empty when they cannot be read.
QStringList selectedTexts(const DocumentRecord& record);
/// The covered entries of a fund decision, in the order of the document.
QList<qint64> coveredIds(const DocumentRecord& record);

/// The amounts of the entries together; nothing when the sum is beyond any amount or one of them
/// is negative.
std::optional<qint64> totalFen(const QList<Transaction>& entries);

} // namespace DocumentRules
