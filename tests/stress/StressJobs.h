#pragma once

#include "core/CodeTable.h"

#include <QRandomGenerator>
#include <QString>

/// What the process does that is going to be killed.
enum class Job {
    SaveEntry,
    ImportVouchers,
    EditVoucher,
    DeleteVoucher,
    Generate,
    Regenerate,
    DeleteDocument,
    Backup,
    Restore,
    Start,
};

template <>
inline constexpr auto codeTable<Job> = std::to_array<CodeRow<Job>>({
    { Job::SaveEntry, u"entry", u"save an entry" },
    { Job::ImportVouchers, u"import", u"import vouchers" },
    { Job::EditVoucher, u"edit", u"edit a voucher" },
    { Job::DeleteVoucher, u"unvoucher", u"delete a voucher" },
    { Job::Generate, u"generate", u"generate a document" },
    { Job::Regenerate, u"regenerate", u"regenerate a document" },
    { Job::DeleteDocument, u"undocument", u"delete a document" },
    { Job::Backup, u"backup", u"make a backup" },
    { Job::Restore, u"restore", u"restore a backup" },
    { Job::Start, u"start", u"start after a kill" },
});
template <> inline constexpr Job codeFallback<Job> = Job::SaveEntry;

/// Does the work through the program's own services on the open database, and tells on the
/// standard output what it is about to change ("try key value") and what it was told to be stored
/// ("ack key value"), separated by tabs. A value "gone" is a removal, "*" any content. The key
/// "data" is everything that a restore exchanges, its value a signature or "prepared".
class StressJobs final {
public:
    /// `root`: a folder outside of the data directory, for source files and backups.
    StressJobs(const QString& root, quint32 seed);

    /// Fills a new database and makes the backup that restores bring back.
    [[nodiscard]] bool prepare();
    /// Whatever the job needs to work on.
    void provideFor(Job job);
    void run(Job job);

    /// Where backups are made.
    static QString backupTarget(const QString& root);

private:
    void saveEntry();
    void importVouchers();
    void editVoucher();
    void deleteVoucher();
    void generate();
    void regenerate();
    void deleteDocument();
    void backup();
    void restore();

    QString sourceFile();
    QString preparedBackup() const;
    QList<qint64> someOf(const QList<qint64>& all);
    qint64 oneOf(const QList<qint64>& all);

    QString m_root;
    QRandomGenerator m_random;
};
