#include "services/backup/FolderCopy.h"

#include "services/backup/DiskFiles.h"

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace FolderCopy {

namespace {

QString problemWith(const QString& what, const fs::path& path, const std::error_code& error)
{
    const QString name = DiskFiles::text(path);
    qWarning("Copying files: %s: %s", qUtf8Printable(name), error.message().c_str());
    return what.arg(name);
}

void leaveOut(Listing& listing, const char* kind, const fs::path& path)
{
    const QString name = DiskFiles::text(path);
    qWarning("Not copied, %s: %s", kind, qUtf8Printable(name));
    listing.leftOut += name;
}

// Most entries tell their kind without another call to the system.
void append(Listing& listing, const fs::directory_entry& entry, const fs::path& relative)
{
    std::error_code error;
    std::error_code linkError; // a link that leads nowhere counts as a file
    const bool isLink = entry.is_symlink(error);
    const bool isFile = !error && entry.is_regular_file(linkError);
    if (isLink && entry.is_directory(linkError))
        leaveOut(listing, "a link to a folder", entry.path());
    // Reading a pipe or a device would never end.
    else if (isFile || (isLink && !entry.exists(linkError)))
        listing.files.push_back(relative);
    else if (!error && !isLink && entry.is_directory(error))
        listing.folders.push_back(relative);
    else if (error)
        listing.problem = problemWith(u"复制失败：%1"_s, entry.path(), error);
    else
        leaveOut(listing, "no file", entry.path());
}

std::optional<QString> makeFolder(const fs::path& folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return problemWith(u"无法创建目录：%1"_s, folder, error);
    return {};
}

std::optional<QString> replaceFile(const fs::path& source, const fs::path& target)
{
    std::error_code error = DiskFiles::copyFile(source, target);
    if (error == std::errc::file_exists) {
        fs::remove(target, error);
        if (error)
            return problemWith(u"无法覆盖文件：%1"_s, target, error);
        error = DiskFiles::copyFile(source, target);
    }
    if (error)
        return problemWith(u"复制失败：%1"_s, source, error);
    return {};
}

// A folder that its owner must not write to keeps its entries.
void allowRemoval(const fs::path& root)
{
    std::error_code error;
    const auto allow = [&error](const fs::path& folder) {
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, error);
    };
    if (fs::symlink_status(root, error).type() != fs::file_type::directory)
        return;
    allow(root);
    fs::recursive_directory_iterator item(root, error);
    for (const fs::recursive_directory_iterator end; !error && item != end; item.increment(error)) {
        if (item->symlink_status(error).type() == fs::file_type::directory)
            allow(item->path());
    }
}

} // namespace

Listing list(const QString& folder)
{
    Listing listing;
    const fs::path root = DiskFiles::native(folder);
    if (!DiskFiles::exists(root))
        return listing;
    std::error_code error;
    fs::recursive_directory_iterator item(root, error);
    for (const fs::recursive_directory_iterator end; !error && item != end; item.increment(error))
        append(listing, *item, item->path().lexically_relative(root));
    if (error && !listing.problem)
        listing.problem = problemWith(u"复制失败：%1"_s, root, error);
    return listing;
}

qint64 sizeOf(const QString& folder, const Listing& listing)
{
    const fs::path root = DiskFiles::native(folder);
    qint64 bytes = 0;
    for (const fs::path& file : listing.files) {
        std::error_code error;
        const auto size = fs::file_size(root / file, error);
        bytes += error ? 0 : static_cast<qint64>(size);
    }
    return bytes;
}

std::optional<QString> copy(const QString& source, const Listing& listing, const QString& target,
    const std::function<void()>& copied)
{
    if (listing.problem)
        return listing.problem;
    const fs::path from = DiskFiles::native(source);
    const fs::path to = DiskFiles::native(target);
    if (const auto problem = makeFolder(to))
        return problem;
    for (const fs::path& folder : listing.folders) {
        if (const auto problem = makeFolder(to / folder))
            return problem;
    }
    for (const fs::path& file : listing.files) {
        if (const auto problem = replaceFile(from / file, to / file))
            return problem;
        copied();
    }
    return {};
}

std::optional<QString> remove(const QString& path)
{
    const fs::path name = DiskFiles::native(path);
    std::error_code error;
    fs::remove_all(name, error);
    if (error) {
        allowRemoval(name);
        fs::remove_all(name, error);
    }
    if (error)
        return problemWith(u"无法清理：%1"_s, name, error);
    return {};
}

} // namespace FolderCopy
