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
[[noreturn]] void exitWith(bool isRight)
{
    _exit(isRight ? 0 : 1);
}

bool isOpen(int file)
{
    return fcntl(file, F_GETFD) != -1;
}

TEST(TerminalDetachmentTest, SurvivesTheEndOfItsTerminal)
{
    const auto survive = [] {
        const TerminalDetachment detachment;
        raise(SIGHUP);
        exitWith(true);
    };
    EXPECT_EXIT(survive(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, SurvivesABrokenPipe)
{
    const auto survive = [] {
        const TerminalDetachment detachment;
        std::array<int, 2> ends {};
        if (pipe(ends.data()) != 0)
            exitWith(false);
        close(ends[0]);
        exitWith(write(ends[1], "x", 1) == -1 && errno == EPIPE);
    };
    EXPECT_EXIT(survive(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, OpensMissingStreams)
{
    const auto open = [] {
        close(STDIN_FILENO);
        close(STDERR_FILENO);
        const TerminalDetachment detachment;
        exitWith(isOpen(STDIN_FILENO) && isOpen(STDOUT_FILENO) && isOpen(STDERR_FILENO) &&
                 ::open("/dev/null", O_RDONLY) > STDERR_FILENO);
    };
    EXPECT_EXIT(open(), testing::ExitedWithCode(0), "");
}

TEST(TerminalDetachmentTest, LaunchedProgramsIgnoreNoSignals)
{
    const auto start = [] {
        const TerminalDetachment detachment;
        // SIGHUP (1) and SIGPIPE (13) are not ignored.
        exitWith(std::system("test $((0x$(sed -n 's/^SigIgn:\t//p' /proc/self/status) & 0x1001))"
                             " -eq 0") == 0);
    };
    EXPECT_EXIT(start(), testing::ExitedWithCode(0), "");
}

} // namespace
