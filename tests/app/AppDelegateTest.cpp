#include "app/PanelFixture.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"

#include <QLineEdit>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>

namespace
{

class AppDelegateTest : public PanelFixture
{
protected:
    WindowPreferences &preferences() { return delegate->windowPreferences(); }
};

TEST_F(AppDelegateTest, ShowsThePanelWithTheLibrary)
{
    start({ tabOf("One", { "a" }), tabOf("Two") });
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(panel().isActiveWindow());
    ASSERT_EQ(chips().size(), 2U);
    EXPECT_EQ(chips()[0]->text().toStdString(), "One");
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "a");
}

TEST_F(AppDelegateTest, WritesWhatIsPendingBeforeItEnds)
{
    start({ tabOf("One", { "a" }) });
    editor(0).insertPlainText(QStringLiteral("typed "));
    EXPECT_EQ(fileText().find("typed "), std::string::npos);
    delegate->applicationWillTerminate();
    EXPECT_NE(fileText().find("typed "), std::string::npos);
}

TEST_F(AppDelegateTest, LetsTheSessionEndTheApplication)
{
    start();
    bool isOverdue = false;
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QTimer::singleShot(std::chrono::seconds(5), qApp, [&isOverdue] {
        isOverdue = true;
        QCoreApplication::exit();
    });
    QApplication::exec();
    EXPECT_FALSE(isOverdue) << "the panel does not close, but must not be in the way";
}

TEST_F(AppDelegateTest, StartsWithAnEmptyTabWhereThereIsNoLibrary)
{
    start();
    ASSERT_EQ(chips().size(), 1U);
    EXPECT_EQ(chips()[0]->text().toStdString(), "Prompts");
    EXPECT_EQ(cards().size(), 0U);
}

TEST_F(AppDelegateTest, StartsOnTopWithoutCardsWhateverTheLastRunEndedWith)
{
    start();
    preferences().alwaysOnTop.set(false);
    preferences().showsInfoCard.set(true);
    preferences().showsSettingsCard.set(true);
    draw();
    EXPECT_FALSE(isFloating());
    delegate.reset();

    start();
    EXPECT_TRUE(isFloating());
    EXPECT_FALSE(aboutCard());
    EXPECT_TRUE(preferences().alwaysOnTop.get());
    EXPECT_FALSE(preferences().showsInfoCard.get());
    EXPECT_FALSE(preferences().showsSettingsCard.get());
}

TEST_F(AppDelegateTest, KeepsThePanelOnTopAsThePreferenceSays)
{
    start();
    EXPECT_TRUE(isFloating());
    press("Always on Top");
    EXPECT_FALSE(preferences().alwaysOnTop.get());
    EXPECT_FALSE(isFloating());
    press("Always on Top");
    EXPECT_TRUE(preferences().alwaysOnTop.get());
    EXPECT_TRUE(isFloating());
    preferences().alwaysOnTop.set(false);
    EXPECT_FALSE(isFloating());
}

TEST_F(AppDelegateTest, LeavesThePanelAloneWhenThePreferenceIsWrittenButNotChanged)
{
    start();
    // If the panel were told again, it would be on top again.
    panel().setFloating(false);
    preferences().alwaysOnTop.set(true);
    EXPECT_FALSE(isFloating());
    preferences().alwaysOnTop.set(false);
    preferences().alwaysOnTop.set(true);
    EXPECT_TRUE(isFloating());
}

TEST_F(AppDelegateTest, ShowsTheAboutCardByTheIconInTheTitleBar)
{
    start();
    press("About Quillsatchel");
    EXPECT_TRUE(preferences().showsInfoCard.get());
    EXPECT_TRUE(aboutCard());
}

TEST_F(AppDelegateTest, AsksForOneCardAtATime)
{
    start();
    preferences().showsSettingsCard.set(true);
    std::vector<std::string> writes;
    const auto settings = preferences().showsSettingsCard.sink(
        [&writes](bool shows) { writes.emplace_back(shows ? "settings on" : "settings off"); });
    const auto info = preferences().showsInfoCard.sink(
        [&writes](bool shows) { writes.emplace_back(shows ? "info on" : "info off"); });
    writes.clear();
    delegate->showAbout();
    EXPECT_EQ(writes, Texts({ "settings off", "info on" }));
}

TEST_F(AppDelegateTest, AsksForTheSettingsCardAloneToo)
{
    start();
    preferences().showsInfoCard.set(true);
    std::vector<std::string> writes;
    const auto settings = preferences().showsSettingsCard.sink(
        [&writes](bool shows) { writes.emplace_back(shows ? "settings on" : "settings off"); });
    const auto info = preferences().showsInfoCard.sink(
        [&writes](bool shows) { writes.emplace_back(shows ? "info on" : "info off"); });
    writes.clear();
    delegate->showSettings();
    EXPECT_EQ(writes, Texts({ "info off", "settings on" }));
}

TEST_F(AppDelegateTest, BringsThePanelBackForTheSettingsCard)
{
    start();
    panel().close();
    delegate->showSettings();
    EXPECT_TRUE(panel().isVisible());
    draw();
    EXPECT_TRUE(panel().findChild<LauncherSettingsCard *>());
}

TEST_F(AppDelegateTest, ShowsTheSettingsByTheirKeyWhereverTheFocusIs)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    Input::key(editor(0), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(preferences().showsSettingsCard.get());
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "a");
    draw();
    EXPECT_TRUE(panel().findChild<LauncherSettingsCard *>());
    Input::key(panel(), Qt::Key_Escape);
    EXPECT_FALSE(preferences().showsSettingsCard.get());
}

TEST_F(AppDelegateTest, KeepsTheLaunchersForTheNextRun)
{
    start();
    delegate->showSettings();
    draw();
    auto *const editor = panel().findChild<LauncherSlotEditor *>();
    ASSERT_TRUE(editor);
    ASSERT_TRUE(QTest::qWaitFor([editor] { return editor->isVisible(); })); // the card fades in
    editor->findChild<QLineEdit *>()->setText(QStringLiteral("example.com"));
    Input::click(*Input::button(*editor, "Set URL"));
    delegate.reset();

    start();
    delegate->showSettings();
    draw();
    EXPECT_EQ(panel().findChild<LauncherSlotEditor *>()->findChild<QLineEdit *>()->text(),
              QStringLiteral("https://example.com"));
}

TEST_F(AppDelegateTest, BringsThePanelBackForTheAboutCard)
{
    start();
    panel().close();
    delegate->showAbout();
    EXPECT_TRUE(panel().isVisible());
    draw();
    EXPECT_TRUE(aboutCard());
}

TEST_F(AppDelegateTest, DoesNotHideThePanelThatIsShownAgain)
{
    start();
    delegate->showPanel();
    delegate->showPanel();
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(AppDelegateTest, SavesWhatIsTypedIntoThePanel)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    Input::key(panel(), Qt::Key_End);
    Input::type(panel(), "b");
    advance(SaveDelay);
    ASSERT_TRUE(savedDocument());
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "ab");
}

TEST_F(AppDelegateTest, GivesTheApplicationItsIconALittleLater)
{
    QApplication::setWindowIcon({});
    start();
    advance(Milliseconds(1000));
    EXPECT_FALSE(QApplication::windowIcon().isNull());
}

} // namespace
