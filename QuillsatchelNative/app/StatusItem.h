#pragma once

#include "app/MenuMirror.h"
#include "platform/StatusBar.h"
#include "support/Cancellable.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>
#include <optional>

/// The program's icon in the desktop's status bar, in its own colours, and the menu it opens. It
/// appears as soon as there is a bar, however late that is, and comes back when the bar does.
class StatusItem final : public QObject
{
    Q_OBJECT

public:
    /// `perform` is called with what the user chooses, `prepare` before the icon is first shown:
    /// the menu has to be there by then.
    StatusItem(StatusBar &statusBar, MenuMirror::Perform perform, std::function<void()> prepare);

    ~StatusItem() override;

    /// Looks for a status bar and follows it.
    void begin();

    /// Whether the user can see the icon.
    bool isShown() const;

    /// Replaces what is in the menu.
    void setMenu(const Menu &menu);

    const QMenu &menu() const { return m_menu; }

private:
    void show(StatusBar::Kind kind);
    void activate(QSystemTrayIcon::ActivationReason reason);

    StatusBar &m_statusBar;
    MenuMirror::Perform m_perform;
    std::function<void()> m_prepare;
    QMenu m_menu; // one for good: panels go on showing the menu that they first saw
    std::optional<QSystemTrayIcon> m_icon;
    StatusBar::Kind m_kind = StatusBar::Kind::none; // of the icon
    Cancellable m_kindCancellable;
};
