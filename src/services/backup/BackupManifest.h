#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// "backup_manifest.txt", which makes a folder a backup and describes it: UTF-8 text, one item
/// per line, each ending with a line feed. It is written after everything else, so a folder that
/// has one is whole.
struct BackupManifest {
    enum class Kind { Manual, BeforeRestore };

    QString version; // of the program, "1.0.0"
    QString kind; // label of the kind, as written
    QString time; // local, "yyyy-MM-dd HH:mm:ss"
    std::optional<int> voucherFiles; // nothing when a manifest read from a file does not tell

    static QString labelOf(Kind kind);

    QByteArray toBytes() const;
    /// What the lines tell, in any order and with either line end; other lines are passed over.
    static BackupManifest fromBytes(const QByteArray& bytes);
};
