#include "platform/gio/DesktopEntry.h"

#include "fakes/TestFiles.h"
#include "platform/TestDesktop.h"

#include <QByteArray>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace
{

using namespace std::string_literals;
using TestDesktop::entryText;

class DesktopEntryTest : public testing::Test
{
protected:
    std::optional<DesktopEntry> open(const std::string &text) const
    {
        TestFiles::write(path, text);
        return DesktopEntry::open(path);
    }

    ApplicationNames names(const std::string &lines) const
    {
        const auto entry = open("[Desktop Entry]\nType=Application\nExec=sh\n" + lines);
        return entry ? entry->names() : ApplicationNames { .displayName = "none", .name = "none" };
    }

    const std::string path = TestDesktop::path("entry.desktop");
};

TEST_F(DesktopEntryTest, HasTheNameInTheUsersLanguage)
{
    const auto names = this->names("Name=Text Editor\nName[de]=Texteditor\nName[fr]=Éditeur\n");
    EXPECT_EQ(names.displayName, "Texteditor");
    EXPECT_EQ(names.name, "Text Editor");
}

TEST_F(DesktopEntryTest, HasNoDisplayNameInAMissingLanguage)
{
    const auto names = this->names("Name=Text Editor\nName[fr]=Éditeur\n");
    EXPECT_EQ(names.displayName, std::nullopt);
    EXPECT_EQ(names.name, "Text Editor");
}

TEST_F(DesktopEntryTest, FallsBackToTheUsersNextLanguage)
{
    qputenv("LANGUAGE", "nl:de_AT.UTF-8:de");
    EXPECT_EQ(names("Name=Plain\nName[de_AT]=Jause\nName[de]=Vesper\n").displayName, "Jause");
    EXPECT_EQ(names("Name=Plain\nName[de]=Vesper\n").displayName, "Vesper");
    qputenv("LANGUAGE", "de");
}

TEST_F(DesktopEntryTest, KeepsNamesUnchanged)
{
    EXPECT_EQ(names("Name=a  b \\\\ %f é\U0001F600\n").name, "a  b \\ %f é\U0001F600");
}

TEST_F(DesktopEntryTest, IgnoresAnEmptyName)
{
    EXPECT_EQ(names("Name=\nName[de]=\n").name, std::nullopt);
    EXPECT_EQ(names("Name=\nName[de]=\n").displayName, std::nullopt);
    EXPECT_EQ(names("Name=Plain\nName[de]=\n").displayName, std::nullopt);
    qputenv("LANGUAGE", "nl:de");
    EXPECT_EQ(names("Name=Plain\nName[nl]=\nName[de]=Vesper\n").displayName, "Vesper");
    qputenv("LANGUAGE", "de");
}

TEST_F(DesktopEntryTest, NeedsNoName)
{
    EXPECT_EQ(names("").name, std::nullopt);
    EXPECT_EQ(names("").displayName, std::nullopt);
}

TEST_F(DesktopEntryTest, IgnoresANameThatIsNotUtf8)
{
    EXPECT_EQ(names("Name=a\xff\n").name, std::nullopt);
}

TEST_F(DesktopEntryTest, ReadsTheIcon)
{
    EXPECT_EQ(open(entryText("sh", "Icon=editor\n"))->icon(), "editor");
    EXPECT_EQ(open(entryText("sh", "Icon=editor.png\n"))->icon(), "editor");
    EXPECT_EQ(open(entryText("sh", "Icon=org.example.Editor\n"))->icon(), "org.example.Editor");
    EXPECT_EQ(open(entryText("sh", "Icon=/a/b c.png\n"))->icon(), "/a/b c.png");
    EXPECT_EQ(open(entryText("sh"))->icon(), "");
    EXPECT_EQ(open(entryText("sh", "Icon=\n"))->icon(), "");
}

TEST_F(DesktopEntryTest, UsesTheGenericNameWithoutAComment)
{
    EXPECT_EQ(open(entryText("sh", "Comment=Writes\nGenericName=Editor\n"))->comment(), "Writes");
    EXPECT_EQ(open(entryText("sh", "Comment=Writes\nComment[de]=Schreibt\n"))->comment(),
              "Schreibt");
    EXPECT_EQ(open(entryText("sh", "GenericName=Editor\n"))->comment(), "Editor");
    EXPECT_EQ(open(entryText("sh", "Comment=\nGenericName=Editor\n"))->comment(), "Editor");
    EXPECT_EQ(open(entryText("sh"))->comment(), "");
}

TEST_F(DesktopEntryTest, HasKeywordsGenericNameAndProgram)
{
    EXPECT_EQ(open(entryText("/bin/sh -c", "Keywords=text;plain text;\nGenericName=Editor\n"))
                  ->keywords(),
              "text plain text Editor sh");
    EXPECT_EQ(open(entryText("sh", "Keywords=text\nKeywords[de]=Text;Notiz\n"))->keywords(),
              "Text Notiz sh");
    EXPECT_EQ(open(entryText("sh"))->keywords(), "sh");
}

TEST_F(DesktopEntryTest, IsShownUnlessTheEntryHidesIt)
{
    EXPECT_TRUE(open(entryText("sh"))->isShown());
    EXPECT_TRUE(open(entryText("sh", "OnlyShowIn=Other;Quill;\n"))->isShown());
    EXPECT_TRUE(open(entryText("sh", "NotShowIn=Other;\n"))->isShown());
    EXPECT_FALSE(open(entryText("sh", "NoDisplay=true\n"))->isShown());
    EXPECT_FALSE(open(entryText("sh", "Hidden=true\n"))->isShown());
    EXPECT_FALSE(open(entryText("sh", "OnlyShowIn=Other;\n"))->isShown());
    EXPECT_FALSE(open(entryText("sh", "NotShowIn=Quill;\n"))->isShown());
}

TEST_F(DesktopEntryTest, RejectsEntriesThatAreNotApplications)
{
    EXPECT_TRUE(open(entryText("sh")));
    for (const auto &text :
         { ""s, "no entry"s,
           "\x7f"
           "ELF\0\0\x01\xff"s,
           "[Desktop Entry]\n"s, "[Desktop Entry]\nName=Name\nExec=sh\n"s,
           "[Desktop Entry]\nType=Link\nName=Name\nURL=https://example.com\n"s,
           "[Other]\nType=Application\n[Desktop Entry]\nType=Application\nExec=sh\n"s,
           entryText("no-such-program"), entryText(TestDesktop::path("nothing")),
           entryText("sh -c 'unclosed"), entryText("sh", "TryExec=no-such-program\n"),
           entryText("sh") + std::string(2'000'000, '#') })
        EXPECT_FALSE(open(text)) << text.substr(0, 80);
}

TEST_F(DesktopEntryTest, RejectsFilesThatAreNotRegular)
{
    const std::string pipe = TestDesktop::path("pipe.desktop");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string folder = TestDesktop::path("folder.desktop");
    std::filesystem::create_directory(folder);
    const std::string circle = TestDesktop::path("circle.desktop");
    std::filesystem::create_symlink(circle, circle);
    for (const auto &other :
         { pipe, folder, circle, "/dev/zero"s, "/proc/kmsg"s, TestDesktop::path("nothing").string(),
           std::string(10'000, '/'), "/"s + std::string(10'000, 'x') })
        EXPECT_FALSE(DesktopEntry::open(other)) << other.substr(0, 80);
}

TEST_F(DesktopEntryTest, RejectsPathsThatAreNotAbsolute)
{
    TestFiles::write(path, entryText("sh"));
    const std::filesystem::path file = path;
    ASSERT_TRUE(DesktopEntry::open(path));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(file.parent_path());
    EXPECT_FALSE(DesktopEntry::open(file.filename()));
    std::filesystem::current_path(before);
    EXPECT_FALSE(DesktopEntry::open(""));
    EXPECT_FALSE(DesktopEntry::open("file://" + path));
    EXPECT_FALSE(DesktopEntry::open(path + '\0'));
    EXPECT_FALSE(DesktopEntry::open(path + "\0.png"s));
}

TEST_F(DesktopEntryTest, FollowsSymlinksAndAcceptsAnyFileName)
{
    const std::string link = TestDesktop::path("link");
    TestFiles::write(path, entryText("sh"));
    std::filesystem::create_symlink(path, link);
    EXPECT_TRUE(DesktopEntry::open(link));
}

} // namespace
