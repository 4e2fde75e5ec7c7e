#include "app/PanelFixture.h"
#include "views/DragHandle.h"
#include "views/Picture.h"

#include <QLineEdit>
#include <gtest/gtest.h>

#include <set>

namespace
{

/// Everything works by keyboard, with a visible focus.
class PanelKeyboardTest : public PanelFixture
{
protected:
    void tab(bool forwards = true)
    {
        const bool isTyping = qobject_cast<NodeEditor *>(QApplication::focusWidget());
        const Qt::KeyboardModifiers control = isTyping ? Qt::ControlModifier : Qt::NoModifier;
        if (forwards)
            Input::key(panel(), Qt::Key_Tab, control);
        else
            Input::key(panel(), Qt::Key_Backtab, control | Qt::ShiftModifier);
        advance(Milliseconds(30)); // faster than anyone types
        settle();
    }

    /// The controls that Tab visits, until it returns to the first one.
    std::vector<QWidget *> tabCycle(bool forwards = true)
    {
        panel().setFocus();
        std::vector<QWidget *> visited;
        for (int count = 0; count < 500; ++count) {
            tab(forwards);
            auto *const focus = QApplication::focusWidget();
            if (!visited.empty() && focus == visited.front())
                return visited;
            visited.push_back(focus);
        }
        ADD_FAILURE() << "Tab never returns to its first control";
        return visited;
    }

    std::set<QWidget *> controlsInSight()
    {
        std::set<QWidget *> controls;
        for (auto *const widget : panel().findChildren<QWidget *>()) {
            const bool isThere = widget->isVisible() && !widget->visibleRegion().isEmpty();
            if (isThere && widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy())
                controls.insert(widget);
        }
        return controls;
    }

    /// Whether `first` comes before `second` when reading line by line.
    bool precedes(const QWidget &first, const QWidget &second)
    {
        const QRect a = placeOf(first);
        const QRect b = placeOf(second);
        const bool isOneLine = a.top() <= b.center().y() && b.top() <= a.center().y();
        return isOneLine ? a.left() < b.left() : a.top() < b.top();
    }
};

TEST_F(PanelKeyboardTest, VisitsEveryControlOnceInReadingOrder)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    const auto visited = tabCycle();
    EXPECT_EQ(std::set<QWidget *>(visited.begin(), visited.end()), controlsInSight());
    EXPECT_EQ(visited.size(), controlsInSight().size());
    int breaks = 0; // from the end of the panel to its top
    for (std::size_t index = 0; index + 1 < visited.size(); ++index) {
        if (!precedes(*visited[index], *visited[index + 1])) {
            ++breaks;
            EXPECT_EQ(Input::accessibleName(*visited[index]), "New Node");
        }
    }
    EXPECT_EQ(breaks, 1);
}

TEST_F(PanelKeyboardTest, VisitsTheSameBackwards)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    auto forwards = tabCycle();
    auto backwards = tabCycle(false);
    ASSERT_EQ(forwards.size(), backwards.size());
    std::ranges::reverse(backwards);
    EXPECT_EQ(forwards, backwards);
}

TEST_F(PanelKeyboardTest, VisitsNodesOutOfSight)
{
    start({ tabOf("One", numberedTexts(12)) });
    std::vector<std::string> names;
    for (int count = 0; count < 150 && (names.empty() || names.back() != "Node 12 of 12");
         ++count) {
        tab();
        if (qobject_cast<DragHandle *>(QApplication::focusWidget())) {
            auto &card = *QApplication::focusWidget()->parentWidget();
            names.push_back(Input::accessibleName(card));
            EXPECT_FALSE(card.visibleRegion().isEmpty());
        }
    }
    Texts expected;
    for (int number = 1; number <= 12; ++number)
        expected.push_back("Node " + std::to_string(number) + " of 12");
    EXPECT_EQ(names, expected);
}

TEST_F(PanelKeyboardTest, DrawsAFocusRing)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    for (auto *const control : controlsInSight()) {
        panel().setFocus();
        const Picture before(panel());
        control->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(control->hasFocus());
        const QRectF change = Picture(panel()).differenceFrom(before, 24);
        const auto name = Input::accessibleName(*control);
        EXPECT_GE(change.width(), control->width() - 8) << name;
        EXPECT_GE(change.height(), control->height() - 8) << name;
        EXPECT_TRUE(QRectF(placeOf(*control)).adjusted(-4, -4, 4, 4).contains(change)) << name;
    }
}

TEST_F(PanelKeyboardTest, NamesEveryControlAndGivesItARole)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    for (auto *const control : controlsInSight()) {
        EXPECT_NE(Input::accessibleName(*control), "") << control->metaObject()->className();
        EXPECT_NE(Input::role(*control), QAccessible::Client) << Input::accessibleName(*control);
        EXPECT_NE(Input::role(*control), QAccessible::NoRole) << Input::accessibleName(*control);
    }
    EXPECT_EQ(Input::accessibleName(*cards()[0]), "Node 1 of 2");
    EXPECT_EQ(Input::accessibleName(*cards()[1]), "Node 2 of 2");
    EXPECT_EQ(Input::role(*cards()[0]), QAccessible::Grouping);
}

TEST_F(PanelKeyboardTest, PressesEveryButtonByReturnAndSpace)
{
    start({ tabOf("One", { "https://example.com" }) });
    for (const auto key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space }) {
        for (const auto *const name : { "Copy", "Launch" }) {
            machine.pasteboard.contents.reset();
            machine.workspace.opened.clear();
            advance(Milliseconds(1400));
            settle();
            button(name).setFocus(Qt::TabFocusReason);
            Input::key(panel(), key);
            settle();
            EXPECT_NE(machine.pasteboard.contents.has_value(), !machine.workspace.opened.empty())
                << name;
        }
        const auto before = chips().size();
        button("New tab").setFocus(Qt::TabFocusReason);
        Input::key(panel(), key);
        settle();
        EXPECT_EQ(chips().size(), before + 1);
        chips()[0]->setFocus(Qt::TabFocusReason);
        Input::key(panel(), key);
        settle();
        EXPECT_TRUE(chips()[0]->isChecked());
    }
}

TEST_F(PanelKeyboardTest, PressesOnceWhileReturnIsHeld)
{
    start({ tabOf("One") });
    auto &newTab = button("New tab");
    newTab.setFocus(Qt::TabFocusReason);
    Input::key(panel(), Qt::Key_Return);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QApplication::sendEvent(&newTab, &repeat);
    settle();
    EXPECT_EQ(chips().size(), 2U);
}

TEST_F(PanelKeyboardTest, LeavesTheRenamedTabByTab)
{
    start({ tabOf("One"), tabOf("Two") });
    Input::doubleClick(*chips()[0]);
    settle();
    ASSERT_TRUE(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    tab();
    EXPECT_EQ(QApplication::focusWidget(), chips()[1]);
    EXPECT_FALSE(panel().findChild<QLineEdit *>());
}

TEST_F(PanelKeyboardTest, StaysInTheAboutCardWhileItIsOpen)
{
    start({ tabOf("One", { "a" }) });
    button("About Quillsatchel").setFocus(Qt::TabFocusReason);
    Input::key(panel(), Qt::Key_Return);
    settle();
    ASSERT_TRUE(aboutCard());
    for (int count = 0; count < 10; ++count) {
        tab(count < 5);
        auto *const focus = QApplication::focusWidget();
        EXPECT_TRUE(focus == aboutCard() || aboutCard()->isAncestorOf(focus));
    }
    Input::key(panel(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(QTest::qWaitFor([this] {
        settle();
        return !aboutCard();
    }));
    EXPECT_TRUE(button("About Quillsatchel").hasFocus());
}

TEST_F(PanelKeyboardTest, ShowsTheClickedTabWhileAnEditorHasTheFocus)
{
    std::vector<PromptTab> tabs;
    for (int number = 0; number < 40; ++number)
        tabs.push_back(tabOf("Tab number " + std::to_string(number), { "a" }));
    start(tabs);
    Input::click(editor(0));
    Input::wheel(*chips()[0], -10);
    const auto all = chips();
    auto *const clicked = *std::ranges::find_if(all, [](const TabChip *chip) {
        return chip->visibleRegion().boundingRect() == chip->rect();
    });
    ASSERT_NE(clicked, all[0]);
    Input::click(*clicked);
    draw();
    EXPECT_TRUE(clicked->isChecked());
    EXPECT_EQ(clicked->visibleRegion().boundingRect(), clicked->rect());
    for (const auto *const chip : chips())
        EXPECT_FALSE(chip->hasFocus()) << chip->text().toStdString();
}

TEST_F(PanelKeyboardTest, MovesTheFocusToTheNodeAfterADeletedOne)
{
    start({ tabOf("One", { "a", "b", "c" }) });
    cards()[1]->findChild<DragHandle *>()->setFocus(Qt::TabFocusReason);
    tab();
    tab();
    ASSERT_EQ(Input::accessibleName(*QApplication::focusWidget()), "Delete node");
    Input::key(panel(), Qt::Key_Return);
    draw();
    ASSERT_EQ(cards().size(), 2U);
    ASSERT_TRUE(QApplication::focusWidget());
    EXPECT_TRUE(cards()[1]->isAncestorOf(QApplication::focusWidget()))
        << Input::accessibleName(*QApplication::focusWidget());
}

TEST_F(PanelKeyboardTest, KeepsTheFocusInAMovedNode)
{
    start({ tabOf("One", { "a", "b", "c" }) });
    auto *const handle = cards()[0]->findChild<DragHandle *>();
    handle->setFocus(Qt::TabFocusReason);
    Input::key(panel(), Qt::Key_Down);
    draw();
    Input::key(panel(), Qt::Key_Down);
    draw();
    EXPECT_TRUE(handle->hasFocus());
    EXPECT_EQ(editor(2).toPlainText().toStdString(), "a");
    EXPECT_TRUE(cards()[2]->isAncestorOf(handle));
}

TEST_F(PanelKeyboardTest, MovesTheFocusOnWhenPasteDisappears)
{
    start({ tabOf("One", { "" }) });
    machine.pasteboard.contents = "pasted";
    button("Paste").setFocus(Qt::TabFocusReason);
    Input::key(panel(), Qt::Key_Return);
    draw();
    ASSERT_TRUE(QApplication::focusWidget());
    EXPECT_TRUE(cards()[0]->isAncestorOf(QApplication::focusWidget()));
    EXPECT_TRUE(QApplication::focusWidget()->isVisible());
}

} // namespace
