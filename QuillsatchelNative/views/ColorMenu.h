#pragma once

#include "library/BlockColor.h"
#include "views/PopupMenu.h"

#include <functional>

/// The menu of node colours. The current one has a tick, and is checked in the accessibility tree.
/// The menu deletes itself when it closes.
class ColorMenu final : public PopupMenu
{
    Q_OBJECT

public:
    ColorMenu(BlockColor current, QWidget *owner);

    /// The user chose a colour, perhaps the current one.
    std::function<void(BlockColor)> onColor = [](BlockColor) {};

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;
};
