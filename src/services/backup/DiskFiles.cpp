#include "services/backup/DiskFiles.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>
#include <vector>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace DiskFiles {

namespace {

#ifdef Q_OS_UNIX

std::error_code lastError()
{
    return { errno, std::generic_category() };
}

// Once more when a signal came in between.
template <typename Call> auto uninterrupted(const Call& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

bool isUnsupported(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EXDEV;
}

// Within the kernel. `unsupported` tells that nothing was copied because this way does not work
// for these files, or because the source looks empty, as some that are generated do.
bool copyInKernel(int source, int target, off_t size, bool* unsupported)
{
    *unsupported = true;
#ifdef Q_OS_LINUX
    constexpr size_t portion = size_t(1) << 30;
    for (off_t done = 0; done == 0 || done < size;) {
        const ssize_t copied = uninterrupted([source, target] {
            return ::copy_file_range(source, nullptr, target, nullptr, portion, 0);
        });
        // Sandboxes and some network file systems do not permit this call alone.
        *unsupported = done == 0
            && (copied == 0 || (copied < 0 && (isUnsupported(errno) || errno == EPERM)));
        if (copied <= 0)
            return copied == 0;
        done += copied;
    }
    return true;
#else
    Q_UNUSED(source)
    Q_UNUSED(target)
    Q_UNUSED(size)
    return false;
#endif
}

bool writeAll(int target, const char* bytes, ssize_t size)
{
    for (ssize_t written = 0; size > 0; bytes += written, size -= written) {
        written = uninterrupted([=] { return ::write(target, bytes, static_cast<size_t>(size)); });
        if (written < 0)
            return false;
    }
    return true;
}

bool copyByHand(int source, int target)
{
    std::vector<char> buffer(size_t(256) * 1024);
    for (;;) {
        const ssize_t size
            = uninterrupted([&] { return ::read(source, buffer.data(), buffer.size()); });
        if (size <= 0)
            return size == 0;
        if (!writeAll(target, buffer.data(), size))
            return false;
    }
}

bool copyBytes(int source, int target, off_t size)
{
    bool unsupported = false;
    const bool copied = copyInKernel(source, target, size, &unsupported);
    return unsupported ? copyByHand(source, target) : copied;
}

std::error_code syncOpened(const fs::path& path, int flags, int (*sync)(int))
{
    const int handle
        = uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags); });
    if (handle < 0)
        return lastError();
    const auto closeHandle = qScopeGuard([handle] { ::close(handle); });
    // Some file systems cannot flush a folder and need not: that is no failure.
    return uninterrupted([&] { return sync(handle); }) == 0 || isUnsupported(errno)
        ? std::error_code()
        : lastError();
}

#endif

} // namespace

fs::path native(const QString& path)
{
#ifdef Q_OS_UNIX
    return fs::path(QFile::encodeName(path).toStdString());
#else
    return fs::path(path.toStdU16String());
#endif
}

QString text(const fs::path& path)
{
#ifdef Q_OS_UNIX
    return QFile::decodeName(path.c_str());
#else
    return QString::fromStdU16String(path.generic_u16string());
#endif
}

bool exists(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

#ifdef Q_OS_UNIX

std::error_code copyFile(const fs::path& source, const fs::path& target)
{
    const int from = uninterrupted([&] { return ::open(source.c_str(), O_RDONLY | O_CLOEXEC); });
    if (from < 0)
        return lastError();
    const auto closeFrom = qScopeGuard([from] { ::close(from); });
    struct stat status { };
    if (::fstat(from, &status) != 0)
        return lastError();
    // A write-protected voucher would make a copy that the next backup cannot replace.
    const mode_t mode = (status.st_mode & 0777) | S_IRUSR | S_IWUSR;
    const int to = uninterrupted(
        [&] { return ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
    if (to < 0)
        return lastError();
    std::error_code error;
    if (!copyBytes(from, to, status.st_size))
        error = lastError();
    // Network file systems report a full disk only here.
    if (::close(to) != 0 && !error)
        error = lastError();
    return error;
}

std::error_code syncFolder(const fs::path& folder)
{
    return syncOpened(folder, O_DIRECTORY, ::fsync);
}

#else

std::error_code copyFile(const fs::path& source, const fs::path& target)
{
    std::error_code error;
    if (fs::copy_file(source, target, error))
        fs::permissions(target, fs::perms::owner_write, fs::perm_options::add, error);
    return error;
}

// The system has no way to flush a folder.
std::error_code syncFolder(const fs::path&)
{
    return {};
}

#endif

#ifdef Q_OS_LINUX

// One flush of the file system instead of one per file.
std::error_code syncTree(const fs::path& folder)
{
    return syncOpened(folder, O_DIRECTORY, ::syncfs);
}

#else

std::error_code syncTree(const fs::path& folder)
{
    std::error_code error;
    for (fs::recursive_directory_iterator item(folder, error), end; !error && item != end;
         item.increment(error)) {
        if (item->is_directory(error))
            error = syncFolder(item->path());
#ifdef Q_OS_UNIX
        else if (!error)
            error = syncOpened(item->path(), 0, ::fsync);
#endif
    }
    return error ? error : syncFolder(folder);
}

#endif

} // namespace DiskFiles
