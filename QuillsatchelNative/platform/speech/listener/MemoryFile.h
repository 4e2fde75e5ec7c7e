#pragma once

#include "support/FileDescriptor.h"

#include <string>
#include <string_view>

/// A file that exists in memory only, as long as this object, and has a path like any other.
class MemoryFile
{
public:
    explicit MemoryFile(std::string_view bytes);

    /// False where memory or the system did not allow it.
    bool isWhole() const { return m_isWhole; }

    std::string path() const;

private:
    FileDescriptor m_file;
    bool m_isWhole;
};
