#pragma once

#include <QWidget>

/// One line that tells the user what went wrong, to the eye and to the ear. Hidden while there is
/// nothing to tell.
class MessageLine final : public QWidget
{
    Q_OBJECT

public:
    explicit MessageLine(QWidget *parent);

    /// An empty message hides the line; another one is announced.
    void render(const QString &message);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_message;
};
