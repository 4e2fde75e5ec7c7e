#pragma once

#include <csignal>

/// Handles a signal during its lifetime, unless the parent process set it to be ignored. Unlike an
/// ignored signal, a handled one has its default action in launched programs.
class SignalHandler
{
public:
    /// `handler` must be async-signal-safe.
    SignalHandler(int signal, void (*handler)(int));

    SignalHandler(const SignalHandler &) = delete;
    SignalHandler &operator=(const SignalHandler &) = delete;

    /// Restores the previous action.
    ~SignalHandler();

private:
    int m_signal;

    struct sigaction m_previous {
    };
};
