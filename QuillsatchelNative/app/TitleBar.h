#pragma once

#include "app/WindowDrag.h"
#include "preferences/WindowPreferences.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QWidget>

#include <functional>

class TitlebarControlsView;

/// The panel's title bar, drawn over its content: window buttons on the left, icon and name in the
/// middle, controls on the right. Dragging elsewhere moves the window, a double click zooms it.
class TitleBar final : public QWidget
{
    Q_OBJECT

public:
    TitleBar(WindowPreferences &windowPreferences, QWidget *parent);

    /// In points.
    static constexpr int Height = 28;

    /// The user clicked the icon.
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
