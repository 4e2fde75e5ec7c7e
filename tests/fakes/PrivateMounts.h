#pragma once

#include "fakes/TestFiles.h"

#include <filesystem>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <utility>

/// A mount namespace for this process, as root or in a new user namespace. After `arePossible`, an
/// ordinary user has root's permissions on their own files, so put permission tests in another
/// executable. Needs a single-threaded process.
namespace PrivateMounts
{

inline bool enterUserNamespace()
{
    const auto user = std::to_string(geteuid());
    const auto group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    TestFiles::write("/proc/self/setgroups", "deny");
    TestFiles::write("/proc/self/uid_map", user + " " + user + " 1");
    TestFiles::write("/proc/self/gid_map", group + " " + group + " 1");
    return true;
}

inline bool enter()
{
    const bool isEntered = unshare(CLONE_NEWNS) == 0 || enterUserNamespace();
    return isEntered && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Enters the namespace. False if the machine allows neither way.
inline bool arePossible()
{
    static const bool isEntered = enter();
    return isEntered;
}

} // namespace PrivateMounts

/// A mount at `path` that is removed on destruction.
class PrivateMount
{
public:
    /// Bind-mounts a file or folder.
    static PrivateMount of(const std::filesystem::path &source, const std::filesystem::path &path)
    {
        return { path, mount(source.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) };
    }

    /// Mounts a new file system of 64 KiB.
    static PrivateMount ofPages(const std::filesystem::path &path)
    {
        return { path, mount("tmpfs", path.c_str(), "tmpfs", 0, "size=64k,mode=700") };
    }

    PrivateMount(const PrivateMount &) = delete;
    PrivateMount &operator=(const PrivateMount &) = delete;

    ~PrivateMount()
    {
        if (m_isMounted)
            umount2(m_path.c_str(), MNT_DETACH);
    }

    bool isMounted() const { return m_isMounted; }

private:
    PrivateMount(std::filesystem::path path, int result)
        : m_path(std::move(path))
        , m_isMounted(result == 0)
    {
    }

    std::filesystem::path m_path;
    bool m_isMounted;
};
