#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <csignal>

#include <sys/resource.h>

/// While it lives no file of this process grows beyond the limit: writing fails as on a full disk.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_previousHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit small = m_before;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_previousHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before {};
    void (*m_previousHandler)(int);
};
#endif
