#pragma once

#include <QObject>

/// Knows whether the user's last press was one of a key. It decides whether a focus that moves
/// without the user asking for it is shown: to someone who uses the mouse a focus ring would look
/// like a choice.
class LastInput final : public QObject
{
    Q_OBJECT

public:
    /// Watches the presses in all windows of the application, for as long as it exists.
    LastInput();

    /// The reason to move the focus with. A `PlainButton` shows no ring if it is the mouse.
    Qt::FocusReason focusReason() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void forgetKeys(Qt::ApplicationState state);

    bool m_isKey = false;
};
