#include "app/PanelFixture.h"
#include "launchers/ExampleLaunchers.h"
#include "views/AccessibleTree.h"
#include "views/ApplicationPanel.h"
#include "views/FindCard.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"
#include "views/MessageLine.h"
#include "views/TextField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace
{

/// The accessibility tree of the program in each of its states.
class AccessibilityWalkTest : public PanelFixture
{
protected:
    /// Starts the program and brings it into the state.
    using State = void (AccessibilityWalkTest::*)();

    void withoutNodes() { start({ tabOf("Prompts") }); }

    void withTabsAndCards()
    {
        start({ tabOf("One", { "", "https://example.com", "c" }), tabOf("Two"), tabOf("Two"),
                tabOf("") });
    }

    void scrolled()
    {
        std::vector<PromptTab> tabs;
        for (int number = 0; number < 20; ++number)
            tabs.push_back(tabOf("Tab number " + std::to_string(number), numberedTexts(12)));
        start(tabs);
        Input::wheel(*cards()[0], -8);
        Input::wheel(*chips()[0], -8);
        draw();
    }

    void renaming()
    {
        start({ tabOf("One", { "a" }), tabOf("Two") });
        Input::doubleClick(*chips()[0]);
        settle();
        settle();
    }

    void withAboutCard()
    {
        start({ tabOf("One", { "a" }) });
        button("About Quillsatchel").setFocus();
        delegate->showAbout();
        waitForCard<AboutCard>();
    }

    void withLauncherSettings()
    {
        start({ tabOf("One", { "a" }) });
        button("New Node").setFocus();
        delegate->showSettings();
        waitForCard<LauncherSettingsCard>();
    }

    void withInvalidWebsite()
    {
        withLauncherSettings();
        auto *const field = panel().findChild<TextField *>();
        field->setText(QStringLiteral("ftp://example.com"));
        Input::click(*field);
        Input::key(panel(), Qt::Key_Return);
        draw();
    }

    void withFullLaunchers()
    {
        machine.workspace.icon = QImage(22, 22, QImage::Format_ARGB32_Premultiplied);
        TestFiles::write(folder / "launchers.json", ExampleLaunchers::json);
        withLauncherSettings();
        panel().resize(390, 420);
        draw();
    }

    void withChooser()
    {
        machine.workspace.icon = QImage(48, 48, QImage::Format_ARGB32_Premultiplied);
        machine.workspace.applications = { { "/apps/a.desktop", "Calculator", "Do sums", "" },
                                           { "/apps/b.desktop", "Calendar", "", "" },
                                           { "/apps/c.desktop", "Calendar", "", "" } };
        withLauncherSettings();
        press("Choose App…");
        machine.workspace.finishListing();
        ASSERT_TRUE(QTest::qWaitFor(
            [] { return qobject_cast<ApplicationPanel *>(QApplication::activeWindow()); }));
        draw();
    }

    void withNothingFound()
    {
        withChooser();
        Input::type(*QApplication::activeWindow(), "zzz");
        draw();
    }

    void withFindCard()
    {
        start({ tabOf("One", { "a draft", "" }), tabOf("Two", { "drafts" }), tabOf("") });
        button("New Node").setFocus();
        Input::type(panel(), "d");
        waitForCard<FindCard>();
    }

    void withManyFound()
    {
        start({ tabOf("One", numberedTexts(100)) });
        Input::key(panel(), Qt::Key_F, Qt::ControlModifier);
        waitForCard<FindCard>();
        panel().resize(390, 420);
        draw();
    }

    void withNoNodesFound()
    {
        withFindCard();
        Input::type(panel(), "zzz");
        draw();
    }

    void dictating()
    {
        start({ tabOf("One", { "a", "b" }) });
        dictate();
        ASSERT_TRUE(Input::button(panel(), "Stop"));
    }

    void copied()
    {
        start({ tabOf("One", { "a", "b" }) });
        press("Copy");
        settle();
        ASSERT_TRUE(Input::button(panel(), "Copied"));
    }

    void withMessage()
    {
        machine.speech.startsEngine = false;
        start({ tabOf("One", { "a" }) });
        dictate();
        ASSERT_TRUE(panel().findChild<MessageLine *>()->isVisible());
    }

    inline static const std::map<std::string, State> States {
        { "without nodes", &AccessibilityWalkTest::withoutNodes },
        { "with tabs and cards", &AccessibilityWalkTest::withTabsAndCards },
        { "scrolled", &AccessibilityWalkTest::scrolled },
        { "renaming", &AccessibilityWalkTest::renaming },
        { "with about card", &AccessibilityWalkTest::withAboutCard },
        { "with launcher settings", &AccessibilityWalkTest::withLauncherSettings },
        { "with invalid website", &AccessibilityWalkTest::withInvalidWebsite },
        { "with full launchers", &AccessibilityWalkTest::withFullLaunchers },
        { "with chooser", &AccessibilityWalkTest::withChooser },
        { "with nothing found", &AccessibilityWalkTest::withNothingFound },
        { "with find card", &AccessibilityWalkTest::withFindCard },
        { "with many found", &AccessibilityWalkTest::withManyFound },
        { "with no nodes found", &AccessibilityWalkTest::withNoNodesFound },
        { "dictating", &AccessibilityWalkTest::dictating },
        { "copied", &AccessibilityWalkTest::copied },
        { "with message", &AccessibilityWalkTest::withMessage },
    };

    /// Starts the program once per state and calls `check` in it.
    void inEveryState(const std::function<void()> &check)
    {
        for (const auto &[name, state] : States) {
            SCOPED_TRACE(name);
            std::filesystem::remove(folder / "launchers.json");
            machine.speech.startsEngine = true;
            machine.speech.authorizationRequests.clear();
            std::invoke(state, this);
            if (HasFatalFailure())
                return;
            check();
            end();
        }
    }

    void enter(const std::string &state) { std::invoke(States.at(state), this); }

    void end()
    {
        delegate.reset();
        settle();
    }

    /// The objects of the active window that assistive technology can find.
    std::vector<AccessibleObject> visibleObjects()
    {
        return AccessibleTree::visibleObjects(*QApplication::activeWindow());
    }

    /// The widget that confines the focus: the open card or the window.
    static QWidget &scope()
    {
        for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget())
            if (qobject_cast<OverlayCard *>(widget))
                return *widget;
        return *QApplication::activeWindow();
    }

    /// Waits until the card has faded in and its button has the focus.
    template <typename Card>
    void waitForCard()
    {
        settle();
        auto *const card = panel().findChild<Card *>();
        ASSERT_TRUE(card);
        ASSERT_TRUE(QTest::qWaitFor([card] {
            return card != QApplication::focusWidget() &&
                   card->isAncestorOf(QApplication::focusWidget());
        }));
        settle();
    }

    void tab(bool forwards)
    {
        const bool isTyping = qobject_cast<NodeEditor *>(QApplication::focusWidget());
        const Qt::KeyboardModifiers control = isTyping ? Qt::ControlModifier : Qt::NoModifier;
        auto &window = *QApplication::activeWindow();
        if (forwards)
            Input::key(window, Qt::Key_Tab, control);
        else
            Input::key(window, Qt::Key_Backtab, control | Qt::ShiftModifier);
        advance(Milliseconds(30)); // faster than anyone types
        settle();
    }

    /// A control and its name when Tab visits it; the cards are reused for other nodes on
    /// scrolling.
    struct Stop {
        QWidget *control = QApplication::focusWidget();
        std::string name = Input::accessibleName(*control->parentWidget()) + " / " +
                           Input::accessibleName(*control);

        bool operator==(const Stop &) const = default;

        bool operator<(const Stop &other) const
        {
            return std::tie(control, name) < std::tie(other.control, other.name);
        }
    };

    struct TabCycle {
        std::vector<Stop> stops;
        int jumps = 0; ///< moves against the reading order

        std::set<QWidget *> controls() const
        {
            std::set<QWidget *> all;
            for (const auto &stop : stops)
                all.insert(stop.control);
            return all;
        }

        /// The names in order, rotated to begin with `first`.
        std::vector<std::string> namesFrom(const std::string &first) const
        {
            std::vector<std::string> names;
            for (const auto &stop : stops)
                names.push_back(stop.name);
            std::rotate(names.begin(), std::ranges::find(names, first), names.end());
            return names;
        }
    };

    /// Presses Tab until it returns to its first control.
    TabCycle tabCycle(bool forwards)
    {
        constexpr std::size_t MaxStops = 300;
        tab(forwards); // the focus may start at a widget that Tab does not visit
        TabCycle cycle;
        const Stop first;
        Stop current;
        do {
            cycle.stops.push_back(current);
            tab(forwards);
            const Stop next;
            cycle.jumps += precedes(*current.control, *next.control) ? 0 : 1;
            current = next;
        } while (current != first && cycle.stops.size() < MaxStops);
        EXPECT_EQ(current, first) << "Tab never returns to its first control";
        return cycle;
    }

    /// Whether `first` comes before `second` when reading line by line.
    static bool precedes(const QWidget &first, const QWidget &second)
    {
        const auto placeOf = [](const QWidget &widget) {
            return QRect(widget.mapTo(widget.window(), QPoint()), widget.size());
        };
        const QRect a = placeOf(first);
        const QRect b = placeOf(second);
        const bool isOneLine =
            std::abs(a.center().y() - b.center().y()) <= std::min(a.height(), b.height()) / 2;
        return isOneLine ? a.left() < b.left() : a.top() < b.top();
    }
};

TEST_F(AccessibilityWalkTest, FindsTheObjectsInSight)
{
    enter("with tabs and cards");
    std::multiset<std::string> names;
    for (const auto &object : visibleObjects())
        names.insert(object.name());
    EXPECT_EQ(names.count("Two"), 2U);
    EXPECT_EQ(names.count("Node text"), 3U);
    EXPECT_EQ(names.count("Copy"), 2U);
    EXPECT_EQ(names.count("Launch"), 1U);
    EXPECT_EQ(names.count("Always on Top"), 1U);
}

TEST_F(AccessibilityWalkTest, NamesInteractiveObjects)
{
    inEveryState([this] {
        for (const auto &object : visibleObjects()) {
            if (!object.isInteractive())
                continue;
            EXPECT_NE(object.name(), "") << object.path;
            EXPECT_NE(object.role(), QAccessible::NoRole) << object.path;
            EXPECT_NE(object.role(), QAccessible::Client) << object.path;
        }
    });
}

TEST_F(AccessibilityWalkTest, DescribesButtonsWithoutText)
{
    inEveryState([this] {
        for (const auto &object : visibleObjects()) {
            const auto *const button = qobject_cast<QAbstractButton *>(object.widget());
            if (button && button->text().isEmpty()) {
                EXPECT_NE(object.description(), "") << object.path;
                EXPECT_FALSE(button->toolTip().isEmpty()) << object.path;
            }
        }
    });
}

TEST_F(AccessibilityWalkTest, GivesSiblingsDistinctNames)
{
    const std::set<QAccessible::Role> rolesWithEqualNames { QAccessible::PageTab,
                                                            QAccessible::ListItem };
    inEveryState([this, &rolesWithEqualNames] {
        std::set<std::string> seen;
        for (const auto &object : visibleObjects()) {
            if (object.name().empty() || rolesWithEqualNames.contains(object.role()))
                continue;
            EXPECT_TRUE(seen.insert(object.path).second) << object.path;
        }
    });
}

TEST_F(AccessibilityWalkTest, ReportsPlacesWithinTheWindow)
{
    inEveryState([this] {
        const QRect window = QApplication::activeWindow()->geometry();
        for (const auto &object : visibleObjects()) {
            EXPECT_FALSE(object.frame().isEmpty()) << object.path;
            EXPECT_TRUE(window.intersects(object.frame())) << object.path;
            EXPECT_TRUE(!object.isFullyVisible() || window.contains(object.frame())) << object.path;
        }
    });
}

TEST_F(AccessibilityWalkTest, ReportsCoveredWidgetsAsOutOfSight)
{
    inEveryState([this] {
        for (const auto &object : visibleObjects()) {
            const auto *const widget = object.widget();
            EXPECT_FALSE(widget && widget->visibleRegion().isEmpty()) << object.path;
        }
    });
}

TEST_F(AccessibilityWalkTest, ReachesEveryFocusableControlByTab)
{
    inEveryState([this] {
        const auto stops = tabCycle(true).stops;
        const std::set<Stop> once(stops.begin(), stops.end());
        EXPECT_EQ(once.size(), stops.size());
        const auto controls = TabCycle { stops }.controls();
        for (const auto &object : AccessibleTree::visibleObjects(scope())) {
            const auto state = object.accessible->state();
            const bool isStop = state.focusable && !state.disabled && object.widget();
            EXPECT_EQ(controls.contains(object.widget()), isStop) << object.path;
        }
        for (const auto *const control : controls)
            EXPECT_TRUE(scope().isAncestorOf(control)) << control->metaObject()->className();
    });
}

TEST_F(AccessibilityWalkTest, VisitsTheSameControlsBackwardsByShiftTab)
{
    inEveryState([this] {
        const auto forwards = tabCycle(true);
        auto backwards = tabCycle(false);
        std::ranges::reverse(backwards.stops);
        const std::string start = forwards.stops.front().name;
        EXPECT_EQ(forwards.namesFrom(start), backwards.namesFrom(start));
    });
}

TEST_F(AccessibilityWalkTest, MovesInReadingOrderByTab)
{
    inEveryState(
        [this] { EXPECT_EQ(tabCycle(true).jumps, 1) << "only from the end to the beginning"; });
}

TEST_F(AccessibilityWalkTest, RestoresTheFocusWhenEscapeClosesACard)
{
    const std::map<std::string, std::string> openers { { "with about card", "About Quillsatchel" },
                                                       { "with launcher settings", "New Node" },
                                                       { "with invalid website", "New Node" } };
    for (const auto &[state, opener] : openers) {
        enter(state);
        ASSERT_FALSE(HasFatalFailure());
        Input::key(panel(), Qt::Key_Escape);
        draw();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !panel().findChild<OverlayCard *>(); }));
        EXPECT_TRUE(button(opener).hasFocus()) << state;
        end();
    }
}

TEST_F(AccessibilityWalkTest, ReturnsToTheSettingsWhenEscapeClosesTheChooser)
{
    enter("with chooser");
    Input::key(*QApplication::activeWindow(), Qt::Key_Escape);
    draw();
    panel().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
    EXPECT_FALSE(panel().findChild<ApplicationPanel *>());
    EXPECT_TRUE(scope().isAncestorOf(QApplication::focusWidget()));
}

TEST_F(AccessibilityWalkTest, ReportsAnOpenCardAsModal)
{
    enter("with about card");
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(aboutCard())->state().modal);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&panel())->state().modal);
}

TEST_F(AccessibilityWalkTest, ReadsCardsFromTopToBottom)
{
    for (const auto *const state : { "with about card", "with launcher settings" }) {
        enter(state);
        int bottom = 0;
        for (const auto &object : AccessibleTree::visibleObjects(scope())) {
            if (object.role() != QAccessible::StaticText)
                continue;
            EXPECT_GE(object.frame().top(), bottom) << object.path;
            bottom = object.frame().bottom();
        }
        EXPECT_GT(bottom, 0);
        end();
    }
}

} // namespace
