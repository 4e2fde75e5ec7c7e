#include "platform/speech/listener/SpeechModels.h"

#include "fakes/TestFiles.h"
#include "platform/speech/listener/PocketSphinxEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace
{

using Path = std::filesystem::path;

class SpeechModelsTest : public testing::Test
{
protected:
    void install(const Path &data, const std::string &tag)
    {
        const auto model = modelIn(data, tag);
        for (const auto *const part :
             { "mdef", "means", "variances", "transition_matrices", "feat.params", "sendump" })
            TestFiles::write(model / tag / part, "a part");
        TestFiles::write(model / (tag + ".lm.bin"), "a language model");
        TestFiles::write(model / "words.dict", "word W ER D\n");
    }

    /// The folder of the model for a language; empty if none is found.
    Path find(const std::string &tag) const
    {
        const auto model = PocketSphinxEngine::find(SpeechModels({ user, system }), tag);
        return model ? model->path : Path();
    }

    Path modelIn(const Path &data, const std::string &tag) const
    {
        return data / PocketSphinxEngine::ModelFolder / tag;
    }

    QTemporaryDir folder;
    Path root = folder.path().toStdString();
    Path user = root / "user";
    Path system = root / "system";
};

TEST_F(SpeechModelsTest, FindsNothingIfNoneIsInstalled)
{
    EXPECT_EQ(find("en-us"), Path());
    std::filesystem::create_directories(user / PocketSphinxEngine::ModelFolder);
    EXPECT_EQ(find("en-us"), Path());
}

TEST_F(SpeechModelsTest, FindsTheModelOfTheLanguage)
{
    install(system, "en-us");
    install(system, "de-de");
    EXPECT_EQ(find("en-us"), modelIn(system, "en-us"));
    EXPECT_EQ(find("de-de"), modelIn(system, "de-de"));
    EXPECT_EQ(find("fr-fr"), Path());
}

TEST_F(SpeechModelsTest, FallsBackToAnotherRegionOfTheLanguage)
{
    install(system, "de-de");
    EXPECT_EQ(find("de-at"), modelIn(system, "de-de"));
    EXPECT_EQ(find("de"), modelIn(system, "de-de"));
    EXPECT_EQ(find("d"), Path());
    EXPECT_EQ(find("den-de"), Path());
    EXPECT_EQ(find(""), Path());
}

TEST_F(SpeechModelsTest, PrefersTheExactLanguageThenTheUsersModels)
{
    install(user, "en-in");
    install(system, "en-us");
    install(system, "en-gb");
    EXPECT_EQ(find("en-us"), modelIn(system, "en-us"));
    EXPECT_EQ(find("en-au"), modelIn(user, "en-in"));
    install(user, "en-us");
    EXPECT_EQ(find("en-us"), modelIn(user, "en-us"));
}

TEST_F(SpeechModelsTest, ChoosesAmongRegionsAlphabetically)
{
    for (const auto *const tag : { "en-za", "en-gb", "en-us", "en-nz" })
        install(system, tag);
    EXPECT_EQ(find("en-au"), modelIn(system, "en-gb"));
}

TEST_F(SpeechModelsTest, SkipsModelsWithMissingOrEmptyFiles)
{
    install(system, "en-us");
    const auto model = modelIn(system, "en-us");
    for (const auto *const part :
         { "en-us/mdef", "en-us/means", "en-us/variances", "en-us/transition_matrices",
           "en-us/feat.params", "en-us/sendump", "en-us.lm.bin", "words.dict" }) {
        const auto bytes = TestFiles::read(model / part);
        std::filesystem::remove(model / part);
        EXPECT_EQ(find("en-us"), Path()) << part;
        TestFiles::write(model / part, "");
        EXPECT_EQ(find("en-us"), Path()) << part;
        std::filesystem::remove(model / part);
        std::filesystem::create_directory(model / part);
        EXPECT_EQ(find("en-us"), Path()) << part;
        std::filesystem::remove(model / part);
        TestFiles::write(model / part, bytes);
        EXPECT_EQ(find("en-us"), model) << part;
    }
}

TEST_F(SpeechModelsTest, ContinuesAfterAnIncompleteModel)
{
    install(user, "en-us");
    install(system, "en-us");
    std::filesystem::remove(modelIn(user, "en-us") / "words.dict");
    EXPECT_EQ(find("en-us"), modelIn(system, "en-us"));
}

TEST_F(SpeechModelsTest, AcceptsAlternativeFileNames)
{
    install(system, "en-us");
    const auto model = modelIn(system, "en-us");
    std::filesystem::rename(model / "words.dict", model / "other.dic");
    std::filesystem::rename(model / "en-us/sendump", model / "en-us/mixture_weights");
    EXPECT_EQ(find("en-us"), model);
}

TEST_F(SpeechModelsTest, FindsTheFirstUsableFile)
{
    const SpeechModels models({ user, system });
    const auto isUsable = [](const Path &path) { return TestFiles::read(path) == "a model"; };
    EXPECT_EQ(models.findFile("engine", isUsable), std::nullopt);
    TestFiles::write(system / "engine/a.bin", "another file");
    TestFiles::write(system / "engine/c.bin", "a model");
    TestFiles::write(system / "engine/b.bin", "a model");
    EXPECT_EQ(models.findFile("engine", isUsable), system / "engine/b.bin");
    TestFiles::write(user / "engine/z.bin", "a model");
    EXPECT_EQ(models.findFile("engine", isUsable), user / "engine/z.bin");
    EXPECT_EQ(models.findFile("other", isUsable), std::nullopt);
}

TEST_F(SpeechModelsTest, SearchesTheDataFoldersOfTheEnvironment)
{
    install(root / "home/.local/share", "en-in");
    install(root / "a", "en-us");
    install(root / "b", "de-de");
    setenv("HOME", (root / "home").c_str(), 1);
    setenv("XDG_DATA_HOME", "", 1);
    setenv("XDG_DATA_DIRS", (root.string() + "/a:relative/path::" + root.string() + "/b").c_str(),
           1);
    const auto folderOf = [](const std::string &tag) {
        const auto model = PocketSphinxEngine::find(SpeechModels::ofEnvironment(), tag);
        return model ? model->path : Path();
    };
    EXPECT_EQ(folderOf("en-in"), modelIn(root / "home/.local/share", "en-in"));
    EXPECT_EQ(folderOf("en-us"), modelIn(root / "a", "en-us"));
    EXPECT_EQ(folderOf("de-de"), modelIn(root / "b", "de-de"));
    setenv("XDG_DATA_HOME", (root / "b").c_str(), 1);
    EXPECT_EQ(folderOf("en-in"), modelIn(root / "a", "en-us"));
    setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(folderOf("en-in"), modelIn(root / "home/.local/share", "en-in"));
}

} // namespace
