#pragma once

#include "app/AppDelegate.h"
#include "app/FloatingPanel.h"
#include "app/TitleBar.h"
#include "views/AboutCard.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"
#include "views/NodeEditor.h"
#include "views/TabChip.h"
#include "views/ViewFixture.h"

#include <QLineEdit>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

/// The whole program on a fake platform.
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

    /// Lets the views render, including the cards they create later.
    void draw()
    {
        advance(Milliseconds(200));
        settle();
    }

    static FloatingPanel &panel()
    {
        for (auto *const widget : QApplication::topLevelWidgets()) {
            if (auto *const panel = qobject_cast<FloatingPanel *>(widget))
                return *panel;
        }
        throw std::runtime_error("no panel");
    }

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

    /// Presses "Dictate" and grants access to the microphone.
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

    LauncherSettingsCard *settingsCard() { return panel().findChild<LauncherSettingsCard *>(); }

    /// Waits until the card has faded out.
    template <typename Card>
    bool disappears()
    {
        draw();
        return QTest::qWaitFor([this] { return !panel().findChild<Card *>(); });
    }

    /// Opens the launcher settings unless they are open. Returns the editor of a slot.
    LauncherSlotEditor &slotEditor(int slot)
    {
        if (!settingsCard()) {
            delegate->showSettings();
            draw();
        }
        auto *const editor = settingsCard()->findChildren<LauncherSlotEditor *>().at(slot);
        EXPECT_TRUE(QTest::qWaitFor([editor] { return editor->isVisible(); })); // the card fades in
        return *editor;
    }

    /// Fills a launcher slot through the settings, which stay open.
    void setWebsite(int slot, const std::string &address)
    {
        auto &editor = slotEditor(slot);
        editor.findChild<QLineEdit *>()->setText(QString::fromStdString(address));
        Input::button(editor, "Set URL")->click();
        settle();
    }

    QRect placeOf(const QWidget &widget)
    {
        return { widget.mapTo(&panel(), QPoint()), widget.size() };
    }

    std::optional<AppDelegate> delegate;
};
