#include "fakes/TestFiles.h"
#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"
#include "support/WebAddress.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using namespace std::string_literals;
using TestDesktop::addEntry;
using TestDesktop::entryText;
using Texts = std::vector<std::string>;

class OpenAddressTest : public testing::Test
{
protected:
    // Before the first lookup of GIO, which notices later changes with a delay.
    static void SetUpTestSuite()
    {
        TestDesktop::addProgram("browser");
        TestDesktop::addProgram("other");
        TestDesktop::addProgram("noargument");
        TestDesktop::addProgram("xdg-open");
        addEntry("browser.desktop",
                 entryText("browser --new %u -- last", "MimeType=x-scheme-handler/http;"
                                                       "x-scheme-handler/https;\n"));
        addEntry("other.desktop", entryText("other %U", "MimeType=x-scheme-handler/http;"
                                                        "x-scheme-handler/quill-many;\n"));
        addEntry("noargument.desktop", entryText("noargument"));
        TestFiles::write(TestDesktop::path("config/mimeapps.list"),
                         "[Default Applications]\n"
                         "x-scheme-handler/http=missing.desktop;browser.desktop;\n"
                         "x-scheme-handler/https=browser.desktop\n"
                         "x-scheme-handler/quill-many=other.desktop\n"
                         "x-scheme-handler/quill-noargument=noargument.desktop\n");
    }

    /// The arguments of the program when `text` is opened.
    std::optional<Texts> open(const std::string &text, const std::string &program)
    {
        const auto address = WebAddress::parse(text);
        if (!address)
            return std::nullopt;
        workspace.open(*address);
        const auto start = TestDesktop::waitForStart(program);
        return start ? std::optional(start->arguments) : std::nullopt;
    }

    QtMainQueue mainQueue;
    GioWorkspace workspace { mainQueue };
};

TEST_F(OpenAddressTest, PassesTheAddressUnchangedToTheBrowser)
{
    for (const auto &address :
         { "https://example.com"s, "http://example.com/"s, "HTTP://Example.COM/%7e?a=$(x)&b='"s,
           "HtTpS://EXAMPLE.com:443/../a//b/./c?"s, "https://u:p@example.com:8080/a%20b%2Fc%00"s,
           "https://[2001:DB8::1]/"s, "https://example.com/$HOME;(a)&b"s,
           "https://example.com/'a'!b*c'&d=~/e;f,g"s, "https://example.com/%66%75%25u%25%25"s,
           "https://example.com/#it's$HOME&x"s, "https://example.com/" + std::string(20'000, 'a') })
        EXPECT_EQ(open(address, "browser"), (Texts { "--new", address, "--", "last" }));
}

TEST_F(OpenAddressTest, PercentEncodesInvalidCharacters)
{
    EXPECT_EQ(open("https://example.com/`id` \"a\"%u\n", "browser"),
              (Texts { "--new", "https://example.com/%60id%60%20%22a%22%25u%0A", "--", "last" }));
}

TEST_F(OpenAddressTest, UsesTheDefaultBrowserOfTheUser)
{
    EXPECT_TRUE(open("http://example.com", "browser"));
    EXPECT_EQ(TestDesktop::startedPrograms(), Texts());
}

TEST_F(OpenAddressTest, SupportsHandlersThatTakeSeveralAddresses)
{
    EXPECT_EQ(open("quill-many://A/b", "other"), Texts { "quill-many://A/b" });
}

TEST_F(OpenAddressTest, UsesXdgOpenWithoutADefaultHandler)
{
    EXPECT_EQ(open("quill-unhandled://A/$(x)'&b", "xdg-open"),
              Texts { "quill-unhandled://A/$(x)'&b" });
}

TEST_F(OpenAddressTest, UsesXdgOpenIfTheHandlerTakesNoAddress)
{
    EXPECT_EQ(open("quill-noargument://A/b", "xdg-open"), Texts { "quill-noargument://A/b" });
    EXPECT_EQ(TestDesktop::startedPrograms(), Texts());
}

TEST_F(OpenAddressTest, OpensNothingWithoutAScheme)
{
    for (const auto *const text : { "example.com", "//example.com/a", "?a", "#b" })
        workspace.open(*WebAddress::parse(text));
    EXPECT_TRUE(open("http://example.com", "browser"));
    EXPECT_EQ(TestDesktop::startedPrograms(), Texts());
}

TEST_F(OpenAddressTest, IsolatesXdgOpenFromThisProcess)
{
    qputenv("DESKTOP_STARTUP_ID", "ours");
    workspace.open(*WebAddress::parse("quill-unhandled://a"));
    const auto start = TestDesktop::waitForStart("xdg-open");
    qunsetenv("DESKTOP_STARTUP_ID");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->environment.count("DESKTOP_STARTUP_ID"), 0U);
    EXPECT_NE(start->session, getsid(0));
    EXPECT_NE(start->parent, getpid());
    EXPECT_EQ(start->files.front(), "/dev/null");
}

} // namespace
