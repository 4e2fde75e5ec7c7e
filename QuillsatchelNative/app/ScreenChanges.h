#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QScreen;

/// Reports added, removed and changed screens. Debounced: such changes come in bursts, and window
/// managers move windows after them.
class ScreenChanges final : public QObject
{
    Q_OBJECT

public:
    /// Needs the QGuiApplication.
    explicit ScreenChanges(std::function<void()> onChange);

    /// Acts as if a screen had changed.
    void settle() { m_settling.start(); }

private:
    void watch(const QScreen &screen);

    QTimer m_settling; // each change restarts it, which MainQueue cannot do
};
