#pragma once

#include "platform/ApplicationChooser.h"

#include <QPointer>

class ApplicationPanel;
class MainQueue;
class QDialog;
class Workspace;

/// Opens an `ApplicationPanel` above the active window. Only one is open at a time: a new request
/// cancels the previous one. Destroying the chooser cancels too.
class PanelApplicationChooser final : public ApplicationChooser
{
public:
    /// `decorate` is called for each dialog before it is shown.
    PanelApplicationChooser(Workspace &workspace, MainQueue &mainQueue,
                            std::function<void(QDialog &)> decorate);
    ~PanelApplicationChooser() override;

    PanelApplicationChooser(const PanelApplicationChooser &) = delete;
    PanelApplicationChooser &operator=(const PanelApplicationChooser &) = delete;

    void begin(const QString &title, const QString &prompt,
               std::function<void(const std::optional<std::string> &)> receive) override;

    /// Closes the open panel like its Cancel button.
    void cancel();

private:
    Workspace &m_workspace;
    MainQueue &m_mainQueue;
    std::function<void(QDialog &)> m_decorate;
    QPointer<ApplicationPanel> m_panel; // while it is open; owned by its parent, if it has one
};
