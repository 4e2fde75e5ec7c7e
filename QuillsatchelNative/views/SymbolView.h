#pragma once

#include "support/SrgbColor.h"

#include <QString>
#include <QWidget>

/// A decorative symbol.
class SymbolView final : public QWidget
{
    Q_OBJECT

public:
    /// The symbol fills a square of `size` points.
    SymbolView(QString symbol, int size, const SrgbColor &tint, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    SrgbColor m_tint;
};
