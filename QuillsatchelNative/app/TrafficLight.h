#pragma once

#include "support/SrgbColor.h"
#include "views/PlainButton.h"

/// A round button to close, minimise or zoom the window. It shows its symbol while hovered or
/// focused.
class TrafficLight final : public PlainButton
{
    Q_OBJECT

public:
    TrafficLight(QString symbol, const SrgbColor &color, const QString &label, QWidget *parent);

protected:
    void paintContent(QPainter &painter) override;

    qreal focusRadius() const override { return height() / 2.0; }

private:
    QString m_symbol;
    SrgbColor m_color;
};
