#pragma once

#include <csignal>
#include <sys/resource.h>

/// While one lives, no file of this process grows beyond a size: what is written behind it fails with EFBIG, as on a
/// device that takes no more. It holds for every file: the logs and databases of what runs in this process, too.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_formerAction(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerAction);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*m_formerAction)(int);
    rlimit m_former{};
};
