#pragma once

#include <QApplication>

/// The application, which goes on without windows and ends when it is told to: Qt's own would ask
/// the panel to close first, and the panel never does.
class PanelApplication final : public QApplication
{
    Q_OBJECT

public:
    /// Takes what `main` was given; it has to outlive the application.
    PanelApplication(int &count, char **values);

protected:
    bool event(QEvent *event) override;
};
