#pragma once

#include "app/WindowDrag.h"
#include "preferences/WindowPreferences.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QWidget>

#include <functional>

class TitlebarControlsView;

/// The panel's own title bar, drawn over its content: the window's buttons at the left, icon and
/// name in the middle, the title-bar controls at the right. The window is moved by what is left
/// of it, and zoomed by a double click there.
class TitleBar final : public QWidget
{
    Q_OBJECT

public:
    TitleBar(WindowPreferences &windowPreferences, QWidget *parent);

    /// In points.
    static constexpr int Height = 28;

    /// The icon was pressed.
    std::function<void()> onShowAbout = [] {};

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QWidget *makeWindowButtons();
    QWidget *makeNameplate();
    void zoomWindow();

    WindowDrag m_drag { *this, QGuiApplication::styleHints()->startDragDistance() };
    QWidget *m_windowButtons;
    QWidget *m_nameplate;
    TitlebarControlsView *m_controls;
};
