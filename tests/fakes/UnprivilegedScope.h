#pragma once

#include <cerrno>
#include <exception>
#include <filesystem>
#include <grp.h>
#include <system_error>
#include <unistd.h>

/// File permissions do not apply to root. If root runs the tests, the process becomes an ordinary
/// user during the lifetime of this object, and that user gets ownership of the folder and its
/// content. Otherwise does nothing.
class UnprivilegedScope
{
public:
    /// The ordinary user is a member of `group` too.
    explicit UnprivilegedScope(const std::filesystem::path &folder, gid_t group = Nobody)
    {
        if (!m_isRoot)
            return;
        give(folder, Nobody);
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
            give(entry.path(), Nobody);
        check(setgroups(1, &group));
        // The saved ids stay root's, so that the destructor can switch back.
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

    /// Gives a file or folder to a second ordinary user. False unless root runs the tests.
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
