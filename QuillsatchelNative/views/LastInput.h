#pragma once

#include <QObject>

/// Tracks whether the user last pressed a key or a mouse button. When the program moves the focus,
/// this decides whether a focus ring is shown: mouse users would take it for a selection.
class LastInput final : public QObject
{
    Q_OBJECT

public:
    /// Watches all windows of the application until it is destroyed.
    LastInput();

    /// The reason to pass to setFocus. For `Qt::MouseFocusReason` a `PlainButton` shows no ring.
    Qt::FocusReason focusReason() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void forgetKeys(Qt::ApplicationState state);

    bool m_isKey = false;
};
