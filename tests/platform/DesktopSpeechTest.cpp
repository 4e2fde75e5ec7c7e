#include "platform/desktop/DesktopSpeech.h"

#include "fakes/FakeVocabulary.h"
#include "fakes/TestFiles.h"
#include "platform/desktop/QtMainQueue.h"

#include <QTemporaryDir>
#include <QTest>
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

    std::optional<Speech::AuthorizationStatus> authorization()
    {
        std::optional<Speech::AuthorizationStatus> answer;
        speech.requestAuthorization(
            [&answer](Speech::AuthorizationStatus status) { answer = status; });
        EXPECT_TRUE(QTest::qWaitFor([&answer] { return answer.has_value(); }, 30'000));
        return answer;
    }

    QTemporaryDir folder;
    std::string server = folder.filePath(QStringLiteral("nothing")).toStdString();
    QtMainQueue mainQueue;
    FakeVocabulary vocabulary;
    DesktopSpeech speech { mainQueue };
};

TEST_F(DesktopSpeechTest, OpensTheModuleForTheFirstDictation)
{
    EXPECT_FALSE(isModuleOpen());
    EXPECT_EQ(authorization(), Speech::AuthorizationStatus::authorized);
    EXPECT_TRUE(isModuleOpen());
}

TEST_F(DesktopSpeechTest, HasAnAudioEngineThatDoesNotStartWithoutAMicrophone)
{
    const auto engine = speech.makeAudioEngine();
    EXPECT_TRUE(isModuleOpen());
    ASSERT_NE(engine, nullptr);
    EXPECT_FALSE(engine->start());
}

TEST_F(DesktopSpeechTest, HasARecognizerIfThereIsAModelForTheLanguage)
{
    EXPECT_EQ(speech.makeRecognizer(vocabulary), nullptr) << "nothing has looked for a model yet";
    setenv("LC_ALL", "xx_XX.UTF-8", 1);
    EXPECT_EQ(authorization(), Speech::AuthorizationStatus::authorized);
    EXPECT_EQ(speech.makeRecognizer(vocabulary), nullptr);
    setenv("LC_ALL", "en_US.UTF-8", 1);
    EXPECT_EQ(authorization(), Speech::AuthorizationStatus::authorized);
    if (!TestFiles::read("/usr/share/pocketsphinx/model/en-us/en-us/mdef").empty()) {
        const auto recognizer = speech.makeRecognizer(vocabulary);
        ASSERT_NE(recognizer, nullptr);
        EXPECT_TRUE(recognizer->isAvailable());
    }
}

TEST_F(DesktopSpeechTest, DropsTheAnswerOfAnInquiryWhenItIsDestroyed)
{
    {
        DesktopSpeech other(mainQueue);
        other.requestAuthorization([](Speech::AuthorizationStatus) { ADD_FAILURE(); });
    }
    QTest::qWait(100);
}

} // namespace
