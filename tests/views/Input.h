#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QInputMethodEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <QtTest/qtestspontaneevent.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

/// Simulates user input. Clicks and keys go through the window, so that they reach the widget that
/// is really under the pointer or has the focus.
namespace Input
{

/// Shows and activates the widget's window without focusing a widget.
inline void show(QWidget &widget)
{
    widget.window()->show();
    widget.window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget.window()));
    if (auto *const focus = QApplication::focusWidget())
        focus->clearFocus();
}

/// Calls `action` while another window is active, then activates the widget's window again.
inline void whileInactive(QWidget &widget, const std::function<void()> &action)
{
    QWidget other;
    show(other);
    action();
    other.hide();
    widget.window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget.window()));
}

/// The geometry of `widget` in the coordinates of `ancestor`.
inline QRect frameIn(const QWidget &ancestor, const QWidget &widget)
{
    return { widget.mapTo(&ancestor, QPoint()), widget.size() };
}

inline QPoint toWindow(const QWidget &widget, const QPoint &position)
{
    return widget.mapTo(widget.window(), position);
}

inline void click(QWidget &widget, const QPoint &position, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseClick(widget.window()->windowHandle(), button, {}, toWindow(widget, position));
}

inline void click(QWidget &widget)
{
    click(widget, widget.rect().center());
}

inline void doubleClick(QWidget &widget)
{
    QTest::mouseDClick(widget.window()->windowHandle(), Qt::LeftButton, {},
                       toWindow(widget, widget.rect().center()));
}

/// Sends a mouse event as the window system does; positions may be fractions of points.
inline void sendMouse(QWidget &widget, QEvent::Type type, const QPointF &position,
                      Qt::MouseButton button, Qt::MouseButtons buttons)
{
    auto *const window = widget.window()->windowHandle();
    const QPointF inWindow = QPointF(toWindow(widget, {})) + position;
    qt_handleMouseEvent(window, inWindow, window->mapToGlobal(inWindow), buttons, button, type, {},
                        ++QTest::lastMouseTimestamp);
    QApplication::processEvents();
}

/// A double click that calls `between` between its two presses.
inline void doubleClick(QWidget &widget, const std::function<void()> &between)
{
    const QPoint position = toWindow(widget, widget.rect().center());
    auto &window = *widget.window();
    const auto press = [&window, &position] {
        sendMouse(window, QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
        sendMouse(window, QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
    };
    QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval; // separate from an earlier click
    press();
    between();
    press();
    QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval;
}

inline void press(QWidget &widget, const QPoint &position)
{
    QTest::mousePress(widget.window()->windowHandle(), Qt::LeftButton, {},
                      toWindow(widget, position));
}

inline void moveTo(QWidget &widget, const QPoint &position)
{
    QTest::mouseMove(widget.window()->windowHandle(), toWindow(widget, position));
}

inline void release(QWidget &widget, const QPoint &position)
{
    QTest::mouseRelease(widget.window()->windowHandle(), Qt::LeftButton, {},
                        toWindow(widget, position));
}

/// Turns the wheel over the centre of the widget; positive notches scroll up.
inline void wheel(QWidget &widget, int notches)
{
    const QPoint position = toWindow(widget, widget.rect().center());
    auto *const hit = widget.window()->childAt(position);
    ASSERT_TRUE(hit);
    QWheelEvent event(hit->mapFrom(widget.window(), position),
                      widget.mapToGlobal(QPointF(widget.rect().center())), {}, { 0, 120 * notches },
                      Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // otherwise ancestors of `hit` never receive it
    qApp->notify(hit, &event);
}

inline void key(QWidget &widget, Qt::Key which, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(widget.window()->windowHandle(), which, modifiers);
}

/// Types ASCII letters, key by key.
inline void type(QWidget &widget, const std::string &letters)
{
    for (const char letter : letters)
        QTest::keyClick(widget.window()->windowHandle(), letter);
}

/// Commits text in a single event, as input methods do.
inline void commit(const QString &text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(QApplication::focusWidget(), &event);
}

/// Null if no menu is open.
inline QMenu *visibleMenu()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

/// Calls `open`, which opens a menu, passes the menu to `use` and closes it.
inline void withMenu(const std::function<void()> &open, const std::function<void(QMenu &)> &use)
{
    auto *const window = QApplication::activeWindow();
    open();
    const QPointer menu = visibleMenu();
    ASSERT_TRUE(menu);
    use(*menu);
    if (menu)
        menu->close();
    // The offscreen platform activates menus like windows.
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
}

inline void choose(QMenu &menu, QAction *action)
{
    click(menu, menu.actionGeometry(action).center());
}

inline void choose(QMenu &menu, const std::string &title)
{
    for (auto *const action : menu.actions()) {
        if (action->text().toStdString() == title)
            return choose(menu, action);
    }
    ADD_FAILURE() << "no menu item " << title;
}

inline std::string accessibleName(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).toStdString();
}

inline QAccessible::Role role(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

/// The button with this accessible name in `widget` that is not hidden, or null.
inline QAbstractButton *button(const QWidget &widget, const std::string &name)
{
    for (auto *const candidate : widget.findChildren<QAbstractButton *>()) {
        if (!candidate->isHidden() && accessibleName(*candidate) == name)
            return candidate;
    }
    return nullptr;
}

} // namespace Input
