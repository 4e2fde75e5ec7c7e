#pragma once

#include "support/FileDescriptor.h"

#include <cstddef>
#include <string>

/// Lets one process at a time write to a folder and leave a note for the others. It is an advisory
/// lock on a file in the folder. The kernel releases the lock when the process ends; the file
/// stays.
class InstanceLock
{
public:
    enum class State {
        held,
        heldByAnother,
        unavailable, // the file cannot be created or locked
    };

    /// Creates the file if it is missing.
    explicit InstanceLock(const std::string &folder);

    /// Whether the file is still the one at its path. False once the file or the folder was deleted
    /// or replaced: the lock then excludes no other process.
    bool isInPlace() const;

    /// Takes the lock unless another process holds it. Does not block.
    State take();

    /// Overwrites the note: one line, at most `MaximumNoteSize` bytes. Call only while holding the
    /// lock.
    void write(const std::string &note);
    /// The note of the lock holder, or of an earlier one if the holder has not written its own yet.
    /// Empty without a note.
    std::string read() const;

    static constexpr std::size_t MaximumNoteSize = 127;

    /// The system's message if the lock is unavailable.
    const std::string &problem() const { return m_problem; }

private:
    State unavailable();

    std::string m_path;
    FileDescriptor m_file;
    std::string m_problem;
};
