#pragma once

#include <cerrno>
#include <exception>
#include <filesystem>
#include <system_error>
#include <unistd.h>

/// Permissions do not bind root. Where root runs the tests, the process is an ordinary user while
/// this lives, to whom the folder and all in it is given; elsewhere nothing happens.
class UnprivilegedScope
{
public:
    explicit UnprivilegedScope(const std::filesystem::path &folder)
    {
        if (!m_isRoot)
            return;
        give(folder);
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
            give(entry.path());
        // The saved ids stay root's: they are the way back.
        check(setresgid(Nobody, Nobody, 0));
        check(setresuid(Nobody, Nobody, 0));
    }

    UnprivilegedScope(const UnprivilegedScope &) = delete;
    UnprivilegedScope &operator=(const UnprivilegedScope &) = delete;

    ~UnprivilegedScope()
    {
        if (m_isRoot && (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0))
            std::terminate();
    }

private:
    static constexpr unsigned Nobody = 65534;

    static void give(const std::filesystem::path &path)
    {
        check(lchown(path.c_str(), Nobody, Nobody));
    }

    static void check(int result)
    {
        if (result != 0)
            throw std::system_error(errno, std::generic_category());
    }

    bool m_isRoot = geteuid() == 0;
};
