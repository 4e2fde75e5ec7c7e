#include "support/ProcessorTime.h"
#include "views/Picture.h"
#include "views/TabStripFixture.h"

#include <QToolTip>
#include <gtest/gtest.h>

namespace
{

using TabStripTest = TabStripFixture;

TEST_F(TabStripTest, ShowsOneChipPerTabInOrder)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("") });
    EXPECT_EQ(labels(), Texts({ "One", "Two", "Untitled" }));
    EXPECT_EQ(activeChip(), 0U);
}

TEST_F(TabStripTest, Is38PointsHighWithChips4PointsApart)
{
    openStrip({ tabOf("One"), tabOf("A longer name"), tabOf("Three") });
    EXPECT_EQ(strip->sizeHint().height(), 38);
    const auto frameOf = [this](QWidget &widget) { return Input::frameIn(*strip, widget); };
    EXPECT_EQ(frameOf(chip(0)).left(), 9);
    EXPECT_EQ(frameOf(chip(1)).left() - frameOf(chip(0)).right(), 5);
    EXPECT_EQ(frameOf(chip(2)).left() - frameOf(chip(1)).right(), 5);
    EXPECT_NEAR(QRectF(frameOf(chip(0))).center().y(), 19, 0.5);
    auto &newTab = *Input::button(*strip, "New tab");
    EXPECT_EQ(newTab.size(), QSize(24, 24));
    EXPECT_EQ(frameOf(newTab).right(), 430 - 9 - 1);
    EXPECT_EQ(frameOf(newTab).top(), 7);
    EXPECT_EQ(newTab.toolTip().toStdString(), "New tab");
}

TEST_F(TabStripTest, DarkensItsWholeHeight)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    strip->setContentsMargins(0, 28, 0, 0);
    EXPECT_EQ(strip->sizeHint().height(), 66);
    strip->resize(430, 66);
    settle();
    const QColor background(100, 150, 200);
    const Picture picture(*strip, background);
    for (const int y : { 0, 27, 28, 65 })
        EXPECT_TRUE(isColor(picture.at(300, y), over(SrgbColor::black(0.08), background))) << y;
    EXPECT_GE(chip(0).mapTo(strip, QPoint()).y(), 28);
}

TEST_F(TabStripTest, SelectsATabByAClick)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    click(1);
    EXPECT_EQ(store().activeTabID().get(), tabID(1));
    EXPECT_EQ(activeChip(), 1U);
    EXPECT_FALSE(field());
}

TEST_F(TabStripTest, SavesWhenTheActiveTabIsClickedAgain)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    EXPECT_TRUE(saves([this] { click(0); }));
}

TEST_F(TabStripTest, SelectsATabByKeyboard)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    chip(1).setFocus(Qt::TabFocusReason);
    Input::key(window, Qt::Key_Return);
    settle();
    EXPECT_EQ(activeChip(), 1U);
    chip(2).setFocus(Qt::TabFocusReason);
    Input::key(window, Qt::Key_Space);
    settle();
    EXPECT_EQ(activeChip(), 2U);
}

TEST_F(TabStripTest, ClickingATabKeepsTheFocusElsewhere)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    otherField->setFocus();
    click(1);
    EXPECT_TRUE(otherField->hasFocus());
}

TEST_F(TabStripTest, MovesTheFocusWithTheActiveTab)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    chip(0).setFocus(Qt::TabFocusReason);
    click(1);
    EXPECT_TRUE(chip(1).hasFocus());
    pressNewTab();
    EXPECT_TRUE(chip(2).hasFocus());
    store().selectTab(tabID(0));
    settle();
    EXPECT_TRUE(chip(0).hasFocus());
}

TEST_F(TabStripTest, KeepsTheFocusWhenItsTabIsDeleted)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    chip(1).setFocus(Qt::TabFocusReason);
    store().deleteTab(tabID(1));
    settle();
    EXPECT_TRUE(chip(1).hasFocus()) << "on the tab that took its position";
    store().deleteTab(tabID(1));
    settle();
    EXPECT_TRUE(chip(0).hasFocus());
}

TEST_F(TabStripTest, KeepsTheFocusOnAnInactiveTab)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    chip(1).setFocus(Qt::TabFocusReason);
    store().renameTab(tabID(2), "Third");
    settle();
    EXPECT_TRUE(chip(1).hasFocus());
}

TEST_F(TabStripTest, AddsATabWithoutRenamingIt)
{
    openStrip({ tabOf("One") });
    pressNewTab();
    EXPECT_EQ(names(), Texts({ "One", "New Tab" }));
    EXPECT_EQ(labels(), names());
    EXPECT_EQ(activeChip(), 1U);
    EXPECT_FALSE(field());
}

TEST_F(TabStripTest, ShowsChangesOfTheStore)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    store().renameTab(tabID(1), "Second");
    settle();
    EXPECT_EQ(labels(), Texts({ "One", "Second", "Three" }));
    store().deleteTab(tabID(0));
    settle();
    EXPECT_EQ(labels(), Texts({ "Second", "Three" }));
    EXPECT_EQ(activeChip(), 0U);
    store().selectTab(tabID(1));
    settle();
    EXPECT_EQ(activeChip(), 1U);
}

TEST_F(TabStripTest, KeepsTheChipOfATab)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    const auto *const two = &chip(1);
    store().deleteTab(tabID(0));
    store().addTab();
    settle();
    EXPECT_EQ(&chip(0), two);
}

TEST_F(TabStripTest, MenuOffersRenameAndDelete)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    withMenu(1, [](QMenu &menu) {
        ASSERT_EQ(menu.actions().size(), 3);
        EXPECT_EQ(menu.actions()[0]->text().toStdString(), "Rename Tab");
        EXPECT_TRUE(menu.actions()[0]->isEnabled());
        EXPECT_TRUE(menu.actions()[1]->isSeparator());
        EXPECT_EQ(menu.actions()[2]->text().toStdString(), "Delete Tab");
        EXPECT_TRUE(menu.actions()[2]->isEnabled());
    });
    EXPECT_EQ(names(), Texts({ "One", "Two" }));
    EXPECT_EQ(activeChip(), 0U);
}

TEST_F(TabStripTest, ShowsAToolTipOverAChip)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    Input::moveTo(chip(1), { 20, 10 });
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text().toStdString(), "Double-click to rename");
}

TEST_F(TabStripTest, ShowsNoToolTipWhileRenaming)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    doubleClick(1);
    ASSERT_TRUE(field());
    for (const QPoint position : { QPoint(30, 10), QPoint(3, 10) }) {
        Input::moveTo(chip(1), position);
        EXPECT_FALSE(QTest::qWaitFor([] { return QToolTip::isVisible(); }, 1000)) << position.x();
    }
}

TEST_F(TabStripTest, DisablesDeletingTheOnlyTab)
{
    openStrip({ tabOf("One") });
    withMenu(0, [](QMenu &menu) {
        ASSERT_EQ(menu.actions().size(), 3);
        EXPECT_TRUE(menu.actions()[0]->isEnabled());
        EXPECT_FALSE(menu.actions()[2]->isEnabled());
    });
}

TEST_F(TabStripTest, DeletesTheTabOfTheMenu)
{
    openStrip({ tabOf("One"), tabOf("Two"), tabOf("Three") });
    chooseFromMenu(1, "Delete Tab");
    EXPECT_EQ(names(), Texts({ "One", "Three" }));
    EXPECT_EQ(labels(), names());
    chooseFromMenu(0, "Delete Tab");
    EXPECT_EQ(labels(), Texts({ "Three" }));
    EXPECT_EQ(activeChip(), 0U);
}

TEST_F(TabStripTest, OpensTheMenuByKeyboard)
{
    openStrip({ tabOf("One"), tabOf("Two") });
    chip(1).setFocus(Qt::TabFocusReason);
    Input::withMenu(
        [this] {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
            QApplication::sendEvent(&chip(1), &event);
        },
        [](QMenu &menu) { EXPECT_EQ(menu.actions().size(), 3); });
}

TEST_F(TabStripTest, HandlesTabsWithEqualIds)
{
    PromptTab twin = tabOf("Twin");
    twin.id = QUuid::createUuid();
    PromptTab other = twin;
    other.name = "Other twin";
    openStrip({ tabOf("One"), twin, other });
    EXPECT_EQ(labels(), Texts({ "One", "Twin", "Other twin" }));
    click(2);
    EXPECT_EQ(store().activeTab()->name, "Twin");
    doubleClick(1);
    Input::type(window, "x");
    settle();
    EXPECT_EQ(names()[1], "x");
    Input::key(window, Qt::Key_Return);
    settle();
    chooseFromMenu(1, "Delete Tab");
    EXPECT_EQ(labels(), Texts({ "One" }));
}

TEST_F(TabStripTest, ShowsNothingWithoutTabs)
{
    const PromptTab twin = tabOf("Twin");
    openStrip({ twin, twin });
    store().deleteTab(twin.id);
    settle();
    EXPECT_EQ(labels(), Texts());
    pressNewTab();
    EXPECT_EQ(labels(), Texts({ "New Tab" }));
}

TEST_F(TabStripTest, IsFastWithOneMegabyteNames)
{
    const ProcessorTime spent;
    openStrip({ tabOf(std::string(1'000'000, 'a')), tabOf(std::string(1'000'000, '\n')),
                tabOf("Three") });
    for (int count = 0; count < 20; ++count) {
        store().addBlock();
        settle();
    }
    EXPECT_EQ(chip(0).width(), 145 + 14);
    EXPECT_LT(spent.seconds(), 10);
}

} // namespace
