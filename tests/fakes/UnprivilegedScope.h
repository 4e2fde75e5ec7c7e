#pragma once

#include <cerrno>
#include <exception>
#include <filesystem>
#include <grp.h>
#include <system_error>
#include <unistd.h>

/// Permissions do not bind root. Where root runs the tests, the process is an ordinary user while
/// this lives, to whom the folder and all in it is given; elsewhere nothing happens.
class UnprivilegedScope
{
public:
    /// The user is in `group` too.
    explicit UnprivilegedScope(const std::filesystem::path &folder, gid_t group = Nobody)
    {
        if (!m_isRoot)
            return;
        give(folder, Nobody);
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
            give(entry.path(), Nobody);
        check(setgroups(1, &group));
        // The saved ids stay root's: they are the way back.
        check(setresgid(Nobody, Nobody, 0));
        check(setresuid(Nobody, Nobody, 0));
    }

    UnprivilegedScope(const UnprivilegedScope &) = delete;
    UnprivilegedScope &operator=(const UnprivilegedScope &) = delete;

    ~UnprivilegedScope()
    {
        if (m_isRoot &&
            (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0 || setgroups(0, nullptr) != 0))
            std::terminate();
    }

    /// Gives a file or folder to a second ordinary user. False where root does not run the tests.
    bool giveToAnother(const std::filesystem::path &path) const
    {
        if (!m_isRoot)
            return false;
        check(seteuid(0));
        give(path, Another);
        check(seteuid(Nobody));
        return true;
    }

private:
    static constexpr unsigned Nobody = 65534;
    static constexpr unsigned Another = 65533;

    static void give(const std::filesystem::path &path, unsigned user)
    {
        check(lchown(path.c_str(), user, user));
    }

    static void check(int result)
    {
        if (result != 0)
            throw std::system_error(errno, std::generic_category());
    }

    bool m_isRoot = geteuid() == 0;
};
