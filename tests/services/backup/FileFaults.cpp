#include "services/backup/FileFaults.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool armed = false;
FileFaults::Effect effectAtStep = FileFaults::Effect::CountOnly;
int chosenStep = 0;
std::vector<FileFaults::Call> recorded;

int steps()
{
    return static_cast<int>(recorded.size());
}

std::string nameOf(int handle)
{
    std::array<char, PATH_MAX> path {};
    const std::string link = "/proc/self/fd/" + std::to_string(handle);
    const ssize_t size = ::readlink(link.c_str(), path.data(), path.size());
    return { path.data(), static_cast<std::size_t>(size > 0 ? size : 0) };
}

std::string nameIn(int folder, const char* path)
{
    return folder == AT_FDCWD || path[0] == '/' ? path : nameOf(folder) + '/' + path;
}

// Takes a call down with the path that it is about; true when it is the one that has to fail.
bool failsNow(const char* call, const std::string& path, const std::string& target = {})
{
    if (!armed)
        return false;
    recorded.push_back({ call, path, target });
    if (steps() < chosenStep)
        return false;
    if (steps() > chosenStep && effectAtStep != FileFaults::Effect::FailFromThere)
        return false;
    if (effectAtStep == FileFaults::Effect::Kill)
        ::kill(::getpid(), SIGKILL);
    errno = EIO;
    return effectAtStep == FileFaults::Effect::Fail
        || effectAtStep == FileFaults::Effect::FailFromThere;
}

template <typename Function> Function next(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

bool isOutput(int handle)
{
    return handle == STDOUT_FILENO || handle == STDERR_FILENO;
}

bool changesFiles(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

} // namespace

namespace FileFaults {

void arm(Effect effect, int step)
{
    effectAtStep = effect;
    chosenStep = step;
    recorded.clear();
    armed = true;
}

int disarm()
{
    armed = false;
    return steps();
}

const std::vector<Call>& calls()
{
    return recorded;
}

} // namespace FileFaults

// The program's own symbols come before those of the C library, for every library in the process.
// Lists of parameters and arguments bear no parentheses of their own, and the analyzer does not
// see that va_start sets the list that it is given.
// NOLINTBEGIN(bugprone-macro-parentheses, clang-analyzer-valist.Uninitialized)
#define FILE_CALL(result, name, parameters, arguments, ...)                                        \
    extern "C" result name parameters                                                              \
    {                                                                                              \
        static const auto original = next<result(*) parameters>(#name);                            \
        return failsNow(#name, __VA_ARGS__) ? -1 : original arguments;                             \
    }

#define FLUSH_CALL(name)                                                                           \
    extern "C" int name(int handle)                                                                \
    {                                                                                              \
        return failsNow(#name, nameOf(handle)) ? -1 : 0;                                           \
    }

#define WRITE_CALL(result, name, parameters, arguments, handle)                                    \
    extern "C" result name parameters                                                              \
    {                                                                                              \
        static const auto original = next<result(*) parameters>(#name);                            \
        return !isOutput(handle) && failsNow(#name, nameOf(handle)) ? -1 : original arguments;     \
    }

#define OPEN_CALL(name, parameters, arguments)                                                     \
    extern "C" int name parameters                                                                 \
    {                                                                                              \
        using Function = int(*) parameters;                                                        \
        static const auto original = next<Function>(#name);                                        \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const mode_t mode = changesFiles(flags) ? va_arg(rest, mode_t) : 0;                        \
        va_end(rest);                                                                              \
        return changesFiles(flags) && failsNow(#name, path) ? -1 : original arguments;             \
    }

FILE_CALL(int, mkdir, (const char* path, mode_t mode), (path, mode), path)
FILE_CALL(int, rename, (const char* from, const char* to), (from, to), from, to)
FILE_CALL(int, unlink, (const char* path), (path), path)
FILE_CALL(int, remove, (const char* path), (path), path)
FILE_CALL(int, rmdir, (const char* path), (path), path)
FILE_CALL(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags),
    nameIn(folder, path))
FILE_CALL(int, linkat, (int from, const char* source, int to, const char* target, int flags),
    (from, source, to, target, flags), nameIn(from, source), nameIn(to, target))
FILE_CALL(int, renameat2,
    (int from, const char* source, int to, const char* target, unsigned int flags),
    (from, source, to, target, flags), nameIn(from, source), nameIn(to, target))
FILE_CALL(int, ftruncate, (int handle, off_t size), (handle, size), nameOf(handle))
FILE_CALL(int, ftruncate64, (int handle, off64_t size), (handle, size), nameOf(handle))
FILE_CALL(ssize_t, copy_file_range,
    (int from, off64_t* offsetFrom, int to, off64_t* offsetTo, size_t size, unsigned int flags),
    (from, offsetFrom, to, offsetTo, size, flags), nameOf(to))
FLUSH_CALL(fsync)
FLUSH_CALL(fdatasync)
FLUSH_CALL(syncfs)
WRITE_CALL(
    ssize_t, write, (int handle, const void* bytes, size_t size), (handle, bytes, size), handle)
WRITE_CALL(ssize_t, pwrite, (int handle, const void* bytes, size_t size, off_t offset),
    (handle, bytes, size, offset), handle)
WRITE_CALL(ssize_t, pwrite64, (int handle, const void* bytes, size_t size, off64_t offset),
    (handle, bytes, size, offset), handle)
OPEN_CALL(open, (const char* path, int flags, ...), (path, flags, mode))
OPEN_CALL(open64, (const char* path, int flags, ...), (path, flags, mode))
OPEN_CALL(openat, (int folder, const char* path, int flags, ...), (folder, path, flags, mode))
OPEN_CALL(openat64, (int folder, const char* path, int flags, ...), (folder, path, flags, mode))
// NOLINTEND(bugprone-macro-parentheses, clang-analyzer-valist.Uninitialized)
