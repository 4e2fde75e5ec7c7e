#pragma once

#include "support/SrgbColor.h"

#include <QFont>
#include <QString>
#include <QWidget>

/// One line of text; the elide mode says where a text that is too long is cut.
class ElidedLabel final : public QWidget
{
    Q_OBJECT

public:
    ElidedLabel(Qt::TextElideMode mode, const QFont &font, const SrgbColor &color, QWidget *parent);

    /// Plain text without line breaks.
    void setText(const QString &text);

    QString text() const { return m_text; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::TextElideMode m_mode;
    SrgbColor m_color;
    QString m_text;
};
