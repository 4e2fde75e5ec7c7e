#pragma once

#include "views/TextField.h"

/// A text field with a magnifying glass, for a search whose hits a list below it shows.
class SearchField final : public TextField
{
    Q_OBJECT

public:
    explicit SearchField(QWidget *parent);

    /// Appends letters that the user typed elsewhere, and takes the focus unless it is hidden.
    void append(const QString &letters);

protected:
    void paintEvent(QPaintEvent *event) override;
};
