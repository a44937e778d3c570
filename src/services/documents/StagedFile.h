#pragma once

#include <QByteArray>
#include <QString>

/// A new content on its way to a path, for files that belong to a database row: written beside,
/// put in place once the row is in, and kept once the row is there for good. Left early, it takes
/// everything back, so that the path holds byte for byte what it held before.
class StagedFile final {
public:
    /// What becomes of a file that is there already.
    enum class Former {
        Replaced, // gone once the new content is kept
        PutAside, // kept beside under a name of its own
    };

    explicit StagedFile(const QString& path);
    ~StagedFile();
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    /// Keeps the file beside under a name of its own, at once and for good.
    [[nodiscard]] static bool putAside(const QString& path);

    [[nodiscard]] bool write(const QByteArray& bytes);
    /// After `write`. A folder in the file's place is a failure.
    [[nodiscard]] bool putInPlace(Former former);
    void keep();

private:
    bool saveFormer(Former former);
    void takeBack();

    QString m_path;
    QString m_newPath; // where the content lies until it is in place
    QString m_formerPath; // where the file lies that was there before
    Former m_former = Former::Replaced;
    bool m_inPlace = false;
};
