#include "platform/desktop/InstanceSocket.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

class InstanceSocketTest : public testing::Test
{
protected:
    static std::ptrdiff_t openFiles()
    {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    }

    InstanceSocket here;
    InstanceSocket there;
};

TEST_F(InstanceSocketTest, HasAUniqueName)
{
    EXPECT_FALSE(here.name().empty());
    EXPECT_NE(here.name(), there.name());
}

TEST_F(InstanceSocketTest, DeliversAMessageAndItsAnswer)
{
    ASSERT_TRUE(there.connectTo(here.name()));
    ASSERT_TRUE(there.send("question"));
    const auto question = here.receive();
    ASSERT_TRUE(question);
    EXPECT_EQ(question->text, "question");
    ASSERT_TRUE(here.answer(question->sender, "answer"));
    const auto answer = there.receive();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->text, "answer");
}

TEST_F(InstanceSocketTest, NeverBlocks)
{
    EXPECT_FALSE(here.receive());
    ASSERT_TRUE(there.connectTo(here.name()));
    int sent = 0;
    while (there.send("x") && sent < 100000)
        ++sent;
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, 100000) << "the kernel's queue is limited";
}

TEST_F(InstanceSocketTest, FailsToConnectToAMissingSocket)
{
    EXPECT_FALSE(there.connectTo("no such name"));
    EXPECT_FALSE(there.connectTo(std::string(1000, 'x')));
    EXPECT_FALSE(there.send("question"));
}

TEST_F(InstanceSocketTest, ReceivesOnlyFromItsConnectedSocket)
{
    const InstanceSocket stranger;
    ASSERT_TRUE(there.connectTo(here.name()));
    ASSERT_TRUE(there.send("question"));
    auto question = here.receive();
    ASSERT_TRUE(question);
    EXPECT_FALSE(stranger.answer(question->sender, "answer"));
    EXPECT_FALSE(there.receive());
}

TEST_F(InstanceSocketTest, DropsMessagesThatAreTooLong)
{
    ASSERT_TRUE(there.connectTo(here.name()));
    ASSERT_TRUE(there.send(std::string(InstanceSocket::MaximumMessageSize + 1, 'x')));
    ASSERT_TRUE(there.send(std::string(InstanceSocket::MaximumMessageSize, 'x')));
    EXPECT_FALSE(here.receive());
    const auto message = here.receive();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text.size(), InstanceSocket::MaximumMessageSize);
}

TEST_F(InstanceSocketTest, DropsMessagesOfOtherUsers)
{
    if (getuid() != 0)
        GTEST_SKIP() << "Only root can be another user.";
    const auto child = fork();
    if (child == 0) {
        InstanceSocket socket;
        const bool isSent = setuid(65534) == 0 && socket.connectTo(here.name()) && socket.send("x");
        _exit(isSent ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    EXPECT_FALSE(here.receive());
}

TEST_F(InstanceSocketTest, ReceivesNoFileDescriptors)
{
    ASSERT_TRUE(there.connectTo(here.name()));
    char byte = 'x';
    iovec bytes { .iov_base = &byte, .iov_len = 1 };
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control {};
    msghdr header {};
    header.msg_iov = &bytes;
    header.msg_iovlen = 1;
    header.msg_control = control.data();
    header.msg_controllen = control.size();
    auto *const files = CMSG_FIRSTHDR(&header);
    files->cmsg_level = SOL_SOCKET;
    files->cmsg_type = SCM_RIGHTS;
    files->cmsg_len = CMSG_LEN(sizeof(int));
    *reinterpret_cast<int *>(CMSG_DATA(files)) = STDIN_FILENO;
    ASSERT_EQ(sendmsg(there.descriptor(), &header, 0), 1);
    const auto before = openFiles();
    EXPECT_TRUE(here.receive());
    EXPECT_EQ(openFiles(), before);
}

TEST_F(InstanceSocketTest, IsClosedOnExec)
{
    EXPECT_NE(fcntl(here.descriptor(), F_GETFD) & FD_CLOEXEC, 0);
}

} // namespace
