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

/// The user's hands and eyes. Clicks and keys go through the window, so that they reach what is
/// really there, not what the test believes to be there.
namespace Input
{

/// Shows the widget's window and gives it the keyboard, but nothing in it.
inline void show(QWidget &widget)
{
    widget.window()->show();
    widget.window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget.window()));
    if (auto *const focus = QApplication::focusWidget())
        focus->clearFocus();
}

inline QPoint placeInWindow(const QWidget &widget, const QPoint &place)
{
    return widget.mapTo(widget.window(), place);
}

inline void click(QWidget &widget, const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseClick(widget.window()->windowHandle(), button, {}, placeInWindow(widget, place));
}

inline void click(QWidget &widget)
{
    click(widget, widget.rect().center());
}

inline void doubleClick(QWidget &widget)
{
    QTest::mouseDClick(widget.window()->windowHandle(), Qt::LeftButton, {},
                       placeInWindow(widget, widget.rect().center()));
}

/// What the window system tells of the pointer, which may be between two points of the screen.
inline void pointer(QWidget &widget, QEvent::Type type, const QPointF &place,
                    Qt::MouseButton button, Qt::MouseButtons buttons)
{
    auto *const window = widget.window()->windowHandle();
    const QPointF inWindow = QPointF(placeInWindow(widget, {})) + place;
    qt_handleMouseEvent(window, inWindow, window->mapToGlobal(inWindow), buttons, button, type, {},
                        ++QTest::lastMouseTimestamp);
    QApplication::processEvents();
}

/// A double click that has the program do something between its two presses.
inline void doubleClick(QWidget &widget, const std::function<void()> &between)
{
    const QPoint place = placeInWindow(widget, widget.rect().center());
    auto &window = *widget.window();
    const auto press = [&window, &place] {
        pointer(window, QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);
        pointer(window, QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
    };
    QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval; // no part of an earlier one
    press();
    between();
    press();
    QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval;
}

inline void press(QWidget &widget, const QPoint &place)
{
    QTest::mousePress(widget.window()->windowHandle(), Qt::LeftButton, {},
                      placeInWindow(widget, place));
}

inline void moveTo(QWidget &widget, const QPoint &place)
{
    QTest::mouseMove(widget.window()->windowHandle(), placeInWindow(widget, place));
}

inline void release(QWidget &widget, const QPoint &place)
{
    QTest::mouseRelease(widget.window()->windowHandle(), Qt::LeftButton, {},
                        placeInWindow(widget, place));
}

/// Turns the wheel over the middle of the widget; away from the user if positive.
inline void wheel(QWidget &widget, int notches)
{
    const QPoint place = placeInWindow(widget, widget.rect().center());
    auto *const hit = widget.window()->childAt(place);
    ASSERT_TRUE(hit);
    QWheelEvent event(hit->mapFrom(widget.window(), place),
                      widget.mapToGlobal(QPointF(widget.rect().center())), {}, { 0, 120 * notches },
                      Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // else nobody but the widget hit would hear of it
    qApp->notify(hit, &event);
}

inline void key(QWidget &widget, Qt::Key which, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(widget.window()->windowHandle(), which, modifiers);
}

/// Letters of ASCII, key by key.
inline void type(QWidget &widget, const std::string &letters)
{
    for (const char letter : letters)
        QTest::keyClick(widget.window()->windowHandle(), letter);
}

/// Any text, in one piece, as input methods deliver it.
inline void commit(const QString &text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(QApplication::focusWidget(), &event);
}

inline QMenu *openMenu()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

/// Calls `open`, which shows a menu, hands the menu to `use` and closes it.
inline void withMenu(const std::function<void()> &open, const std::function<void(QMenu &)> &use)
{
    auto *const window = QApplication::activeWindow();
    open();
    const QPointer menu = openMenu();
    ASSERT_TRUE(menu);
    use(*menu);
    if (menu)
        menu->close();
    // The offscreen platform activates a menu like any window.
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
}

inline void choose(QMenu &menu, QAction *action)
{
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

/// What those who cannot see hear of a widget.
inline std::string spokenName(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).toStdString();
}

inline QAccessible::Role role(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

/// The button of this name in `widget` that is there to be pressed; null if there is none.
inline QAbstractButton *button(const QWidget &widget, const std::string &name)
{
    for (auto *const candidate : widget.findChildren<QAbstractButton *>()) {
        if (!candidate->isHidden() && spokenName(*candidate) == name)
            return candidate;
    }
    return nullptr;
}

} // namespace Input
