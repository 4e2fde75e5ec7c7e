#include "platform/desktop/TerminalDetachment.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace
{

/// Exits with 0 if the condition holds.
[[noreturn]] void endWith(bool isRight)
{
    _exit(isRight ? 0 : 1);
}

bool isOpen(int file)
{
    return fcntl(file, F_GETFD) != -1;
}

TEST(TerminalDetachmentTest, OutlivesItsTerminal)
{
    const auto outlive = [] {
        const TerminalDetachment detachment;
        raise(SIGHUP);
        endWith(true);
    };
    EXPECT_EXIT(outlive(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, OutlivesWhoeverReadsWhatItPrints)
{
    const auto outlive = [] {
        const TerminalDetachment detachment;
        std::array<int, 2> ends {};
        if (pipe(ends.data()) != 0)
            endWith(false);
        close(ends[0]);
        endWith(write(ends[1], "x", 1) == -1 && errno == EPIPE);
    };
    EXPECT_EXIT(outlive(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, OpensStreamsThatAreMissing)
{
    const auto open = [] {
        close(STDIN_FILENO);
        close(STDERR_FILENO);
        const TerminalDetachment detachment;
        endWith(isOpen(STDIN_FILENO) && isOpen(STDOUT_FILENO) && isOpen(STDERR_FILENO) &&
                ::open("/dev/null", O_RDONLY) > STDERR_FILENO);
    };
    EXPECT_EXIT(open(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, LeavesTheProgramsItStartsTheirSignals)
{
    const auto start = [] {
        const TerminalDetachment detachment;
        // SIGHUP (1) and SIGPIPE (13) are not ignored.
        endWith(std::system("test $((0x$(sed -n 's/^SigIgn:\t//p' /proc/self/status) & 0x1001))"
                            " -eq 0") == 0);
    };
    EXPECT_EXIT(start(), testing::ExitedWithCode(0), "");
}

} // namespace
