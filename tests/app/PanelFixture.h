#pragma once

#include "app/AppDelegate.h"
#include "app/FloatingPanel.h"
#include "app/TitleBar.h"
#include "views/AboutCard.h"
#include "views/NodeEditor.h"
#include "views/TabChip.h"
#include "views/ViewFixture.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

/// The whole program on a machine of its own.
class PanelFixture : public ViewFixture
{
protected:
    /// Starts the program with a library of these tabs.
    void start(const std::vector<PromptTab> &tabs)
    {
        writeFile(tabs);
        start();
    }

    void start()
    {
        delegate.emplace(machine.platform);
        delegate->applicationDidFinishLaunching();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&panel()));
        draw();
    }

    /// Lets the views follow, with all that they prepare for later.
    void draw()
    {
        advance(Milliseconds(200));
        settle();
    }

    FloatingPanel &panel() { return delegate->panel(); }

    bool isFloating()
    {
        const bool isWindowFloating =
            panel().windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
        EXPECT_EQ(panel().windowFlags().testFlag(Qt::WindowStaysOnTopHint), isWindowFloating);
        return isWindowFloating;
    }

    QAbstractButton &button(const std::string &name)
    {
        auto *const found = Input::button(panel(), name);
        if (!found)
            throw std::runtime_error("no button " + name);
        return *found;
    }

    /// Presses "Dictate" and lets the microphone be used.
    void dictate()
    {
        press("Dictate");
        machine.speech.answer(0);
        settle();
        settle();
    }

    void press(const std::string &name)
    {
        Input::click(button(name));
        settle();
    }

    std::vector<PromptCard *> cards() { return visibleCardsIn(panel()); }

    NodeEditor &editor(std::size_t index) { return *cards().at(index)->findChild<NodeEditor *>(); }

    std::vector<TabChip *> chips()
    {
        const auto all = panel().findChildren<TabChip *>();
        std::vector<TabChip *> shown(all.begin(), all.end());
        std::ranges::sort(shown, {}, [](const TabChip *chip) { return chip->x(); });
        return shown;
    }

    AboutCard *aboutCard() { return panel().findChild<AboutCard *>(); }

    QRect placeOf(const QWidget &widget)
    {
        return { widget.mapTo(&panel(), QPoint()), widget.size() };
    }

    std::optional<AppDelegate> delegate;
};
