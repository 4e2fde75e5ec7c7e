#pragma once

#include "views/PlainButton.h"

/// A small button with a title on a bezel, as dialogs have them.
class PushButton final : public PlainButton
{
    Q_OBJECT

public:
    PushButton(const QString &title, QWidget *parent);

    QSize sizeHint() const override;

    /// Of every such button, in points.
    static constexpr int Height = 22;

    /// Whether Return anywhere in the dialog presses it, which its colour says.
    void setDefault(bool isDefault);

protected:
    void paintContent(QPainter &painter) override;

private:
    bool m_isDefault = false;
};
