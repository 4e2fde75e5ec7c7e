#pragma once

#include "support/SrgbColor.h"
#include "views/PlainButton.h"

/// One of the round buttons that close, minimise and zoom the window. Its symbol shows while the
/// pointer or the keyboard is on it.
class TrafficLight final : public PlainButton
{
    Q_OBJECT

public:
    TrafficLight(QString symbol, const SrgbColor &color, const QString &label, QWidget *parent);

    /// The diameter in points.
    static constexpr int Diameter = 12;

protected:
    void paintContent(QPainter &painter) override;

    qreal focusRadius() const override { return height() / 2.0; }

private:
    QString m_symbol;
    SrgbColor m_color;
};
