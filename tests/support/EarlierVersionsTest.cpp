#include "support/EarlierVersions.h"

#include "fakes/FakeWallClock.h"
#include "fakes/FileSizeLimit.h"
#include "fakes/NoHardLinks.h"
#include "fakes/TestFiles.h"
#include "fakes/TimeZone.h"
#include "support/DocumentFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace std::chrono;
using namespace std::string_literals;

constexpr auto CentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

/// In memory if possible, because ten thousand saves to a disk take a minute.
QString folderTemplate()
{
    const auto memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
           QStringLiteral("/versions-XXXXXX");
}

class EarlierVersionsTest : public testing::Test
{
protected:
    /// File names and contents.
    using Kept = std::map<std::string, std::string>;

    EarlierVersionsTest() { clock.time = sys_days(2026y / 11 / 21) + 23h + 17min + 5s; }

    DocumentFile open(std::string_view name = "prompts.json") const
    {
        return DocumentFile(
            QString::fromStdString(folder / name),
            EarlierVersions(versions, std::string(name), [this] { return clock.now(); }));
    }

    /// A new run of the program, which loads the document.
    void start()
    {
        file = open();
        file.load([](const QByteArray &bytes) { return std::optional(bytes); });
    }

    void save(std::string_view text)
    {
        file.save([text](const ByteSink &sink) { sink(text); });
        ASSERT_EQ(TestFiles::read(document), text);
    }

    void saveAfter(seconds duration, std::string_view text)
    {
        clock.advance(duration);
        save(text);
    }

    Kept kept() const
    {
        std::error_code error;
        Kept kept;
        for (const auto &entry : fs::directory_iterator(versions, error))
            kept[entry.path().filename()] =
                entry.is_directory() ? "a folder" : TestFiles::read(entry.path());
        return kept;
    }

    std::vector<std::string> keptTexts() const
    {
        std::vector<std::string> texts;
        for (const auto &[name, text] : kept())
            texts.push_back(text);
        return texts;
    }

    std::uintmax_t keptSize() const
    {
        std::uintmax_t size = 0;
        for (const auto &entry : fs::directory_iterator(versions))
            size += entry.file_size();
        return size;
    }

    std::ptrdiff_t foreignCount() const
    {
        return std::ranges::count_if(
            kept(), [](const auto &version) { return version.second.starts_with("foreign"); });
    }

    QTemporaryDir directory { folderTemplate() };
    FakeWallClock clock;
    TimeZone zone { "UTC0" };
    fs::path folder = directory.path().toStdString();
    fs::path document = folder / "prompts.json";
    fs::path versions = folder / "state" / "Earlier versions";
    DocumentFile file = open();
};

TEST_F(EarlierVersionsTest, KeepsTheStateBeforeTheFirstSaveOfEachRun)
{
    TestFiles::write(document, "first");
    start();
    EXPECT_TRUE(kept().empty());
    save("second");
    EXPECT_EQ(kept(), (Kept { { "prompts 2026-11-21 23.17.05.json", "first" } }));
    clock.advance(1min);
    start();
    save("third");
    EXPECT_EQ(kept(), (Kept { { "prompts 2026-11-21 23.17.05.json", "first" },
                              { "prompts 2026-11-21 23.18.05.json", "second" } }));
}

TEST_F(EarlierVersionsTest, KeepsOneStateInTenMinutes)
{
    start();
    save("0");
    for (int minute = 1; minute <= 30; ++minute)
        saveAfter(1min, std::to_string(minute));
    EXPECT_EQ(keptTexts(), (std::vector { "9"s, "19"s, "29"s }));
    saveAfter(24h, "later");
    EXPECT_EQ(kept()["prompts 2026-11-22 23.47.05.json"], "30");
}

TEST_F(EarlierVersionsTest, KeepsALinkWhichBelongsToNothingElse)
{
    TestFiles::write(document, "first");
    const auto stamp = FileStamp::of(document);
    start();
    save("second");
    const auto version = versions / "prompts 2026-11-21 23.17.05.json";
    EXPECT_EQ(FileStamp::of(version), stamp);
    EXPECT_EQ(fs::hard_link_count(version), 1U);
    TestFiles::write(document, "written in place");
    EXPECT_EQ(TestFiles::read(version), "first");
}

TEST_F(EarlierVersionsTest, KeepsPrivateFilesInAPrivateFolder)
{
    TestFiles::write(document, "first");
    TestFiles::setMode(document, 0664);
    start();
    save("second");
    EXPECT_EQ(TestFiles::mode(document), 0664U);
    EXPECT_EQ(TestFiles::mode(versions), 0700U);
    EXPECT_EQ(TestFiles::mode(versions.parent_path()), 0700U);
    EXPECT_EQ(TestFiles::mode(versions / "prompts 2026-11-21 23.17.05.json"), 0600U);
}

TEST_F(EarlierVersionsTest, LeavesThePermissionsOfAFileWithAnotherName)
{
    TestFiles::write(document, "first");
    TestFiles::setMode(document, 0644);
    fs::create_hard_link(document, folder / "other");
    start();
    save("second");
    EXPECT_EQ(TestFiles::mode(folder / "other"), 0644U);
}

TEST_F(EarlierVersionsTest, KeepsAFileThatAnotherProgramPutInItsPlace)
{
    start();
    save("own");
    TestFiles::write(folder / "new", "foreign");
    fs::rename(folder / "new", document);
    saveAfter(1s, "own again");
    EXPECT_EQ(kept(),
              (Kept { { "prompts 2026-11-21 23.17.06 by another program.json", "foreign" } }));
}

TEST_F(EarlierVersionsTest, KeepsWhatAnotherProgramWroteIntoTheFile)
{
    start();
    save("own");
    TestFiles::write(document, "foreign text");
    saveAfter(1s, "own again");
    EXPECT_EQ(keptTexts(), std::vector { "foreign text"s });
}

TEST_F(EarlierVersionsTest, KeepsASynchronisedFileWithAnOldTime)
{
    start();
    save("own text");
    TestFiles::write(folder / ".part", "sync'd!!");
    fs::last_write_time(folder / ".part", fs::last_write_time(document) - days(400));
    fs::rename(folder / ".part", document);
    saveAfter(1s, "own again");
    EXPECT_EQ(kept(),
              (Kept { { "prompts 2026-11-21 23.17.06 by another program.json", "sync'd!!" } }));
}

TEST_F(EarlierVersionsTest, KeepsARestoredFileOfTheSameSizeAndTime)
{
    start();
    save("own text");
    const auto time = fs::last_write_time(document);
    TestFiles::write(folder / "backup", "restored");
    fs::last_write_time(folder / "backup", time);
    fs::rename(folder / "backup", document);
    saveAfter(1s, "own again");
    EXPECT_EQ(keptTexts(), std::vector { "restored"s });
}

TEST_F(EarlierVersionsTest, KeepsEveryForeignFile)
{
    start();
    save("own");
    for (const std::string_view text : { "a", "b", "c" }) {
        TestFiles::write(document, text);
        save("own");
    }
    EXPECT_EQ(keptTexts(), (std::vector { "a"s, "b"s, "c"s }));
}

TEST_F(EarlierVersionsTest, KnowsAForeignFileBeforeTheFirstSave)
{
    TestFiles::write(document, "read");
    start();
    TestFiles::write(document, "foreign");
    save("own");
    EXPECT_EQ(kept(),
              (Kept { { "prompts 2026-11-21 23.17.05 by another program.json", "foreign" } }));
    saveAfter(9min, "own again");
    EXPECT_EQ(kept().size(), 1U);
}

TEST_F(EarlierVersionsTest, DoesNotRepeatARescueCopy)
{
    TestFiles::write(document, "unreadable");
    file = open();
    file.load([](const QByteArray & /*bytes*/) { return std::optional<int>(); });
    save("own");
    EXPECT_EQ(TestFiles::read(folder / "prompts.json.unreadable"), "unreadable");
    EXPECT_TRUE(kept().empty());
    saveAfter(10min, "more");
    EXPECT_EQ(keptTexts(), std::vector { "own"s });
}

TEST_F(EarlierVersionsTest, KeepsTheTargetOfALink)
{
    TestFiles::write(folder / "elsewhere" / "target", "first");
    fs::create_symlink("elsewhere/target", document);
    start();
    save("second");
    EXPECT_EQ(kept(), (Kept { { "prompts 2026-11-21 23.17.05.json", "first" } }));
    EXPECT_FALSE(fs::is_symlink(versions / kept().begin()->first));
    TestFiles::write(folder / "elsewhere" / "target", "foreign");
    save("third");
    EXPECT_EQ(kept().size(), 2U);
}

TEST_F(EarlierVersionsTest, UsesALinkedFolder)
{
    fs::create_directories(folder / "elsewhere");
    fs::create_directory(versions.parent_path());
    fs::create_directory_symlink(folder / "elsewhere", versions);
    TestFiles::write(document, "first");
    start();
    save("second");
    EXPECT_EQ(TestFiles::read(folder / "elsewhere" / "prompts 2026-11-21 23.17.05.json"), "first");
}

// Clocks and time zones.

TEST_F(EarlierVersionsTest, UsesTheLocalTimeOfEachMoment)
{
    zone.set(CentralEurope);
    TestFiles::write(document, "first");
    start();
    save("second");
    zone.set("JST-9");
    saveAfter(10min, "third");
    EXPECT_EQ(kept(), (Kept { { "prompts 2026-11-22 00.17.05.json", "first" },
                              { "prompts 2026-11-22 08.27.05.json", "second" } }));
}

TEST_F(EarlierVersionsTest, KeepsBothStatesOfARepeatedLocalTime)
{
    zone.set(CentralEurope);
    clock.time =
        sys_days(2026y / 10 / 25) + 30min; // 02:30 of summer time, half an hour before its end
    start();
    save("first");
    TestFiles::write(document, "summer");
    save("second");
    TestFiles::write(document, "winter");
    saveAfter(1h, "third");
    EXPECT_EQ(kept(),
              (Kept { { "prompts 2026-10-25 02.30.00 by another program.json", "summer" },
                      { "prompts 2026-10-25 02.30.01 by another program.json", "winter" } }));
}

TEST_F(EarlierVersionsTest, ASecondHasOneVersion)
{
    TestFiles::write(document, "first");
    start();
    save("second");
    TestFiles::write(document, "foreign");
    save("third");
    EXPECT_EQ(kept(),
              (Kept { { "prompts 2026-11-21 23.17.05.json", "first" },
                      { "prompts 2026-11-21 23.17.06 by another program.json", "foreign" } }));
}

TEST_F(EarlierVersionsTest, KeepsStatesAfterTheClockWasSetBack)
{
    start();
    save("0");
    saveAfter(10min, "1");
    saveAfter(-years(50), "2");
    saveAfter(9min, "3");
    saveAfter(1min, "4");
    saveAfter(years(50), "5");
    saveAfter(10min, "6");
    EXPECT_EQ(keptTexts(), (std::vector { "1"s, "3"s, "0"s, "4"s, "5"s }));
}

TEST_F(EarlierVersionsTest, AFlightRemovesNothingOfTheLastHour)
{
    start();
    save("0");
    for (int count = 1; count <= 5; ++count)
        saveAfter(10min, std::to_string(count));
    zone.set("JST-9");
    saveAfter(10min, "6");
    zone.set("HST10");
    saveAfter(10min, "7");
    EXPECT_EQ(kept().size(), 7U);
}

TEST_F(EarlierVersionsTest, TheStartOfSummerTimeRemovesNothingOfTheLastHour)
{
    zone.set(CentralEurope);
    clock.time = sys_days(2026y / 3 / 29); // one hour before the clock goes from 2:00 to 3:00
    start();
    save("0");
    for (int count = 1; count <= 7; ++count)
        saveAfter(10min, std::to_string(count));
    EXPECT_EQ(kept().size(), 7U);
}

// Copies.

TEST_F(EarlierVersionsTest, CopiesWithoutHardLinksAtMostEveryTenMinutes)
{
    TestFiles::write(document, "first");
    TestFiles::setMode(document, 0644);
    const bool isRun = NoHardLinks::run([this] {
        start();
        save("0");
        for (int minute = 1; minute <= 20; ++minute)
            saveAfter(1min, std::to_string(minute));
    });
    if (!isRun)
        GTEST_SKIP() << "Cannot forbid hard links.";
    EXPECT_EQ(keptTexts(), (std::vector { "first"s, "9"s, "19"s }));
    EXPECT_EQ(TestFiles::mode(versions / "prompts 2026-11-21 23.17.05.json"), 0600U);
}

TEST_F(EarlierVersionsTest, SavesWhenACopyDoesNotFit)
{
    const std::string large(5000, 'x');
    TestFiles::write(document, large);
    const bool isRun = NoHardLinks::run([this] {
        const FileSizeLimit limit(1000);
        start();
        save("0");
        EXPECT_EQ(TestFiles::count(versions), 0);
        saveAfter(10min, "1");
    });
    if (!isRun)
        GTEST_SKIP() << "Cannot forbid hard links.";
    EXPECT_EQ(keptTexts(), std::vector { "0"s });
}

TEST_F(EarlierVersionsTest, RemovesUnfinishedCopiesOfAKilledProcess)
{
    TestFiles::write(document, "first");
    TestFiles::write(versions / "prompts 2026-11-21 23.17.00.json.saving-abcdef", "fir");
    const bool isRun = NoHardLinks::run([this] {
        start();
        save("0");
    });
    if (!isRun)
        GTEST_SKIP() << "Cannot forbid hard links.";
    EXPECT_EQ(keptTexts(), std::vector { "first"s });
}

// Thinning.

TEST_F(EarlierVersionsTest, RemovesOnlyFilesWithItsNames)
{
    const std::vector<std::string> others { "launchers 2020-01-01 00.00.00.json",
                                            "prompts 2020-01-01 00.00.01.json.saving-abcdef",
                                            "prompts 2020-01-01 00.00.02 before moving.json",
                                            "prompts.json", "notes" };
    for (const auto &name : others)
        TestFiles::write(versions / name, "other");
    fs::create_directory(versions / "prompts 2020-01-01 00.00.03.json");
    fs::create_symlink("notes", versions / "prompts 2020-01-01 00.00.04.json");
    for (int second = 10; second < 30; ++second)
        TestFiles::write(
            versions / ("prompts 2020-01-01 00.00." + std::to_string(second) + ".json"), "old");
    TestFiles::write(document, "first");
    start();
    save("second");
    const auto remaining = kept();
    for (const auto &name : others)
        EXPECT_TRUE(remaining.contains(name)) << name;
    EXPECT_TRUE(remaining.contains("prompts 2020-01-01 00.00.03.json"));
    EXPECT_TRUE(remaining.contains("prompts 2020-01-01 00.00.04.json"));
    // The newest three are the new one and two of the old ones.
    EXPECT_EQ(std::ranges::count(keptTexts(), "old"), 2);
}

TEST_F(EarlierVersionsTest, DocumentsAreThinnedSeparately)
{
    for (int second = 10; second < 30; ++second)
        TestFiles::write(
            versions / ("launchers 2020-01-01 00.00." + std::to_string(second) + ".json"), "old");
    TestFiles::write(document, "first");
    start();
    save("second");
    EXPECT_EQ(kept().size(), 21U);

    TestFiles::write(folder / "launchers.json", "first");
    auto launchers = open("launchers.json");
    launchers.save([](const ByteSink &sink) { sink("second"); });
    EXPECT_EQ(kept().size(), 4U);
}

TEST_F(EarlierVersionsTest, SavesThatAddNothingDoNotReadTheFolder)
{
    start();
    save("0");
    saveAfter(10min, "1");
    for (int second = 10; second < 30; ++second)
        TestFiles::write(
            versions / ("prompts 2020-01-01 00.00." + std::to_string(second) + ".json"), "old");
    // The clock of file systems is coarse.
    fs::last_write_time(versions, fs::last_write_time(versions) + 1s);
    saveAfter(9min, "2");
    EXPECT_EQ(kept().size(), 21U);
    saveAfter(1min, "3");
    EXPECT_EQ(kept().size(), 3U);
}

/// Work with breaks, and edits by another program, which are large in the second half.
TEST_F(EarlierVersionsTest, TenThousandSavesInAYearStayWithinTheLimits)
{
    constexpr int Saves = 10'000;
    std::mt19937 random(2026);
    std::exponential_distribution<double> pause(1.0);
    const auto begin = clock.time;
    start();
    for (int count = 1; count <= Saves; ++count) {
        // One pause in ten is long. The mean is a ten thousandth of a year.
        const double mean = count % 10 == 0 ? 28'000 : 390;
        clock.advance(seconds(static_cast<int>(pause(random) * mean)));
        if (count % 2000 == 0)
            start();
        file.save([](const ByteSink &sink) { sink("own"); });
        if (count % 50 != 0)
            continue;
        ASSERT_LE(TestFiles::count(versions), 100) << count;
        ASSERT_LE(keptSize(), 50'000'000U) << count;
        TestFiles::write(document, "foreign");
        if (count > Saves / 2)
            fs::resize_file(document, 4'000'000);
        if (count == Saves / 2) {
            EXPECT_EQ(foreignCount(), 20);
        }
    }
    EXPECT_GT(clock.time - begin, days(300));
    EXPECT_LT(clock.time - begin, days(430));
    EXPECT_EQ(foreignCount(), 12);
}

} // namespace
