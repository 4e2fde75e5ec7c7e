// What keeping earlier versions costs.

#include "fakes/TestFiles.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// How many bytes this process has passed to write calls; 0 if the system does not count them.
std::uint64_t writtenBytes()
{
    std::ifstream counters("/proc/self/io");
    std::string name;
    std::uint64_t count = 0;
    while (counters >> name >> count) {
        if (name == "wchar:")
            return count;
    }
    return 0;
}

class SatchelStoreVersionsTest : public SatchelStoreFixture
{
protected:
    /// Types for ten minutes, with a save after each second, and returns the bytes of the saves.
    std::uint64_t typeForTenMinutes(SatchelStore &store)
    {
        std::uint64_t saved = 0;
        std::string text;
        for (int second = 0; second < 600; ++second) {
            text += "word ";
            store.updateBlock(store.activeTab()->blocks.front().id, text);
            advance(SaveDelay);
            saved += fs::file_size(file);
            machine.wallClock.advance(1s);
        }
        return saved;
    }

    fs::path versions = fs::path(machine.fileLocations.stateFolder.toStdString()) / "Quillsatchel" /
                        "Earlier versions";
};

TEST_F(SatchelStoreVersionsTest, TenMinutesOfTypingWriteNoExtraBytes)
{
    if (writtenBytes() == 0)
        GTEST_SKIP() << "The system does not count written bytes.";
    writeFile({ { .name = "Prompts", .blocks = { { .text = "first" } } } });
    const auto first = fileText();
    SatchelStore store(machine.platform);
    const auto before = writtenBytes();
    const auto saved = typeForTenMinutes(store);
    // Less than one copy of the library: waking a thread also writes eight bytes.
    EXPECT_LT(writtenBytes() - before - saved, fs::file_size(file));

    ASSERT_EQ(TestFiles::count(versions), 1);
    EXPECT_EQ(TestFiles::read(fs::directory_iterator(versions)->path()), first);
}

} // namespace
