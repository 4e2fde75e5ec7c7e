#pragma once

#include "support/SrgbColor.h"

#include <QWidget>

/// A line with a message, which screen readers announce. Hidden while there is no message.
class MessageLine final : public QWidget
{
    Q_OBJECT

public:
    MessageLine(const SrgbColor &color, QWidget *parent);

    /// Shows and announces a new message; an empty one hides the line.
    void render(const QString &message);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SrgbColor m_color;
    QString m_message;
};
