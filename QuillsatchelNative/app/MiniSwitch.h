#pragma once

#include "views/PlainButton.h"

/// A small on/off switch.
class MiniSwitch final : public PlainButton
{
    Q_OBJECT

public:
    explicit MiniSwitch(QWidget *parent);

protected:
    void paintContent(QPainter &painter) override;

    qreal focusRadius() const override { return height() / 2.0; }
};
