#include "support/MountedFile.h"

#include "support/FileDescriptor.h"
#include "support/ReadAll.h"
#include "support/RescueCopy.h"
#include "support/WriteAll.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace MountedFile
{

namespace
{

namespace fs = std::filesystem;

std::optional<off_t> sizeOf(int file)
{
    struct stat status {
    };

    return fstat(file, &status) == 0 ? std::optional(status.st_size) : std::nullopt;
}

/// A file system that cannot reserve room may still have some.
bool hasRoom(int file, int source)
{
    const auto size = sizeOf(source);
    if (!size || *size == 0 || fallocate(file, FALLOC_FL_KEEP_SIZE, 0, *size) == 0)
        return size.has_value();
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
}

// Cut to its length only at the end: until then no old bytes give up their room on the disk.
bool fill(int file, int source)
{
    const auto size = sizeOf(source);
    bool isWritten = size && lseek(file, 0, SEEK_SET) == 0;
    const auto write = [&isWritten, file](std::string_view piece) {
        isWritten = isWritten && writeAll(file, piece);
    };
    return isWritten && readAll(source, write) && isWritten && ftruncate(file, *size) == 0 &&
           fsync(file) == 0;
}

} // namespace

bool overwrite(const fs::path &path, int source)
{
    const FileDescriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    const auto copy = RescueCopy::copy(path, fs::path(path) += ".previous");
    const FileDescriptor old(copy ? open(copy->c_str(), O_RDONLY | O_CLOEXEC) : -1);
    if (!file.isOpen() || !old.isOpen())
        return false;
    const bool isUntouched = !hasRoom(file.number(), source);
    const bool isWritten = !isUntouched && fill(file.number(), source);
    std::error_code error;
    if (isUntouched || isWritten || fill(file.number(), old.number()))
        fs::remove(*copy, error);
    return isWritten;
}

} // namespace MountedFile
