#pragma once

#include "views/PlainButton.h"

/// A link: artwork or text that opens a website.
class LinkButton final : public PlainButton
{
    Q_OBJECT

public:
    /// Shows the artwork `name` of `Symbol` at `size` points.
    static LinkButton *withArtwork(const QString &name, const QSize &size, QWidget *parent);
    /// Shows the text in the accent colour.
    static LinkButton *withText(const QString &text, QWidget *parent);

    QSize sizeHint() const override { return m_size; }

protected:
    void paintContent(QPainter &painter) override;

private:
    LinkButton(const QSize &size, QWidget *parent);

    QString m_artwork;
    QSize m_size;
};
