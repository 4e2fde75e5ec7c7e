#include "views/LastInput.h"

#include <QEvent>
#include <QGuiApplication>

LastInput::LastInput()
{
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &LastInput::forgetKeys);
}

Qt::FocusReason LastInput::focusReason() const
{
    return m_isKey ? Qt::OtherFocusReason : Qt::MouseFocusReason;
}

// For a shortcut widgets receive no KeyPress, only ShortcutOverride.
bool LastInput::eventFilter(QObject * /*object*/, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        m_isKey = true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        m_isKey = false;
        break;
    default:
        break;
    }
    return false;
}

// A choice in the tray menu sends no press events.
void LastInput::forgetKeys(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive)
        m_isKey = false;
}
