#include "app/PanelFixture.h"
#include "app/TrayMenu.h"
#include "fakes/PictureBytes.h"
#include "views/ApplicationPanel.h"
#include "views/FindCard.h"

#include <QAction>
#include <QLineEdit>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>

namespace
{

class AppDelegateTest : public PanelFixture
{
protected:
    bool isSwitchedOnTop() { return button("Always on Top").isChecked(); }

    void startWithStatusBar()
    {
        start();
        machine.statusBar.kind.set(StatusBar::Kind::notifier);
    }

    SearchProvider &desktopSearch() { return *machine.desktopSearch.provider; }

    std::string idOf(const std::string &query) { return desktopSearch().find(query).at(0).id; }

    ApplicationPanel &openApplicationChooser()
    {
        Input::click(*Input::button(slotEditor(0), "Choose App\u2026"));
        settle();
        auto *const chooser = panel().findChild<ApplicationPanel *>();
        if (!chooser)
            throw std::runtime_error("no application chooser");
        EXPECT_TRUE(QTest::qWaitForWindowActive(chooser));
        return *chooser;
    }
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

TEST_F(AppDelegateTest, LooksForATrayAfterTheFirstFrame)
{
    delegate.emplace(machine.platform);
    delegate->applicationDidFinishLaunching();
    advance(Milliseconds(4000));
    EXPECT_EQ(machine.statusBar.beginCalls, 0);

    EXPECT_TRUE(QTest::qWaitForWindowActive(&panel()));
    panel().repaint();
    settle();
    EXPECT_EQ(machine.statusBar.beginCalls, 1);

    advance(Milliseconds(4000));
    EXPECT_EQ(machine.statusBar.beginCalls, 1);
}

TEST_F(AppDelegateTest, LooksForATrayAfterATimeoutIfThePanelIsNotPainted)
{
    delegate.emplace(machine.platform);
    delegate->applicationDidFinishLaunching();
    advance(Milliseconds(5000));
    EXPECT_EQ(machine.statusBar.beginCalls, 1);
}

TEST_F(AppDelegateTest, AnswersTheDesktopsSearchAfterTheFirstFrame)
{
    delegate.emplace(machine.platform);
    delegate->applicationDidFinishLaunching();
    advance(Milliseconds(4000));
    EXPECT_FALSE(machine.desktopSearch.provider);

    EXPECT_TRUE(QTest::qWaitForWindowActive(&panel()));
    panel().repaint();
    settle();
    EXPECT_TRUE(machine.desktopSearch.provider);
}

TEST_F(AppDelegateTest, CopiesFromTheDesktopsSearchWithoutShowingThePanel)
{
    writeFile({ tabOf("One", { "first" }), tabOf("Two", { "second" }) });
    startWithStatusBar();
    panel().close();
    desktopSearch().copy(idOf("second"));
    advance(SaveDelay);
    EXPECT_EQ(machine.pasteboard.contents, "second");
    EXPECT_FALSE(panel().isVisible());
    delegate->showPanel();
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "first");
}

TEST_F(AppDelegateTest, MarksANodeThatTheDesktopsSearchCopies)
{
    start({ tabOf("One", { "first" }) });
    desktopSearch().copy(idOf("first"));
    draw();
    EXPECT_TRUE(Input::button(*cards().at(0), "Copied"));
}

TEST_F(AppDelegateTest, ShowsANodeForTheDesktopsSearch)
{
    writeFile({ tabOf("One", { "first" }), tabOf("Two", { "second", "third" }) });
    startWithStatusBar();
    delegate->showAbout();
    draw();
    panel().close();
    desktopSearch().show(idOf("third"));
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(disappears<AboutCard>());
    ASSERT_EQ(cards().size(), 2U);
    EXPECT_EQ(editor(1).toPlainText().toStdString(), "third");
    EXPECT_EQ(panel().focusWidget(), &editor(1));
}

TEST_F(AppDelegateTest, ShowsANodeForTheDesktopsSearchInPlaceOfTheFindCard)
{
    start({ tabOf("One", { "first" }) });
    delegate->find(QStringLiteral("first"));
    draw();
    ASSERT_TRUE(panel().findChild<FindCard *>());
    desktopSearch().show(idOf("first"));
    EXPECT_TRUE(disappears<FindCard>());
    EXPECT_EQ(panel().focusWidget(), &editor(0));
}

TEST_F(AppDelegateTest, FindsInThePanelForTheDesktopsSearch)
{
    writeFile({ tabOf("One", { "first" }) });
    startWithStatusBar();
    panel().close();
    for (const auto *const query : { "fir", "thing" }) {
        desktopSearch().showAll(query);
        EXPECT_TRUE(panel().isVisible());
        draw();
        auto *const card = panel().findChild<FindCard *>();
        ASSERT_TRUE(card);
        EXPECT_EQ(card->query().toStdString(), query);
    }
    EXPECT_EQ(panel().findChildren<FindCard *>().size(), 1);
}

TEST_F(AppDelegateTest, QuitsWhenTheSessionEnds)
{
    start();
    QTimer::singleShot(0, [] { QCoreApplication::quit(); });
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    deadline.start(std::chrono::seconds(5));
    EXPECT_EQ(QApplication::exec(), 0) << "a panel that refuses to close must not prevent quitting";
}

TEST_F(AppDelegateTest, StartsWithAnEmptyTabWithoutALibrary)
{
    start();
    ASSERT_EQ(chips().size(), 1U);
    EXPECT_EQ(chips()[0]->text().toStdString(), "Prompts");
    EXPECT_EQ(cards().size(), 0U);
}

TEST_F(AppDelegateTest, StartsOnTopWithoutCardsAfterAnyLastRun)
{
    start();
    delegate->toggleFloating();
    delegate->showSettings();
    draw();
    EXPECT_FALSE(isFloating());
    EXPECT_TRUE(settingsCard());
    delegate.reset();

    start();
    EXPECT_TRUE(isFloating());
    EXPECT_TRUE(isSwitchedOnTop());
    EXPECT_FALSE(aboutCard());
    EXPECT_FALSE(settingsCard());
}

TEST_F(AppDelegateTest, KeepsThePanelOnTopAsThePreferenceSays)
{
    start();
    EXPECT_TRUE(isFloating());
    press("Always on Top");
    EXPECT_FALSE(isSwitchedOnTop());
    EXPECT_FALSE(isFloating());
    press("Always on Top");
    EXPECT_TRUE(isSwitchedOnTop());
    EXPECT_TRUE(isFloating());
    delegate->toggleFloating();
    EXPECT_FALSE(isSwitchedOnTop());
    EXPECT_FALSE(isFloating());
}

TEST_F(AppDelegateTest, ShowsTheAboutCardByTheIconInTheTitleBar)
{
    start();
    press("About Quillsatchel");
    EXPECT_TRUE(aboutCard());
}

TEST_F(AppDelegateTest, ShowsTheAboutCardInPlaceOfTheSettings)
{
    start();
    delegate->showSettings();
    draw();
    EXPECT_TRUE(settingsCard());
    delegate->showAbout();
    EXPECT_TRUE(disappears<LauncherSettingsCard>());
    EXPECT_TRUE(aboutCard());
}

TEST_F(AppDelegateTest, ShowsTheSettingsInPlaceOfTheAboutCard)
{
    start();
    delegate->showAbout();
    draw();
    EXPECT_TRUE(aboutCard());
    delegate->showSettings();
    EXPECT_TRUE(disappears<AboutCard>());
    EXPECT_TRUE(settingsCard());
}

TEST_F(AppDelegateTest, BringsThePanelBackForTheSettingsCard)
{
    start();
    panel().close();
    delegate->showSettings();
    EXPECT_TRUE(panel().isVisible());
    draw();
    EXPECT_TRUE(settingsCard());
}

TEST_F(AppDelegateTest, ShowsTheSettingsByShortcutFromAnEditor)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    Input::key(editor(0), Qt::Key_Comma, Qt::ControlModifier);
    draw();
    EXPECT_TRUE(settingsCard());
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "a");
    Input::key(panel(), Qt::Key_Escape);
    EXPECT_TRUE(disappears<LauncherSettingsCard>());
}

TEST_F(AppDelegateTest, KeepsTheLaunchersForTheNextRun)
{
    start();
    slotEditor(0).findChild<QLineEdit *>()->setText(QStringLiteral("example.com"));
    Input::click(*Input::button(slotEditor(0), "Set URL"));
    delegate.reset();

    start();
    EXPECT_EQ(slotEditor(0).findChild<QLineEdit *>()->text(),
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

TEST_F(AppDelegateTest, ShowsThePanelWithTheTokenOfAnotherLaunch)
{
    start();
    const StartupToken token { .activationToken = "a", .startupID = "b_TIME12" };
    delegate->showPanel(token);
    EXPECT_EQ(machine.windowSystem.tokens, std::vector({ StartupToken(), token }));
}

TEST_F(AppDelegateTest, KeepsAVisiblePanelShownWhenAskedAgain)
{
    start();
    delegate->showPanel();
    delegate->showPanel();
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(AppDelegateTest, SavesTypedText)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    Input::key(panel(), Qt::Key_End);
    Input::type(panel(), "b");
    advance(SaveDelay);
    ASSERT_TRUE(savedDocument());
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "ab");
}

TEST_F(AppDelegateTest, SetsTheApplicationIconAfterTheStart)
{
    QApplication::setWindowIcon({});
    start();
    advance(Milliseconds(1000));
    EXPECT_FALSE(QApplication::windowIcon().isNull());
}

TEST_F(AppDelegateTest, ListsTheCurrentLaunchersInTheStatusMenu)
{
    startWithStatusBar();
    EXPECT_EQ(TrayMenu::titles(), Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026",
                                          "-", "Quit Quillsatchel" }));
    setWebsite(0, "example.com");
    EXPECT_EQ(TrayMenu::titles(), Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026",
                                          "-", "example.com", "-", "Quit Quillsatchel" }));
}

TEST_F(AppDelegateTest, RebuildsTheStatusMenuOnceForAWebsiteAndOnceForItsIcon)
{
    startWithStatusBar();
    int rebuildings = 0;
    const auto countWhenRemoved = [&] {
        QObject::connect(&TrayMenu::entry("Show Quillsatchel"), &QObject::destroyed, qApp,
                         [&rebuildings] { ++rebuildings; });
    };
    countWhenRemoved();
    setWebsite(0, "example.com");
    EXPECT_EQ(rebuildings, 1);
    countWhenRemoved();
    machine.httpClient.answer(0, PictureBytes::png(18, 18));
    settle();
    EXPECT_EQ(rebuildings, 2);
    TrayMenu::menu().popup({});
    const auto icon = TrayMenu::entry("example.com").icon();
    EXPECT_EQ(icon.pixmap(18, 18).toImage().pixelColor(9, 9), QColor(Qt::red));
}

TEST_F(AppDelegateTest, LaunchesFromTheStatusMenu)
{
    startWithStatusBar();
    setWebsite(0, "example.com/docs");
    TrayMenu::entry("example.com").trigger();
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://example.com/docs" }));
}

TEST_F(AppDelegateTest, LaunchesNothingForAnItemWithoutASlot)
{
    startWithStatusBar();
    setWebsite(0, "example.com");
    delegate->launchConfiguredItem({ .action = MenuItem::Action::launchConfiguredItem });
    EXPECT_EQ(machine.workspace.opened, Texts());
}

TEST_F(AppDelegateTest, ChecksAlwaysOnTopInTheStatusMenu)
{
    startWithStatusBar();
    EXPECT_TRUE(TrayMenu::entry("Always on Top").isChecked());
    TrayMenu::entry("Always on Top").trigger();
    EXPECT_FALSE(isSwitchedOnTop());
    EXPECT_FALSE(isFloating());
    EXPECT_FALSE(TrayMenu::entry("Always on Top").isChecked());
    setWebsite(0, "example.com"); // rebuilds the menu
    EXPECT_FALSE(TrayMenu::entry("Always on Top").isChecked());
    TrayMenu::entry("Always on Top").trigger();
    EXPECT_TRUE(isSwitchedOnTop());
    EXPECT_TRUE(isFloating());
    EXPECT_TRUE(TrayMenu::entry("Always on Top").isChecked());
    press("Always on Top");
    EXPECT_FALSE(TrayMenu::entry("Always on Top").isChecked());
}

TEST_F(AppDelegateTest, ChecksChangesFromBeforeTheTrayAppeared)
{
    start();
    press("Always on Top");
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    EXPECT_FALSE(TrayMenu::entry("Always on Top").isChecked());
}

TEST_F(AppDelegateTest, ShowsThePanelAndTheSettingsFromTheStatusMenu)
{
    startWithStatusBar();
    panel().close();
    TrayMenu::entry("Show Quillsatchel").trigger();
    EXPECT_TRUE(panel().isVisible());
    TrayMenu::entry("Show Quillsatchel").trigger();
    EXPECT_TRUE(panel().isVisible());
    panel().close();
    TrayMenu::entry("Settings\u2026").trigger();
    EXPECT_TRUE(panel().isVisible());
    draw();
    EXPECT_TRUE(settingsCard());
}

TEST_F(AppDelegateTest, BringsBackTheSamePanelUnchanged)
{
    startWithStatusBar();
    press("New Node");
    Input::click(editor(0));
    Input::type(panel(), "abc");
    const auto *const before = &panel();
    const auto place = panel().geometry();
    panel().close();
    EXPECT_FALSE(panel().isVisible());
    delegate->showPanel();
    EXPECT_EQ(&panel(), before);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(panel().geometry(), place);
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "abc");
}

TEST_F(AppDelegateTest, HidesThePanelOnlyWhileATrayCanBringItBack)
{
    start();
    panel().close();
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(panel().isMinimized());
    delegate->showPanel();
    EXPECT_FALSE(panel().isMinimized());

    machine.statusBar.kind.set(StatusBar::Kind::embedded);
    panel().close();
    EXPECT_FALSE(panel().isVisible());
    delegate->showPanel();

    machine.statusBar.kind.set(StatusBar::Kind::none);
    panel().close();
    EXPECT_TRUE(panel().isMinimized());
}

TEST_F(AppDelegateTest, HidesThePanelByShortcut)
{
    startWithStatusBar();
    Input::key(panel(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(AppDelegateTest, HidesTheApplicationChooserWithThePanel)
{
    startWithStatusBar();
    Input::key(openApplicationChooser(), Qt::Key_H, Qt::ControlModifier);
    settle();
    EXPECT_FALSE(panel().isVisible());
    EXPECT_FALSE(panel().findChild<ApplicationPanel *>());
}

TEST_F(AppDelegateTest, ClosesOpenMenusWhenItHidesThePanel)
{
    startWithStatusBar();
    Input::key(panel(), Qt::Key_F10);
    auto *const menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    Input::key(*menu, Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(AppDelegateTest, ClosesAnOpenMenuWhenAShortcutShowsTheSettings)
{
    start();
    Input::key(panel(), Qt::Key_F10);
    auto *const menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    Input::key(*menu, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_FALSE(menu->isVisible());
    draw();
    EXPECT_TRUE(settingsCard());
}

TEST_F(AppDelegateTest, HandlesShortcutsInTheApplicationChooser)
{
    startWithStatusBar();
    auto &chooser = openApplicationChooser();
    delegate->showAbout();
    EXPECT_TRUE(disappears<LauncherSettingsCard>());
    chooser.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&chooser));
    Input::key(chooser, Qt::Key_Comma, Qt::ControlModifier);
    draw();
    EXPECT_TRUE(settingsCard());
    EXPECT_TRUE(chooser.isVisible());
}

TEST_F(AppDelegateTest, HandlesShortcutsInTheChooserWithoutThePanel)
{
    startWithStatusBar();
    auto &chooser = openApplicationChooser();
    panel().close();
    ASSERT_FALSE(panel().isVisible());
    ASSERT_TRUE(chooser.isVisible());
    Input::key(chooser, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(AppDelegateTest, HandlesShortcutsWhileACardIsOpen)
{
    startWithStatusBar();
    delegate->showAbout();
    draw();
    Input::key(panel(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(disappears<AboutCard>());
    EXPECT_TRUE(settingsCard());
    Input::key(panel(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
    draw();
    EXPECT_TRUE(settingsCard());
}

TEST_F(AppDelegateTest, HandlesShortcutsWhileATabIsRenamed)
{
    startWithStatusBar();
    Input::doubleClick(*chips()[0]);
    settle();
    auto *const field = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_TRUE(field);
    Input::key(panel(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(field->text().toStdString(), "Prompts");
}

TEST_F(AppDelegateTest, RebuildsTheStatusMenuWhileAnEntryIsChosen)
{
    startWithStatusBar();
    setWebsite(0, "example.com");
    auto &entry = TrayMenu::entry("example.com");
    QObject::connect(&entry, &QAction::triggered, qApp, [this] { setWebsite(0, "other.example"); });
    entry.trigger();
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://example.com" }));
    EXPECT_EQ(TrayMenu::titles()[4], "other.example");
}

TEST_F(AppDelegateTest, QuitsByShortcut)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    QTimer::singleShot(0, qApp, [this] { Input::key(panel(), Qt::Key_Q, Qt::ControlModifier); });
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    deadline.start(std::chrono::seconds(5));
    EXPECT_EQ(QApplication::exec(), 0);
}

} // namespace
