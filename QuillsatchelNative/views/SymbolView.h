#pragma once

#include "support/SrgbColor.h"

#include <QString>
#include <QWidget>

/// A decorative symbol, which ignores the mouse.
class SymbolView final : public QWidget
{
    Q_OBJECT

public:
    /// The symbol is drawn as large as fits into the contents rectangle of a view of `size` points.
    SymbolView(QString symbol, const QSize &size, const SrgbColor &tint, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    SrgbColor m_tint;
};
