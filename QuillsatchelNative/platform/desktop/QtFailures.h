#pragma once

#include <QtGlobal>

/// Exits with status 1 and one line on standard error where Qt would abort or hang: without a
/// display, or if the system refuses a thread that Qt then waits for. Active during its lifetime.
/// One instance at a time.
class QtFailures
{
public:
    QtFailures();
    ~QtFailures();

    QtFailures(const QtFailures &) = delete;
    QtFailures &operator=(const QtFailures &) = delete;

private:
    QtMessageHandler m_previous;
};
