#include "support/WholeFile.h"

#include "support/FilePath.h"
#include "support/LinkTarget.h"
#include "support/MountedFile.h"
#include "support/UnfinishedFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace WholeFile
{

namespace
{

// The JSON parser reads this far past the end; without the room it would copy the whole text.
constexpr qsizetype SpareCapacity = 64;

/// A file that is there already, or is not.
struct Former {
    bool isThere = false;
    bool isReplaceable = false;

    struct stat status {
    };
};

Former formerAt(const std::filesystem::path &path)
{
    Former former;
    former.isThere = lstat(path.c_str(), &former.status) == 0;
    if (!former.isThere)
        former.isReplaceable = errno == ENOENT;
    else // folders, pipes and devices stay
        former.isReplaceable = S_ISREG(former.status.st_mode) &&
                               faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    return former;
}

// Only root may give a file away; others may at least give it to one of their groups.
void passOn(const struct stat &status, int file)
{
    constexpr mode_t Permissions = 0777;
    constexpr auto SameOwner = static_cast<uid_t>(-1);
    if (fchown(file, status.st_uid, status.st_gid) != 0) [[maybe_unused]]
        const int isGiven = fchown(file, SameOwner, status.st_gid);
    fchmod(file, status.st_mode & Permissions);
}

} // namespace

std::optional<QByteArray> read(const QString &path, qint64 maximumSize)
{
    QFile file(path);
    // Opening a pipe would wait until another program writes into it.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        file.size() > maximumSize)
        return std::nullopt;
    QByteArray bytes;
    bytes.reserve(file.size() + SpareCapacity);
    bytes.resize(file.size());
    if (file.read(bytes.data(), bytes.size()) != bytes.size())
        return std::nullopt;
    return bytes;
}

bool replace(const QString &path, const std::function<void(const ByteSink &)> &write)
{
    const auto target = linkTarget(FilePath::native(path));
    if (!target)
        return false;
    const auto former = formerAt(*target);
    if (!former.isReplaceable)
        return false;
    UnfinishedFile file(*target);
    if (!file.isOpen())
        return false;
    if (former.isThere)
        passOn(former.status, file.descriptor());
    write([&file](std::string_view piece) { file.write(piece); });
    if (!file.flush())
        return false;
    return file.takePlace() ||
           (errno == EBUSY && MountedFile::overwrite(*target, file.descriptor()));
}

} // namespace WholeFile
