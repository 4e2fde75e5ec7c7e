#pragma once

#include "platform/WindowSystem.h"
#include "support/Cancellable.h"

#include <QObject>

class DialogTitleBar;
class PanelFrame;
class QDialog;

/// Gives a dialog the panel's title bar and rim in place of the window manager's decoration, which
/// is light on a light desktop. The dialog is moved by the one and resized by the other; its
/// corners are round where there is a compositor.
class DialogChrome final : public QObject
{
    Q_OBJECT

public:
    /// `dialog` has its title, its layout and its size, and is not shown yet. It grows by the title
    /// bar, but not beyond its screen, and owns what is added.
    static void addTo(QDialog &dialog, WindowSystem &windowSystem);

    bool eventFilter(QObject *dialog, QEvent *event) override;

private:
    DialogChrome(QDialog &dialog, WindowSystem &windowSystem);

    void makeRoom();
    void arrange();
    void renderEdge();
    void paintGround();

    QDialog &m_dialog;
    WindowSystem &m_windowSystem;
    DialogTitleBar *m_titleBar;
    PanelFrame *m_frame;
    Cancellable m_compositingCancellable;
};
