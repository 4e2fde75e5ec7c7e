// A process killed while saving leaves a complete library, either the old or the new one.

#include "fakes/TestFiles.h"
#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"
#include "support/UnfinishedFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

/// How many processes to kill. The environment variable QUILLSATCHEL_KILLS overrides the default.
int killCount()
{
    const auto *const count = std::getenv("QUILLSATCHEL_KILLS"); // NOLINT(concurrency-mt-unsafe)
    return count ? std::stoi(count) : 50;
}

class SatchelStoreKilledTest : public SatchelStoreFixture
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

    void change(SatchelStore &store, int version)
    {
        for (const auto &block : store.activeTab()->blocks)
            store.updateBlock(block.id, textOf(version));
        advance(SaveDelay);
    }

    /// The version of the saved library; none if it is invalid or mixes versions.
    std::optional<int> savedVersion() const
    {
        const auto document = savedDocument();
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
        SatchelStore store(machine.platform);
        while (true)
            change(store, ++version);
    }
};

TEST_F(SatchelStoreKilledTest, KeepsACompleteLibrary)
{
    std::mt19937 random(20);
    std::uniform_int_distribution<int> moment(0, 30000); // microseconds
    int version = 0;
    int saves = 0;
    int leftovers = 0;
    setUp(version);
    for (int kills = killCount(); kills > 0; --kills) {
        const auto child = fork();
        if (child == 0)
            saveUntilKilled(version);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the process ended by itself";

        const auto saved = savedVersion();
        ASSERT_TRUE(saved) << "after version " << version << ", " << kills << " kills left";
        ASSERT_GE(*saved, version);
        saves += *saved - version;
        version = *saved;
        leftovers += static_cast<int>(TestFiles::count(folder)) - 1;
        UnfinishedFile::removeLeftovers(folder);
        ASSERT_EQ(TestFiles::count(folder), 1) << "temporary files remain";
    }
    RecordProperty("saves", saves);
    RecordProperty("leftovers", leftovers);
    EXPECT_GT(saves, 0) << "every process was killed before its first save";
}

} // namespace
