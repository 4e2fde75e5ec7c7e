#pragma once

#include "app/FloatingPanel.h"

#include <QApplication>
#include <QList>

/// The panels of this process, in no particular order.
inline QList<FloatingPanel *> panels()
{
    QList<FloatingPanel *> panels;
    for (auto *const widget : QApplication::topLevelWidgets()) {
        if (auto *const panel = qobject_cast<FloatingPanel *>(widget))
            panels.push_back(panel);
    }
    return panels;
}
