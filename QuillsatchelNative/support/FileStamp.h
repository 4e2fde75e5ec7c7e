#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

/// What identifies the state of a regular file without reading it. It differs after another program
/// replaced or changed the file.
struct FileStamp {
    std::uint64_t inode = 0;
    std::uint64_t size = 0; ///< bytes
    std::int64_t modificationSeconds = 0;
    std::int64_t modificationNanoseconds = 0;

    bool operator==(const FileStamp &) const = default;

    /// Follows links. None unless it is a regular file.
    static std::optional<FileStamp> of(const std::filesystem::path &path);
    static std::optional<FileStamp> of(int openFile);
};
