#pragma once

#include <csignal>

/// Handles a signal while this lives, unless whoever started us chose to have it ignored. Handled
/// rather than ignored, a signal is back to its default in the programs we start.
class SignalHandler
{
public:
    /// `handler` may do only what is safe in one.
    SignalHandler(int signal, void (*handler)(int));

    SignalHandler(const SignalHandler &) = delete;
    SignalHandler &operator=(const SignalHandler &) = delete;

    /// Puts back what was there before.
    ~SignalHandler();

private:
    int m_signal;

    struct sigaction m_former {
    };
};
