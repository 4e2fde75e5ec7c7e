#pragma once

#include <QAbstractButton>

#include <optional>

/// What all buttons of the panel have in common: the keyboard reaches them (a click does not take
/// the focus from the text), Return presses them as Space does, and hovering, pressing and focus
/// are visible. A double click whose first press hit something else does not press the button: the
/// first press may have moved the button under the pointer. Subclasses draw in `paintContent`.
///
/// A focus that came with `Qt::MouseFocusReason` shows no ring until a key is pressed.
class PlainButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit PlainButton(QWidget *parent);

    /// Names the button for those who see its tooltip and for those who hear it.
    void setLabel(const QString &label);

    /// The reason to give when this button's focus moves on to another one, which then shows it
    /// like this one.
    Qt::FocusReason focusReason() const;

protected:
    /// Paints the button; the focus ring and the look of being pressed are added to it.
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

    std::optional<quint64> m_pressedAt; // timestamp of the last mouse press, in milliseconds
    bool m_showsFocus = true;
};
