#include "library/NodeSearchProvider.h"

#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using namespace std::string_literals;

class NodeSearchProviderTest : public SatchelStoreFixture
{
protected:
    using Texts = std::vector<std::string>;

    static PromptTab tabOf(const std::string &name, const Texts &texts)
    {
        PromptTab tab { .name = name };
        for (const auto &text : texts)
            tab.blocks.push_back({ .text = text });
        return tab;
    }

    /// Loads a library of these tabs; the first is active.
    void load(const std::vector<PromptTab> &tabs)
    {
        writeFile(tabs);
        store.emplace(machine.platform);
        provider.emplace(*store);
        provider->onShow = [this](QUuid tabID, QUuid blockID) {
            shown.emplace_back(tabID, blockID);
        };
        provider->onShowAll = [this](const QString &query) {
            queries.push_back(query.toStdString());
        };
    }

    Texts names(std::string_view query)
    {
        Texts names;
        for (const auto &result : provider->find(query))
            names.push_back(result.name.toStdString());
        return names;
    }

    /// The name of the only result for a library with only this text.
    std::string nameOf(const std::string &text)
    {
        load({ tabOf("Findable", { text }) });
        const auto all = names("findable");
        return all.size() == 1 ? all.front() : "not found";
    }

    std::string idOf(std::string_view query)
    {
        const auto results = provider->find(query);
        return results.empty() ? "not found" : results.front().id;
    }

    /// Whether `use` is without any effect.
    template <typename Use>
    bool isIgnored(Use &&use)
    {
        machine.pasteboard.contents = "something older";
        const auto before = documentOf(*store);
        const bool isSaved = saves(std::forward<Use>(use));
        return !isSaved && documentOf(*store) == before && shown.empty() &&
               machine.pasteboard.contents == "something older" && !store->copiedBlockID().get();
    }

    std::optional<SatchelStore> store;
    std::optional<NodeSearchProvider> provider;
    std::vector<std::pair<QUuid, QUuid>> shown;
    Texts queries;
};

TEST_F(NodeSearchProviderTest, DescribesANodeByItsFirstLineAndItsTab)
{
    load({ tabOf("Mails", { "Reply shortly.\nThank the sender." }) });
    const auto results = provider->find("sender");
    ASSERT_EQ(results.size(), 1U);
    EXPECT_EQ(results[0].name.toStdString(), "Reply shortly.");
    EXPECT_EQ(results[0].description.toStdString(), "Mails");
    EXPECT_EQ(results[0].text, "Reply shortly.\nThank the sender.");
}

TEST_F(NodeSearchProviderTest, NamesANodeByItsFirstLineWithText)
{
    EXPECT_EQ(nameOf("\n \r\n\u2003first \r\nsecond"), "first");
    EXPECT_EQ(nameOf("carriage\rreturn"), "carriage");
    EXPECT_EQ(nameOf("tab\tand\u202Edirection"), "tab and direction");
}

TEST_F(NodeSearchProviderTest, AbridgesLongLines)
{
    const std::string longest = nameOf(std::string(1'000'000, 'x'));
    EXPECT_EQ(longest, std::string(79, 'x') + "\u2026");
    load({ tabOf(std::string(1'000'000, 'y'), { "findable" }) });
    EXPECT_EQ(provider->find("findable").at(0).description.toStdString(),
              std::string(79, 'y') + "\u2026");
}

TEST_F(NodeSearchProviderTest, GivesEmptyTextsAName)
{
    EXPECT_EQ(nameOf(""), "Empty node");
    EXPECT_EQ(nameOf(" \n\u200B"), "Empty node");
    load({ tabOf(" ", { "findable" }) });
    EXPECT_EQ(provider->find("findable").at(0).description.toStdString(), "Untitled");
}

TEST_F(NodeSearchProviderTest, FindsNodesOfAllTabsByTheRulesOfTheSearch)
{
    load({ tabOf("One", { "R\u00E9sum\u00E9s", "other" }), tabOf("Two", { "a resume of work" }) });
    EXPECT_EQ(names("resume"), Texts({ "a resume of work", "R\u00E9sum\u00E9s" }));
    EXPECT_EQ(names("WORK two"), Texts({ "a resume of work" }));
    EXPECT_EQ(names("resume nothing"), Texts());
}

TEST_F(NodeSearchProviderTest, ReturnsTheTenBest)
{
    Texts texts(20, "chapters");
    texts.emplace_back("chapter");
    load({ tabOf("Texts", texts) });
    const auto found = names("chapter");
    ASSERT_EQ(found.size(), 10U);
    EXPECT_EQ(found.front(), "chapter");
    EXPECT_EQ(found.back(), "chapters");
}

TEST_F(NodeSearchProviderTest, NeedsThreeLetters)
{
    load({ tabOf("Texts", { "abc \u65E5\u672C\u8A9E \u00E9\u00E8\u00EA" }) });
    for (const auto *const query : { "abc", "ab c", " a  b\tc ", "\u65E5\u672C\u8A9E", "eee" })
        EXPECT_EQ(names(query).size(), 1U) << query;
    for (const auto *const query :
         { "", " ", "ab", "a b", "   ", "\u65E5\u672C", "\u00E9\u00E8", "e\u0301e\u0301",
           "ab\u200B", "\u200B\u200B\u200B", " \u0301 \u0301 \u0301" })
        EXPECT_EQ(names(query), Texts()) << query;
}

TEST_F(NodeSearchProviderTest, FindsNothingForQueriesOfMoreThanAKilobyte)
{
    const std::string text(1024, 'x');
    load({ tabOf("Texts", { text + 'x' }) });
    EXPECT_EQ(names(text).size(), 1U);
    EXPECT_EQ(names(text + 'x'), Texts());
    EXPECT_EQ(names(std::string(20'000'000, 'x')), Texts());
}

TEST_F(NodeSearchProviderTest, FindsNothingWithoutNodes)
{
    load({ tabOf("Nothing", {}) });
    EXPECT_EQ(names("nothing"), Texts());
}

TEST_F(NodeSearchProviderTest, ReturnsAResultByItsId)
{
    load({ tabOf("One", { "first" }), tabOf("Two", { "second" }) });
    const auto id = idOf("second");
    const auto result = provider->result(id);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->id, id);
    EXPECT_EQ(result->name.toStdString(), "second");
    EXPECT_EQ(result->text, "second");
}

TEST_F(NodeSearchProviderTest, CopiesANodeOfAnotherTabWithoutAnyOtherEffect)
{
    load({ tabOf("One", { "first" }), tabOf("Two", { " second\n" }) });
    const auto before = documentOf(*store);
    const auto id = idOf("second");
    EXPECT_FALSE(saves([&] { provider->copy(id); }));
    EXPECT_EQ(machine.pasteboard.contents, " second\n");
    EXPECT_EQ(documentOf(*store), before);
    EXPECT_TRUE(shown.empty());
}

TEST_F(NodeSearchProviderTest, MarksTheCopiedNodeAsItsButtonDoes)
{
    const auto tab = tabOf("One", { "first" });
    load({ tab });
    provider->copy(idOf("first"));
    EXPECT_EQ(store->copiedBlockID().get(), tab.blocks[0].id);
    advance(1400ms);
    EXPECT_FALSE(store->copiedBlockID().get());
}

TEST_F(NodeSearchProviderTest, DistinguishesNodesWithTheSameIdInTwoTabs)
{
    const auto one = tabOf("One", { "first" });
    auto two = tabOf("Two", { "second" });
    two.blocks[0].id = one.blocks[0].id;
    load({ one, two });
    provider->copy(idOf("second"));
    EXPECT_EQ(machine.pasteboard.contents, "second");
    provider->copy(idOf("first"));
    EXPECT_EQ(machine.pasteboard.contents, "first");
}

TEST_F(NodeSearchProviderTest, ShowsANodeAndASearchToTheOwner)
{
    const auto two = tabOf("Two", { "second" });
    load({ tabOf("One", { "first" }), two });
    provider->show(idOf("second"));
    EXPECT_EQ(shown, std::vector({ std::pair(two.id, two.blocks[0].id) }));
    provider->showAll("R\u00E9s");
    provider->showAll("");
    EXPECT_EQ(queries, Texts({ "R\u00E9s", "" }));
}

TEST_F(NodeSearchProviderTest, IgnoresUnknownIds)
{
    load({ tabOf("One", { "first" }) });
    const auto id = idOf("first");
    const auto separator = id.find('/');
    const Texts unknown { "",
                          "/",
                          "x",
                          "first",
                          id + ' ',
                          id + '/',
                          id.substr(1),
                          id.substr(separator),
                          id.substr(0, separator),
                          id.substr(0, separator) + id.substr(0, separator),
                          id.substr(separator + 1) + id.substr(separator),
                          id.substr(separator + 1) + '/' + id.substr(0, separator),
                          std::string(1'000'000, '/'),
                          id + "\0"s };
    for (const auto &text : unknown) {
        EXPECT_FALSE(provider->result(text)) << text.substr(0, 100);
        EXPECT_TRUE(isIgnored([&] {
            provider->copy(text);
            provider->show(text);
        })) << text.substr(0, 100);
    }
}

TEST_F(NodeSearchProviderTest, IgnoresTheIdsOfDeletedNodes)
{
    const auto one = tabOf("One", { "first", "second" });
    const auto two = tabOf("Two", { "third" });
    load({ one, two });
    const Texts deleted { idOf("second"), idOf("third") };
    store->deleteBlock(one.blocks[1].id);
    store->deleteTab(two.id);
    for (const auto &id : deleted) {
        EXPECT_FALSE(provider->result(id));
        EXPECT_TRUE(isIgnored([&] {
            provider->copy(id);
            provider->show(id);
        }));
    }
    EXPECT_EQ(names("third"), Texts());
}

TEST_F(NodeSearchProviderTest, ChangesNothingByQueries)
{
    load({ tabOf("One", { "first" }), tabOf("Two", { "second" }) });
    EXPECT_TRUE(isIgnored([&] {
        provider->find("second");
        provider->result(idOf("second"));
        provider->showAll("second");
    }));
}

TEST_F(NodeSearchProviderTest, FollowsChangesOfTheLibrary)
{
    const auto tab = tabOf("One", { "first" });
    load({ tab });
    const auto id = idOf("first");
    store->updateBlock(tab.blocks[0].id, "changed");
    EXPECT_EQ(names("first"), Texts());
    EXPECT_EQ(idOf("changed"), id);
    EXPECT_EQ(provider->result(id)->name.toStdString(), "changed");
}

} // namespace
