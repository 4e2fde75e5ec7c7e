#include "platform/desktop/InstanceListener.h"

#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/StartupRequest.h"

#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace
{

class InstanceListenerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(instance.start({}), SingleInstance::Outcome::first);
        ASSERT_TRUE(other.connectTo(instance.socket()->name()));
    }

    bool isAnswered()
    {
        return QTest::qWaitFor([this] { return other.receive().has_value(); });
    }

    QTemporaryDir directory;
    SingleInstance instance { directory.path().toStdString() };
    InstanceSocket other;
    std::vector<StartupToken> tokens;
    std::function<void(const StartupToken &)> note = [this](const StartupToken &token) {
        tokens.push_back(token);
    };
};

TEST_F(InstanceListenerTest, ReceivesEarlierRequests)
{
    const StartupToken token { "token", "id" };
    ASSERT_TRUE(other.send(StartupRequest::encode(token)));
    const InstanceListener listener(instance, note);
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(tokens, std::vector { token });
}

TEST_F(InstanceListenerTest, AnswersAfterShowingThePanel)
{
    bool isEarly = false;
    const InstanceListener listener(
        instance, [&](const StartupToken &) { isEarly = other.receive().has_value(); });
    ASSERT_TRUE(other.send(StartupRequest::encode({})));
    EXPECT_TRUE(isAnswered());
    EXPECT_FALSE(isEarly);
}

TEST_F(InstanceListenerTest, IgnoresInvalidMessages)
{
    const InstanceListener listener(instance, note);
    ASSERT_TRUE(other.send(""));
    ASSERT_TRUE(other.send("nonsense"));
    ASSERT_TRUE(other.send(std::string(5000, 'x')));
    ASSERT_TRUE(other.send(StartupRequest::encode({})));
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(tokens.size(), 1U);
}

TEST_F(InstanceListenerTest, SurvivesSendersThatAreGone)
{
    const InstanceListener listener(instance, note);
    {
        InstanceSocket gone;
        ASSERT_TRUE(gone.connectTo(instance.socket()->name()));
        ASSERT_TRUE(gone.send(StartupRequest::encode({})));
    }
    ASSERT_TRUE(other.send(StartupRequest::encode({})));
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(tokens.size(), 2U);
}

TEST(InstanceListenerWithoutLockTest, ReceivesNothing)
{
    const QTemporaryDir folder;
    SingleInstance instance(folder.filePath(QStringLiteral("nothing")).toStdString());
    instance.start({});
    const InstanceListener listener(instance, {});
    QCoreApplication::processEvents();
    EXPECT_FALSE(instance.socket());
}

} // namespace
