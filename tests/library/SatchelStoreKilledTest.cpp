// A process killed while saving leaves a complete library, either the old or the new one, and
// complete earlier versions.

#include "fakes/NoHardLinks.h"
#include "fakes/TestFiles.h"
#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"
#include "support/EarlierVersion.h"
#include "support/UnfinishedFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// How many processes to kill. The environment variable QUILLSATCHEL_KILLS overrides the default.
int killCount()
{
    const auto *const count = std::getenv("QUILLSATCHEL_KILLS"); // NOLINT(concurrency-mt-unsafe)
    return count ? std::stoi(count) : 50;
}

/// The parameter is whether earlier versions are copies instead of links.
class SatchelStoreKilledTest : public SatchelStoreFixture, public testing::WithParamInterface<bool>
{
protected:
    static constexpr int Nodes = 40;
    static constexpr std::size_t Length = 20000; // bytes per node, so that a save takes some time

    static std::string textOf(int version)
    {
        std::string text = std::to_string(version);
        text.resize(Length, '.');
        return text;
    }

    void setUp(int version)
    {
        SatchelStore store(machine.platform);
        for (int count = 0; count < Nodes; ++count)
            store.addBlock();
        change(store, version);
    }

    /// Saves at a time at which the replaced library is kept.
    void change(SatchelStore &store, int version)
    {
        setTimeOf(version);
        for (const auto &block : store.activeTab()->blocks)
            store.updateBlock(block.id, textOf(version));
        advance(SaveDelay);
    }

    void setTimeOf(int version)
    {
        machine.wallClock.time = FakeWallClock().time + version * std::chrono::minutes(10);
    }

    /// The version of the library in the file at `path`; none if it is invalid or mixes versions.
    static std::optional<int> versionIn(const fs::path &path)
    {
        const auto document =
            SatchelDocument::decode(QByteArray::fromStdString(TestFiles::read(path)));
        if (!document || document->tabs.front().blocks.size() != Nodes)
            return std::nullopt;
        const auto &blocks = document->tabs.front().blocks;
        const int version = std::stoi(blocks.front().text);
        for (const auto &block : blocks)
            if (block.text != textOf(version))
                return std::nullopt;
        return version;
    }

    [[noreturn]] void saveUntilKilled(int version)
    {
        if (GetParam() && !NoHardLinks::apply())
            std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe): in a child process
        SatchelStore store(machine.platform);
        while (true)
            change(store, ++version);
    }

    /// The files of earlier versions, without those that a killed process did not finish.
    std::vector<fs::path> keptFiles() const
    {
        std::vector<fs::path> files;
        for (const auto &entry : fs::directory_iterator(versions))
            if (EarlierVersion::fromFileName(entry.path().filename().native(), "prompts.json"))
                files.push_back(entry.path());
        std::ranges::sort(files);
        return files;
    }

    /// The newest earlier versions. Fails if one is incomplete.
    std::vector<int> newestKept() const
    {
        const auto files = keptFiles();
        std::vector<int> newest;
        for (std::size_t index = files.size() - std::min<std::size_t>(2, files.size());
             index < files.size(); ++index) {
            const auto version = versionIn(files[index]);
            EXPECT_TRUE(version) << files[index];
            newest.push_back(version.value_or(-1));
        }
        return newest;
    }

    /// After another save, only complete versions remain in the folder.
    void expectAllKeptComplete(int version)
    {
        const auto save = [this, version] {
            SatchelStore store(machine.platform);
            change(store, version + 1);
        };
        GetParam() ? void(NoHardLinks::run(save)) : save();
        const auto files = keptFiles();
        EXPECT_EQ(std::ssize(files), TestFiles::count(versions)) << "temporary files remain";
        EXPECT_FALSE(files.empty());
        for (const auto &kept : files)
            EXPECT_TRUE(versionIn(kept)) << kept;
    }

    fs::path versions = fs::path(machine.fileLocations.stateFolder.toStdString()) / "Quillsatchel" /
                        "Earlier versions";
};

INSTANTIATE_TEST_SUITE_P(Both, SatchelStoreKilledTest, testing::Bool(), [](const auto &isCopying) {
    return isCopying.param ? "WithCopies" : "WithLinks";
});

TEST_P(SatchelStoreKilledTest, KeepsCompleteLibraries)
{
    std::mt19937 random(20);
    // Adapts to the machine, so that about every second process saves before it is killed.
    double longest = 20'000; // microseconds
    int version = 0;
    int saves = 0;
    int leftovers = 0;
    setUp(version);
    for (int kills = killCount(); kills > 0; --kills) {
        const auto child = fork();
        if (child == 0)
            saveUntilKilled(version);
        std::uniform_real_distribution<> moment(0, longest);
        std::this_thread::sleep_for(std::chrono::duration<double, std::micro>(moment(random)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the process ended by itself";

        const auto saved = versionIn(file);
        ASSERT_TRUE(saved) << "after version " << version << ", " << kills << " kills left";
        ASSERT_GE(*saved, version);
        if (*saved > version) {
            const auto kept = newestKept();
            ASSERT_NE(std::ranges::find(kept, *saved - 1), kept.end()) << *saved;
        }
        longest *= *saved > version ? 0.8 : 1.25;
        saves += *saved - version;
        version = *saved;
        leftovers += static_cast<int>(TestFiles::count(folder)) - 1;
        UnfinishedFile::removeLeftovers(folder);
        ASSERT_EQ(TestFiles::count(folder), 1) << "temporary files remain";
    }
    RecordProperty("saves", saves);
    RecordProperty("leftovers", leftovers);
    EXPECT_GT(saves, 0) << "every process was killed before its first save";
    expectAllKeptComplete(version);
}

} // namespace
