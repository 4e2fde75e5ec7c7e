#include "views/ApplicationSearch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Names = std::vector<std::string>;

/// The names of the matches, best first.
Names find(const std::vector<Application> &applications, const char *typed)
{
    Names names;
    for (const auto index : ApplicationSearch(applications).find(QString::fromUtf8(typed)))
        names.push_back(applications[index].name);
    return names;
}

Application application(const std::string &name, const std::string &comment = {},
                        const std::string &keywords = {})
{
    return { "/" + name, name, comment, keywords };
}

const std::vector<Application> Few {
    application("Abacus", "Count with beads", "calculator;sums;"),
    application("Calculator", "Do sums"),
    application("Image Viewer", "Look at pictures", "photo;"),
    application("Office Calculator"),
    application("Viewer of Images"),
};

TEST(ApplicationSearchTest, EmptySearchFindsEverythingInOrder)
{
    const Names all { "Abacus", "Calculator", "Image Viewer", "Office Calculator",
                      "Viewer of Images" };
    EXPECT_EQ(find(Few, ""), all);
    EXPECT_EQ(find(Few, " \t "), all);
}

TEST(ApplicationSearchTest, FindsNothingWithoutAMatch)
{
    EXPECT_EQ(find(Few, "spreadsheet"), Names());
    EXPECT_EQ(find({}, "calc"), Names());
    EXPECT_EQ(find({}, ""), Names());
}

TEST(ApplicationSearchTest, SearchesNamesCommentsAndKeywords)
{
    EXPECT_EQ(find(Few, "abac"), Names { "Abacus" });
    EXPECT_EQ(find(Few, "beads"), Names { "Abacus" });
    EXPECT_EQ(find(Few, "photo"), Names { "Image Viewer" });
    EXPECT_EQ(find(Few, "iewe"), (Names { "Image Viewer", "Viewer of Images" }));
}

TEST(ApplicationSearchTest, RequiresEveryWordInAnyField)
{
    EXPECT_EQ(find(Few, "sums abacus"), Names { "Abacus" });
    EXPECT_EQ(find(Few, "  viewer\tphoto  "), Names { "Image Viewer" });
    EXPECT_EQ(find(Few, "viewer sums"), Names());
}

TEST(ApplicationSearchTest, DoesNotMatchAcrossFields)
{
    const std::vector<Application> apart { application("Note", "Book", "Shelf") };
    EXPECT_EQ(find(apart, "notebook"), Names());
    EXPECT_EQ(find(apart, "bookshelf"), Names());
    EXPECT_EQ(find(apart, "ote ook elf"), Names { "Note" });
}

TEST(ApplicationSearchTest, RanksNamePrefixThenWordPrefixThenRest)
{
    EXPECT_EQ(find(Few, "calc"), (Names { "Calculator", "Office Calculator", "Abacus" }));
    EXPECT_EQ(find(Few, "viewer"), (Names { "Viewer of Images", "Image Viewer" }));
}

TEST(ApplicationSearchTest, KeepsTheGivenOrderWithinARank)
{
    const std::vector<Application> alike { application("Map B"), application("Map A"),
                                           application("Atlas", "map"), application("Globe", "map"),
                                           application("Map C") };
    EXPECT_EQ(find(alike, "map"), (Names { "Map B", "Map A", "Map C", "Atlas", "Globe" }));
}

TEST(ApplicationSearchTest, RanksSeveralWordsLikeOne)
{
    const std::vector<Application> editors { application("Plain Editor", "For text"),
                                             application("Context Editor"),
                                             application("Editor for Text"),
                                             application("Text Editor") };
    EXPECT_EQ(find(editors, "text edi"),
              (Names { "Text Editor", "Editor for Text", "Plain Editor", "Context Editor" }));
}

TEST(ApplicationSearchTest, RecognizesWordStarts)
{
    const std::vector<Application> words { application("Scan"), application("My-can"),
                                           application("(Can)"), application("4can"),
                                           application("Toucan Can") };
    EXPECT_EQ(find(words, "can"), (Names { "My-can", "(Can)", "Toucan Can", "Scan", "4can" }));
}

TEST(ApplicationSearchTest, IgnoresCase)
{
    EXPECT_EQ(find(Few, "ABACUS"), Names { "Abacus" });
    EXPECT_EQ(find({ application("\u0416\u0423\u041A") }, "\u0436\u0443\u043A").size(), 1U);
    EXPECT_EQ(find({ application("Stra\u00DFe") }, "STRASSE").size(), 1U);
    EXPECT_EQ(find({ application("\u039F\u0394\u039F\u03A3") }, "\u03BF\u03B4\u03BF\u03C2").size(),
              1U);
}

TEST(ApplicationSearchTest, IgnoresAccents)
{
    struct Case {
        const char *name;
        const char *typed;
    };

    for (const auto &[name, typed] :
         { Case { "\u00C9cran", "ecran" }, Case { "Ecran", "\u00E9cran" },
           Case { "E\u0301cran", "\u00C9CRAN" }, Case { "Schu\u0308ler", "sch\u00FCl" },
           Case { "\u0141\u0105cze", "lacze" }, Case { "S\u00F8k", "sok" },
           Case { "\u0110o\u00E0n", "doan" }, Case { "\u0130\u015F\u0131k", "isik" },
           Case { "\uFF21\uFF42\uFF43", "abc" }, Case { "\uFB01le", "file" } })
        EXPECT_EQ(find({ application(name) }, typed), Names { name }) << typed;
}

TEST(ApplicationSearchTest, DistinguishesVowelSigns)
{
    EXPECT_EQ(find({ application("\u0915\u093F\u0924\u093E\u092C") }, "\u0915\u0924"), Names());
    EXPECT_EQ(find({ application("\u0915\u093F\u0924\u093E\u092C") }, "\u0915\u093F").size(), 1U);
}

TEST(ApplicationSearchTest, MatchesPunctuationLiterally)
{
    const std::vector<Application> signs { application("C++ Studio"), application("C Studio"),
                                           application("100% .*") };
    EXPECT_EQ(find(signs, "c++"), Names { "C++ Studio" });
    EXPECT_EQ(find(signs, ".*"), Names { "100% .*" });
    EXPECT_EQ(find(signs, "%"), Names { "100% .*" });
}

TEST(ApplicationSearchTest, HandlesLongAndInvalidTexts)
{
    const std::string longName(1'000'000, 'a');
    EXPECT_EQ(find({ application(longName), application("\xFF\xC3") }, "aa"), Names { longName });
    EXPECT_EQ(find(Few, longName.c_str()), Names());
}

} // namespace
