#pragma once

/// Brings back in step what a crash left between two steps of one change. The database itself
/// keeps its rows whole; this is about what its transactions do not hold: the PDF beside the row of
/// a document, and the risk levels, which follow a change once it is committed.
class CrashRepair final {
public:
    /// Looks whether the last process ended without closing the database. Belongs before opening
    /// it, which takes the trace away, and after the repair of a restore.
    CrashRepair();

    /// Belongs after the database was opened. Nothing is deleted; voucher files that lost their
    /// row are logged.
    void run() const;

private:
    bool m_leftOpen = false;
};
