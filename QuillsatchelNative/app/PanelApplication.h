#pragma once

#include <QApplication>

/// The application, which goes on without windows and ends when it is told to: Qt's own would ask
/// the panel to close first, and the panel never does. In every window Shift+F10 does what the Menu
/// key does.
class PanelApplication final : public QApplication
{
    Q_OBJECT

public:
    /// Takes what `main` was given; it has to outlive the application.
    PanelApplication(int &count, char **values);

    bool notify(QObject *receiver, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
};
