#pragma once

#include "platform/ApplicationChooser.h"

#include <QPointer>

class ApplicationPanel;
class QDialog;
class Workspace;

/// Chooses in a panel above the window that is active when it is asked, one at a time: a new
/// request cancels the one before it, and so does the chooser's end.
class PanelApplicationChooser final : public ApplicationChooser
{
public:
    /// `decorate` is called for each dialog before it is shown.
    PanelApplicationChooser(Workspace &workspace, std::function<void(QDialog &)> decorate);
    ~PanelApplicationChooser() override;

    PanelApplicationChooser(const PanelApplicationChooser &) = delete;
    PanelApplicationChooser &operator=(const PanelApplicationChooser &) = delete;

    void begin(const QString &title, const QString &prompt,
               std::function<void(const std::optional<std::string> &)> receive) override;

    /// Closes the panel, if one is open, as its Cancel button does.
    void cancel();

private:
    Workspace &m_workspace;
    std::function<void(QDialog &)> m_decorate;
    QPointer<ApplicationPanel> m_panel; // while it is open; its parent's, if it has one
};
