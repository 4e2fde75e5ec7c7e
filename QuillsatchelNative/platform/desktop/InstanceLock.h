#pragma once

#include "support/FileDescriptor.h"

#include <cstddef>
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

    /// Creates the file if there is none.
    explicit InstanceLock(const std::string &folder);

    /// Whether the file is still the one that the folder's path leads to. False once the file or
    /// the folder was deleted or replaced: the lock then keeps no other process out.
    bool isInPlace() const;

    /// Takes the lock, unless another process has it. Never waits.
    State take();

    /// Overwrites the note: one line, at most `LongestNote` bytes. Call only while holding the
    /// lock.
    void write(const std::string &note);
    /// The note of the process that holds the lock, or of an earlier one if the holder has not
    /// written yet; empty without one.
    std::string read() const;

    static constexpr std::size_t LongestNote = 127;

    /// What made it unavailable, in the words of the system.
    const std::string &problem() const { return m_problem; }

private:
    State unavailable();

    std::string m_path;
    FileDescriptor m_file;
    std::string m_problem;
};
