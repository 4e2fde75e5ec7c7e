// From the library to the words of a dictation.

#include "dictation/LibraryVocabulary.h"
#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"
#include "platform/speech/VocabularyMessages.h"
#include "platform/speech/listener/ListenerService.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace
{

/// Understands what the test sets, and knows all words but one.
class DictatingEngine final : public RecognitionEngine
{
public:
    bool knows(const std::string &key) const override { return key != "libreoffice"; }

    void begin() override {}

    Hypothesis process(std::span<const std::int16_t> /*samples*/) override { return {}; }

    std::string finish() override { return words; }

    std::string words;
};

class LibrarySpellingTest : public testing::Test
{
protected:
    void addNode(const std::string &text)
    {
        store.addBlock();
        store.updateBlock(store.activeTab()->blocks.back().id, text);
    }

    void renameTab(const std::string &name) { store.renameTab(store.activeTab()->id, name); }

    std::string dictate(std::string words)
    {
        engine.words = std::move(words);
        VocabularyMessages messages(vocabulary);
        while (const auto message = messages.next(1))
            service.answer(*message);
        service.answer({ .kind = ListenerMessage::Kind::begin, .task = 1, .payload = {} });
        return service.answer({ .kind = ListenerMessage::Kind::end, .task = 1, .payload = {} })
            ->payload;
    }

    FakePlatform machine;
    FakeApplicationChooser chooser;
    SatchelStore store { machine.platform };
    LauncherStore launcherStore { chooser, machine.platform };
    LibraryVocabulary vocabulary { store, launcherStore };
    DictatingEngine engine;
    ListenerService service { engine, "en-us" };
};

TEST_F(LibrarySpellingTest, SpellsKnownWordsAsInNodesNotAsInNames)
{
    renameTab("My LibreOffice Tab");
    store.addTab(); // with the name "New Tab"
    addNode("ask Anna");
    ASSERT_TRUE(launcherStore.setWebsite("example.org", 0));
    EXPECT_EQ(dictate("ask anna to open a new tab in my libreoffice"),
              "ask Anna to open a new tab in my LibreOffice");
}

TEST_F(LibrarySpellingTest, PrefersNodesToNamesForNewWords)
{
    renameTab("LIBREOFFICE");
    addNode("LibreOffice is here");
    EXPECT_EQ(dictate("libreoffice"), "LibreOffice");
}

} // namespace
