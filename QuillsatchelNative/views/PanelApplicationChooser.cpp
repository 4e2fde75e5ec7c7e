#include "views/PanelApplicationChooser.h"

#include "views/ApplicationPanel.h"

#include <QApplication>

#include <utility>

namespace
{

/// The active window, or the one that the active dialog belongs to.
QWidget *activeMainWindow()
{
    QWidget *window = QApplication::activeWindow();
    while (window && window->windowType() != Qt::Window)
        window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    return window;
}

} // namespace

PanelApplicationChooser::PanelApplicationChooser(Workspace &workspace, MainQueue &mainQueue,
                                                 std::function<void(QDialog &)> decorate)
    : m_workspace(workspace)
    , m_mainQueue(mainQueue)
    , m_decorate(std::move(decorate))
{
}

PanelApplicationChooser::~PanelApplicationChooser()
{
    delete m_panel;
}

void PanelApplicationChooser::begin(const QString &title, const QString &prompt,
                                    std::function<void(const std::optional<std::string> &)> receive)
{
    auto *const panel = new ApplicationPanel(title, prompt, m_workspace, m_mainQueue, m_decorate,
                                             activeMainWindow());
    panel->onFinish = [this, panel, receive = std::move(receive)](const auto &path) {
        if (m_panel == panel)
            m_panel.clear();
        receive(path);
    };
    const auto earlier = std::exchange(m_panel, panel);
    panel->show();
    panel->raise();
    panel->activateWindow();
    if (earlier)
        earlier->reject();
}

void PanelApplicationChooser::cancel()
{
    if (m_panel)
        m_panel->reject();
}
