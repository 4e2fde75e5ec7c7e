#include "support/ProcessorTime.h"
#include "views/TabStripFixture.h"

#include <QMouseEvent>
#include <gtest/gtest.h>

namespace
{

class TabStripRenamingTest : public TabStripFixture
{
protected:
    TabStripRenamingTest() { openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") }); }

    void type(const std::string &letters)
    {
        Input::type(window, letters);
        settle();
    }

    void key(Qt::Key which)
    {
        Input::key(window, which);
        settle();
    }

    bool isRenaming() const { return field() != nullptr; }
};

TEST_F(TabStripRenamingTest, ADoubleClickSelectsAndRenamesATab)
{
    doubleClick(1);
    EXPECT_EQ(activeChip(), 1U);
    ASSERT_TRUE(isRenaming());
    EXPECT_EQ(field()->parentWidget(), &chip(1));
    EXPECT_EQ(field()->text().toStdString(), "Two");
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(TabStripRenamingTest, FocusesTheFieldAsynchronously)
{
    Input::doubleClick(chip(1));
    EXPECT_FALSE(isRenaming() && field()->hasFocus());
    machine.mainQueue.runPending();
    ASSERT_TRUE(isRenaming());
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(TabStripRenamingTest, StoresEachKeystrokeImmediately)
{
    doubleClick(1);
    type("a");
    EXPECT_EQ(names()[1], "a");
    Input::type(window, "b"); // before rendering
    EXPECT_EQ(names()[1], "ab");
    settle();
    Input::key(window, Qt::Key_Backspace);
    EXPECT_EQ(names()[1], "a");
    Input::key(window, Qt::Key_Backspace);
    EXPECT_EQ(names()[1], "");
    type(" ");
    EXPECT_EQ(names()[1], " ");
    EXPECT_EQ(names()[0], "One");
    EXPECT_EQ(names()[2], "Three");
}

TEST_F(TabStripRenamingTest, LosesNoLettersTypedBeforeRendering)
{
    doubleClick(1);
    Input::type(window, "a quick name");
    EXPECT_EQ(names()[1], "a quick name");
    settle();
    EXPECT_EQ(field()->text().toStdString(), "a quick name");
}

TEST_F(TabStripRenamingTest, KeepsTheCursorWhileTyping)
{
    doubleClick(1);
    key(Qt::Key_Home);
    type("ab");
    EXPECT_EQ(names()[1], "abTwo");
    EXPECT_EQ(field()->cursorPosition(), 2);
}

TEST_F(TabStripRenamingTest, GrowsAndShrinksWithTheName)
{
    doubleClick(1);
    EXPECT_EQ(chip(1).width(), 74 + 14);
    type("abcdefghij");
    EXPECT_EQ(chip(1).width(), 96 + 14);
    EXPECT_EQ(field()->width(), 96);
    EXPECT_EQ(chip(2).x(), chip(1).x() + chip(1).width() + 4);
    type("abcdefghij");
    EXPECT_EQ(chip(1).width(), 145 + 14);
    field()->selectAll();
    key(Qt::Key_Delete);
    EXPECT_EQ(chip(1).width(), 74 + 14);
    EXPECT_EQ(field()->placeholderText().toStdString(), "Untitled");
}

TEST_F(TabStripRenamingTest, EndsOnReturn)
{
    doubleClick(1);
    type("New");
    key(Qt::Key_Return);
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(labels(), Texts({ "One", "New", "Three" }));
    EXPECT_EQ(activeChip(), 1U);
}

TEST_F(TabStripRenamingTest, EndsOnEscapeAndKeepsTheName)
{
    doubleClick(1);
    type("New");
    key(Qt::Key_Escape);
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(names()[1], "New");
}

TEST_F(TabStripRenamingTest, EndsWhenTheFocusMoves)
{
    doubleClick(1);
    type("New");
    Input::click(*otherField);
    settle();
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(names()[1], "New");
    EXPECT_TRUE(otherField->hasFocus());
}

TEST_F(TabStripRenamingTest, EndsWhenAnotherChipIsClicked)
{
    doubleClick(1);
    type("New");
    click(2);
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(names(), Texts({ "One", "New", "Three" }));
    EXPECT_EQ(activeChip(), 2U);
}

TEST_F(TabStripRenamingTest, EndsOnAPressOutsideTheField)
{
    const QPoint belowTheStrip(400, 150);
    const QPoint besideTheChips(390, 19);
    const QPoint besideTheFieldInItsChip = chip(1).mapTo(&window, QPoint(3, 10));
    for (const QPoint position : { belowTheStrip, besideTheChips, besideTheFieldInItsChip }) {
        doubleClick(1);
        ASSERT_TRUE(isRenaming());
        Input::press(window, position);
        settle();
        EXPECT_FALSE(isRenaming()) << position.x() << ", " << position.y();
        Input::release(window, position);
        settle();
        EXPECT_FALSE(isRenaming()) << position.x() << ", " << position.y();
    }
}

TEST_F(TabStripRenamingTest, FocusesTheChipAfterAPressOutside)
{
    doubleClick(1);
    Input::click(window, { 400, 150 });
    settle();
    EXPECT_TRUE(chip(1).hasFocus());
    Input::key(window, Qt::Key_F2);
    settle();
    EXPECT_TRUE(isRenaming());
}

TEST_F(TabStripRenamingTest, EndsWhenATabIsAdded)
{
    doubleClick(1);
    pressNewTab();
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(names(), Texts({ "One", "Two", "Three", "New Tab" }));

    doubleClick(1);
    QAccessible::queryAccessibleInterface(Input::button(*strip, "New tab"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([this] { return names().size() == 5U; }));
    settle();
    EXPECT_FALSE(isRenaming());
}

TEST_F(TabStripRenamingTest, ContinuesWhenTheFieldIsClicked)
{
    doubleClick(1);
    Input::click(*field());
    settle();
    EXPECT_TRUE(isRenaming());
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(TabStripRenamingTest, ContinuesWhenTheFieldsMenuIsUsed)
{
    doubleClick(1);
    type("Name");
    Input::withMenu([this] { Input::click(*field(), field()->rect().center(), Qt::RightButton); },
                    [](QMenu &menu) {
                        for (auto *const action : menu.actions()) {
                            if (action->text().contains(QStringLiteral("Select All")))
                                Input::choose(menu, action);
                        }
                    });
    settle();
    ASSERT_TRUE(isRenaming());
    EXPECT_EQ(field()->selectedText().toStdString(), "Name");
}

TEST_F(TabStripRenamingTest, ContinuesWhenTheFieldPassesAPressOn)
{
    doubleClick(1);
    const QPointF place = field()->geometry().center();
    QMouseEvent press(QEvent::MouseButtonPress, place, chip(1).mapToGlobal(place), Qt::RightButton,
                      Qt::RightButton, {});
    QApplication::sendEvent(&chip(1), &press); // as Qt 6.11 does
    settle();
    EXPECT_TRUE(isRenaming());
}

TEST_F(TabStripRenamingTest, EndsWhenTheFocusMovesWhileAnotherWindowIsActive)
{
    doubleClick(1);
    Input::whileInactive(window, [this] { otherField->setFocus(Qt::PopupFocusReason); });
    settle();
    EXPECT_TRUE(otherField->hasFocus());
    EXPECT_FALSE(isRenaming());
}

TEST_F(TabStripRenamingTest, MovesToTheNextDoubleClickedChip)
{
    doubleClick(1);
    type("New");
    doubleClick(2);
    ASSERT_TRUE(isRenaming());
    EXPECT_EQ(strip->findChildren<QLineEdit *>().size(), 1);
    EXPECT_EQ(field()->parentWidget(), &chip(2));
    EXPECT_TRUE(field()->hasFocus());
    type("3");
    EXPECT_EQ(names(), Texts({ "One", "New", "3" }));
}

TEST_F(TabStripRenamingTest, ContinuesWhileAnotherWindowIsActive)
{
    doubleClick(1);
    QWidget other;
    Input::show(other);
    settle();
    EXPECT_TRUE(isRenaming());
}

TEST_F(TabStripRenamingTest, StartsFromTheMenuAndByF2)
{
    chooseFromMenu(2, "Rename Tab");
    EXPECT_EQ(activeChip(), 2U);
    ASSERT_TRUE(isRenaming());
    EXPECT_TRUE(field()->hasFocus());
    key(Qt::Key_Return);

    chip(0).setFocus(Qt::TabFocusReason);
    key(Qt::Key_F2);
    EXPECT_EQ(activeChip(), 0U);
    ASSERT_TRUE(isRenaming());
    EXPECT_EQ(field()->parentWidget(), &chip(0));
}

TEST_F(TabStripRenamingTest, EndsWhenTheTabIsDeleted)
{
    doubleClick(1);
    store().deleteTab(tabID(1));
    settle();
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(labels(), Texts({ "One", "Three" }));
    Input::type(window, "x");
    settle();
    EXPECT_EQ(names(), Texts({ "One", "Three" }));
    doubleClick(0);
    EXPECT_TRUE(isRenaming());
}

TEST_F(TabStripRenamingTest, EndsWhenTheTabIsDeletedFromItsMenu)
{
    doubleClick(1);
    store().addTab();
    settle();
    Input::withMenu(
        [this] {
            Input::click(chip(1), { 3, 10 }, Qt::RightButton);
        },
        [](QMenu &menu) { Input::choose(menu, menu.actions()[2]); });
    settle();
    EXPECT_FALSE(isRenaming());
    EXPECT_EQ(labels(), Texts({ "One", "Three", "New Tab" }));
}

TEST_F(TabStripRenamingTest, ShowsANameChangedInTheStore)
{
    doubleClick(1);
    store().renameTab(tabID(1), "Elsewhere");
    settle();
    EXPECT_EQ(field()->text().toStdString(), "Elsewhere");
}

TEST_F(TabStripRenamingTest, StoresNoBreakSpacesButNoHalfSurrogatePairs)
{
    doubleClick(1);
    Input::commit(QStringLiteral("\u00A0\U0001F600"));
    EXPECT_EQ(names()[1], "\u00A0\U0001F600");
    Input::commit(QString(QChar(0xD83D)));
    settle();
    const auto stored = QString::fromStdString(names()[1]);
    EXPECT_EQ(stored.toStdString(), names()[1]);
    EXPECT_TRUE(QStringView(stored).isValidUtf16());
    Input::type(window, "x");
    settle();
    EXPECT_TRUE(names()[1].ends_with("x"));
}

TEST_F(TabStripRenamingTest, EditsANameWithLineBreaks)
{
    store().renameTab(tabID(1), "a\nb");
    settle();
    doubleClick(1);
    EXPECT_EQ(names()[1], "a\nb");
    key(Qt::Key_End);
    type("c");
    EXPECT_TRUE(names()[1].ends_with("c"));
    EXPECT_EQ(names()[1].size(), 4U);
}

TEST_F(TabStripRenamingTest, IsFastWithAVeryLongName)
{
    const ProcessorTime spent;
    store().renameTab(tabID(1), std::string(200'000, 'a'));
    settle();
    doubleClick(1);
    key(Qt::Key_End);
    type("b");
    EXPECT_EQ(names()[1].size(), 200'001U);
    key(Qt::Key_Return);
    EXPECT_LT(spent.seconds(), 10);
}

} // namespace
