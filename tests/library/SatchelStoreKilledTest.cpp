// A process that is killed while it saves leaves a whole library, the old one or the new.

#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"
#include "support/UnfinishedFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

/// QUILLSATCHEL_KILLS in the environment asks for another number.
int killsWanted()
{
    const auto *const wanted = std::getenv("QUILLSATCHEL_KILLS"); // NOLINT(concurrency-mt-unsafe)
    return wanted ? std::stoi(wanted) : 50;
}

class SatchelStoreKilledTest : public SatchelStoreFixture
{
protected:
    static constexpr int Nodes = 40;
    static constexpr std::size_t Length = 20000; // bytes a node: a save takes a while

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

    /// The one version that all nodes of the saved library have.
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

TEST_F(SatchelStoreKilledTest, KeepsAWholeLibraryEveryTime)
{
    std::mt19937 random(20);
    std::uniform_int_distribution<int> moment(0, 30000); // microseconds
    int version = 0;
    int saves = 0;
    int left = 0;
    setUp(version);
    for (int kills = killsWanted(); kills > 0; --kills) {
        const auto child = fork();
        if (child == 0)
            saveUntilKilled(version);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "it ended by itself";

        const auto saved = savedVersion();
        ASSERT_TRUE(saved) << "with " << kills << " to go after version " << version;
        ASSERT_GE(*saved, version);
        saves += *saved - version;
        version = *saved;
        left += static_cast<int>(std::distance(fs::directory_iterator(folder), {})) - 1;
        UnfinishedFile::removeLeftovers(folder);
        ASSERT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << "something is left over";
    }
    RecordProperty("saves", saves);
    RecordProperty("left", left);
    EXPECT_GT(saves, 0) << "each was killed before its first save";
}

} // namespace
