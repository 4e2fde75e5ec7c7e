#include "platform/speech/listener/MemoryFile.h"

#include "support/WriteAll.h"

#include <sys/mman.h>

MemoryFile::MemoryFile(std::string_view bytes)
    : m_file(memfd_create("listener", MFD_CLOEXEC))
    , m_isComplete(m_file.isOpen() && writeAll(m_file.number(), bytes))
{
}

std::string MemoryFile::path() const
{
    return "/proc/self/fd/" + std::to_string(m_file.number());
}
