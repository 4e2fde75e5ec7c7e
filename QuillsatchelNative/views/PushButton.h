#pragma once

#include "views/PlainButton.h"

/// A small dialog button with a title on a bezel.
class PushButton final : public PlainButton
{
    Q_OBJECT

public:
    PushButton(const QString &title, QWidget *parent);

    QSize sizeHint() const override;

    /// In points.
    static constexpr int Height = 22;

    /// Colours the button that Return presses anywhere in the dialog.
    void setDefault(bool isDefault);

protected:
    void paintContent(QPainter &painter) override;

private:
    bool m_isDefault = false;
};
