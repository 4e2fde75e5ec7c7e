#include "views/ApplicationPanelFixture.h"

#include <QAccessible>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace
{

using namespace std::chrono_literals;

class ApplicationPanelTest : public ApplicationPanelFixture
{
protected:
    /// The panel gave exactly this answer and was deleted.
    void expectAnswer(const std::optional<std::string> &answer)
    {
        EXPECT_FALSE(panel && panel->isVisible());
        settle();
        EXPECT_FALSE(panel);
        EXPECT_EQ(answers, Answers { answer });
    }

    void expectStillOpen() const
    {
        EXPECT_TRUE(panel->isVisible());
        EXPECT_EQ(answers, Answers());
    }

    QWidget *focus() const { return panel->focusWidget(); }
};

TEST_F(ApplicationPanelTest, DecoratesItsDialogs)
{
    open();
    EXPECT_EQ(decorated, std::vector<QDialog *> { panel });
    Input::click(button("Other\u2026"));
    ASSERT_TRUE(fileDialog());
    EXPECT_EQ(decorated, (std::vector<QDialog *> { panel, fileDialog() }));
}

TEST_F(ApplicationPanelTest, IsAResizableWindowWithItsTitle)
{
    open();
    EXPECT_EQ(panel->windowTitle().toStdString(), "Choose an Application");
    EXPECT_EQ(panel->windowType(), Qt::Dialog);
    EXPECT_FALSE(panel->isModal());
    EXPECT_FALSE(panel->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(panel->size(), QSize(420, 480));
    EXPECT_EQ(panel->minimumSize(), QSize(320, 300));
    EXPECT_GT(panel->maximumHeight(), 2000);
}

TEST_F(ApplicationPanelTest, StacksSearchListAndButtons)
{
    open();
    const auto frameOf = [this](const QWidget &widget) { return Input::frameIn(*panel, widget); };
    const QRect other = frameOf(button("Other\u2026"));
    const QRect cancel = frameOf(button("Cancel"));
    const QRect add = frameOf(button("Add Launcher"));
    EXPECT_EQ(field().placeholderText().toStdString(), "Search");
    EXPECT_LT(frameOf(field()).bottom(), frameOf(list()).top());
    EXPECT_LT(frameOf(list()).bottom(), other.top());
    EXPECT_EQ(other.top(), cancel.top());
    EXPECT_EQ(other.left(), frameOf(list()).left());
    EXPECT_LT(other.right(), cancel.left());
    EXPECT_LT(cancel.right(), add.left());
    EXPECT_EQ(add.right(), frameOf(list()).right());
}

TEST_F(ApplicationPanelTest, GivesSpareSpaceToTheList)
{
    open();
    const QSize before = list().size();
    panel->resize(500, 600);
    settle();
    EXPECT_EQ(list().size() - before, QSize(80, 120));
    panel->resize(320, 300);
    settle();
    EXPECT_EQ(before - list().size(), QSize(100, 180));
}

TEST_F(ApplicationPanelTest, OpensBeforeTheApplicationsAreListed)
{
    openEmpty();
    EXPECT_EQ(workspace.listings.size(), 1U);
    EXPECT_EQ(shownNames(), Names());
    EXPECT_EQ(note(), "");
    workspace.finishListing();
    EXPECT_EQ(shownNames(), (Names { "Calculator", "Calendar", "Mail", "Tables", "Viewer" }));
    EXPECT_EQ(note(), "");
}

TEST_F(ApplicationPanelTest, ShowsLoadingOnlyAfterADelay)
{
    openEmpty();
    EXPECT_EQ(note(), "");
    mainQueue.advance(499ms);
    EXPECT_EQ(note(), "");
    mainQueue.advance(1ms);
    EXPECT_EQ(note(), "Loading\u2026");
    workspace.finishListing();
    EXPECT_EQ(note(), "");
}

TEST_F(ApplicationPanelTest, SaysWhenThereAreNoApplications)
{
    workspace.applications.clear();
    open();
    EXPECT_EQ(note(), "No applications found");
    mainQueue.advance(500ms);
    EXPECT_EQ(note(), "No applications found");
}

TEST_F(ApplicationPanelTest, SaysWhenNothingMatches)
{
    open();
    type("calx");
    EXPECT_EQ(shownNames(), Names());
    EXPECT_EQ(note(), "No applications found");
    EXPECT_EQ(selectedName(), "");
    EXPECT_FALSE(button("Add Launcher").isEnabled());
    press(Qt::Key_Return);
    expectStillOpen();
    press(Qt::Key_Backspace);
    EXPECT_EQ(note(), "");
    EXPECT_EQ(selectedName(), "Calculator");
}

TEST_F(ApplicationPanelTest, SearchesFromTheFirstKey)
{
    open();
    EXPECT_TRUE(field().hasFocus());
    type("c");
    EXPECT_EQ(field().text().toStdString(), "c");
    EXPECT_EQ(shownNames(), (Names { "Calculator", "Calendar", "Tables", "Viewer" }));
    type("al");
    EXPECT_EQ(shownNames(), (Names { "Calculator", "Calendar", "Tables" }));
    type(" row");
    EXPECT_EQ(shownNames(), Names { "Tables" });
}

TEST_F(ApplicationPanelTest, AppliesASearchTypedBeforeTheListArrives)
{
    openEmpty();
    type("cal");
    EXPECT_EQ(note(), "");
    workspace.finishListing();
    EXPECT_EQ(shownNames(), (Names { "Calculator", "Calendar", "Tables" }));
    EXPECT_EQ(selectedName(), "Calculator");
}

TEST_F(ApplicationPanelTest, SelectsTheFirstMatchOfASearch)
{
    open();
    EXPECT_EQ(selectedName(), "");
    type("ca");
    EXPECT_EQ(selectedName(), "Calculator");
    type("len");
    EXPECT_EQ(selectedName(), "Calendar");
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(selectedName(), "");
    type(" ");
    EXPECT_EQ(selectedName(), "");
}

TEST_F(ApplicationPanelTest, ScrollsToTheTopOnEachSearch)
{
    install(500);
    open();
    for (int count = 0; count < 20; ++count)
        press(Qt::Key_PageDown);
    EXPECT_GT(list().verticalScrollBar()->value(), 0);
    type("application 1");
    EXPECT_EQ(list().verticalScrollBar()->value(), 0);
    EXPECT_EQ(selectedName(), "Application 1");
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_GT(list().verticalScrollBar()->value(), 0);
    for (int count = 0; count < 13; ++count)
        press(Qt::Key_Backspace);
    EXPECT_EQ(list().verticalScrollBar()->value(), 0);
}

TEST_F(ApplicationPanelTest, AddsOnlyASelectedApplication)
{
    open();
    EXPECT_FALSE(button("Add Launcher").isEnabled());
    Input::click(button("Add Launcher"));
    press(Qt::Key_Return);
    expectStillOpen();
    clickRow(2);
    EXPECT_TRUE(button("Add Launcher").isEnabled());
    expectStillOpen();
    Input::click(button("Add Launcher"));
    expectAnswer("/apps/mail.desktop");
}

TEST_F(ApplicationPanelTest, ArrowKeysMoveTheSelectionFromTheField)
{
    open();
    press(Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Calculator");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Mail");
    press(Qt::Key_Up);
    EXPECT_EQ(selectedName(), "Calendar");
    EXPECT_TRUE(field().hasFocus());
    EXPECT_TRUE(button("Add Launcher").isEnabled());
}

TEST_F(ApplicationPanelTest, SelectionStopsAtBothEnds)
{
    open();
    for (int count = 0; count < 7; ++count)
        press(Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Viewer");
    for (int count = 0; count < 7; ++count)
        press(Qt::Key_Up);
    EXPECT_EQ(selectedName(), "Calculator");
}

TEST_F(ApplicationPanelTest, IgnoresKeysWhileTheListIsEmpty)
{
    openEmpty();
    for (const auto key : { Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown })
        press(key);
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), "");
    expectStillOpen();
}

TEST_F(ApplicationPanelTest, PageKeysMoveTheSelectionByPages)
{
    install(500);
    open();
    press(Qt::Key_Down);
    press(Qt::Key_PageDown);
    const int page = list().currentIndex().row();
    EXPECT_GE(page, 6);
    EXPECT_LE(page, 10);
    press(Qt::Key_PageDown);
    EXPECT_GT(list().currentIndex().row(), page);
    const QRect row = list().visualRect(list().currentIndex());
    EXPECT_TRUE(list().viewport()->rect().contains(row));
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    EXPECT_EQ(selectedName(), "Application 0");
}

TEST_F(ApplicationPanelTest, HomeAndEndMoveTheTextCursor)
{
    open();
    type("cal");
    press(Qt::Key_Down);
    press(Qt::Key_Home);
    EXPECT_EQ(field().cursorPosition(), 0);
    EXPECT_EQ(selectedName(), "Calendar");
    press(Qt::Key_End);
    EXPECT_EQ(field().cursorPosition(), 3);
    EXPECT_EQ(selectedName(), "Calendar");
}

TEST_F(ApplicationPanelTest, ChoosesOnReturnAndKeypadEnter)
{
    const std::map<Qt::Key, Qt::KeyboardModifier> keys { { Qt::Key_Return, Qt::NoModifier },
                                                         { Qt::Key_Enter, Qt::KeypadModifier } };
    for (const auto &[key, modifier] : keys) {
        answers.clear();
        open();
        type("cal");
        press(Qt::Key_Down);
        press(key, modifier);
        expectAnswer("/apps/cal.desktop");
    }
}

TEST_F(ApplicationPanelTest, ChoosesOnADoubleClick)
{
    open();
    doubleClickRow(3);
    expectAnswer("/apps/tables.desktop");
}

TEST_F(ApplicationPanelTest, IgnoresADoubleClickBelowTheRows)
{
    open();
    clickRow(1);
    QTest::mouseDClick(panel->windowHandle(), Qt::LeftButton, {}, rowCenter(4) + QPoint(0, 80));
    expectStillOpen();
}

TEST_F(ApplicationPanelTest, ClickingARowKeepsTheFocusInTheField)
{
    open();
    clickRow(1);
    EXPECT_EQ(selectedName(), "Calendar");
    EXPECT_TRUE(field().hasFocus());
    type("mail");
    EXPECT_EQ(selectedName(), "Mail");
}

TEST_F(ApplicationPanelTest, IsCancelledByEscapeButtonAndClosing)
{
    const std::vector<std::function<void()>> actions {
        [this] { press(Qt::Key_Escape); },
        [this] { Input::click(button("Cancel")); },
        [this] { panel->close(); },
    };
    for (const auto &cancel : actions) {
        answers.clear();
        open();
        type("cal");
        cancel();
        expectAnswer(std::nullopt);
    }
}

TEST_F(ApplicationPanelTest, AnswersWhenDestroyed)
{
    open();
    clickRow(1);
    delete panel;
    EXPECT_EQ(answers, Answers { std::nullopt });
}

TEST_F(ApplicationPanelTest, AnswersOnlyOnce)
{
    open();
    panel->reject();
    panel->close();
    panel->accept();
    delete panel;
    EXPECT_EQ(answers, Answers { std::nullopt });
}

TEST_F(ApplicationPanelTest, CanCloseBeforeTheApplicationsArrive)
{
    openEmpty();
    press(Qt::Key_Escape);
    expectAnswer(std::nullopt);
    workspace.finishListing();
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(ApplicationPanelTest, KeepsPathsUnchanged)
{
    workspace.applications = { { "/apps/\u00DCbung \u2603.desktop", "One", "", "" } };
    open();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    expectAnswer("/apps/\u00DCbung \u2603.desktop");
}

TEST_F(ApplicationPanelTest, TabVisitsEveryControl)
{
    open();
    press(Qt::Key_Down); // without a selection "Add Launcher" is disabled
    std::vector<QWidget *> visited;
    for (int count = 0; count < 6; ++count) {
        visited.push_back(focus());
        press(Qt::Key_Tab);
    }
    const std::vector<QWidget *> expected {
        &field(), &list(), &button("Other\u2026"), &button("Cancel"), &button("Add Launcher"),
        &field()
    };
    EXPECT_EQ(visited, expected);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focus(), &field());
}

TEST_F(ApplicationPanelTest, ListKeysWorkWhileTheListHasFocus)
{
    open();
    press(Qt::Key_Tab);
    ASSERT_TRUE(list().hasFocus());
    EXPECT_EQ(selectedName(), "");
    press(Qt::Key_End);
    EXPECT_EQ(selectedName(), "Viewer");
    press(Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Viewer");
    press(Qt::Key_Home);
    press(Qt::Key_Down);
    EXPECT_EQ(selectedName(), "Calendar");
    EXPECT_TRUE(list().hasFocus());
    press(Qt::Key_Return);
    expectAnswer("/apps/cal.desktop");
}

TEST_F(ApplicationPanelTest, TypingInTheListContinuesTheSearch)
{
    open();
    type("ca");
    press(Qt::Key_Home);
    press(Qt::Key_Tab);
    ASSERT_TRUE(list().hasFocus());
    type("le m");
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().text().toStdString(), "cale m");
}

TEST_F(ApplicationPanelTest, ReturnPressesTheFocusedButton)
{
    open();
    type("cal");
    button("Cancel").setFocus();
    press(Qt::Key_Return);
    expectAnswer(std::nullopt);
}

TEST_F(ApplicationPanelTest, ShortensVeryLongTexts)
{
    const std::string endless(1'000'000, 'x');
    workspace.applications = { { "/apps/x.desktop", "a\nb" + endless, endless, endless } };
    open();
    ASSERT_EQ(shownNames().size(), 1U);
    EXPECT_TRUE(shownNames().front().starts_with("a bxxx"));
    EXPECT_LT(shownNames().front().size(), 2000U);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    expectAnswer("/apps/x.desktop");
}

TEST_F(ApplicationPanelTest, RemovesDirectionAndControlCharacters)
{
    workspace.applications = { { "/apps/x.desktop", "a\u202eb", "c\u2066d\x1b", "" } };
    open();
    EXPECT_EQ(shownNames(), Names { "a b" });
    const auto comment = list().model()->index(0, 0).data(Qt::AccessibleDescriptionRole);
    EXPECT_EQ(comment.toString().toStdString(), "c d ");
}

TEST_F(ApplicationPanelTest, NamesItsControlsForAssistiveTechnology)
{
    open();
    EXPECT_EQ(Input::role(*panel), QAccessible::Dialog);
    EXPECT_EQ(Input::accessibleName(*panel), "Choose an Application");
    EXPECT_EQ(Input::accessibleName(field()), "Search applications");
    EXPECT_EQ(Input::role(field()), QAccessible::EditableText);
    EXPECT_EQ(Input::accessibleName(list()), "Applications");
    EXPECT_EQ(Input::role(list()), QAccessible::List);
    for (const auto *const name : { "Other\u2026", "Cancel", "Add Launcher" })
        EXPECT_EQ(Input::role(button(name)), QAccessible::Button);
}

TEST_F(ApplicationPanelTest, ExposesNameAndCommentOfEachRow)
{
    open();
    auto *const rows = QAccessible::queryAccessibleInterface(&list());
    ASSERT_EQ(rows->childCount(), 5);
    const auto *const row = rows->child(1);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name).toStdString(), "Calendar");
    EXPECT_EQ(row->text(QAccessible::Description).toStdString(), "Look at your days");
    EXPECT_EQ(rows->child(4)->text(QAccessible::Description).toStdString(), "");
}

} // namespace
