#include "platform/desktop/SignalHandler.h"

SignalHandler::SignalHandler(int signal, void (*handler)(int))
    : m_signal(signal)
{
    sigaction(signal, nullptr, &m_previous);
    if (m_previous.sa_handler == SIG_IGN)
        return;

    struct sigaction action {
    };

    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

SignalHandler::~SignalHandler()
{
    sigaction(m_signal, &m_previous, nullptr);
}
