#include "views/FindCardFixture.h"

#include <gtest/gtest.h>

#include <chrono>

namespace
{

using namespace std::chrono_literals;

/// Which card is open over the panel.
class PanelCardsTest : public FindCardFixture
{
protected:
    PanelCardsTest()
    {
        openView({ tabOf("Mails", { "reply" }), tabOf("Code", { "my draft", "draft a reply" }) });
    }
};

TEST_F(PanelCardsTest, ShowsTheSettingsCardByItsPreference)
{
    preferences.showsSettingsCard.set(true);
    settle();
    ASSERT_TRUE(settingsCard());
    EXPECT_EQ(Input::accessibleName(*settingsCard()), "Quick Launchers");
    advance(Milliseconds(1000));
    QTest::qWait(300);
    press(*settingsCard(), "Close");
    EXPECT_FALSE(preferences.showsSettingsCard.get());
    QTest::qWait(300);
    settle();
    EXPECT_FALSE(settingsCard());
}

TEST_F(PanelCardsTest, KeepsTheSettingsCardAboveTheAboutCard)
{
    const auto expectSettingsCardAbove = [this] {
        ASSERT_TRUE(aboutCard() && settingsCard());
        const auto &all = view->children();
        EXPECT_GT(all.indexOf(settingsCard()), all.indexOf(aboutCard()));
        EXPECT_TRUE(settingsCard()->isAncestorOf(QApplication::focusWidget()) ||
                    settingsCard()->hasFocus());
    };
    preferences.showsInfoCard.set(true);
    preferences.showsSettingsCard.set(true);
    settle();
    expectSettingsCardAbove();

    preferences.showsInfoCard.set(false);
    settle();
    QTest::qWait(300);
    settle();
    ASSERT_FALSE(aboutCard());
    preferences.showsInfoCard.set(true);
    settle();
    expectSettingsCardAbove();
}

TEST_F(PanelCardsTest, KeepsCardsClearOfTheTitleBarAndTheEdges)
{
    constexpr int TitleBarHeight = 28;
    view.emplace(store(), launcherStore, preferences, machine.platform, TitleBarHeight, nullptr);
    view->resize(QuillsatchelView::MinimumSize);
    Input::show(*view);
    preferences.showsSettingsCard.set(true);
    settle();
    ASSERT_TRUE(settingsCard());
    const QRect available = view->rect().adjusted(8, TitleBarHeight + 8, -8, -8);
    EXPECT_TRUE(available.contains(settingsCard()->cardGeometry()));
    EXPECT_EQ(settingsCard()->cardGeometry().height(), available.height());
    EXPECT_EQ(settingsCard()->geometry(), view->rect())
        << "the dimmed background covers everything";
}

TEST_F(PanelCardsTest, TheFindCardReplacesTheOthers)
{
    preferences.showsInfoCard.set(true);
    settle();
    openCard();
    EXPECT_FALSE(preferences.showsInfoCard.get());
    EXPECT_TRUE(QTest::qWaitFor([this] {
        settle();
        return !aboutCard();
    }));
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(PanelCardsTest, TheFindCardGivesWayToAnother)
{
    openCard(QStringLiteral("draft"));
    preferences.showsSettingsCard.set(true);
    settle();
    expectClosed();
    ASSERT_TRUE(settingsCard());
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return settingsCard()->isAncestorOf(QApplication::focusWidget()); }));
    preferences.showsSettingsCard.set(false);
    settle();
    openCard();
    EXPECT_EQ(field().selectedText(), QStringLiteral("draft"));
}

TEST_F(PanelCardsTest, FindingAgainSelectsTheQuery)
{
    openCard(QStringLiteral("draft"));
    key(Qt::Key_Tab);
    EXPECT_FALSE(field().hasFocus());
    view->find();
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().selectedText(), QStringLiteral("draft"));
    view->find(QStringLiteral("reply"));
    EXPECT_EQ(field().text(), QStringLiteral("reply"));
}

TEST_F(PanelCardsTest, OffersTheLastQueryForAMinute)
{
    openCard();
    type("draft");
    key(Qt::Key_Escape);
    expectClosed();
    machine.wallClock.advance(59s);
    openCard();
    EXPECT_EQ(field().selectedText(), QStringLiteral("draft"));
    EXPECT_EQ(count(), "2 nodes");
    type("r"); // replaces it
    EXPECT_EQ(field().text(), QStringLiteral("r"));
    key(Qt::Key_Escape);
    expectClosed();
    machine.wallClock.advance(60s);
    openCard();
    EXPECT_EQ(field().text(), QString());
}

TEST_F(PanelCardsTest, ForgetsTheQueryIfTheClockWasSetBack)
{
    openCard(QStringLiteral("draft"));
    key(Qt::Key_Escape);
    expectClosed();
    machine.wallClock.advance(-1h);
    openCard();
    EXPECT_EQ(field().text(), QString());
}

} // namespace
