#pragma once

#include "fakes/UnprivilegedScope.h"

#include <filesystem>
#include <sys/resource.h>

/// The process can have no new thread while this lives. Root, whom no limit binds, is an ordinary
/// user meanwhile, to whom the folder is given.
class ThreadlessScope
{
public:
    explicit ThreadlessScope(const std::filesystem::path &folder)
        : m_user(folder)
    {
        getrlimit(RLIMIT_NPROC, &m_former);
        const rlimit limit { 0, m_former.rlim_max };
        setrlimit(RLIMIT_NPROC, &limit);
    }

    ThreadlessScope(const ThreadlessScope &) = delete;
    ThreadlessScope &operator=(const ThreadlessScope &) = delete;

    ~ThreadlessScope() { setrlimit(RLIMIT_NPROC, &m_former); }

private:
    UnprivilegedScope m_user;
    rlimit m_former {};
};
