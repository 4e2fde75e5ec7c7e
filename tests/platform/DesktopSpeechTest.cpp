#include "platform/desktop/DesktopSpeech.h"

#include "fakes/TestFiles.h"
#include "platform/desktop/QtMainQueue.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace
{

class DesktopSpeechTest : public testing::Test
{
protected:
    void SetUp() override
    {
        setenv("LC_ALL", "en_US.UTF-8", 1);
        setenv("PULSE_SERVER", ("unix:" + server).c_str(), 1);
    }

    static bool isModuleOpen()
    {
        return TestFiles::read("/proc/self/maps").find("/speech.so") != std::string::npos;
    }

    QTemporaryDir folder;
    std::string server = folder.filePath(QStringLiteral("nothing")).toStdString();
    QtMainQueue mainQueue;
    DesktopSpeech speech { mainQueue };
};

TEST_F(DesktopSpeechTest, IsAuthorizedWithoutTheModule)
{
    std::optional<Speech::AuthorizationStatus> answer;
    speech.requestAuthorization([&answer](Speech::AuthorizationStatus status) { answer = status; });
    EXPECT_EQ(answer, Speech::AuthorizationStatus::authorized);
    EXPECT_FALSE(isModuleOpen());
}

TEST_F(DesktopSpeechTest, HasAMicrophoneThatDoesNotStartWhereThereIsNone)
{
    const auto engine = speech.makeAudioEngine();
    EXPECT_TRUE(isModuleOpen());
    ASSERT_NE(engine, nullptr);
    EXPECT_FALSE(engine->start());
}

TEST_F(DesktopSpeechTest, HasARecognizerWhereThereIsAModelForTheLanguage)
{
    const auto recognizer = speech.makeRecognizer();
    if (!TestFiles::read("/usr/share/pocketsphinx/model/en-us/en-us/mdef").empty()) {
        ASSERT_NE(recognizer, nullptr);
        EXPECT_TRUE(recognizer->isAvailable());
    }
    setenv("LC_ALL", "xx_XX.UTF-8", 1);
    EXPECT_EQ(speech.makeRecognizer(), nullptr);
}

} // namespace
