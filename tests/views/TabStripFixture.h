#pragma once

#include "views/TabChip.h"
#include "views/TabStrip.h"
#include "views/ViewFixture.h"

#include <QLineEdit>

#include <algorithm>
#include <optional>
#include <vector>

/// A strip of the panel's width above a line edit that can take the focus.
class TabStripFixture : public ViewFixture
{
protected:
    void openStrip(const std::vector<PromptTab> &tabs)
    {
        open(tabs);
        window.resize(430, 300);
        strip = new TabStrip(store(), machine.mainQueue, &window);
        strip->setGeometry(0, 0, 430, TabStrip::Height);
        strip->onSelect = [this](const QUuid &id) { store().selectTab(id); };
        strip->onRename = [this](const QUuid &id, const std::string &name) {
            store().renameTab(id, name);
        };
        strip->onDelete = [this](const QUuid &id) { store().deleteTab(id); };
        strip->onAdd = [this] { store().addTab(); };
        otherField = new QLineEdit(&window);
        otherField->setGeometry(0, 100, 430, 30);
        Input::show(window);
        settle();
    }

    /// The visible chips, left to right.
    std::vector<TabChip *> chips() const
    {
        const auto all = strip->findChildren<TabChip *>();
        std::vector<TabChip *> shown;
        std::ranges::copy_if(all, std::back_inserter(shown),
                             [](const TabChip *chip) { return !chip->isHidden(); });
        std::ranges::sort(shown, {}, [](const TabChip *chip) { return chip->x(); });
        return shown;
    }

    TabChip &chip(std::size_t index) const { return *chips().at(index); }

    Texts labels() const
    {
        Texts texts;
        for (const auto *const shown : chips())
            texts.push_back(shown->text().toStdString());
        return texts;
    }

    /// The index of the chip that looks active; none unless exactly one does.
    std::optional<std::size_t> activeChip() const
    {
        std::optional<std::size_t> active;
        for (std::size_t index = 0; index < chips().size(); ++index) {
            if (!chip(index).isChecked())
                continue;
            if (active)
                return std::nullopt;
            active = index;
        }
        return active;
    }

    void pressNewTab()
    {
        Input::click(*Input::button(*strip, "New tab"));
        settle();
    }

    QLineEdit *field() const { return strip->findChild<QLineEdit *>(); }

    void click(std::size_t index)
    {
        Input::click(chip(index));
        settle();
    }

    void doubleClick(std::size_t index)
    {
        Input::doubleClick(chip(index));
        settle();
    }

    void chooseFromMenu(std::size_t index, const std::string &title)
    {
        withMenu(index, [&title](QMenu &menu) { Input::choose(menu, title); });
    }

    void withMenu(std::size_t index, const std::function<void(QMenu &)> &use)
    {
        auto &clicked = chip(index);
        Input::withMenu(
            [&clicked] { Input::click(clicked, clicked.rect().center(), Qt::RightButton); }, use);
        settle();
    }

    Texts names() const
    {
        Texts texts;
        for (const auto &tab : store().tabs().get())
            texts.push_back(tab.name);
        return texts;
    }

    QWidget window;
    TabStrip *strip = nullptr;
    QLineEdit *otherField = nullptr;
};
