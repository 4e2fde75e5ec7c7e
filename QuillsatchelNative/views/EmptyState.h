#pragma once

#include <QWidget>

/// The message in a list without nodes.
class EmptyState final : public QWidget
{
    Q_OBJECT

public:
    explicit EmptyState(QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont m_headingFont;
    QFont m_noteFont;
};
