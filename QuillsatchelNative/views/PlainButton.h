#pragma once

#include <QAbstractButton>

#include <optional>

/// What all buttons of the panel have in common: the keyboard reaches them (a click does not take
/// the focus from the text), Return presses them as Space does, and hovering, pressing and focus
/// are visible. A double click whose first press hit something else does not press the button: the
/// first press may have moved the button under the pointer. Subclasses draw in `paintContent`.
class PlainButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit PlainButton(QWidget *parent);

    /// Names the button for those who see its tooltip and for those who hear it.
    void setLabel(const QString &label);

protected:
    /// Paints the button; the focus ring and the look of being pressed are added to it.
    virtual void paintContent(QPainter &painter) = 0;

    /// The corner radius of the focus ring, in points.
    virtual qreal focusRadius() const { return 5; }

    bool isHovered() const { return underMouse() && isEnabled(); }

    void paintEvent(QPaintEvent *event) final;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    std::optional<quint64> m_pressedAt; // timestamp of the last mouse press, in milliseconds
};
