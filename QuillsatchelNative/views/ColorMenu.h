#pragma once

#include "library/BlockColor.h"
#include "views/PopupMenu.h"

#include <functional>

/// The colours of a node with the current one marked, for one use: the menu deletes itself when it
/// closes. Assistive technology finds entries of which one is checked.
class ColorMenu final : public PopupMenu
{
    Q_OBJECT

public:
    ColorMenu(BlockColor current, QWidget *owner);

    /// A colour was chosen, perhaps the current one.
    std::function<void(BlockColor)> onColor = [](BlockColor) {};

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;
};
