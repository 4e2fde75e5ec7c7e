#pragma once

#include <QWidget>

/// A line with an error message, which screen readers announce. Hidden while there is no message.
class MessageLine final : public QWidget
{
    Q_OBJECT

public:
    explicit MessageLine(QWidget *parent);

    /// Shows and announces a new message; an empty one hides the line.
    void render(const QString &message);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_message;
};
