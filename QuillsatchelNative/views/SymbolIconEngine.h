#pragma once

#include "support/SrgbColor.h"
#include "views/Symbol.h"

#include <QIconEngine>

#include <optional>

/// The icon of a menu entry, sharp at every scale.
class SymbolIconEngine final : public QIconEngine
{
public:
    /// The symbol is `side` points square in a menu icon of 16 points.
    SymbolIconEngine(QString symbol, const std::optional<SrgbColor> &tint, int side,
                     Symbol::WhenSelected whenSelected);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;

private:
    QString m_symbol;
    std::optional<SrgbColor> m_tint;
    double m_relativeSide; // the side divided by the width of the icon
    Symbol::WhenSelected m_whenSelected;
};
