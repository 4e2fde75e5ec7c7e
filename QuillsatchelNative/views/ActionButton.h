#pragma once

#include "views/PlainButton.h"

#include <functional>

/// The compact button of a card's action row: a symbol and a title, highlighted while active. The
/// highlight does not change the size.
class ActionButton final : public PlainButton
{
    Q_OBJECT

public:
    ActionButton(std::function<void()> action, QWidget *parent);

    /// `icon` is the name of a symbol.
    void render(const QString &title, const QString &icon, bool active);

    QSize sizeHint() const override;
    /// The height of every action button, in points.
    static int buttonHeight();

protected:
    void paintContent(QPainter &painter) override;

private:
    QString m_icon;
    bool m_active = false;
};
