#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using namespace std::string_literals;

/// Copying, pasting and opening nodes.
class SatchelStoreClipboardTest : public SatchelStoreFixture
{
protected:
    SatchelStoreClipboardTest()
    {
        writeFile({ tab, other });
        m_store.emplace(machine.platform);
    }

    SatchelStore &store() { return *m_store; }

    const std::optional<QUuid> &copied() { return store().copiedBlockID().get(); }

    /// The addresses opened for a node with this text.
    std::vector<std::string> openedFor(const std::string &text)
    {
        machine.workspace.opened.clear();
        store().updateBlock(a, text);
        advance(SaveDelay);
        store().openBlockURL(a);
        EXPECT_EQ(store().activeTab()->blocks.front().text, text);
        return machine.workspace.opened;
    }

    using Texts = std::vector<std::string>;

    PromptTab tab { .blocks = { { .text = "text of a", .color = {} },
                                { .text = "", .color = {} } } };
    QUuid a = tab.blocks[0].id;
    QUuid b = tab.blocks[1].id;
    PromptTab other { .blocks = { { .text = "text in another tab" },
                                  { .id = a, .text = "twin" } } };

private:
    std::optional<SatchelStore> m_store;
};

TEST_F(SatchelStoreClipboardTest, CopiesTheUnchangedTextAndMarksTheNode)
{
    const auto text = "  \u00E9\U0001F600\n\"a/b\"\0 "s;
    store().updateBlock(a, text);
    machine.pasteboard.contents = "something older";
    store().copyBlock(a);
    EXPECT_EQ(machine.pasteboard.contents, text);
    EXPECT_EQ(copied(), a);
}

TEST_F(SatchelStoreClipboardTest, CopiesAnEmptyTextAsAnEmptyText)
{
    machine.pasteboard.contents = "something older";
    store().copyBlock(b);
    EXPECT_EQ(machine.pasteboard.contents, "");
    EXPECT_EQ(copied(), b);
}

TEST_F(SatchelStoreClipboardTest, SavesNothingWhenCopying)
{
    EXPECT_FALSE(saves([&] { store().copyBlock(a); }));
    EXPECT_EQ(store().tabs().get(), std::vector({ tab, other }));
}

TEST_F(SatchelStoreClipboardTest, CopiesANodeOfAnotherTabWithoutSelectingIt)
{
    const QUuid id = other.blocks[0].id;
    EXPECT_FALSE(saves([&] { store().copyBlock(other.id, id); }));
    EXPECT_EQ(machine.pasteboard.contents, "text in another tab");
    EXPECT_EQ(store().activeTab()->id, tab.id);

    store().copyBlock(other.id, id);
    EXPECT_EQ(copied(), id);
    advance(1400ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, CopiesTheNodeOfTheGivenTab)
{
    store().copyBlock(other.id, a);
    EXPECT_EQ(machine.pasteboard.contents, "twin");
    store().copyBlock(tab.id, a);
    EXPECT_EQ(machine.pasteboard.contents, "text of a");
}

TEST_F(SatchelStoreClipboardTest, CopiesNothingForUnknownIds)
{
    machine.pasteboard.contents = "something older";
    store().copyBlock(other.id, b);
    store().copyBlock(QUuid::createUuid(), a);
    EXPECT_EQ(machine.pasteboard.contents, "something older");
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, ClearsTheMarkAfter1400Milliseconds)
{
    store().copyBlock(a);
    advance(1399ms);
    EXPECT_EQ(copied(), a);
    advance(1ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, ShowsTheMarkOfAnotherNodeForItsFullTime)
{
    store().copyBlock(a);
    advance(1000ms);
    store().copyBlock(b);
    EXPECT_EQ(copied(), b);
    advance(400ms);
    EXPECT_EQ(copied(), b) << "only the first mark has expired";
    advance(999ms);
    EXPECT_EQ(copied(), b);
    advance(1ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, DoesNotExtendTheMarkOfANodeCopiedTwice)
{
    store().copyBlock(a);
    advance(1000ms);
    store().copyBlock(a);
    advance(399ms);
    EXPECT_EQ(copied(), a);
    advance(1ms);
    EXPECT_FALSE(copied());
    advance(Long);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, DoesNotExtendTheMarkOfANodeCopiedAgainAfterAnother)
{
    store().copyBlock(a);
    advance(500ms);
    store().copyBlock(b);
    advance(500ms);
    store().copyBlock(a);
    advance(399ms);
    EXPECT_EQ(copied(), a);
    advance(1ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, MarksANodeAgainAfterItsMarkExpired)
{
    store().copyBlock(a);
    advance(1400ms);
    store().copyBlock(a);
    advance(1399ms);
    EXPECT_EQ(copied(), a);
    advance(1ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, KeepsTheMarkOfADeletedNodeForItsFullTime)
{
    store().copyBlock(a);
    store().deleteBlock(a);
    EXPECT_EQ(copied(), a);
    advance(1400ms);
    EXPECT_FALSE(copied());
}

TEST_F(SatchelStoreClipboardTest, DoesNotSaveTheMark)
{
    store().copyBlock(a);
    store().addBlock();
    advance(SaveDelay);
    ASSERT_EQ(copied(), a);
    EXPECT_EQ(fileText(), documentOf(store()).encode());
    const SatchelStore next(machine.platform);
    EXPECT_FALSE(next.copiedBlockID().get());
}

TEST_F(SatchelStoreClipboardTest, ReplacesTheWholeTextWhenPasting)
{
    machine.pasteboard.contents = " pasted\n";
    EXPECT_TRUE(saves([&] { store().pasteIntoBlock(a); }));
    EXPECT_EQ(store().activeTab()->blocks[0].text, " pasted\n");
    EXPECT_EQ(store().activeTab()->blocks[1], tab.blocks[1]);
    EXPECT_EQ(machine.pasteboard.contents, " pasted\n");
}

TEST_F(SatchelStoreClipboardTest, PastesAnEmptyText)
{
    machine.pasteboard.contents = "";
    EXPECT_TRUE(saves([&] { store().pasteIntoBlock(a); }));
    EXPECT_EQ(store().activeTab()->blocks[0].text, "");
}

TEST_F(SatchelStoreClipboardTest, PastesNothingIfTheClipboardHasNoText)
{
    machine.pasteboard.contents.reset();
    EXPECT_FALSE(saves([&] { store().pasteIntoBlock(a); }));
    EXPECT_EQ(store().tabs().get(), std::vector({ tab, other }));
}

TEST_F(SatchelStoreClipboardTest, OpensWebAddresses)
{
    EXPECT_EQ(openedFor("https://example.com"), Texts({ "https://example.com" }));
    EXPECT_EQ(openedFor("http://example.com:8080/a?b#c"),
              Texts({ "http://example.com:8080/a?b#c" }));
}

TEST_F(SatchelStoreClipboardTest, TrimsAnAddressBeforeOpeningIt)
{
    EXPECT_EQ(openedFor("  https://example.com/ \n"), Texts({ "https://example.com/" }));
    EXPECT_EQ(openedFor("\u00A0\u2028\thttps://example.com/\r\n\u3000"),
              Texts({ "https://example.com/" }));
}

TEST_F(SatchelStoreClipboardTest, OpensAnAddressWithACapitalisedScheme)
{
    EXPECT_EQ(openedFor("HTTPS://Example.com/A"), Texts({ "HTTPS://Example.com/A" }));
    EXPECT_EQ(openedFor("Http://example.com"), Texts({ "Http://example.com" }));
}

TEST_F(SatchelStoreClipboardTest, OpensNothingElse)
{
    for (const auto *const text :
         { "", " ", "text", "mailto:someone@example.com", "file:///etc/hosts", "example.com",
           "www.example.com/path", "//example.com", "ftp://example.com", "javascript:alert(1)",
           "see https://example.com", "https://exa mple.com", "https://example.com\nand more",
           "://example.com", "\u200Bhttps://example.com" })
        EXPECT_EQ(openedFor(text), Texts()) << text;
}

TEST_F(SatchelStoreClipboardTest, SavesNothingWhenOpening)
{
    store().updateBlock(a, "https://example.com");
    EXPECT_FALSE(saves([&] { store().openBlockURL(a); }));
    EXPECT_EQ(machine.workspace.opened.size(), 1U);
}

} // namespace
