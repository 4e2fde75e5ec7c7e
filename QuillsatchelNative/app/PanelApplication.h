#pragma once

#include <QApplication>

/// Keeps running without windows, and quits without asking the panel to close, which it would
/// refuse. Shift+F10 acts as the Menu key in every window.
class PanelApplication final : public QApplication
{
    Q_OBJECT

public:
    /// The arguments of `main` must outlive the application.
    PanelApplication(int &count, char **values);

    bool notify(QObject *receiver, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
};
