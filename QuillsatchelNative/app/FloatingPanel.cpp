#include "app/FloatingPanel.h"

#include "app/GlassBackground.h"
#include "app/PanelFrame.h"
#include "app/PanelPlacement.h"
#include "app/TitleBar.h"
#include "views/AccessibleRole.h"
#include "views/FocusOrder.h"
#include "views/QuillsatchelView.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <optional>
#include <utility>

namespace
{

GlassBackground::Backdrop backdropOn(const WindowSystem &windowSystem)
{
    if (!windowSystem.isCompositing.get())
        return GlassBackground::Backdrop::none;
    return windowSystem.isBlurring.get() ? GlassBackground::Backdrop::blurred
                                         : GlassBackground::Backdrop::sharp;
}

QRect availableArea(const QScreen &screen)
{
    return PanelPlacement::availableArea(screen.geometry(), screen.availableGeometry(),
                                         screen.devicePixelRatio());
}

} // namespace

FloatingPanel::FloatingPanel(WindowSystem &windowSystem, const WindowPreferences &windowPreferences)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_windowSystem(windowSystem)
    , m_frame(new PanelFrame(this))
{
    setAccessibleRole(*this, QAccessible::Window);
    setWindowTitle(QStringLiteral("Quillsatchel"));
    setAttribute(Qt::WA_TranslucentBackground);
    m_compositingCancellable = m_windowSystem.isCompositing.sink([this](bool) { renderEdge(); });
    m_blurCancellable = m_windowSystem.isBlurring.sink([this](bool) { renderBlur(); });
    m_windowManagerCancellable =
        m_windowSystem.hasWindowManager.sink([this](bool) { repeatStateRequests(); });
    observeWindowPreferences(windowPreferences);
}

void FloatingPanel::observeWindowPreferences(const WindowPreferences &windowPreferences)
{
    m_preferencesCancellable = windowPreferences.alwaysOnTop.sink(
        [this, earlier = std::optional<bool>()](bool isOnTop) mutable {
            if (std::exchange(earlier, isOnTop) != isOnTop)
                setFloating(isOnTop);
        });
}

void FloatingPanel::setContent(QuillsatchelView *content, TitleBar *titleBar)
{
    m_content = content;
    m_titleBar = titleBar;
    m_pointSize.setSizes(content->sizeHint(), content->minimumSize());
    m_frame->raise();
}

// QWidget::setWindowFlag would hide the window and create another one. This keeps the flags of the
// widget and of the window the same.
void FloatingPanel::setFloating(bool isFloating)
{
    overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, isFloating));
    if (auto *const window = windowHandle())
        window->setFlag(Qt::WindowStaysOnTopHint, isFloating);
}

// Requests made while no window manager runs are lost, and Qt repeats none that it has made before.
void FloatingPanel::repeatStateRequests()
{
    if (!isVisible())
        return;
    const bool isFloating = windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    setFloating(!isFloating);
    setFloating(isFloating);
    m_windowSystem.showOnAllDesktops(*windowHandle());
}

void FloatingPanel::center()
{
    const QRect area = availableArea(*screen());
    QRect frame = rect();
    frame.moveCenter(area.center());
    frame = PanelPlacement::inView(frame, minimumSize(), { area });
    if (frame.size() != size())
        m_pointSize.setSubstitute(frame.size());
    setGeometry(frame);
}

// A maximized window is left to the window manager. Once restored, it returns to its earlier place,
// which may be out of view by then.
void FloatingPanel::moveIntoView()
{
    m_movesIntoViewLater = isMaximized();
    if (!windowHandle() || isMaximized())
        return;
    QList<QRect> areas;
    for (const auto *const screen : QGuiApplication::screens())
        areas.push_back(availableArea(*screen));
    const QRect frame = PanelPlacement::inView(windowHandle()->geometry(), minimumSize(), areas);
    if (frame.size() != windowHandle()->size())
        m_pointSize.setSubstitute(frame.size());
    place(frame);
}

// Sets both: while the panel is hidden, neither widget nor window tells the other of a new place.
void FloatingPanel::place(const QRect &frame)
{
    if (windowHandle()->geometry() == frame)
        return;
    setGeometry(frame);
    windowHandle()->setGeometry(frame);
}

void FloatingPanel::makeKeyAndOrderFront(const StartupToken &token)
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    moveIntoView();
    show();
    raise();
    m_windowSystem.activate(*windowHandle(), token);
}

void FloatingPanel::setVisible(bool visible)
{
    if (visible)
        appear();
    else
        disappear();
    renderBlur();
}

// Window managers accept the request for all desktops only for a mapped window, and forget it when
// the window is hidden.
void FloatingPanel::appear()
{
    if (std::exchange(m_isZoomedOnShowing, false))
        setWindowState(windowState() | Qt::WindowMaximized);
    QWidget::setVisible(true);
    m_windowSystem.showOnAllDesktops(*windowHandle());
}

// Window managers forget that a hidden window was maximized, and some take its size for the normal
// one. So the panel hides at its normal size and is maximized again when shown.
void FloatingPanel::disappear()
{
    const bool isZoomed = isVisible() && isMaximized();
    const QRect frame = normalFrame();
    QWidget::setVisible(false);
    if (!isZoomed)
        return;
    m_isZoomedOnShowing = true;
    setWindowState(windowState() & ~Qt::WindowMaximized);
    place(frame);
}

// When the window manager maximizes the window, Qt may take the new size for the normal one: some
// window managers report the size before the state, others after it.
QRect FloatingPanel::normalFrame() const
{
    if (normalGeometry().size() != size())
        return normalGeometry();
    return m_lastFrame.size() == size() ? m_earlierFrame : m_lastFrame;
}

// Accepting would destroy the native window. Shown again, the panel would have another one, in
// another place.
void FloatingPanel::closeEvent(QCloseEvent *event)
{
    event->ignore();
    orderOut();
}

void FloatingPanel::orderOut()
{
    if (canBeBroughtBack())
        hide();
    else
        showMinimized();
}

// Below the title bar, the pointer opens only the menus of the content. The Menu key opens the
// panel's menu unless the focused widget has one.
void FloatingPanel::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        onShowMenu(placeBelowTitleBar(), event->reason());
    else if (event->y() < TitleBar::Height)
        onShowMenu(event->globalPos(), event->reason());
    else
        event->ignore();
}

void FloatingPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier)
        onShowMenu(placeBelowTitleBar(), QContextMenuEvent::Keyboard);
    else if (!m_content || !m_content->findByKey(*event))
        QWidget::keyPressEvent(event);
}

QPoint FloatingPanel::placeBelowTitleBar() const
{
    return mapToGlobal(QPoint(0, TitleBar::Height));
}

void FloatingPanel::resizeEvent(QResizeEvent *event)
{
    if (!isMaximized() && event->oldSize() != event->size()) {
        m_earlierFrame = QRect(pos(), event->oldSize()); // the move follows the resize
        m_lastFrame.setSize(event->size());
    }
    m_frame->setGeometry(rect());
    if (m_content)
        m_content->setGeometry(rect());
    if (m_titleBar)
        m_titleBar->setGeometry(0, 0, width(), TitleBar::Height);
    renderBlur();
}

void FloatingPanel::moveEvent(QMoveEvent * /*event*/)
{
    if (!isMaximized())
        m_lastFrame.moveTopLeft(pos());
}

void FloatingPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::WindowStateChange) {
        renderEdge();
        if (m_movesIntoViewLater && !isMaximized())
            m_screenChanges.settle();
    }
    QWidget::changeEvent(event);
}

void FloatingPanel::renderEdge()
{
    m_frame->render(m_windowSystem.isCompositing.get());
    renderBlur();
}

void FloatingPanel::renderBlur()
{
    if (windowHandle() && m_windowSystem.isBlurring.get())
        m_windowSystem.blurBehind(*windowHandle(), size(), m_frame->radius());
    update();
}

void FloatingPanel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    GlassBackground::paint(painter, rect(), m_frame->radius(), backdropOn(m_windowSystem));
}

bool FloatingPanel::focusNextPrevChild(bool next)
{
    if (!m_content)
        return false;
    m_content->revealFocus(); // creates the neighbours of a card that was scrolled away
    const bool hasMoved =
        FocusOrder::move(m_content->focusStops() + FocusOrder::stopsIn(*m_titleBar), next);
    m_content->revealFocus();
    return hasMoved;
}
