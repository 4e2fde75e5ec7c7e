#pragma once

#include <QAbstractButton>

#include <optional>

/// The base class of all buttons of the panel. They take the focus by Tab but not by a click, which
/// leaves it in the text. Return presses them like Space. Hover, press and focus are visible. A
/// double click presses the button only if its first press hit the same button: that press may have
/// moved another one under the pointer.
///
/// After `Qt::MouseFocusReason` the focus ring is hidden until a key is pressed.
class PlainButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit PlainButton(QWidget *parent);

    /// Sets the tooltip and the accessible name.
    void setLabel(const QString &label);

    /// The reason to pass when the program moves the focus on from this button, so that the next
    /// one shows a ring only if this one does.
    Qt::FocusReason focusReason() const;

protected:
    /// Paints the button without the focus ring and the pressed look, which the base class adds.
    virtual void paintContent(QPainter &painter) = 0;

    /// The corner radius of the focus ring, in points.
    virtual qreal focusRadius() const { return 5; }

    bool isHovered() const { return underMouse() && isEnabled(); }

    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) final;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void setShowsFocus(bool showsFocus);

    std::optional<quint64> m_pressedAt; // timestamp of the last mouse press in milliseconds
    bool m_showsFocus = true;
};
