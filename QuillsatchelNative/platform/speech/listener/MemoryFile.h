#pragma once

#include "support/FileDescriptor.h"

#include <string>
#include <string_view>

/// A file in memory, which lasts as long as this object and can be opened by its path.
class MemoryFile
{
public:
    explicit MemoryFile(std::string_view bytes);

    /// False if the file could not be created or written.
    bool isComplete() const { return m_isComplete; }

    std::string path() const;

private:
    FileDescriptor m_file;
    bool m_isComplete;
};
