#pragma once

#include "app/ScreenChanges.h"
#include "platform/WindowSystem.h"
#include "support/Cancellable.h"
#include "views/PointSize.h"

#include <QContextMenuEvent>
#include <QWidget>

#include <functional>

class PanelFrame;
class QuillsatchelView;
class TitleBar;

/// The program's one window: frameless, translucent with round corners where there is a
/// compositor, on all desktops, dark whatever the system's setting. It takes the keyboard like
/// any window. Closing it takes it off the screen; the program goes on. When screens go or shrink,
/// it moves and shrinks into view.
class FloatingPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit FloatingPanel(WindowSystem &windowSystem);

    /// Fills the panel with `content`, which gives its sizes, and lays `titleBar` over its top.
    /// The panel owns both.
    void setContent(QuillsatchelView *content, TitleBar *titleBar);

    /// Above ordinary windows or among them, without hiding the panel.
    void setFloating(bool isFloating);
    /// In the middle of the screen's free area, which it does not exceed.
    void center();
    /// Shows the panel in view and in front and gives it the keyboard, as the user asked for with a
    /// start of this token or by other means.
    void makeKeyAndOrderFront(const StartupToken &token = {});
    /// Hides the panel; minimises it where a hidden panel could not be brought back.
    void orderOut();

    /// Whether the desktop shows something that brings a hidden panel back.
    std::function<bool()> canBeBroughtBack = [] { return false; };
    /// The user asks for the menu of the panel, at a place on the screen.
    std::function<void(const QPoint &, QContextMenuEvent::Reason)> onShowMenu =
        [](const QPoint &, QContextMenuEvent::Reason) {};

    void setVisible(bool visible) override;

    /// In points.
    static constexpr int CornerRadius = 10;

protected:
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    int cornerRadius() const;
    QPoint placeBelowTitleBar() const;
    void renderEdge();
    void renderBlur();
    void askForStatesAgain();
    void comeIntoView();
    void place(const QRect &frame);
    void appear();
    void disappear();
    QRect normalFrame() const;

    WindowSystem &m_windowSystem;
    QuillsatchelView *m_content = nullptr;
    TitleBar *m_titleBar = nullptr;
    PanelFrame *m_frame;
    QRect m_lastFrame;    // while the panel was not maximized
    QRect m_earlierFrame; // before the last change of the size that was not maximizing
    bool m_isZoomedOnShowing = false;
    bool m_comesIntoViewLater = false; // when it is no longer maximized
    Cancellable m_compositingCancellable;
    Cancellable m_blurCancellable;
    Cancellable m_windowManagerCancellable;
    PointSize m_pointSize { *this };
    ScreenChanges m_screenChanges { [this] { comeIntoView(); } };
};
