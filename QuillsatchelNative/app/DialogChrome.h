#pragma once

#include "platform/WindowSystem.h"
#include "support/Cancellable.h"

#include <QObject>

class DialogTitleBar;
class PanelFrame;
class QDialog;

/// Replaces the window manager's decoration of a dialog, which is light on a light desktop, with a
/// title bar and a frame like the panel's, to move and to resize it. The corners are round under a
/// compositor.
class DialogChrome final : public QObject
{
    Q_OBJECT

public:
    /// Call before showing `dialog`, once it has its title, layout and size. It grows by the height
    /// of the title bar, but not beyond its screen. It owns the added widgets.
    static void addTo(QDialog &dialog, WindowSystem &windowSystem);

    bool eventFilter(QObject *dialog, QEvent *event) override;

private:
    DialogChrome(QDialog &dialog, WindowSystem &windowSystem);

    void addTopMargin();
    void arrange();
    void renderEdge();
    void paintBackground();

    QDialog &m_dialog;
    WindowSystem &m_windowSystem;
    DialogTitleBar *m_titleBar;
    PanelFrame *m_frame;
    Cancellable m_compositingCancellable;
};
