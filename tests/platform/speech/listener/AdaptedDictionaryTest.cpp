#include "platform/speech/listener/AdaptedDictionary.h"

#include "fakes/TestFiles.h"
#include "fakes/UnprivilegedScope.h"
#include "platform/speech/listener/EnglishVocabulary.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <sys/stat.h>

namespace
{

class AdaptedDictionaryTest : public testing::Test
{
protected:
    std::set<std::string> linesOf(const std::string &text)
    {
        TestFiles::write(path, text);
        std::istringstream stream(adaptedDictionary(path));
        std::set<std::string> lines;
        for (std::string line; std::getline(stream, line);)
            lines.insert(line);
        return lines;
    }

    QTemporaryDir folder;
    std::filesystem::path path = folder.filePath(QStringLiteral("words.dict")).toStdString();
};

TEST_F(AdaptedDictionaryTest, KeepsTheModelsWordsAndAllTheirPronunciations)
{
    const auto lines = linesOf("read R EH D\nread(2) R IY D\nreader R IY D ER");
    EXPECT_TRUE(lines.contains("read R EH D"));
    EXPECT_TRUE(lines.contains("read(2) R IY D"));
    EXPECT_TRUE(lines.contains("reader R IY D ER"));
}

TEST_F(AdaptedDictionaryTest, OmitsExcludedWords)
{
    const auto lines = linesOf("shift SH IH F T\nshit SH IH T\nshit(2) SH IY T\n");
    EXPECT_TRUE(lines.contains("shift SH IH F T"));
    EXPECT_EQ(lines.count("shit SH IH T") + lines.count("shit(2) SH IY T"), 0U);
}

TEST_F(AdaptedDictionaryTest, ReplacesThePronunciationsOfAddedWords)
{
    const auto lines = linesOf("git JH IH T\ngit(2) G EH T\ngift G IH F T\n");
    EXPECT_TRUE(lines.contains("git G IH T"));
    EXPECT_TRUE(lines.contains("json JH EY S AH N"));
    EXPECT_TRUE(lines.contains("gift G IH F T"));
    EXPECT_EQ(lines.count("git JH IH T") + lines.count("git(2) G EH T"), 0U);
}

TEST_F(AdaptedDictionaryTest, AcceptsEmptyAndMissingFiles)
{
    const auto count = EnglishVocabulary::addedWords().size();
    EXPECT_EQ(linesOf("").size(), count + 1); // and an empty line
    EXPECT_EQ(linesOf("\n\n").size(), count + 1);
    EXPECT_FALSE(adaptedDictionary(path.parent_path() / "nothing").empty());
}

TEST_F(AdaptedDictionaryTest, IsEmptyWithoutAReadableRegularFile)
{
    const auto empty = adaptedDictionary("/nonexistent/words.dict");
    const auto other = path.parent_path() / "other.dict";
    std::filesystem::create_directory(other);
    EXPECT_EQ(adaptedDictionary(other), empty) << "a folder";
    std::filesystem::remove(other);
    ASSERT_EQ(mkfifo(other.c_str(), 0600), 0);
    EXPECT_EQ(adaptedDictionary(other), empty) << "a pipe";
    std::filesystem::remove(other);
    for (const auto *const target : { "/dev/zero", "/dev/null", "/proc/self/mem", "other.dict" }) {
        std::filesystem::create_symlink(target, other);
        EXPECT_EQ(adaptedDictionary(other), empty) << target;
        std::filesystem::remove(other);
    }
}

TEST_F(AdaptedDictionaryTest, IsEmptyWithoutPermissionToRead)
{
    TestFiles::write(path, "word W ER D\n");
    TestFiles::setMode(path, 0);
    const UnprivilegedScope scope(path.parent_path());
    EXPECT_EQ(adaptedDictionary(path), adaptedDictionary("/nonexistent/words.dict"));
}

TEST_F(AdaptedDictionaryTest, IsEmptyForAFileAboveTheLimit)
{
    TestFiles::write(path, "word W ER D\n");
    std::filesystem::resize_file(path, std::uintmax_t(1) << 40);
    EXPECT_EQ(adaptedDictionary(path), adaptedDictionary("/nonexistent/words.dict"));
}

} // namespace
