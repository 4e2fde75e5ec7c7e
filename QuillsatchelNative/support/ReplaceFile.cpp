#include "support/ReplaceFile.h"

#include "support/FilePath.h"
#include "support/LinkTarget.h"
#include "support/MountedFile.h"
#include "support/UnfinishedFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// The file to be replaced, if it exists.
struct OldFile {
    bool exists = false;
    bool isReplaceable = false; ///< also if it does not exist

    struct stat status {
    };
};

OldFile oldFileAt(const std::filesystem::path &path)
{
    OldFile old;
    old.exists = lstat(path.c_str(), &old.status) == 0;
    if (!old.exists)
        old.isReplaceable = errno == ENOENT;
    else // never replace folders, pipes and devices
        old.isReplaceable =
            S_ISREG(old.status.st_mode) && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    return old;
}

// Only root may change the owner; other users may set the group to one of theirs.
void copyOwnerAndPermissions(const struct stat &status, int file)
{
    constexpr mode_t Permissions = 0777;
    constexpr auto SameOwner = static_cast<uid_t>(-1);
    if (fchown(file, status.st_uid, status.st_gid) != 0) [[maybe_unused]]
        const int isGiven = fchown(file, SameOwner, status.st_gid);
    fchmod(file, status.st_mode & Permissions);
}

} // namespace

std::optional<FileStamp>
replaceFile(const QString &path, const std::function<void(const ByteSink &)> &write,
            const std::function<void(const std::filesystem::path &)> &beforeReplacing)
{
    const auto target = linkTarget(FilePath::native(path));
    if (!target)
        return std::nullopt;
    const auto old = oldFileAt(*target);
    if (!old.isReplaceable)
        return std::nullopt;
    UnfinishedFile file(*target);
    if (!file.isOpen())
        return std::nullopt;
    if (old.exists)
        copyOwnerAndPermissions(old.status, file.descriptor());
    write([&file](std::string_view piece) { file.write(piece); });
    if (!file.flush())
        return std::nullopt;
    beforeReplacing(*target);
    if (file.replaceTarget())
        return FileStamp::of(file.descriptor());
    const bool isOverwritten = errno == EBUSY && MountedFile::overwrite(*target, file.descriptor());
    return isOverwritten ? FileStamp::of(*target) : std::nullopt;
}
