#pragma once

#include "support/FileDescriptor.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

/// A helper program, which ends with this object at the latest. Its standard input and output are
/// one stream; what it complains of goes nowhere; it inherits no other file.
class Subprocess
{
public:
    /// `command` is the path of a program and its arguments. None if it cannot be started.
    static std::optional<Subprocess> start(const std::vector<std::string> &command);

    Subprocess(Subprocess &&other) noexcept;
    Subprocess &operator=(Subprocess &&) = delete;
    ~Subprocess();

    /// Our end of the stream: a socket.
    int stream() const { return m_stream.number(); }

    pid_t id() const { return m_id; }

private:
    Subprocess(pid_t id, FileDescriptor stream);

    pid_t m_id = 0;
    FileDescriptor m_stream;
};
