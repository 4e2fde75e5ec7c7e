#pragma once

#include "support/SrgbColor.h"
#include "views/PlainButton.h"

#include <optional>

/// A button that shows only a symbol; set its label for the tooltip and the accessible name.
/// Without a tint the symbol has its own colours.
class SymbolButton final : public PlainButton
{
    Q_OBJECT

public:
    /// The symbol fills a square of `symbolSize` points in the centre of the button.
    SymbolButton(QString symbol, int symbolSize, const std::optional<SrgbColor> &tint,
                 QWidget *parent);

protected:
    void paintContent(QPainter &painter) override;

private:
    QString m_symbol;
    int m_symbolSize;
    std::optional<SrgbColor> m_tint;
};
