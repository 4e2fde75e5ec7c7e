#pragma once

#include "app/ScreenChanges.h"
#include "platform/WindowSystem.h"
#include "preferences/WindowPreferences.h"
#include "support/Cancellable.h"
#include "views/PointSize.h"

#include <QContextMenuEvent>
#include <QWidget>

#include <functional>

class PanelFrame;
class QuillsatchelView;
class TitleBar;

/// The program's one window: frameless, on all desktops, above ordinary windows or among them as
/// the preferences say. Translucent with round corners under a compositor. Always dark. Closing
/// hides it; the program goes on. When screens disappear or shrink, it moves and shrinks into view.
class FloatingPanel final : public QWidget
{
    Q_OBJECT

public:
    /// Both arguments must outlive the panel.
    FloatingPanel(WindowSystem &windowSystem, const WindowPreferences &windowPreferences);

    /// Fills the panel with `content`, which determines its size and minimum size, and puts
    /// `titleBar` over its top. The panel owns both.
    void setContent(QuillsatchelView *content, TitleBar *titleBar);

    /// Centres the panel in the screen's available area and shrinks it to fit.
    void center();
    /// Shows, raises and activates the panel, within view. `token` is the activation token of the
    /// launch that asks for it; without one it counts as a direct user action.
    void makeKeyAndOrderFront(const StartupToken &token = {});
    /// Hides the panel, or minimises it if `canBeBroughtBack` is false.
    void orderOut();

    /// Whether the desktop shows something that can bring a hidden panel back.
    std::function<bool()> canBeBroughtBack = [] { return false; };
    /// The user requests the panel's menu, at a position on the screen.
    std::function<void(const QPoint &, QContextMenuEvent::Reason)> onShowMenu =
        [](const QPoint &, QContextMenuEvent::Reason) {};

    void setVisible(bool visible) override;

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
    void observeWindowPreferences(const WindowPreferences &windowPreferences);
    void setFloating(bool isFloating);
    QPoint placeBelowTitleBar() const;
    void renderEdge();
    void renderBlur();
    void repeatStateRequests();
    void moveIntoView();
    void place(const QRect &frame);
    void appear();
    void disappear();
    QRect normalFrame() const;

    WindowSystem &m_windowSystem;
    QuillsatchelView *m_content = nullptr;
    TitleBar *m_titleBar = nullptr;
    PanelFrame *m_frame;
    QRect m_lastFrame;    // while not maximized
    QRect m_earlierFrame; // before the last resize while not maximized
    bool m_isZoomedOnShowing = false;
    bool m_movesIntoViewLater = false; // once no longer maximized
    Cancellable m_preferencesCancellable;
    Cancellable m_compositingCancellable;
    Cancellable m_blurCancellable;
    Cancellable m_windowManagerCancellable;
    PointSize m_pointSize { *this };
    ScreenChanges m_screenChanges { [this] { moveIntoView(); } };
};
