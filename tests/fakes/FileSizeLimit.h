#pragma once

#include <csignal>
#include <sys/resource.h>

/// Limits the size of files during its lifetime, which simulates a full disk: the write that
/// crosses the limit is partial, and the next one fails.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_previous);
        const rlimit limit { .rlim_cur = bytes, .rlim_max = m_previous.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }

private:
    void (*m_previousHandler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_previous {};
};
