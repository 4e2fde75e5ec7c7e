#pragma once

#include "views/PlainButton.h"

/// The wide button below the list that adds a node.
class NewNodeButton final : public PlainButton
{
    Q_OBJECT

public:
    explicit NewNodeButton(QWidget *parent);

    /// In points.
    static constexpr int Height = 29;

protected:
    void paintContent(QPainter &painter) override;

    qreal focusRadius() const override { return Height / 2.0; }
};
