#pragma once

#include "db/CompanyProfile.h"
#include "db/DocumentRecord.h"
#include "db/Transaction.h"

#include <QList>

/// The wording of the statutory documents as HTML. Pure: the same values give the same text, so
/// that a preview shows what will be stored.
namespace DocumentTemplates {

/// The whole page of a document, drawn up from the fields of its record. `entries` are what a
/// fund decision covers, in its order; the other kinds take none.
QString compose(const CompanyProfile& profile, const DocumentRecord& record,
    const QList<Transaction>& entries = {});

/// A user's text as it stands in the page: nothing in it is taken for markup, and nothing for a
/// place to be filled in.
QString escaped(const QString& text);
/// The same, with the line breaks that the user typed.
QString escapedLines(const QString& text);

} // namespace DocumentTemplates
