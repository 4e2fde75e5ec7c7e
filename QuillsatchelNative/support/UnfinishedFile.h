#pragma once

#include <QTemporaryFile>

#include <cstddef>
#include <filesystem>
#include <string_view>

/// A new file that atomically replaces another once it is complete and on the disk. Until then it
/// has no name, or a temporary one beside the other file. It is removed if it does not replace the
/// file.
class UnfinishedFile
{
public:
    /// Creates a file for its owner only (0600), which is to replace `target`.
    explicit UnfinishedFile(const std::filesystem::path &target);

    /// False if the file could not be created. All functions below then fail.
    bool isOpen() const { return m_file.isOpen(); }

    /// Open for reading and writing.
    int descriptor() const { return m_file.handle(); }

    /// Appends a piece. `flush` reports failures.
    void write(std::string_view piece);

    /// Waits until all pieces are on the disk. False if one could not be written.
    bool flush();

    /// Replaces the target. If that fails, returns false and sets errno.
    bool replaceTarget();

    /// Removes temporary files that killed processes left in `folder` and beside the targets of the
    /// links in it. No other UnfinishedFile may exist there at that time.
    static void removeLeftovers(const std::filesystem::path &folder);

private:
    std::filesystem::path m_target;
    QTemporaryFile m_file;
    std::size_t m_dirtySize = 0; // bytes whose writing to the disk has not started
    bool m_hasFailed = false;
};
