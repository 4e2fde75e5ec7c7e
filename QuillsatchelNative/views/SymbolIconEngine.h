#pragma once

#include "support/SrgbColor.h"
#include "views/Symbol.h"

#include <QIconEngine>

#include <optional>

/// Draws a symbol as the icon of a menu entry, sharp at every scale.
class SymbolIconEngine final : public QIconEngine
{
public:
    /// The symbol is `side` points square in a menu's icon of 16 points.
    SymbolIconEngine(QString symbol, const std::optional<SrgbColor> &tint, int side,
                     Symbol::WhenSelected whenSelected);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;

private:
    QString m_symbol;
    std::optional<SrgbColor> m_tint;
    double m_share; // of the icon's width
    Symbol::WhenSelected m_whenSelected;
};
