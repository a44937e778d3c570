#pragma once

#include <QLockFile>
#include <QString>

/// Keeps a second start out of a data directory. The operating system's lock decides, not the
/// age or the content of the file: a file left by a crash, by another computer or under a
/// recycled process number never keeps the owner out.
class InstanceLock final {
public:
    explicit InstanceLock(const QString& path);

    enum class Outcome {
        Acquired,
        HeldByOther, // a living process works on the directory
        CannotCreate, // the directory cannot be written
    };

    [[nodiscard]] Outcome acquire();
    void release();

private:
    QLockFile m_lock;
};
