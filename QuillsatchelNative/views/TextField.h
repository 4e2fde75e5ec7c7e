#pragma once

#include <QLineEdit>

/// A small field for one line of text, with a round border that shows whether it has the keyboard.
class TextField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextField(QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
