#include "views/MessageLine.h"
#include "views/PanelContentFixture.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <gtest/gtest.h>

#include <functional>

namespace
{

/// Dictation into a node of the panel.
class PanelDictationTest : public PanelContentFixture
{
protected:
    FakeSpeech &speech = machine.speech;

    /// Twice, because the view renders after the model has changed.
    void settle()
    {
        PanelContentFixture::settle();
        PanelContentFixture::settle();
    }

    /// Presses "Dictate" and allows the microphone.
    void dictate(std::size_t index)
    {
        press(card(index), "Dictate");
        speech.answer(speech.authorizationRequests.size() - 1);
        settle();
    }

    /// Opens the view and dictates "one" into the first node.
    void openAndDictate(const std::vector<PromptTab> &tabs)
    {
        openView(tabs);
        dictate(0);
        recognize("one");
    }

    void recognize(const std::string &words, bool isFinal = false)
    {
        deliver(words, isFinal);
        settle();
    }

    void deliver(const std::string &words, bool isFinal = false)
    {
        speech.deliver(speech.recognitions.size() - 1, SpeechRecognitionResult { words, isFinal });
    }

    /// Checks the text of the first node in the view and in the model.
    void expectText(const std::string &text)
    {
        settle();
        EXPECT_EQ(shownText(0), text);
        EXPECT_EQ(blocks()[0].text, text);
    }

    struct Edit {
        std::string name;
        std::function<void()> perform;
        std::string text;
    };

    void paste(const std::string &text)
    {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        Input::key(*view, Qt::Key_V, Qt::ControlModifier);
    }

    void selectAllAnd(Qt::Key command)
    {
        Input::key(*view, Qt::Key_A, Qt::ControlModifier);
        Input::key(*view, command, Qt::ControlModifier);
    }

    /// Drops text at the end of the first node.
    void drop(const std::string &text)
    {
        QMimeData data;
        data.setText(QString::fromStdString(text));
        auto *const window = view->windowHandle();
        const QPoint position = Input::toWindow(editor(0), editor(0).rect().center());
        QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &enter);
        QDropEvent dropped(position, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &dropped);
        EXPECT_TRUE(dropped.isAccepted());
    }

    QAccessibleInterface &accessible() const
    {
        return *QAccessible::queryAccessibleInterface(&editor(0));
    }

    QAccessibleEditableTextInterface &editableText() const
    {
        return *accessible().editableTextInterface();
    }

    MessageLine &messageLine() const { return *view->findChild<MessageLine *>(); }
};

TEST_F(PanelDictationTest, ShowsWordsInTheNodeAsTheyAreSpoken)
{
    openView(Texts { "a", "b" });
    dictate(1);
    recognize("one");
    EXPECT_EQ(shownText(1), "b one");
    recognize("one two");
    EXPECT_EQ(shownText(1), "b one two");
    EXPECT_EQ(blocks()[1].text, "b one two");
    EXPECT_EQ(shownText(0), "a");
}

TEST_F(PanelDictationTest, OffersStopOnlyWhileListening)
{
    openView(Texts { "a", "b" });
    press(card(1), "Dictate");
    EXPECT_FALSE(Input::button(card(1), "Stop")) << "not listening yet";
    speech.answer(0);
    settle();
    EXPECT_TRUE(Input::button(card(1), "Stop"));
    EXPECT_FALSE(Input::button(card(0), "Stop"));
    press(card(1), "Stop");
    EXPECT_FALSE(speech.isEngineRunning);
    EXPECT_TRUE(Input::button(card(1), "Dictate"));
}

TEST_F(PanelDictationTest, SavesTheWords)
{
    openAndDictate({ tabOf("Prompts", { "a" }) });
    advance(SaveDelay);
    ASSERT_TRUE(savedDocument());
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "a one");
}

TEST_F(PanelDictationTest, AppendsToTheCurrentText)
{
    openView(Texts { "a" });
    editEnd(0);
    Input::type(*view, "bc");
    dictate(0);
    recognize("one");
    EXPECT_EQ(shownText(0), "abc one");
}

TEST_F(PanelDictationTest, EndsAtTheFirstTypedLetterAndKeepsBoth)
{
    openAndDictate({ tabOf("Prompts", { "a" }) });
    editEnd(0);
    EXPECT_TRUE(speech.isEngineRunning) << "moving the cursor is no edit";
    Input::type(*view, "!");
    EXPECT_FALSE(speech.isEngineRunning);
    recognize("one two");
    expectText("a one!");
    EXPECT_TRUE(Input::button(card(0), "Dictate"));
    Input::type(*view, "?");
    expectText("a one!?");
    Input::key(*view, Qt::Key_Z, Qt::ControlModifier);
    Input::key(*view, Qt::Key_Z, Qt::ControlModifier);
    expectText("a");
    advance(SaveDelay);
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "a");
}

TEST_F(PanelDictationTest, AppliesAnEditToTheLatestWords)
{
    openAndDictate({ tabOf("Prompts", { "a" }) });
    editEnd(0);
    deliver("one two");
    machine.mainQueue.runNext(); // the model has the words, the view is not rendered yet
    Input::type(*view, "!");
    settle();
    expectText("a one two!");
}

TEST_F(PanelDictationTest, EndsOnAnyEdit)
{
    const std::vector<Edit> edits {
        { "backspace", [this] { Input::key(*view, Qt::Key_Backspace); }, "a on" },
        { "a new line", [this] { Input::key(*view, Qt::Key_Return, Qt::ShiftModifier); },
          "a one\n" },
        { "paste", [this] { paste("clip"); }, "a oneclip" },
        { "cut", [this] { selectAllAnd(Qt::Key_X); }, "" },
        { "undo", [this] { Input::key(*view, Qt::Key_Z, Qt::ControlModifier); }, "a" },
        { "drop", [this] { drop("dropped"); }, "a onedropped" },
        { "committed text", [] { Input::commit(QStringLiteral("\u4F60")); }, "a one\u4F60" },
        { "the insert action of assistive technology",
          [this] { editableText().insertText(5, QStringLiteral("x")); }, "a onex" },
        { "its delete action", [this] { editableText().deleteText(0, 2); }, "one" },
        { "its replace action", [this] { editableText().replaceText(0, 1, QStringLiteral("b")); },
          "b one" },
        { "its value", [this] { accessible().setText(QAccessible::Value, QStringLiteral("new")); },
          "new" },
    };
    for (const auto &edit : edits) {
        SCOPED_TRACE(edit.name);
        openAndDictate({ tabOf("Prompts", { "a" }) });
        editEnd(0);
        edit.perform();
        EXPECT_FALSE(speech.isEngineRunning);
        recognize("one two");
        expectText(edit.text);
    }
}

TEST_F(PanelDictationTest, EndsWhenAnInputMethodStartsComposing)
{
    openAndDictate({ tabOf("Prompts", { "a" }) });
    editEnd(0);
    QInputMethodEvent composing(QStringLiteral("ni"), {});
    QApplication::sendEvent(&editor(0), &composing);
    EXPECT_FALSE(speech.isEngineRunning);
    recognize("one two");
    Input::commit(QStringLiteral("\u4F60"));
    expectText("a one\u4F60");
}

TEST_F(PanelDictationTest, EndsWhenTextIsPasted)
{
    openView(Texts { "" });
    dictate(0);
    machine.pasteboard.contents = "clip";
    press(card(0), "Paste");
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
    recognize("one");
    expectText("clip");
}

TEST_F(PanelDictationTest, ContinuesWhenThereIsNothingToPaste)
{
    openView(Texts { "" });
    dictate(0);
    press(card(0), "Paste");
    recognize("one");
    expectText("one");
}

TEST_F(PanelDictationTest, TypingBeforeTheMicrophoneOpensCancels)
{
    openView(Texts { "a" });
    press(card(0), "Dictate");
    editEnd(0);
    Input::type(*view, "b");
    speech.answer(0);
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
    expectText("ab");
}

TEST_F(PanelDictationTest, ContinuesWhileTheUserTypesElsewhere)
{
    openAndDictate({ tabOf("Prompts", { "a", "b" }) });
    editEnd(1);
    Input::type(*view, "!");
    recognize("one two");
    EXPECT_EQ(shownText(0), "a one two");
    EXPECT_EQ(shownText(1), "b!");
}

TEST_F(PanelDictationTest, MovesToAnotherNode)
{
    openAndDictate({ tabOf("Prompts", { "a", "b" }) });
    dictate(1);
    recognize("two");
    EXPECT_EQ(shownText(0), "a one");
    EXPECT_EQ(shownText(1), "b two");
    EXPECT_TRUE(Input::button(card(0), "Dictate"));
    EXPECT_TRUE(Input::button(card(1), "Stop"));
}

TEST_F(PanelDictationTest, EndsWhenItsNodeIsDeleted)
{
    openView(Texts { "a", "b" });
    dictate(0);
    press(card(0), "Delete node");
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
    EXPECT_EQ(shownText(0), "b");
}

TEST_F(PanelDictationTest, EndsWhenItsTabIsDeleted)
{
    openView({ tabOf("One", { "a" }), tabOf("Two", { "b" }) });
    dictate(0);
    store().deleteTab(tabID(0));
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
}

TEST_F(PanelDictationTest, EndsOnATabSwitchAndKeepsTheWords)
{
    openAndDictate({ tabOf("One", { "a" }), tabOf("Two", { "b" }) });
    store().selectTab(tabID(1));
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
    EXPECT_EQ(store().tabs().get()[0].blocks[0].text, "a one");
    EXPECT_EQ(store().tabs().get()[1].blocks[0].text, "b");
}

TEST_F(PanelDictationTest, EndsWhenThePanelIsHidden)
{
    openView(Texts { "a" });
    dictate(0);
    view->hide();
    EXPECT_FALSE(speech.isEngineRunning);
    EXPECT_FALSE(speech.tap);
}

TEST_F(PanelDictationTest, DoesNotStartInAHiddenPanel)
{
    openView(Texts { "a" });
    press(card(0), "Dictate");
    view->hide();
    speech.answer(0);
    settle();
    EXPECT_FALSE(speech.isEngineRunning);
}

TEST_F(PanelDictationTest, ClosesTheMicrophoneWhenTheViewIsDestroyed)
{
    openView(Texts { "a" });
    dictate(0);
    view.reset();
    EXPECT_EQ(speech.recognitions[0]->cancellations, 1);
}

TEST_F(PanelDictationTest, KeepsACardScrolledOutOfView)
{
    openView(numberedTexts(60));
    dictate(0);
    auto *const dictated = &card(0);
    view->setFocus();
    const auto id = blocks()[0].id;
    Input::wheel(*view, -200);
    settle();
    recognize("one");
    EXPECT_EQ(dictated->blockID(), id);
    EXPECT_EQ(dictated->findChild<NodeEditor *>()->toPlainText().toStdString(), "text 0 one");
}

TEST_F(PanelDictationTest, ShowsWhyDictationFailed)
{
    openView(Texts { "a" });
    EXPECT_FALSE(messageLine().isVisible());
    speech.startsEngine = false;
    dictate(0);
    settle();
    EXPECT_TRUE(messageLine().isVisible());
    EXPECT_EQ(Input::accessibleName(messageLine()), "The microphone could not be started.");
    EXPECT_EQ(Input::role(messageLine()), QAccessible::AlertMessage);
    const auto *const button = Input::button(*view, "New Node");
    EXPECT_LE(messageLine().geometry().bottom(), button->geometry().top());

    speech.startsEngine = true;
    dictate(0);
    settle();
    EXPECT_FALSE(messageLine().isVisible());
    EXPECT_TRUE(Input::button(card(0), "Stop"));
}

} // namespace
