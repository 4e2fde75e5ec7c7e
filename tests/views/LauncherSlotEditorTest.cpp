#include "views/LauncherSlotEditor.h"

#include "fakes/PictureBytes.h"
#include "views/LauncherCardFixture.h"
#include "views/Picture.h"
#include "views/RenderScheduler.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>

namespace
{

constexpr int Slot = 2;

/// One editor in its own window, rendered when the store changes.
class LauncherSlotEditorTest : public LauncherStoreFixture
{
protected:
    LauncherSlotEditorTest()
    {
        window.resize(332, 200);
        Input::show(window);
    }

    EditorParts open()
    {
        editor.emplace(store(), Slot, &window);
        editor->onWebsite = [this](const std::string &text) {
            return store().setWebsite(text, Slot);
        };
        editor->onChooseApplication = [this] { store().chooseApplication(Slot); };
        editor->onClear = [this] { store().clear(Slot); };
        editor->resize(332, editor->sizeHint().height());
        editor->show();
        scheduler.observe(store());
        settle();
        return EditorParts(*editor);
    }

    EditorParts openWebsite()
    {
        store().setWebsite("https://example.com", Slot);
        return open();
    }

    EditorParts openApplication()
    {
        machine.workspace.names["/apps/editor.desktop"] = { "Editor", "Editor" };
        fillWithApplication(Slot);
        return open();
    }

    /// Starts from a file, whose texts may be longer than the store accepts.
    EditorParts openFrom(const LauncherItem &launcher)
    {
        LauncherSlots slots;
        slots[Slot] = launcher;
        writeFile(ExampleLaunchers::encode(slots));
        return open();
    }

    void settle()
    {
        machine.mainQueue.runPending();
        QCoreApplication::processEvents();
    }

    QWidget window;
    std::optional<LauncherSlotEditor> editor;
    RenderScheduler scheduler { machine.mainQueue, [this] { editor->render(); } };
};

TEST_F(LauncherSlotEditorTest, ShowsTheWebsiteOfItsSlot)
{
    const auto parts = openWebsite();
    EXPECT_EQ(parts.title(), "example.com");
    EXPECT_EQ(parts.subtitle(), "https://example.com");
    EXPECT_EQ(parts.urlText(), "https://example.com");
    EXPECT_TRUE(parts.clearButton());
    EXPECT_TRUE(parts.setButton().isEnabled());
    EXPECT_EQ(parts.message(), "");
}

TEST_F(LauncherSlotEditorTest, ShowsAnApplicationAndAnEmptyField)
{
    const auto parts = openApplication();
    EXPECT_EQ(parts.title(), "Editor");
    EXPECT_EQ(parts.subtitle(), "/apps/editor.desktop");
    EXPECT_EQ(parts.urlText(), "");
    EXPECT_TRUE(parts.clearButton());
    EXPECT_FALSE(parts.setButton().isEnabled());
}

TEST_F(LauncherSlotEditorTest, ShowsThatItsSlotIsEmpty)
{
    const auto parts = open();
    EXPECT_EQ(parts.title(), "Empty launcher");
    EXPECT_EQ(parts.subtitle(), "Choose an app or enter a website");
    EXPECT_EQ(parts.urlText(), "");
    EXPECT_EQ(parts.field().placeholderText().toStdString(), "example.com");
    EXPECT_FALSE(parts.clearButton());
}

TEST_F(LauncherSlotEditorTest, EnablesSetURLOnceThereIsText)
{
    const auto parts = open();
    EXPECT_FALSE(parts.setButton().isEnabled());
    Input::click(parts.field());
    Input::type(*editor, "  ");
    EXPECT_EQ(parts.urlText(), "  ");
    EXPECT_FALSE(parts.setButton().isEnabled());
    Input::type(*editor, "x");
    EXPECT_TRUE(parts.setButton().isEnabled());
    for (const auto *const blanks : { "\t\n", "\u00a0\u3000", "\u2028\u0085" }) {
        parts.enter(blanks);
        EXPECT_FALSE(parts.setButton().isEnabled());
    }
}

TEST_F(LauncherSlotEditorTest, RejectsSpacesOnReturn)
{
    const auto parts = open();
    Input::click(parts.field());
    Input::type(*editor, "  ");
    Input::key(*editor, Qt::Key_Return);
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    EXPECT_EQ(parts.urlText(), "  ");
    EXPECT_FALSE(item(Slot));
}

TEST_F(LauncherSlotEditorTest, SetsTheWebsiteByReturnAndButton)
{
    const auto parts = open();
    Input::click(parts.field());
    Input::type(*editor, "example.com");
    Input::key(*editor, Qt::Key_Return);
    ASSERT_TRUE(item(Slot));
    EXPECT_EQ(item(Slot)->target, "https://example.com");

    parts.enter("example.org");
    Input::click(parts.setButton());
    EXPECT_EQ(item(Slot)->target, "https://example.org");
    EXPECT_EQ(store().configuredItems().size(), 1U);
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherSlotEditorTest, ShowsTheStoredAddress)
{
    const auto parts = open();
    parts.submit(" www.example.com ");
    EXPECT_EQ(parts.urlText(), " www.example.com "); // unchanged until rendered
    settle();
    EXPECT_EQ(parts.urlText(), "https://www.example.com");
    EXPECT_EQ(parts.title(), "example.com");
    EXPECT_EQ(parts.subtitle(), "https://www.example.com");
    EXPECT_TRUE(parts.clearButton());
}

TEST_F(LauncherSlotEditorTest, RejectsOtherSchemesWithoutChangingAnything)
{
    const auto parts = openWebsite();
    const auto before = item(Slot);
    const Publications publications(store());
    parts.submit("ftp://example.com");
    settle();
    EXPECT_EQ(parts.message(), "Enter a valid http or https website.");
    EXPECT_EQ(parts.urlText(), "ftp://example.com");
    EXPECT_EQ(parts.title(), "example.com");
    EXPECT_EQ(item(Slot), before);
    EXPECT_EQ(publications.announced, 0);
    EXPECT_EQ(machine.httpClient.requests.size(), 1U);
}

TEST_F(LauncherSlotEditorTest, HidesTheMessageOnceAWebsiteIsSet)
{
    const auto parts = open();
    parts.submit("ftp://example.com");
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    parts.submit("example.com");
    EXPECT_EQ(parts.message(), "");
    parts.submit("mailto://example.com");
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
}

TEST_F(LauncherSlotEditorTest, KeepsTheMessageUntilTheNextSubmission)
{
    const auto parts = open();
    parts.submit("ftp://example.com");
    parts.enter("https://example.com");
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    fillWithApplication(Slot);
    settle();
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    Input::click(*parts.clearButton());
    settle();
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    store().setWebsite("example.org", Slot);
    settle();
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
}

TEST_F(LauncherSlotEditorTest, ChoosingAnApplicationClearsTheField)
{
    const auto parts = openWebsite();
    machine.workspace.names["/apps/editor.desktop"] = { "Editor", "Editor" };
    Input::click(parts.chooseButton());
    ASSERT_EQ(chooser.requests.size(), 1U);
    EXPECT_EQ(parts.urlText(), "https://example.com");
    choose("/apps/editor.desktop");
    settle();
    EXPECT_EQ(item(Slot)->target, "/apps/editor.desktop");
    EXPECT_EQ(parts.title(), "Editor");
    EXPECT_EQ(parts.urlText(), "");
    EXPECT_FALSE(parts.setButton().isEnabled());
}

TEST_F(LauncherSlotEditorTest, CancellingTheChoiceChangesNothing)
{
    const auto parts = openWebsite();
    parts.enter("typed");
    Input::click(parts.chooseButton());
    choose(std::nullopt);
    settle();
    EXPECT_EQ(parts.title(), "example.com");
    EXPECT_EQ(parts.urlText(), "typed");
}

TEST_F(LauncherSlotEditorTest, ClearsSlotFieldAndButton)
{
    const auto parts = openWebsite();
    Input::click(*parts.clearButton());
    EXPECT_FALSE(item(Slot));
    EXPECT_EQ(parts.urlText(), "");
    settle();
    EXPECT_EQ(parts.title(), "Empty launcher");
    EXPECT_EQ(parts.subtitle(), "Choose an app or enter a website");
    EXPECT_FALSE(parts.clearButton());
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherSlotEditorTest, KeepsTheFieldWhenTheStoreClearsTheSlot)
{
    const auto parts = openWebsite();
    store().clear(Slot);
    settle();
    EXPECT_EQ(parts.title(), "Empty launcher");
    EXPECT_EQ(parts.urlText(), "https://example.com");
    EXPECT_TRUE(parts.setButton().isEnabled());
    EXPECT_FALSE(parts.clearButton());
}

TEST_F(LauncherSlotEditorTest, ShowsAWebsiteSetInTheStore)
{
    const auto parts = openWebsite();
    const std::map<std::string, std::string> titles { { "example.com", "example.com" },
                                                      { "example.org/path", "example.org" } };
    for (const auto &[address, title] : titles) {
        parts.enter("typed");
        store().setWebsite(address, Slot); // a new launcher even if the address is the same
        settle();
        EXPECT_EQ(parts.urlText(), "https://" + address);
        EXPECT_EQ(parts.title(), title);
    }
}

TEST_F(LauncherSlotEditorTest, KeepsTypedTextWhenTheIconArrives)
{
    const auto parts = openWebsite();
    parts.enter("typed");
    parts.field().setCursorPosition(2);
    const Picture before(*editor);
    answer(PictureBytes::png(32, 32, Qt::green));
    settle();
    EXPECT_EQ(parts.urlText(), "typed");
    EXPECT_EQ(parts.field().cursorPosition(), 2);
    EXPECT_TRUE(isColor(Picture(*editor).at(45, 22), Qt::green));
    EXPECT_FALSE(isColor(before.at(45, 22), Qt::green));
}

TEST_F(LauncherSlotEditorTest, KeepsTypedTextWhenAnotherSlotChanges)
{
    const auto parts = openWebsite();
    parts.enter("typed");
    fillWithApplication(Slot + 1);
    store().clear(Slot - 1);
    settle();
    EXPECT_EQ(parts.urlText(), "typed");
    EXPECT_EQ(parts.title(), "example.com");
}

TEST_F(LauncherSlotEditorTest, PaintingRequestsNoIcon)
{
    machine.workspace.icon = PictureBytes::filled(64, 64, Qt::blue);
    openApplication();
    const auto read = machine.workspace.requestedIcons.size();
    const Picture picture(*editor);
    EXPECT_TRUE(isColor(picture.at(45, 22), Qt::blue));
    EXPECT_EQ(machine.workspace.requestedIcons.size(), read);
}

TEST_F(LauncherSlotEditorTest, ShowsTheStartOfALongAddress)
{
    const auto parts = open();
    store().setWebsite("https://example.com/" + std::string(200, 'x'), Slot);
    settle();
    EXPECT_EQ(parts.field().cursorPosition(), 0);
}

TEST_F(LauncherSlotEditorTest, KeepsTheFocusWhenItsSlotIsCleared)
{
    const auto parts = openWebsite();
    parts.clearButton()->setFocus(Qt::TabFocusReason);
    Input::key(*editor, Qt::Key_Space);
    settle();
    EXPECT_FALSE(item(Slot));
    EXPECT_TRUE(parts.chooseButton().hasFocus());

    store().setWebsite("example.com", Slot);
    settle();
    parts.clearButton()->setFocus(Qt::TabFocusReason);
    store().clear(Slot);
    settle();
    EXPECT_TRUE(parts.chooseButton().hasFocus());
}

TEST_F(LauncherSlotEditorTest, ClearingByMouseKeepsTheFocusInTheField)
{
    const auto parts = openWebsite();
    Input::click(parts.field());
    Input::click(*parts.clearButton());
    settle();
    EXPECT_TRUE(parts.field().hasFocus());
}

TEST_F(LauncherSlotEditorTest, MovesTheFocusWhenSetURLIsDisabled)
{
    const auto parts = openWebsite();
    parts.setButton().setFocus(Qt::TabFocusReason);
    fillWithApplication(Slot);
    settle();
    EXPECT_FALSE(parts.setButton().isEnabled());
    EXPECT_TRUE(parts.field().hasFocus());
}

TEST_F(LauncherSlotEditorTest, DoesNotTakeTheFocusFromOthers)
{
    openWebsite();
    QLineEdit other(&window);
    other.move(0, 150);
    other.show();
    Input::click(other);
    store().clear(Slot);
    settle();
    fillWithApplication(Slot);
    settle();
    EXPECT_TRUE(other.hasFocus());
}

TEST_F(LauncherSlotEditorTest, GrowsAndShrinksWithTheMessage)
{
    const auto parts = open();
    const int height = editor->sizeHint().height();
    parts.submit("ftp://example.com");
    const int line = parts.label(2).sizeHint().height();
    EXPECT_EQ(editor->sizeHint().height(), height + 7 + line);
    parts.submit("example.com");
    EXPECT_EQ(editor->sizeHint().height(), height);
}

TEST_F(LauncherSlotEditorTest, ExposesTheMessageToAssistiveTechnology)
{
    const auto parts = open();
    EXPECT_EQ(parts.field().accessibleDescription().toStdString(), "");
    parts.submit("ftp://example.com");
    EXPECT_EQ(Input::role(parts.label(2)), QAccessible::AlertMessage);
    EXPECT_EQ(Input::accessibleName(parts.label(2)), EditorParts::InvalidURL);
    EXPECT_EQ(parts.field().accessibleDescription().toStdString(), EditorParts::InvalidURL);
    parts.submit("example.com");
    EXPECT_EQ(parts.field().accessibleDescription().toStdString(), "");
}

TEST_F(LauncherSlotEditorTest, IsANamedGroupWithNamedControls)
{
    const auto parts = openWebsite();
    EXPECT_EQ(Input::role(*editor), QAccessible::Grouping);
    EXPECT_EQ(Input::accessibleName(*editor), "Launcher 3");
    EXPECT_EQ(editor->accessibleDescription().toStdString(), "example.com, Website");
    EXPECT_EQ(Input::accessibleName(parts.field()), "Website");
    EXPECT_EQ(Input::role(parts.field()), QAccessible::EditableText);
    EXPECT_EQ(Input::accessibleName(parts.label(0)), "example.com");
    EXPECT_EQ(Input::accessibleName(parts.label(1)), "https://example.com");
    EXPECT_EQ(Input::role(parts.label(0)), QAccessible::StaticText);
    EXPECT_EQ(parts.clearButton()->toolTip().toStdString(), "Clear launcher");
    EXPECT_FALSE(parts.chooseButton().toolTip().isEmpty());
    EXPECT_FALSE(parts.setButton().toolTip().isEmpty());
}

TEST_F(LauncherSlotEditorTest, ShowsControlCharactersOnOneLine)
{
    const auto parts = openFrom({ .kind = LauncherKind::website,
                                  .name = "a\r\nb\x1b\u2028\u202ec",
                                  .target = "https://\n\x7f/" + std::string(1, '\0') + "x" });
    EXPECT_EQ(parts.title(), "a b c");
    EXPECT_EQ(parts.subtitle(), "https:// / x");
}

TEST_F(LauncherSlotEditorTest, ShortensLongTexts)
{
    const std::string filling(1'000'000, 'x');
    const auto parts = openFrom({ .kind = LauncherKind::website,
                                  .name = "begin" + filling + "end",
                                  .target = "https://begin" + filling + "end" });
    EXPECT_TRUE(parts.title().starts_with("beginxxx"));
    EXPECT_LE(parts.title().size(), 4096U);
    EXPECT_TRUE(parts.subtitle().starts_with("https://beginxxx"));
    EXPECT_TRUE(parts.subtitle().ends_with("xxxend"));
    EXPECT_LE(parts.subtitle().size(), 4096U);
    EXPECT_LE(parts.field().text().size(), LauncherSlotEditor::MaximumURLLength);
    EXPECT_EQ(item(Slot)->name.size(), 1'000'008U);
}

TEST_F(LauncherSlotEditorTest, RejectsATextAtTheLengthLimit)
{
    const auto parts = open();
    const std::string start = "https://example.com/";
    const std::size_t longest = LauncherSlotEditor::MaximumURLLength;
    parts.submit(start + std::string(longest, 'x'));
    EXPECT_EQ(parts.message(), EditorParts::InvalidURL);
    EXPECT_FALSE(item(Slot));
    const std::string fitting = start + std::string(longest - start.size() - 1, 'x');
    parts.submit(fitting);
    EXPECT_EQ(parts.message(), "");
    ASSERT_TRUE(item(Slot));
    EXPECT_EQ(item(Slot)->target, fitting);
}

TEST_F(LauncherSlotEditorTest, StoresValidTextAfterHalfASurrogatePair)
{
    const auto parts = open();
    parts.enter("https://example.com/");
    Input::commit(QString(QChar(0xd83d))); // half a pair
    Input::key(*editor, Qt::Key_Return);
    settle();
    const auto before = item(Slot);
    editor.reset(); // before its store
    restart();
    EXPECT_EQ(item(Slot), before);
}

} // namespace
