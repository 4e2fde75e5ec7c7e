#pragma once

#include <QTemporaryFile>

#include <cstddef>
#include <filesystem>
#include <string_view>

/// A new file that takes the place of another in one step, once it is complete and on the disk.
/// Until then it has no name, or a temporary one beside the other file. If it does not take that
/// place, it is removed.
class UnfinishedFile
{
public:
    /// Creates the file, for its owner only (0600), beside `finished`.
    explicit UnfinishedFile(const std::filesystem::path &finished);

    /// False if the file could not be created. Everything below then fails.
    bool isOpen() const { return m_file.isOpen(); }

    /// Open for reading and writing.
    int descriptor() const { return m_file.handle(); }

    /// Appends a piece. `flush` tells about a failure.
    void write(std::string_view piece);

    /// Waits until all pieces are on the disk. False if one of them could not be written.
    bool flush();

    /// Gives the file the name of the finished one, and replaces what had it. False if the system
    /// refuses; errno then has the reason.
    bool takePlace();

    /// Removes what killed processes left: the temporary files in `folder`, and those beside the
    /// targets of the links in it. No file there may be unfinished at that time.
    static void removeLeftovers(const std::filesystem::path &folder);

private:
    std::filesystem::path m_finished;
    QTemporaryFile m_file;
    std::size_t m_waiting = 0; // bytes that the disk was not asked to write yet
    bool m_isWhole = true;
};
