#include "views/PromptCardFixture.h"

#include <QActionGroup>
#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace
{

class PromptCardActionsTest : public PromptCardFixture
{
protected:
    /// The buttons of the action row, left to right.
    Reports actions() const
    {
        std::map<int, std::string> titles;
        for (const auto *const candidate : card.findChildren<QAbstractButton *>()) {
            if (!candidate->isHidden() && !candidate->text().isEmpty())
                titles[candidate->x()] = candidate->text().toStdString();
        }
        Reports sorted;
        for (const auto &[x, title] : titles)
            sorted.push_back(title);
        return sorted;
    }

    void press(const std::string &name)
    {
        ASSERT_TRUE(button(name)) << name;
        Input::click(*button(name));
    }

    void chooseColor(const std::string &title)
    {
        Input::withMenu([this] { press("Node color"); },
                        [&title](QMenu &menu) { Input::choose(menu, title); });
    }
};

TEST_F(PromptCardActionsTest, OffersTheActionsThatSuitTheText)
{
    const std::map<std::string, Reports> actionsOf {
        { "", { "Paste", "Dictate" } },
        { "text", { "Dictate", "Copy" } },
        { "  \n", { "Dictate", "Copy" } },
        { "https://example.com", { "Dictate", "Launch", "Copy" } },
    };
    for (const auto &[text, expected] : actionsOf) {
        renderText(text);
        EXPECT_EQ(actions(), expected) << text;
    }
}

TEST_F(PromptCardActionsTest, SaysCopiedWhileMarkedAsCopied)
{
    render(true, false);
    EXPECT_EQ(actions(), Reports({ "Dictate", "Copied" }));
    render(false, false);
    EXPECT_EQ(actions(), Reports({ "Dictate", "Copy" }));
}

TEST_F(PromptCardActionsTest, SaysStopWhileDictating)
{
    render(false, true);
    EXPECT_EQ(actions(), Reports({ "Stop", "Copy" }));
    show();
    press("Stop");
    EXPECT_EQ(reports, Reports({ "dictate" }));
}

TEST_F(PromptCardActionsTest, RecognizesWebAddresses)
{
    for (const auto *const text :
         { "https://example.com", "http://example.com", " \n https://example.com \t\n",
           "HTTP://EXAMPLE.COM", "HttpS://example.com/a?b=c#d", "\u00A0https://example.com\u2028",
           "https://localhost:8080", "https://ex\u00E4mple.com" }) {
        renderText(text);
        EXPECT_TRUE(card.isURL()) << text;
    }
}

TEST_F(PromptCardActionsTest, DoesNotTakeOtherTextsForAddresses)
{
    for (const auto *const text :
         { "", " ", "text", "https://exa mple.com", "https://example.com\nhttps://example.org",
           "https://example.com/\u00A0a", "example.com", "www.example.com", "//example.com",
           "ftp://example.com", "mailto:someone@example.com", "file:///etc/hosts", "http", "https",
           "htt ps://example.com", "https//example.com", "see https://example.com" }) {
        renderText(text);
        EXPECT_FALSE(card.isURL()) << text;
    }
}

TEST_F(PromptCardActionsTest, ReportsEachPress)
{
    show();
    press("Copy");
    press("Dictate");
    press("Delete node");
    EXPECT_EQ(reports, Reports({ "copy", "dictate", "delete" }));
    reports.clear();
    renderText("");
    press("Paste");
    EXPECT_EQ(reports, Reports({ "paste" }));
    reports.clear();
    renderText("https://example.com");
    press("Launch");
    EXPECT_EQ(reports, Reports({ "launch" }));
}

TEST_F(PromptCardActionsTest, ReportsTheWholeTextAfterEachEdit)
{
    renderText("a");
    show();
    card.focusEditor();
    Input::key(card, Qt::Key_End);
    Input::type(card, "bc");
    EXPECT_EQ(reports, Reports({ "text ab", "text abc" }));
}

TEST_F(PromptCardActionsTest, DoesNotChangeItsOwnState)
{
    show();
    press("Copy");
    press("Dictate");
    EXPECT_EQ(actions(), Reports({ "Dictate", "Copy" }));
}

TEST_F(PromptCardActionsTest, ListsEightColorsWithTheCurrentOneTicked)
{
    block.color = BlockColor::green;
    render();
    show();
    Reports titles;
    std::vector<QImage> icons;
    Input::withMenu([this] { press("Node color"); },
                    [&titles, &icons](QMenu &menu) {
                        for (auto *const action : menu.actions()) {
                            titles.push_back(action->text().toStdString());
                            icons.push_back(action->icon().pixmap(12, 12).toImage());
                        }
                    });
    EXPECT_EQ(titles,
              Reports({ "None", "Red", "Orange", "Yellow", "Green", "Blue", "Purple", "Pink" }));
    ASSERT_EQ(icons.size(), 8U);
    // A disc covers more of its square than the tick of the current colour.
    const auto covered = [](const QImage &icon) {
        int most = 0;
        int sum = 0;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                most = std::max(most, qAlpha(icon.pixel(x, y)));
                sum += qAlpha(icon.pixel(x, y));
            }
        }
        return sum / std::max(most, 1);
    };
    const int disc = covered(icons[0]);
    for (std::size_t index = 0; index < icons.size(); ++index) {
        if (index == 4)
            EXPECT_LT(covered(icons[index]), disc * 2 / 3);
        else
            EXPECT_NEAR(covered(icons[index]), disc, 2) << titles[index];
    }
    EXPECT_EQ(reports, Reports());
}

TEST_F(PromptCardActionsTest, ReportsTheChosenColor)
{
    show();
    for (const auto *const title : { "Purple", "None", "Red" })
        chooseColor(title);
    EXPECT_EQ(reports, Reports({ "color Purple", "color None", "color Red" }));
}

TEST_F(PromptCardActionsTest, ReportsTheCurrentColorWhenChosenAgain)
{
    block.color = BlockColor::pink;
    render();
    show();
    chooseColor("Pink");
    EXPECT_EQ(reports, Reports({ "color Pink" }));
}

TEST_F(PromptCardActionsTest, ChoosesAColorByKeyboard)
{
    show();
    button("Node color")->setFocus(Qt::TabFocusReason);
    Input::withMenu([this] { Input::key(card, Qt::Key_Return); },
                    [](QMenu &menu) {
                        QTest::keyClick(&menu, Qt::Key_Down);
                        QTest::keyClick(&menu, Qt::Key_Return);
                    });
    EXPECT_EQ(reports, Reports({ "color Red" }));
}

TEST_F(PromptCardActionsTest, ClosesItsMenusForAnotherNode)
{
    show();
    for (auto *const owner :
         { static_cast<QWidget *>(button("Node color")), editor().viewport() }) {
        const auto which = owner == editor().viewport() ? Qt::RightButton : Qt::LeftButton;
        Input::click(*owner, owner->rect().center(), which);
        ASSERT_TRUE(Input::visibleMenu());
        render();
        EXPECT_TRUE(Input::visibleMenu()) << "the same node";
        block = { .text = "other", .color = {} };
        render();
        EXPECT_FALSE(Input::visibleMenu());
    }
}

TEST_F(PromptCardActionsTest, ClosesItsMenusWhenHidden)
{
    show();
    press("Node color");
    ASSERT_TRUE(Input::visibleMenu());
    card.hide();
    EXPECT_FALSE(Input::visibleMenu());
}

TEST_F(PromptCardActionsTest, MarksTheCurrentColorForAssistiveTechnology)
{
    block.color = BlockColor::green;
    render();
    show();
    Input::withMenu([this] { press("Node color"); },
                    [](QMenu &menu) {
                        auto &entries = *QAccessible::queryAccessibleInterface(&menu);
                        for (int index = 0; index < entries.childCount(); ++index) {
                            EXPECT_TRUE(menu.actions()[index]->isCheckable());
                            EXPECT_EQ(entries.child(index)->state().checked, index == 4) << index;
                        }
                        EXPECT_TRUE(menu.actions()[0]->actionGroup()->isExclusive());
                    });
}

TEST_F(PromptCardActionsTest, NamesItsControlsForAssistiveTechnology)
{
    renderText("https://example.com");
    EXPECT_EQ(Input::role(card), QAccessible::Grouping);
    EXPECT_EQ(Input::accessibleName(editor()), "Node text");
    EXPECT_EQ(Input::role(editor()), QAccessible::EditableText);
    for (const auto *const name : { "Node color", "Delete node", "Dictate", "Launch", "Copy" }) {
        ASSERT_TRUE(button(name)) << name;
        EXPECT_EQ(Input::role(*button(name)), QAccessible::Button) << name;
    }
}

TEST_F(PromptCardActionsTest, AssistiveTechnologyCanPressButtons)
{
    show();
    auto *const action = QAccessible::queryAccessibleInterface(button("Copy"))->actionInterface();
    ASSERT_TRUE(action);
    action->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([this] { return reports == Reports({ "copy" }); }));
}

} // namespace
