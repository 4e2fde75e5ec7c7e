#pragma once

#include "fakes/FakeApplicationChooser.h"
#include "launchers/LauncherStore.h"
#include "preferences/WindowPreferences.h"
#include "views/AboutCard.h"
#include "views/EmptyState.h"
#include "views/LauncherSettingsCard.h"
#include "views/NodeEditor.h"
#include "views/QuillsatchelView.h"
#include "views/TabChip.h"
#include "views/ViewFixture.h"

#include <optional>
#include <string>
#include <vector>

/// The content of the panel in its own window.
class PanelContentFixture : public ViewFixture
{
protected:
    void openView(const std::vector<PromptTab> &tabs)
    {
        open(tabs);
        view.emplace(store(), launcherStore, preferences, machine.platform, 0, nullptr);
        Input::show(*view);
        view->setFocus();
        settle();
    }

    void openView(const Texts &texts) { openView({ tabOf("Prompts", texts) }); }

    std::vector<PromptCard *> cards() const { return visibleCardsIn(*view); }

    PromptCard &card(std::size_t index) const { return *cards().at(index); }

    NodeEditor &editor(std::size_t index) const { return *card(index).findChild<NodeEditor *>(); }

    std::string shownText(std::size_t index) const
    {
        return editor(index).toPlainText().toStdString();
    }

    /// Moves the cursor to the end of the node's text.
    void editEnd(std::size_t index)
    {
        Input::click(editor(index));
        Input::key(editor(index), Qt::Key_End, Qt::ControlModifier);
    }

    bool isEmptyStateShown() const
    {
        const auto *const empty = view->findChild<EmptyState *>();
        return empty && empty->isVisible();
    }

    AboutCard *aboutCard() const { return view->findChild<AboutCard *>(); }

    LauncherSettingsCard *settingsCard() const { return view->findChild<LauncherSettingsCard *>(); }

    void press(const QWidget &widget, const std::string &name)
    {
        auto *const button = Input::button(widget, name);
        ASSERT_TRUE(button) << name;
        Input::click(*button);
        settle();
    }

    void press(const std::string &name) { press(*view, name); }

    FakeApplicationChooser applicationChooser;
    LauncherStore launcherStore { applicationChooser, machine.platform };
    WindowPreferences preferences;
    std::optional<QuillsatchelView> view;
};
