#pragma once

#include "Problem.h"

#include <QStringList>

class DemoLedger;
struct DocumentResult;

/// The papers that the program itself writes in the demo: the statutory documents, exports of the
/// ledger and the report, and a backup.
class DemoDocuments final {
public:
    /// Draws up the annual decision, a statement of independence and the decisions on the flows
    /// that the ledger marks for one.
    [[nodiscard]] Problem drawUp(const DemoLedger& ledger);

    /// Writes ledger and report into the folder, which is made when missing.
    [[nodiscard]] Problem exportTo(const QString& folder);

    /// Makes a backup in the program's own folder for them.
    [[nodiscard]] Problem backUp();

    /// Absolute paths, in the order in which they were written.
    const QStringList& pdfFiles() const { return m_pdfFiles; }
    const QStringList& csvFiles() const { return m_csvFiles; }

private:
    [[nodiscard]] Problem drawUpFundDecisions(const DemoLedger& ledger);
    [[nodiscard]] Problem keep(const DocumentResult& result);
    [[nodiscard]] Problem checkCovered(const DemoLedger& ledger) const;

    QStringList m_pdfFiles;
    QStringList m_csvFiles;
};
