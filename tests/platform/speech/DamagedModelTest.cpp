// Users may install damaged models. The program survives them all.

#include "fakes/TestFiles.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/Recognition.h"
#include "platform/speech/Voice.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

using Path = std::filesystem::path;

const Path InstalledModel = "/usr/share/pocketsphinx/model/en-us";

class DamagedModelTest : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(InstalledModel / "en-us.lm.bin"))
            GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
        // Symbolic links to the files that stay intact.
        std::filesystem::create_directories(model / "en-us");
        for (const auto *const part :
             { "en-us.lm.bin", "cmudict-en-us.dict", "en-us/mdef", "en-us/means", "en-us/variances",
               "en-us/transition_matrices", "en-us/feat.params", "en-us/sendump",
               "en-us/noisedict" })
            std::filesystem::create_symlink(InstalledModel / part, model / part);
    }

    void replace(const std::string &part, const std::string &bytes) const
    {
        std::filesystem::remove(model / part);
        TestFiles::write(model / part, bytes);
    }

    /// Whether a task ends with an error. The test fails if it does not end.
    bool endsWithError()
    {
        ListenerRecognizer recognizer(command, mainQueue, { .answer = std::chrono::seconds(60) });
        Recognition recognition(recognizer);
        recognition.request->append(speech);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.ends(), 1);
        return recognition.errors() == 1;
    }

    const std::vector<std::int16_t> speech =
        Voice::say("summarize the following text").value_or(Voice::silence(32'000));
    QtMainQueue mainQueue;
    QTemporaryDir folder;
    Path data = folder.path().toStdString();
    Path model = data / "pocketsphinx/model/en-us";
    std::vector<std::string> command { "/usr/bin/env", "LC_ALL=C",
                                       "XDG_DATA_DIRS=" + (data / "nothing").string(),
                                       "XDG_DATA_HOME=" + data.string(), LISTENER };
};

TEST_F(DamagedModelTest, RecognizesSpeechWithAnIntactModel)
{
    EXPECT_FALSE(endsWithError());
}

TEST_P(DamagedModelTest, ReportsAnErrorForAFileThatIsAlmostEmpty)
{
    const auto bytes = TestFiles::read(InstalledModel / GetParam());
    for (const std::size_t size : { 100U, 1U }) {
        replace(GetParam(), bytes.substr(0, size));
        EXPECT_TRUE(endsWithError()) << size;
    }
}

/// The engine accepts half of some files, with or without an error.
TEST_P(DamagedModelTest, EndsTheTaskWithHalfAFile)
{
    const auto bytes = TestFiles::read(InstalledModel / GetParam());
    replace(GetParam(), bytes.substr(0, bytes.size() / 2));
    endsWithError();
}

TEST_P(DamagedModelTest, ReportsAnErrorForAFileOfAnotherKind)
{
    replace(GetParam(), std::string(10'000, '\xFF'));
    EXPECT_TRUE(endsWithError());
    replace(GetParam(), TestFiles::read(InstalledModel / "cmudict-en-us.dict"));
    EXPECT_TRUE(endsWithError());
    replace(GetParam(), "This is not a part of a model.\n");
    EXPECT_TRUE(endsWithError());
}

INSTANTIATE_TEST_SUITE_P(Parts, DamagedModelTest,
                         testing::Values("en-us.lm.bin", "en-us/mdef", "en-us/means",
                                         "en-us/variances", "en-us/transition_matrices",
                                         "en-us/sendump"));

} // namespace
