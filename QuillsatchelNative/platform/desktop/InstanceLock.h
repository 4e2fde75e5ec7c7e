#pragma once

#include "support/FileDescriptor.h"

#include <string>

/// The right to write the files in a folder, which one process has at a time, and a note of that
/// process to the others. It is a lock on a file in the folder: however the process ends, the
/// system takes the lock from it. The file stays.
class InstanceLock
{
public:
    enum class State {
        held,
        heldByAnother,
        unavailable, // no file can be made there, or none be locked
    };

    /// Makes the file if there is none.
    explicit InstanceLock(const std::string &folder);

    /// Takes the lock, unless another process has it. Never waits.
    State take();

    /// Leaves a note, short and without line ends, in place of the former. For who has the lock.
    void write(const std::string &note);
    /// What was left by the process that has the lock, or by an earlier one if that is just about
    /// to write; empty if there is nothing.
    std::string read() const;

    /// What made it unavailable, in the words of the system.
    const std::string &problem() const { return m_problem; }

private:
    State unavailable();

    FileDescriptor m_file;
    std::string m_problem;
};
