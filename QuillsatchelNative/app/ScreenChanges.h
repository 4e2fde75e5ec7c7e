#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QScreen;

/// Tells of screens that come, go, or change their place, size or free area. Such changes come in
/// volleys, and window managers move windows after them: it tells once, when they have settled.
class ScreenChanges final : public QObject
{
    Q_OBJECT

public:
    /// Needs the QGuiApplication.
    explicit ScreenChanges(std::function<void()> onChange);

    /// Calls `onChange` after the settling time, as after a change of the screens.
    void settle() { m_settling.start(); }

private:
    void watch(const QScreen &screen);

    QTimer m_settling; // each change restarts it, which MainQueue cannot do
};
