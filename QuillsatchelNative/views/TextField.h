#pragma once

#include <QLineEdit>

/// A single-line text field with a rounded border that shows the focus.
class TextField : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextField(QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
