#include "support/FileSizeLimit.h"

#include <sys/resource.h>

#include <csignal>

FileSizeLimit::FileSizeLimit(qint64 bytes)
    : m_handler(std::signal(SIGXFSZ, SIG_IGN))
{
    rlimit limit {};
    getrlimit(RLIMIT_FSIZE, &limit);
    m_before = static_cast<qint64>(limit.rlim_cur);
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit()
{
    rlimit limit {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = static_cast<rlim_t>(m_before);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, m_handler);
}
