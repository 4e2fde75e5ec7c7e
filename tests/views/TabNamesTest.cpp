#include "views/PanelContentFixture.h"

#include <QAccessible>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace
{

/// Unusual tab names, and renaming in the context of the whole panel.
class TabNamesTest : public PanelContentFixture
{
protected:
    TabChip &chip(const std::string &name) const
    {
        return *qobject_cast<TabChip *>(Input::button(*view, name));
    }

    const std::string &nameOf(std::size_t tab) { return store().tabs().get()[tab].name; }
};

TEST_F(TabNamesTest, AnAmpersandInANameIsNotAShortcut)
{
    openView({ tabOf("Prompts", { "text" }), tabOf("R&D") });
    Input::click(editor(0));
    Input::key(*view, Qt::Key_D, Qt::AltModifier);
    settle();
    EXPECT_EQ(store().activeTab()->name, "Prompts");
    EXPECT_EQ(Input::accessibleName(chip("R&D")), "R&D");
}

TEST_F(TabNamesTest, StoresANameTypedByAssistiveTechnology)
{
    openView({ tabOf("Old") });
    Input::doubleClick(chip("Old"));
    settle();
    auto *const field = view->findChild<QLineEdit *>();
    ASSERT_TRUE(field);
    auto *const text = QAccessible::queryAccessibleInterface(field)->editableTextInterface();
    ASSERT_TRUE(text);
    text->insertText(3, QStringLiteral("er"));
    EXPECT_EQ(nameOf(0), "Older");
    settle();
    EXPECT_EQ(field->text(), QStringLiteral("Older"));
}

TEST_F(TabNamesTest, RenamingEndsWhenACardOpens)
{
    openView({ tabOf("Old") });
    Input::doubleClick(chip("Old"));
    settle();
    ASSERT_TRUE(view->findChild<QLineEdit *>());
    preferences.showsInfoCard.set(true);
    settle();
    settle();
    EXPECT_FALSE(view->findChild<QLineEdit *>());
    EXPECT_TRUE(aboutCard()->hasFocus());

    preferences.showsInfoCard.set(false);
    settle();
    EXPECT_TRUE(chip("Old").hasFocus());
}

TEST_F(TabNamesTest, MovesTheFocusToANeighbourOfADeletedTab)
{
    std::vector<PromptTab> tabs;
    for (int number = 0; number < 20; ++number)
        tabs.push_back(tabOf("Tab " + std::to_string(number)));
    openView(tabs);
    store().selectTab(tabs[18].id);
    settle();
    chip("Tab 19").setFocus(Qt::TabFocusReason);
    store().deleteTab(tabs[19].id);
    settle();
    EXPECT_TRUE(chip("Tab 18").hasFocus());
    EXPECT_FALSE(chip("Tab 18").visibleRegion().isEmpty());
}

} // namespace
