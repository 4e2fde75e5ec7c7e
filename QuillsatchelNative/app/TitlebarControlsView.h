#pragma once

#include "preferences/WindowPreferences.h"
#include "support/Cancellable.h"

#include <QWidget>

class MiniSwitch;

/// The right end of the title bar: a pin and a switch for "Always on Top", and the "LOCAL" badge.
class TitlebarControlsView final : public QWidget
{
    Q_OBJECT

public:
    TitlebarControlsView(WindowPreferences &windowPreferences, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    WindowPreferences &m_windowPreferences;
    MiniSwitch *m_switch;
    Cancellable m_preferencesCancellable;
};
