#include "library/NodeSearch.h"

#include "library/ReferenceNodeSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace
{

PromptTab tabOf(std::string name, const std::vector<std::string> &texts)
{
    PromptTab tab { .name = std::move(name) };
    for (const auto &text : texts)
        tab.blocks.push_back({ .text = text });
    return tab;
}

class NodeSearchTest : public testing::Test
{
protected:
    /// The texts of the hits, best first.
    std::vector<std::string> found(std::string_view query, std::optional<std::size_t> activeTab = 0)
    {
        search.find(query, activeTab);
        std::vector<std::string> texts;
        for (std::size_t index = 0; index < search.hitCount(); ++index)
            texts.push_back(search.hit(index).text.text.toStdString());
        return texts;
    }

    using Texts = std::vector<std::string>;

    std::vector<PromptTab> tabs;
    NodeSearch search { tabs };
};

TEST_F(NodeSearchTest, FindsNodesWithAllWordsInAnyOrder)
{
    tabs = { tabOf("A", { "reply to the draft", "draft a reply", "draft", "reply" }) };
    EXPECT_EQ(found("reply draft"), (Texts { "reply to the draft", "draft a reply" }));
    EXPECT_EQ(found("draft reply"), (Texts { "reply to the draft", "draft a reply" }));
    EXPECT_EQ(found("draft reply nothing"), Texts());
}

TEST_F(NodeSearchTest, FindsWordsInTheNameOfTheTab)
{
    tabs = { tabOf("Mails", { "short reply", "long answer" }), tabOf("Code", { "reply" }) };
    EXPECT_EQ(found("mails reply"), Texts { "short reply" });
    EXPECT_EQ(found("mails"), (Texts { "short reply", "long answer" }));
}

TEST_F(NodeSearchTest, FindsTextsWhateverTheirCaseAndAccents)
{
    tabs = { tabOf("A", { "Résumé", "resume", "Re\u0301sume\u0301", "STRASSE", "Straße", "ışık",
                          "ΛΟΓΟΣ", "λόγος", "Ｆｕｌｌ" }) };
    EXPECT_EQ(found("RESUME").size(), 3);
    EXPECT_EQ(found("résumé").size(), 3);
    EXPECT_EQ(found("straße").size(), 2);
    EXPECT_EQ(found("strasse").size(), 2);
    EXPECT_EQ(found("ISIK").size(), 1);
    EXPECT_EQ(found("λογοσ").size(), 2);
    EXPECT_EQ(found("full").size(), 1);
}

TEST_F(NodeSearchTest, FindsEmojiAndOtherScriptsAsTyped)
{
    tabs = { tabOf("A", { "ok 👍🏽", "日本語のテキスト", "שלום עולם", "한국어" }) };
    EXPECT_EQ(found("👍🏽"), Texts { "ok 👍🏽" });
    EXPECT_EQ(found("本語"), Texts { "日本語のテキスト" });
    EXPECT_EQ(found("עולם"), Texts { "שלום עולם" });
    EXPECT_EQ(found("국어"), Texts { "한국어" });
    EXPECT_EQ(found("デキ"), Texts());
}

TEST_F(NodeSearchTest, ListsWholeWordsThenBeginningsThenOthers)
{
    tabs = { tabOf("A", { "party", "article", "art", "cart", "artist", "fine art" }) };
    EXPECT_EQ(found("art"), (Texts { "art", "fine art", "article", "artist", "party", "cart" }));
}

TEST_F(NodeSearchTest, RanksANodeByItsWorstWord)
{
    tabs = { tabOf("A", { "art partly", "article part", "art part" }) };
    EXPECT_EQ(found("art part"), (Texts { "art part", "art partly", "article part" }));
}

TEST_F(NodeSearchTest, ListsTheActiveTabFirstAmongEqualRanks)
{
    tabs = { tabOf("A", { "a art", "b party" }), tabOf("B", { "c art", "d party" }),
             tabOf("C", { "e art" }) };
    EXPECT_EQ(found("art", 1), (Texts { "c art", "a art", "e art", "d party", "b party" }));
    EXPECT_EQ(found("art", 0), (Texts { "a art", "c art", "e art", "b party", "d party" }));
    EXPECT_EQ(found("art", std::nullopt),
              (Texts { "a art", "c art", "e art", "b party", "d party" }));
}

TEST_F(NodeSearchTest, ListsAllNodesWithoutWords)
{
    tabs = { tabOf("A", { "a", "" }), tabOf("B", {}), tabOf("C", { "c" }) };
    EXPECT_EQ(found("", 2), (Texts { "c", "a", "" }));
    EXPECT_EQ(found(" \t\n", 0), (Texts { "a", "", "c" }));
}

TEST_F(NodeSearchTest, FindsNothingInAnEmptyLibrary)
{
    EXPECT_EQ(found("a", std::nullopt), Texts());
    EXPECT_EQ(found("", std::nullopt), Texts());
    tabs = { tabOf("A", {}) };
    EXPECT_EQ(found("a"), Texts());
}

TEST_F(NodeSearchTest, AHitTellsItsNodeTabAndMatches)
{
    tabs = { tabOf("Drafts", { "nothing", "my draft" }) };
    tabs.front().blocks.back().color = BlockColor::green;
    search.find("draft", 0);
    ASSERT_EQ(search.hitCount(), 2);
    const NodeHit hit = search.hit(0);
    EXPECT_EQ(hit.tabID, tabs.front().id);
    EXPECT_EQ(hit.blockID, tabs.front().blocks.back().id);
    EXPECT_EQ(hit.color, BlockColor::green);
    EXPECT_EQ(hit.text, (Excerpt { QStringLiteral("my draft"), { { 3, 5 } } }));
    EXPECT_EQ(hit.tabName, (Excerpt { QStringLiteral("Drafts"), { { 0, 5 } } }));
}

TEST_F(NodeSearchTest, TellsWhereTheFirstMatchIs)
{
    tabs = { tabOf("Name", { "é 👍 Draft", "x" }) };
    search.find("draft", 0);
    EXPECT_EQ(search.firstMatch(0), (TextRange { 5, 5 }));
    search.find("name", 0);
    EXPECT_EQ(search.firstMatch(0), std::nullopt);
}

TEST_F(NodeSearchTest, TellsWhereTheFirstMatchOfALongTextIs)
{
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "Wörter ";
    tabs = { tabOf("A", { text + "Ende" }) };
    search.find("ende", 0);
    EXPECT_EQ(search.firstMatch(0), (TextRange { 700'000, 4 }));
    EXPECT_TRUE(search.hit(0).text.text.endsWith(QStringLiteral("Wörter Ende")));
}

TEST_F(NodeSearchTest, FindsWordsEverywhereInALongText)
{
    const std::string filler(70'000, 'x');
    tabs = { tabOf("A", { "first " + filler + "é middle " + filler + " second" }) };
    EXPECT_EQ(found("second middle first").size(), 1);
    EXPECT_EQ(found("xé").size(), 1);
    EXPECT_EQ(found("second third").size(), 0);
}

TEST_F(NodeSearchTest, NarrowsAndWidensWhileTheUserTypes)
{
    tabs = { tabOf("1", { "party", "art", "arm", "b" }), tabOf("2", { "artist" }) };
    EXPECT_EQ(found("a"), (Texts { "art", "arm", "artist", "party" }));
    EXPECT_EQ(found("ar"), (Texts { "art", "arm", "artist", "party" }));
    EXPECT_EQ(found("art"), (Texts { "art", "artist", "party" }));
    EXPECT_EQ(found("art p"), Texts { "party" });
    EXPECT_EQ(found("art"), (Texts { "art", "artist", "party" }));
    EXPECT_EQ(found("arm"), Texts { "arm" });
}

TEST_F(NodeSearchTest, ReordersTheHitsIfAnotherTabIsActive)
{
    tabs = { tabOf("A", { "art a" }), tabOf("B", { "art b" }) };
    EXPECT_EQ(found("art", 0), (Texts { "art a", "art b" }));
    EXPECT_EQ(found("art", 1), (Texts { "art b", "art a" }));
}

TEST_F(NodeSearchTest, ForgetsTheHitsOfAChangedLibrary)
{
    tabs = { tabOf("A", { "art" }) };
    EXPECT_EQ(found("a").size(), 1);
    tabs.front().blocks.push_back({ .text = "artist" });
    search.forget();
    EXPECT_EQ(search.hitCount(), 0);
    EXPECT_EQ(found("ar"), (Texts { "art", "artist" }));
}

/// Random libraries and queries give the hits of the simple implementation, also while the query
/// grows letter by letter.
class NodeSearchPropertyTest : public NodeSearchTest
{
protected:
    static constexpr std::array Letters {
        "a",      "A",      "b",        "e",      "\u00E9", "e\u0301", "\u0301", " ",      "\n",
        "s",      "\u00DF", "\u1E9E",   "i",      "I",      "\u0130",  "\u0131", "\u03C3", "\u03C2",
        "\u03A3", "f",      "\uFB01",   "\uFF41", "K",      "\u212A",  "\u304B", "\u3099", "\u304C",
        "\uFF76", "\uFF9E", "\u1112",   "\u1161", "\u11AB", "\uD55C",  "\u0E17", "\u0E35", "\u200D",
        "\uFE0F", "👍",      "👍🏽", ".",      "\u05E9", "\u05B8",  "1",      "\u00BD", "\uFDFA"
    };

    std::string randomText(std::size_t longest)
    {
        std::string text;
        for (std::size_t left = random() % (longest + 1); left > 0; --left)
            text += Letters.at(random() % Letters.size());
        return text;
    }

    std::vector<PromptTab> randomTabs()
    {
        std::vector<PromptTab> library(1 + random() % 3);
        for (auto &tab : library) {
            tab.name = randomText(4);
            for (std::size_t left = random() % 5; left > 0; --left)
                tab.blocks.push_back({ .text = randomText(30) });
        }
        return library;
    }

    std::vector<ReferenceNodeSearch::Position> foundPositions() const
    {
        std::vector<ReferenceNodeSearch::Position> positions;
        for (std::size_t index = 0; index < search.hitCount(); ++index) {
            const NodeHit hit = search.hit(index);
            const auto tab = std::ranges::find(tabs, hit.tabID, &PromptTab::id);
            const auto block = std::ranges::find(tab->blocks, hit.blockID, &PromptBlock::id);
            positions.emplace_back(tab - tabs.begin(), block - tab->blocks.begin());
        }
        return positions;
    }

    void expectTheHitsOfTheReference(const QString &query, std::size_t activeTab)
    {
        // A part of the query may end with half a surrogate pair, which conversions drop or
        // replace.
        const std::string text = query.toStdString();
        search.find(text, activeTab);
        EXPECT_EQ(foundPositions(),
                  ReferenceNodeSearch::find(tabs, activeTab, QString::fromStdString(text)))
            << text;
    }

    std::minstd_rand random;
};

TEST_F(NodeSearchPropertyTest, FindsWhatASimpleImplementationFinds)
{
    for (int round = 0; round < 400; ++round) {
        tabs = randomTabs();
        search.forget();
        const std::size_t activeTab = random() % tabs.size();
        const QString query = QString::fromStdString(randomText(5));
        for (qsizetype size = 0; size <= query.size(); ++size)
            expectTheHitsOfTheReference(query.first(size), activeTab);
        expectTheHitsOfTheReference(query, random() % tabs.size());
    }
}

TEST_F(NodeSearchPropertyTest, EmphasisesSomethingInEveryHit)
{
    for (int round = 0; round < 400; ++round) {
        tabs = randomTabs();
        search.forget();
        const QString query = QString::fromStdString(randomText(3));
        if (ReferenceNodeSearch::folded(query).trimmed().isEmpty())
            continue;
        search.find(query.toStdString(), 0);
        for (std::size_t index = 0; index < search.hitCount(); ++index) {
            const NodeHit hit = search.hit(index);
            EXPECT_FALSE(hit.text.emphasised.empty() && hit.tabName.emphasised.empty());
            EXPECT_EQ(search.firstMatch(index).has_value(), !hit.text.emphasised.empty());
        }
    }
}

} // namespace
