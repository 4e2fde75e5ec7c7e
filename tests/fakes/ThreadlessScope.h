#pragma once

#include "fakes/UnprivilegedScope.h"

#include <filesystem>
#include <sys/resource.h>

/// Prevents new threads during its lifetime. The limit does not apply to root, so root becomes an
/// ordinary user, who gets ownership of the folder.
class ThreadlessScope
{
public:
    explicit ThreadlessScope(const std::filesystem::path &folder)
        : m_user(folder)
    {
        getrlimit(RLIMIT_NPROC, &m_previous);
        const rlimit limit { 0, m_previous.rlim_max };
        setrlimit(RLIMIT_NPROC, &limit);
    }

    ThreadlessScope(const ThreadlessScope &) = delete;
    ThreadlessScope &operator=(const ThreadlessScope &) = delete;

    ~ThreadlessScope() { setrlimit(RLIMIT_NPROC, &m_previous); }

private:
    UnprivilegedScope m_user;
    rlimit m_previous {};
};
