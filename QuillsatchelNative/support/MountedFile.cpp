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

/// True also on file systems that cannot reserve space.
bool hasSpace(int file, int source)
{
    const auto size = sizeOf(source);
    if (!size || *size == 0 || fallocate(file, FALLOC_FL_KEEP_SIZE, 0, *size) == 0)
        return size.has_value();
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
}

// Truncates only at the end, so that the file does not give up disk space before it is written.
bool copyBytes(int file, int source)
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
    const bool isUntouched = !hasSpace(file.number(), source);
    const bool isWritten = !isUntouched && copyBytes(file.number(), source);
    std::error_code error;
    if (isUntouched || isWritten || copyBytes(file.number(), old.number()))
        fs::remove(*copy, error);
    return isWritten;
}

} // namespace MountedFile
