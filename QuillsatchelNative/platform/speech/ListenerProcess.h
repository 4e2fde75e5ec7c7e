#pragma once

#include <QProcess>

#include <string>
#include <vector>

/// A listener process, which ends with this object at the latest. Writing goes to its stdin,
/// reading comes from its stdout, and its stderr is discarded. It inherits no other file
/// descriptor, no blocked and no ignored signal.
class ListenerProcess final : public QProcess
{
public:
    /// `command` is the path of a program and its arguments.
    ListenerProcess(const std::vector<std::string> &command, QObject *parent);
    /// Kills the process and waits until it has ended.
    ~ListenerProcess() override;

    /// Kills the process and emits no further signal. Deletes this object once the process has
    /// ended, which a slow disk may delay.
    void stop();
};
