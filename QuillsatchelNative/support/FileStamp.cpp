#include "support/FileStamp.h"

#include <sys/stat.h>

namespace
{

std::optional<FileStamp> stampOf(const struct stat &status)
{
    if (!S_ISREG(status.st_mode))
        return std::nullopt;
    return FileStamp { .inode = status.st_ino,
                       .size = static_cast<std::uint64_t>(status.st_size),
                       .modificationSeconds = status.st_mtim.tv_sec,
                       .modificationNanoseconds = status.st_mtim.tv_nsec };
}

} // namespace

std::optional<FileStamp> FileStamp::of(const std::filesystem::path &path)
{
    struct stat status {
    };

    return stat(path.c_str(), &status) == 0 ? stampOf(status) : std::nullopt;
}

std::optional<FileStamp> FileStamp::of(int openFile)
{
    struct stat status {
    };

    return fstat(openFile, &status) == 0 ? stampOf(status) : std::nullopt;
}
