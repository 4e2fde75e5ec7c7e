#pragma once

#include "support/SrgbColor.h"
#include "views/PlainButton.h"

#include <optional>

/// A button that shows a symbol only, named by its label. Without a tint the symbol is shown in
/// its own colours.
class SymbolButton final : public PlainButton
{
    Q_OBJECT

public:
    /// The symbol fills a square of `symbolSize` points in the middle of the button.
    SymbolButton(QString symbol, int symbolSize, const std::optional<SrgbColor> &tint,
                 QWidget *parent);

protected:
    void paintContent(QPainter &painter) override;

private:
    QString m_symbol;
    int m_symbolSize;
    std::optional<SrgbColor> m_tint;
};
