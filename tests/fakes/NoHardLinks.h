#pragma once

#include <array>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>

/// Simulates a file system that has neither hard links nor unnamed files.
namespace NoHardLinks
{

/// Forbids both to this thread. False if the machine does not allow that.
inline bool apply()
{
    constexpr auto Number = offsetof(seccomp_data, nr);
    constexpr auto OpenFlags = offsetof(seccomp_data, args) + 2 * sizeof(seccomp_data::args[0]);
    constexpr unsigned UnnamedFile = O_TMPFILE & ~O_DIRECTORY;
#ifdef SYS_link
    constexpr unsigned Link = SYS_link;
#else
    constexpr unsigned Link = SYS_linkat;
#endif
    std::array filter {
        sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, Number),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, Link, 5, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_linkat, 4, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 2),
        sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, OpenFlags),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, UnnamedFile, 2, 0),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
    };
    const sock_fprog program { .len = filter.size(), .filter = filter.data() };
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Runs `work` in such a thread. False if the machine does not allow that.
inline bool run(const std::function<void()> &work)
{
    bool isApplied = false;
    std::thread([&] {
        isApplied = apply();
        if (isApplied)
            work();
    }).join();
    return isApplied;
}

} // namespace NoHardLinks
