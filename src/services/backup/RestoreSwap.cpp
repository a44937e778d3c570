#include "services/backup/RestoreSwap.h"

#include "core/AppPaths.h"
#include "services/backup/BackupLayout.h"
#include "services/backup/DiskFiles.h"
#include "services/backup/FolderCopy.h"

#include <array>

// The exchange on the disk. A folder in the data directory holds "new" and "old", and its name is
// the state, so that one atomic rename goes from each state to the next:
//
//   restore_staging    The new data are being put together in "new". The live data are untouched.
//                      After a crash: removed; with anything in "old" it is a restore_swap whose
//                      name did not reach the disk.
//   restore_swap       The live data are being moved into "old" and the new ones out of "new".
//                      After a crash: whatever lies in "old" goes back.
//   restore_leftovers  The live data are whole, the new ones after a commit, the old ones after
//                      taking back. What the folder holds is not needed. After a crash: removed,
//                      unless the live database is missing after all.
//
// Within restore_swap every item (database, voucher folder) tells by itself where it is:
//
//   in "new"   in "old"   the live one is
//   yes        no         the old one: not moved yet
//   yes        yes        absent, or an empty voucher folder that the start of the program made
//   no         yes        the new one
//
// Both items were live before the exchange begins, so an item that is not in "old" was not moved.
// The log files of a database move out before it and return after it, with the names made durable
// in between: while the old database lies in "old", a log beside the live place is never its own.
// Nothing is removed inside restore_swap, and restore_leftovers only once its name is durable.

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace RestoreSwap {

namespace {

// Files that SQLite keeps beside a database and that belong to this one alone.
constexpr auto companions = std::to_array<const char*>({ "-wal", "-shm", "-journal" });

struct State {
    fs::path folder;
    fs::path newData = folder / "new";
    fs::path oldData = folder / "old";
};

QString folderPath(const QString& state)
{
    return AppPaths::dataDir() + u"/restore_"_s + state;
}

State state(const QString& name)
{
    return { DiskFiles::native(folderPath(name)) };
}

State staging()
{
    return state(u"staging"_s);
}

State swapping()
{
    return state(u"swap"_s);
}

State leftovers()
{
    return state(u"leftovers"_s);
}

fs::path dataDir()
{
    return DiskFiles::native(AppPaths::dataDir());
}

fs::path databaseName()
{
    return DiskFiles::native(BackupLayout::databaseName());
}

fs::path vouchersName()
{
    return DiskFiles::native(BackupLayout::voucherFolderName());
}

fs::path withSuffix(fs::path name, const char* suffix)
{
    name += suffix;
    return name;
}

QString dataDirUnusable()
{
    return u"数据目录不可用：%1"_s.arg(AppPaths::dataDir());
}

bool succeeded(const char* what, const fs::path& path, const std::error_code& error)
{
    if (error)
        qWarning("Restore: %s %s: %s", what, qUtf8Printable(DiskFiles::text(path)),
            error.message().c_str());
    return !error;
}

bool move(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    return succeeded("cannot move", from, error);
}

bool moveIfThere(const fs::path& from, const fs::path& to)
{
    return !DiskFiles::exists(from) || move(from, to);
}

bool syncNames(const fs::path& folder)
{
    return succeeded("cannot make durable", folder, DiskFiles::syncFolder(folder));
}

// After renames between a folder and the data directory.
bool syncMoves(const fs::path& folder)
{
    return syncNames(folder) && syncNames(dataDir());
}

bool createFolder(const fs::path& folder)
{
    std::error_code error;
    fs::create_directory(folder, error);
    return succeeded("cannot create", folder, error);
}

bool removeTree(const State& state)
{
    return !FolderCopy::remove(DiskFiles::text(state.folder));
}

QString databaseBusy()
{
    return u"数据库文件被占用，无法覆盖：%1"_s.arg(AppPaths::databasePath());
}

bool isEmptyFolder(const fs::path& folder)
{
    std::error_code error;
    return fs::is_empty(folder, error) && !error;
}

// Live data that were moved aside, or cannot be told not to have been.
bool holdsOldData(const State& state)
{
    return DiskFiles::exists(state.oldData) && !isEmptyFolder(state.oldData);
}

bool liveDatabaseIsThere()
{
    std::error_code error;
    return fs::file_size(dataDir() / databaseName(), error) > 0 && !error;
}

enum class Retired { No, NotDurably, Yes };

// The end of an exchange, one way or the other.
Retired retire()
{
    if (!move(swapping().folder, leftovers().folder))
        return Retired::No;
    // Until the new name is durable, what it holds may still be needed.
    if (!syncNames(dataDir()))
        return Retired::NotDurably;
    if (liveDatabaseIsThere())
        removeTree(leftovers());
    return Retired::Yes;
}

QString cannotClear(const State& state)
{
    return u"无法清理：%1"_s.arg(DiskFiles::text(state.folder));
}

// Before a new exchange; the live database is there, and nothing lies aside in these folders.
std::optional<QString> clearForNext()
{
    // What was renamed may not have reached the disk under its new name yet.
    if (!syncNames(dataDir()))
        return dataDirUnusable();
    for (const State& state : { staging(), leftovers() }) {
        if (const auto problem = FolderCopy::remove(DiskFiles::text(state.folder)))
            return problem;
    }
    // An exchange that was taken back may not have found its last name.
    if (DiskFiles::exists(swapping().folder) && retire() != Retired::Yes)
        return cannotClear(swapping());
    if (DiskFiles::exists(leftovers().folder))
        return cannotClear(leftovers());
    return {};
}

std::optional<QString> moveOldAside(const State& swap)
{
    const fs::path live = dataDir() / databaseName();
    for (const char* suffix : companions) {
        if (!moveIfThere(
                withSuffix(live, suffix), withSuffix(swap.oldData / databaseName(), suffix)))
            return databaseBusy();
    }
    if (!syncMoves(swap.oldData) || !move(live, swap.oldData / databaseName()))
        return databaseBusy();
    if (!move(dataDir() / vouchersName(), swap.oldData / vouchersName()))
        return u"无法清理：%1"_s.arg(AppPaths::voucherAssetsDir());
    if (!syncMoves(swap.oldData))
        return dataDirUnusable();
    return {};
}

std::optional<QString> moveNewIn(const State& swap)
{
    if (!move(swap.newData / databaseName(), dataDir() / databaseName()))
        return u"数据库文件复制失败：%1"_s.arg(AppPaths::databasePath());
    if (!move(swap.newData / vouchersName(), dataDir() / vouchersName()))
        return u"无法创建目录：%1"_s.arg(AppPaths::voucherAssetsDir());
    if (!syncMoves(swap.newData))
        return dataDirUnusable();
    return {};
}

// Nothing but an empty folder may disappear from an old item's place: other things are not ours.
bool clearPlace(const fs::path& live)
{
    std::error_code error = std::make_error_code(std::errc::file_exists);
    if (live.filename() == vouchersName() && isEmptyFolder(live))
        fs::remove(live, error);
    return succeeded("unexpected", live, error);
}

// Moves a new item out of the place of an old one that lies aside.
bool moveNewOut(const State& swap, const fs::path& name)
{
    if (!DiskFiles::exists(swap.oldData / name))
        return true;
    const fs::path live = dataDir() / name;
    for (const char* suffix : companions) {
        if (!moveIfThere(withSuffix(live, suffix), withSuffix(swap.newData / name, suffix)))
            return false;
    }
    if (!DiskFiles::exists(live))
        return true;
    return DiskFiles::exists(swap.newData / name) ? clearPlace(live)
                                                  : move(live, swap.newData / name);
}

bool moveOldBack(const State& swap)
{
    const fs::path live = dataDir() / databaseName();
    const fs::path aside = swap.oldData / databaseName();
    if (!moveIfThere(aside, live) || !syncMoves(swap.oldData))
        return false;
    for (const char* suffix : companions) {
        if (!moveIfThere(withSuffix(aside, suffix), withSuffix(live, suffix)))
            return false;
    }
    return moveIfThere(swap.oldData / vouchersName(), dataDir() / vouchersName());
}

// Gives an exchange whose name did not reach the disk that name again.
bool nameExchange()
{
    if (!holdsOldData(staging()))
        return true;
    if (DiskFiles::exists(swapping().folder)) {
        qWarning("Restore: two folders hold data from before a restore");
        return false;
    }
    return move(staging().folder, swapping().folder) && syncNames(dataDir());
}

bool putBack(const State& swap)
{
    if (!DiskFiles::exists(swap.newData) && !createFolder(swap.newData))
        return false;
    return moveNewOut(swap, databaseName()) && moveNewOut(swap, vouchersName())
        && syncMoves(swap.newData) && moveOldBack(swap) && syncMoves(swap.oldData);
}

QString notBack(const State& state)
{
    return u"原有数据无法放回原处，仍保存在：%1"_s.arg(DiskFiles::text(state.oldData));
}

} // namespace

QString stagedDatabase()
{
    return BackupLayout::databaseIn(folderPath(u"staging/new"_s));
}

QString stagedVouchers()
{
    return BackupLayout::vouchersIn(folderPath(u"staging/new"_s));
}

std::optional<QString> clearEarlier()
{
    if (isUnfinished() || !liveDatabaseIsThere())
        return {};
    return clearForNext();
}

std::optional<QString> begin()
{
    if (isUnfinished())
        return u"上次恢复尚未完成，请重新启动软件。"_s;
    // The open connection still holds a file that was deleted from outside; closing would lose it.
    if (!liveDatabaseIsThere())
        return databaseBusy();
    if (auto problem = clearForNext())
        return problem;
    const State next = staging();
    if (!createFolder(next.folder) || !createFolder(next.newData) || !createFolder(next.oldData))
        return dataDirUnusable();
    return {};
}

void abandon()
{
    if (!holdsOldData(staging()))
        removeTree(staging());
}

std::optional<QString> swapIn()
{
    // The way back relies on both items having been there.
    if (!DiskFiles::exists(dataDir() / vouchersName()) && !createFolder(dataDir() / vouchersName()))
        return u"无法创建目录：%1"_s.arg(AppPaths::voucherAssetsDir());
    const fs::path prepared = staging().folder;
    if (!succeeded("cannot make durable", prepared, DiskFiles::syncTree(prepared))
        || !move(prepared, swapping().folder) || !syncNames(dataDir()))
        return dataDirUnusable();
    const State swap = swapping();
    if (const auto problem = moveOldAside(swap))
        return problem;
    return moveNewIn(swap);
}

std::optional<QString> commit()
{
    const Retired retired = retire();
    if (retired == Retired::No)
        return dataDirUnusable();
    // Success must outlast a power failure. Without the way back the new data stay all the same.
    if (retired == Retired::NotDurably && move(leftovers().folder, swapping().folder))
        return dataDirUnusable();
    return {};
}

std::optional<QString> takeBack()
{
    if (!nameExchange())
        return notBack(staging());
    const State swap = swapping();
    if (!DiskFiles::exists(swap.folder))
        return {};
    if (holdsOldData(swap) && !putBack(swap))
        return notBack(swap);
    // The name that this one is about to get may be taken by an earlier one.
    if (auto problem = clearLeftovers())
        return problem;
    if (retire() == Retired::No)
        qWarning("Restore: the old data are in place; the new ones stay behind in %s",
            qUtf8Printable(DiskFiles::text(swap.folder)));
    return {};
}

bool isUnfinished()
{
    return holdsOldData(swapping()) || holdsOldData(staging());
}

std::optional<QString> clearLeftovers()
{
    if (holdsOldData(staging()))
        return notBack(staging());
    if (!DiskFiles::exists(staging().folder) && !DiskFiles::exists(leftovers().folder))
        return {};
    // Whatever happened, a copy that may be the only one is not for the program to remove.
    if (DiskFiles::exists(leftovers().folder) && !liveDatabaseIsThere())
        return u"数据库文件缺失或为空：%1\n可能的数据副本保存在：%2\n请将其中 old 文件夹的内容全部移回数据目录。"_s
            .arg(AppPaths::databasePath(), DiskFiles::text(leftovers().folder));
    // What was renamed before a crash may not have reached the disk under its new name yet.
    if (!syncNames(dataDir()))
        return {};
    for (const State& state : { staging(), leftovers() }) {
        if (!removeTree(state))
            qWarning("Restore: leftovers stay behind in %s",
                qUtf8Printable(DiskFiles::text(state.folder)));
    }
    return {};
}

} // namespace RestoreSwap
