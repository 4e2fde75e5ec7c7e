#include "app/MiniSwitch.h"
#include "app/PanelFixture.h"
#include "views/AccessibleTree.h"
#include "views/ApplicationPanel.h"
#include "views/ChoiceList.h"
#include "views/DragHandle.h"
#include "views/LauncherSettingsCard.h"
#include "views/LinkButton.h"
#include "views/NodeList.h"
#include "views/OverlayScrollBar.h"
#include "views/TextField.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace
{

/// Operates every kind of control through accessibility actions, as assistive technology does.
class AccessibleActionsTest : public PanelFixture
{
protected:
    static QAccessibleInterface &accessible(QWidget &widget)
    {
        return *QAccessible::queryAccessibleInterface(&widget);
    }

    void perform(QWidget &widget, const QString &action)
    {
        auto *const actions = accessible(widget).actionInterface();
        ASSERT_TRUE(actions->actionNames().contains(action)) << action.toStdString();
        actions->doAction(action);
        settle();
        settle();
    }

    /// Presses a button and waits for the click, which Qt delays.
    void pressByAction(QAbstractButton &pressed)
    {
        QSignalSpy clicks(&pressed, &QAbstractButton::clicked);
        perform(pressed, QAccessibleActionInterface::pressAction());
        EXPECT_TRUE(!clicks.isEmpty() || clicks.wait());
        settle();
        settle();
    }

    void openMenuOf(QWidget &widget)
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(&widget, &event);
        ASSERT_TRUE(Input::visibleMenu());
    }

    static void pressEntry(const std::string &name)
    {
        auto &menu = accessible(*Input::visibleMenu());
        for (int index = 0; index < menu.childCount(); ++index) {
            auto &entry = *menu.child(index);
            if (entry.text(QAccessible::Name).toStdString() == name)
                return entry.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        }
        FAIL() << name;
    }

    /// The checked entries of the open menu.
    static Texts checkedEntries()
    {
        Texts names;
        auto &menu = accessible(*Input::visibleMenu());
        for (int index = 0; index < menu.childCount(); ++index) {
            auto &entry = *menu.child(index);
            if (entry.state().checked)
                names.push_back(entry.text(QAccessible::Name).toStdString());
        }
        return names;
    }

    void replaceText(QWidget &field, const QString &text)
    {
        auto *const editing = accessible(field).editableTextInterface();
        ASSERT_TRUE(editing);
        editing->replaceText(0, accessible(field).textInterface()->characterCount(), text);
        settle();
        settle();
    }

    static bool offers(QWidget &widget, const QString &action)
    {
        return accessible(widget).actionInterface()->actionNames().contains(action);
    }

    std::vector<std::string> texts()
    {
        std::vector<std::string> shown;
        for (std::size_t index = 0; index < cards().size(); ++index)
            shown.push_back(editor(index).toPlainText().toStdString());
        return shown;
    }
};

TEST_F(AccessibleActionsTest, PressesTheButtonsOfANode)
{
    start({ tabOf("One", { "", "https://example.com" }) });
    pressByAction(button("Copy"));
    EXPECT_EQ(machine.pasteboard.contents, "https://example.com");
    pressByAction(button("Paste"));
    EXPECT_EQ(texts()[0], "https://example.com");
    pressByAction(*Input::button(*cards()[1], "Launch"));
    EXPECT_EQ(machine.workspace.opened, Texts { "https://example.com" });
    pressByAction(button("Dictate"));
    EXPECT_EQ(machine.speech.authorizationRequests.size(), 1U);
    pressByAction(button("Delete node"));
    EXPECT_EQ(cards().size(), 1U);
}

TEST_F(AccessibleActionsTest, PressesNewNodeAndNewTab)
{
    start({ tabOf("One") });
    pressByAction(button("New Node"));
    EXPECT_EQ(cards().size(), 1U);
    pressByAction(button("New tab"));
    EXPECT_EQ(chips().size(), 2U);
}

TEST_F(AccessibleActionsTest, ChoosesAColorFromTheMenu)
{
    start({ tabOf("One", { "a" }) });
    auto &palette = button("Node color");
    EXPECT_EQ(accessible(palette).text(QAccessible::Description).toStdString(), "None");
    pressByAction(palette);
    ASSERT_TRUE(Input::visibleMenu());
    EXPECT_EQ(checkedEntries(), Texts({ "None" }));
    pressEntry("Orange");
    EXPECT_FALSE(Input::visibleMenu());
    settle();
    EXPECT_EQ(accessible(palette).text(QAccessible::Description).toStdString(), "Orange");

    pressByAction(palette);
    ASSERT_TRUE(Input::visibleMenu());
    EXPECT_EQ(checkedEntries(), Texts({ "Orange" }));
    Input::visibleMenu()->close();
}

TEST_F(AccessibleActionsTest, DeletesATabWhileItsMenuIsOpen)
{
    start({ tabOf("One"), tabOf("Two") });
    openMenuOf(*chips()[1]);
    perform(*chips()[1], QStringLiteral("Delete Tab"));
    EXPECT_EQ(chips().size(), 1U);
    EXPECT_FALSE(Input::visibleMenu());
}

TEST_F(AccessibleActionsTest, DeletesATabByItsMenu)
{
    start({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    for (const std::size_t left : { 2U, 1U }) {
        openMenuOf(*chips()[1]);
        pressEntry("Delete Tab");
        settle();
        settle();
        EXPECT_EQ(chips().size(), left);
        EXPECT_FALSE(Input::visibleMenu());
    }
}

TEST_F(AccessibleActionsTest, FindsTheEntriesOfAReopenedMenu)
{
    start({ tabOf("One"), tabOf("Two") });
    for (int count = 0; count < 2; ++count) {
        openMenuOf(*chips()[1]);
        auto &menu = accessible(*Input::visibleMenu());
        for (int index = 0; index < menu.childCount(); ++index)
            EXPECT_EQ(menu.child(index)->parent(), &menu) << index;
        Input::visibleMenu()->close();
        settle();
    }
}

TEST_F(AccessibleActionsTest, DeletesANodeWhileItsMenusAreOpen)
{
    start({ tabOf("One", { "a", "b", "c" }) });
    pressByAction(*Input::button(*cards()[0], "Node color"));
    ASSERT_TRUE(Input::visibleMenu());
    pressByAction(*Input::button(*cards()[0], "Delete node"));
    EXPECT_EQ(texts(), (Texts { "b", "c" }));
    EXPECT_FALSE(Input::visibleMenu());

    openMenuOf(*editor(0).viewport());
    pressByAction(*Input::button(*cards()[0], "Delete node"));
    EXPECT_EQ(texts(), (Texts { "c" }));
    EXPECT_FALSE(Input::visibleMenu());
}

TEST_F(AccessibleActionsTest, MovesANode)
{
    start({ tabOf("One", { "a", "b", "c" }) });
    auto *const handle = cards()[0]->findChild<DragHandle *>();
    perform(*handle, QStringLiteral("Move Down"));
    EXPECT_EQ(texts(), (Texts { "b", "a", "c" }));
    perform(*handle, QStringLiteral("Move Up"));
    EXPECT_EQ(texts(), (Texts { "a", "b", "c" }));
    perform(*handle, QStringLiteral("Move Up"));
    EXPECT_EQ(texts(), (Texts { "a", "b", "c" })) << "already the first";
}

TEST_F(AccessibleActionsTest, SelectsRenamesAndDeletesATab)
{
    start({ tabOf("One"), tabOf("Two") });
    pressByAction(*chips()[1]);
    EXPECT_TRUE(accessible(*chips()[1]).state().selected);
    EXPECT_FALSE(accessible(*chips()[0]).state().selected);

    perform(*chips()[0], QStringLiteral("Rename Tab"));
    auto *const field = chips()[0]->findChild<QLineEdit *>();
    ASSERT_TRUE(field);
    EXPECT_TRUE(field->hasFocus());
    replaceText(*field, QStringLiteral("Letters"));
    EXPECT_EQ(accessible(*chips()[0]).text(QAccessible::Name).toStdString(), "Letters");

    perform(*chips()[0], QStringLiteral("Delete Tab"));
    ASSERT_EQ(chips().size(), 1U);
    EXPECT_FALSE(offers(*chips()[0], QStringLiteral("Delete Tab"))) << "the last tab";
}

TEST_F(AccessibleActionsTest, EditsANode)
{
    start({ tabOf("One", { "a" }) });
    replaceText(editor(0), QStringLiteral("another\ntext"));
    advance(SaveDelay);
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "another\ntext");
    auto *const text = accessible(editor(0)).textInterface();
    EXPECT_EQ(text->text(0, text->characterCount()).toStdString(), "another\ntext");
}

TEST_F(AccessibleActionsTest, TogglesTheSwitch)
{
    start({ tabOf("One") });
    auto &toggle = *panel().findChild<MiniSwitch *>();
    for (const bool isOn : { false, true }) {
        perform(toggle, QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(isFloating(), isOn);
        EXPECT_EQ(accessible(toggle).state().checked, isOn);
    }
}

TEST_F(AccessibleActionsTest, ScrollsTheList)
{
    start({ tabOf("One", numberedTexts(12)) });
    auto &bar = *panel().findChild<NodeList *>()->findChild<OverlayScrollBar *>(
        QString(), Qt::FindDirectChildrenOnly);
    auto *const value = accessible(bar).valueInterface();
    EXPECT_EQ(texts()[0], "text 0");
    value->setCurrentValue(value->maximumValue());
    draw();
    EXPECT_EQ(texts().back(), "text 11");
    EXPECT_EQ(value->currentValue(), value->maximumValue());
}

TEST_F(AccessibleActionsTest, HidesTheScrollBarWhileAllNodesFit)
{
    start({ tabOf("One", { "a" }) });
    for (const auto &object : AccessibleTree::visibleObjects(panel()))
        EXPECT_NE(object.role(), QAccessible::ScrollBar) << object.path;
    for (int count = 0; count < 5; ++count)
        press("New Node");
    int bars = 0;
    for (const auto &object : AccessibleTree::visibleObjects(panel()))
        bars += object.role() == QAccessible::ScrollBar ? 1 : 0;
    EXPECT_EQ(bars, 1);
}

TEST_F(AccessibleActionsTest, OpensAndClosesTheAboutCard)
{
    start({ tabOf("One") });
    pressByAction(button("About Quillsatchel"));
    ASSERT_TRUE(aboutCard());
    auto *const close = Input::button(*aboutCard(), "Close");
    ASSERT_TRUE(QTest::qWaitFor([close] { return close->hasFocus(); }));
    pressByAction(*aboutCard()->findChild<LinkButton *>());
    EXPECT_EQ(machine.workspace.opened.size(), 1U);
    pressByAction(*close);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !aboutCard(); }));
}

TEST_F(AccessibleActionsTest, SetsAndClearsALauncher)
{
    start({ tabOf("One") });
    delegate->showSettings();
    settle();
    auto *const card = panel().findChild<LauncherSettingsCard *>();
    ASSERT_TRUE(QTest::qWaitFor([card] { return Input::button(*card, "Close")->hasFocus(); }));
    auto &submit = *Input::button(*card, "Set URL");
    EXPECT_FALSE(offers(submit, QAccessibleActionInterface::pressAction())) << "the field is empty";
    replaceText(*card->findChild<TextField *>(), QStringLiteral("example.com"));
    pressByAction(submit);
    auto *const clear = Input::button(*card, "Clear launcher");
    ASSERT_TRUE(clear);
    pressByAction(*clear);
    EXPECT_FALSE(Input::button(*card, "Clear launcher"));
}

TEST_F(AccessibleActionsTest, ChoosesAnApplication)
{
    machine.workspace.icon = QImage(48, 48, QImage::Format_ARGB32_Premultiplied);
    machine.workspace.applications = { { "/apps/a.desktop", "Calculator", "", "" },
                                       { "/apps/b.desktop", "Calendar", "", "" } };
    start({ tabOf("One") });
    delegate->showSettings();
    settle();
    auto *const card = panel().findChild<LauncherSettingsCard *>();
    ASSERT_TRUE(QTest::qWaitFor([card] { return Input::button(*card, "Close")->hasFocus(); }));
    pressByAction(*Input::button(*card, "Choose App…"));
    machine.workspace.finishListing();
    auto *const chooser = panel().findChild<ApplicationPanel *>();
    ASSERT_TRUE(chooser);
    auto &list = accessible(*chooser->findChild<ChoiceList *>());
    ASSERT_EQ(list.childCount(), 2);
    list.child(1)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(list.child(1)->state().selected);
    pressByAction(*Input::button(*chooser, "Add Launcher"));
    EXPECT_FALSE(panel().findChild<ApplicationPanel *>());
    EXPECT_TRUE(Input::button(*card, "Clear launcher"));
}

TEST_F(AccessibleActionsTest, PressesTheWindowButtons)
{
    start({ tabOf("One") });
    pressByAction(button("Zoom"));
    EXPECT_TRUE(panel().isMaximized());
    pressByAction(button("Zoom"));
    EXPECT_FALSE(panel().isMaximized());
    pressByAction(button("Minimize"));
    EXPECT_TRUE(panel().isMinimized());
}

} // namespace
