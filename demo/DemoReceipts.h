#pragma once

#include "DemoLedger.h"
#include "Problem.h"

#include <functional>

class DemoCompany;
class QPainter;

/// The voucher files of the demo: drawn into a folder, as they would lie on the owner's desktop,
/// and archived from there.
class DemoReceipts final {
public:
    /// `folder` is made when missing.
    explicit DemoReceipts(const QString& folder);

    /// Draws and archives what the owner keeps of each entry, each on the evening of its day.
    [[nodiscard]] Problem archiveEntries(const QList<DemoEntry>& entries);
    /// The same for contracts and the acceptance of finished projects.
    [[nodiscard]] Problem archiveProjects(const DemoCompany& company);
    /// Files that the owner has not linked to anything yet; the last days' first.
    [[nodiscard]] Problem archiveUnlinked(const QList<DemoEntry>& entries);

    int archived() const { return m_archived; }

private:
    using Drawing = std::function<void(QPainter&)>;
    struct Paper;

    [[nodiscard]] Problem archiveEntry(const DemoEntry& planned, VoucherType type, bool linked);
    [[nodiscard]] Problem archive(const Paper& paper, qint64 projectId,
        const QList<qint64>& transactionIds, qint64 contractId = 0);
    QString pathOf(const Paper& paper) const;

    QString m_folder;
    int m_archived = 0;
};
