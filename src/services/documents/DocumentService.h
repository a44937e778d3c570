#pragma once

#include "services/documents/DocumentRules.h"

/// What became of a document.
struct DocumentResult {
    bool ok = false;
    qint64 docId = 0; // 0 on failure
    QString docNo;
    QString filePath; // absolute, of the PDF
    QString error; // Chinese, for the user, when not ok
};

/// Draws up, numbers, stores and removes the statutory documents. Row, links and PDF come and go
/// together: what fails leaves everything as it was. Ledger entries that a document covers are
/// evaluated anew once it is stored or removed. Files are final even inside an outer transaction
/// that is rolled back later.
class DocumentService final {
public:
    [[nodiscard]] DocumentResult generateAnnualDecision(const AnnualDecisionInput& input);
    [[nodiscard]] DocumentResult generateFundDecision(const FundDecisionInput& input);
    [[nodiscard]] DocumentResult generateIndependenceStatement(
        const IndependenceStatementInput& input);

    /// Draws the document up again from its stored fields, the present profile and the present
    /// entries, over its PDF; a file of its name that is not its PDF is put aside and kept. Number,
    /// title and dates stay. Refused when an entry has changed its direction since, and when the
    /// stored selection cannot be read.
    [[nodiscard]] DocumentResult regenerate(qint64 id);
    /// A file of its name that is not its PDF is put aside and kept. Only `ok` and `error` say
    /// something.
    [[nodiscard]] DocumentResult deleteDocument(qint64 id);
    /// Writes a missing PDF again, as the document was stored; a PDF that is there is left alone.
    [[nodiscard]] DocumentResult restoreFile(qint64 id);

    /// The page that would be stored, with remarks in place of the number and of a nature of the
    /// money that is not chosen yet. Nothing is written or refused: what else is still missing in
    /// the input is missing in the page.
    QString preview(const AnnualDecisionInput& input);
    QString preview(const FundDecisionInput& input);
    QString preview(const IndependenceStatementInput& input);
};
