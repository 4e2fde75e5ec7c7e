#include "dictation/LibraryVocabulary.h"

#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

class LibraryVocabularyTest : public testing::Test
{
protected:
    void addNode(const std::string &text)
    {
        store.addBlock();
        store.updateBlock(store.activeTab()->blocks.back().id, text);
    }

    /// All texts, those of the active tab marked by "!".
    std::string texts()
    {
        std::string texts;
        vocabulary.rewind();
        while (const auto text = vocabulary.next())
            (texts += texts.empty() ? "" : ", ") +=
                (text->isProminent ? "!" : "") + std::string(text->text);
        return texts;
    }

    FakePlatform machine;
    FakeApplicationChooser chooser;
    SatchelStore store { machine.platform };
    LauncherStore launcherStore { chooser, machine.platform };
    LibraryVocabulary vocabulary { store, launcherStore };
};

TEST_F(LibraryVocabularyTest, HasTheTextsOfTheActiveTabFirst)
{
    addNode("one");
    addNode("two");
    store.addTab();
    addNode("three");
    store.addTab();
    EXPECT_EQ(texts(), "!New Tab, Prompts, one, two, New Tab, three");
    store.selectTab(store.tabs().get()[1].id);
    EXPECT_EQ(texts(), "!New Tab, !three, Prompts, one, two, New Tab");
    store.selectTab(store.tabs().get()[0].id);
    EXPECT_EQ(texts(), "!Prompts, !one, !two, New Tab, three, New Tab");
}

TEST_F(LibraryVocabularyTest, HasTheNamesOfTheLaunchersAfterTheActiveTab)
{
    addNode("one");
    store.addTab();
    addNode("two");
    ASSERT_TRUE(launcherStore.setWebsite("example.org", 0));
    ASSERT_TRUE(launcherStore.setWebsite("example.com", 3));
    EXPECT_EQ(texts(), "!New Tab, !two, " + launcherStore.slots().get()[0]->name + ", " +
                           launcherStore.slots().get()[3]->name + ", Prompts, one");
}

TEST_F(LibraryVocabularyTest, ChangesItsRevisionWithTheLibrary)
{
    const auto first = vocabulary.revision();
    EXPECT_EQ(vocabulary.revision(), first);
    addNode("one");
    const auto second = vocabulary.revision();
    EXPECT_NE(second, first);
    launcherStore.setWebsite("example.org", 0);
    const auto third = vocabulary.revision();
    EXPECT_NE(third, second);
    store.selectTab(QUuid::createUuid());
    EXPECT_NE(vocabulary.revision(), third);
}

TEST_F(LibraryVocabularyTest, SurvivesChangesBetweenTwoTexts)
{
    addNode("one");
    addNode("two");
    store.addTab();
    addNode("three");
    vocabulary.rewind();
    vocabulary.next();
    vocabulary.next();
    store.deleteTab(store.activeTab()->id);
    store.deleteBlock(store.activeTab()->blocks.back().id);
    store.deleteBlock(store.activeTab()->blocks.back().id);
    EXPECT_EQ(vocabulary.next(), std::nullopt);
    EXPECT_EQ(texts(), "!Prompts");
}

} // namespace
