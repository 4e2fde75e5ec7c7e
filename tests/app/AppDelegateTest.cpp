#include "app/PanelFixture.h"
#include "app/StatusItem.h"
#include "fakes/PictureBytes.h"
#include "views/ApplicationPanel.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"

#include <QAction>
#include <QLineEdit>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <stdexcept>

namespace
{

class AppDelegateTest : public PanelFixture
{
protected:
    WindowPreferences &preferences() { return delegate->windowPreferences(); }

    void startWithStatusBar()
    {
        start();
        machine.statusBar.kind.set(StatusBar::Kind::notifier);
    }

    Texts statusMenu()
    {
        Texts titles;
        for (const auto *const action : delegate->statusItem().menu().actions())
            titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
        return titles;
    }

    QAction *statusMenuEntry(const std::string &title)
    {
        const auto actions = delegate->statusItem().menu().actions();
        const auto found =
            std::ranges::find(actions, QString::fromStdString(title), &QAction::text);
        if (found == actions.end())
            throw std::runtime_error("no entry " + title);
        return *found;
    }

    ApplicationPanel &openApplicationChooser()
    {
        delegate->showSettings();
        draw();
        auto *const slot = panel().findChild<LauncherSlotEditor *>();
        EXPECT_TRUE(QTest::qWaitFor([slot] { return slot->isVisible(); })); // the card fades in
        Input::click(*Input::button(*slot, "Choose App\u2026"));
        settle();
        auto *const chooser = panel().findChild<ApplicationPanel *>();
        if (!chooser)
            throw std::runtime_error("no application chooser");
        EXPECT_TRUE(QTest::qWaitForWindowActive(chooser));
        return *chooser;
    }

    /// What is asked of the two cards while `action` runs, in order.
    Texts cardsAskedFor(const std::function<void()> &action)
    {
        Texts asked;
        const auto settings = preferences().showsSettingsCard.sink(
            [&asked](bool shows) { asked.emplace_back(shows ? "settings on" : "settings off"); });
        const auto info = preferences().showsInfoCard.sink(
            [&asked](bool shows) { asked.emplace_back(shows ? "info on" : "info off"); });
        asked.clear(); // of what they are now
        action();
        return asked;
    }

    void fillSlotWithWebsite(const std::string &address)
    {
        EXPECT_TRUE(delegate->launcherStore().setWebsite(address, 0));
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
    EXPECT_EQ(cardsAskedFor([this] { delegate->showAbout(); }),
              Texts({ "settings off", "info on" }));
}

TEST_F(AppDelegateTest, AsksForTheSettingsCardAloneToo)
{
    start();
    preferences().showsInfoCard.set(true);
    EXPECT_EQ(cardsAskedFor([this] { delegate->showSettings(); }),
              Texts({ "info off", "settings on" }));
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

TEST_F(AppDelegateTest, BringsThePanelForwardWithTheTokenOfAnotherStart)
{
    start();
    const StartupToken token { .activationToken = "a", .startupID = "b_TIME12" };
    delegate->showPanel(token);
    EXPECT_EQ(machine.windowSystem.tokens, std::vector({ StartupToken(), token }));
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

TEST_F(AppDelegateTest, LooksForAStatusBarOnceThePanelStands)
{
    start();
    EXPECT_EQ(machine.statusBar.beginCalls, 1);
}

TEST_F(AppDelegateTest, ListsTheLaunchersInTheStatusMenuAsTheyAreNow)
{
    startWithStatusBar();
    EXPECT_EQ(statusMenu(), Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026", "-",
                                    "Quit Quillsatchel" }));
    fillSlotWithWebsite("example.com");
    EXPECT_EQ(statusMenu(), Texts({ "Show Quillsatchel", "Always on Top", "Settings\u2026", "-",
                                    "example.com", "-", "Quit Quillsatchel" }));
}

TEST_F(AppDelegateTest, RebuildsTheStatusMenuOnceForAWebsiteAndOnceForItsIcon)
{
    startWithStatusBar();
    int rebuildings = 0;
    const auto countWhenRemoved = [&] {
        QObject::connect(statusMenuEntry("Show Quillsatchel"), &QObject::destroyed, qApp,
                         [&rebuildings] { ++rebuildings; });
    };
    countWhenRemoved();
    fillSlotWithWebsite("example.com");
    EXPECT_EQ(rebuildings, 1);
    countWhenRemoved();
    machine.httpClient.answer(0, PictureBytes::png(18, 18));
    settle();
    EXPECT_EQ(rebuildings, 2);
    const auto icon = statusMenuEntry("example.com")->icon();
    EXPECT_EQ(icon.pixmap(18, 18).toImage().pixelColor(9, 9), QColor(Qt::red));
}

TEST_F(AppDelegateTest, LaunchesFromTheStatusMenu)
{
    startWithStatusBar();
    fillSlotWithWebsite("example.com/docs");
    statusMenuEntry("example.com")->trigger();
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://example.com/docs" }));
}

TEST_F(AppDelegateTest, LaunchesNothingForAnEntryWithoutASlot)
{
    startWithStatusBar();
    fillSlotWithWebsite("example.com");
    delegate->launchConfiguredItem({ .action = MenuItem::Action::LaunchConfiguredItem });
    EXPECT_EQ(machine.workspace.opened, Texts());
}

TEST_F(AppDelegateTest, MarksInTheStatusMenuWhetherThePanelIsOnTop)
{
    startWithStatusBar();
    EXPECT_TRUE(statusMenuEntry("Always on Top")->isChecked());
    statusMenuEntry("Always on Top")->trigger();
    EXPECT_FALSE(preferences().alwaysOnTop.get());
    EXPECT_FALSE(isFloating());
    EXPECT_FALSE(statusMenuEntry("Always on Top")->isChecked());
    fillSlotWithWebsite("example.com"); // makes another menu
    EXPECT_FALSE(statusMenuEntry("Always on Top")->isChecked());
    statusMenuEntry("Always on Top")->trigger();
    EXPECT_TRUE(preferences().alwaysOnTop.get());
    EXPECT_TRUE(isFloating());
    EXPECT_TRUE(statusMenuEntry("Always on Top")->isChecked());
    press("Always on Top");
    EXPECT_FALSE(statusMenuEntry("Always on Top")->isChecked());
}

TEST_F(AppDelegateTest, MarksWhatChangedBeforeThereWasAStatusBar)
{
    start();
    press("Always on Top");
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    EXPECT_FALSE(statusMenuEntry("Always on Top")->isChecked());
}

TEST_F(AppDelegateTest, ShowsThePanelAndTheSettingsFromTheStatusMenu)
{
    startWithStatusBar();
    panel().close();
    statusMenuEntry("Show Quillsatchel")->trigger();
    EXPECT_TRUE(panel().isVisible());
    statusMenuEntry("Show Quillsatchel")->trigger();
    EXPECT_TRUE(panel().isVisible());
    panel().close();
    statusMenuEntry("Settings\u2026")->trigger();
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(preferences().showsSettingsCard.get());
}

TEST_F(AppDelegateTest, BringsTheSamePanelBackAsItWas)
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

TEST_F(AppDelegateTest, HidesThePanelOnlyWhereTheStatusBarBringsItBack)
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

TEST_F(AppDelegateTest, HidesThePanelByItsKey)
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

TEST_F(AppDelegateTest, TakesItsOpenMenusOffTheScreenWithThePanel)
{
    startWithStatusBar();
    Input::key(panel(), Qt::Key_F10);
    auto *const menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    Input::key(*menu, Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(AppDelegateTest, ShowsTheSettingsByTheirKeyInsteadOfAnOpenMenu)
{
    start();
    Input::key(panel(), Qt::Key_F10);
    auto *const menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    Input::key(*menu, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(preferences().showsSettingsCard.get());
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(AppDelegateTest, HearsItsKeysInTheApplicationChooser)
{
    startWithStatusBar();
    auto &chooser = openApplicationChooser();
    preferences().showsSettingsCard.set(false);
    Input::key(chooser, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(preferences().showsSettingsCard.get());
    EXPECT_TRUE(chooser.isVisible());
}

TEST_F(AppDelegateTest, HearsItsKeysInTheApplicationChooserWithoutThePanel)
{
    startWithStatusBar();
    auto &chooser = openApplicationChooser();
    panel().close();
    ASSERT_FALSE(panel().isVisible());
    ASSERT_TRUE(chooser.isVisible());
    Input::key(chooser, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(AppDelegateTest, HearsItsKeysOnceWhileACardIsOpen)
{
    startWithStatusBar();
    delegate->showAbout();
    draw();
    Input::key(panel(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_FALSE(preferences().showsInfoCard.get());
    EXPECT_TRUE(preferences().showsSettingsCard.get());
    draw();
    Input::key(panel(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_TRUE(preferences().showsSettingsCard.get());
}

TEST_F(AppDelegateTest, HearsItsKeysWhileATabIsRenamed)
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

TEST_F(AppDelegateTest, RebuildsTheStatusMenuWhileOneOfItsEntriesIsChosen)
{
    startWithStatusBar();
    fillSlotWithWebsite("example.com");
    auto *const entry = statusMenuEntry("example.com");
    QObject::connect(entry, &QAction::triggered, qApp,
                     [this] { fillSlotWithWebsite("other.example"); });
    entry->trigger();
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://example.com" }));
    EXPECT_EQ(statusMenu()[4], "other.example");
}

TEST_F(AppDelegateTest, EndsByItsKey)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    QTimer::singleShot(0, qApp, [this] { Input::key(panel(), Qt::Key_Q, Qt::ControlModifier); });
    QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
}

} // namespace
