#include "platform/desktop/Module.h"

#include "support/FilePath.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using FileStatus = struct stat;

std::optional<FileStatus> statusOf(const QString &path)
{
    FileStatus status {};
    const bool isThere = stat(FilePath::native(path).c_str(), &status) == 0;
    return isThere ? std::optional(status) : std::nullopt;
}

// The program's owner can replace the program anyway. In a user namespace, root's files may appear
// to belong to that owner.
bool isTrusted(uid_t owner)
{
    const auto program = statusOf(QStringLiteral("/proc/self/exe"));
    return owner == 0 || owner == geteuid() || (program && owner == program->st_uid);
}

bool canOthersWrite(const QString &path)
{
    const auto status = statusOf(path);
    return !status || !isTrusted(status->st_uid) || (status->st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

bool isBuildFolder(const QString &folder)
{
    return QFileInfo::exists(folder + QLatin1String("/CMakeCache.txt"));
}

/// Tests and benchmarks are built one folder below the program.
QString moduleFolder(const QString &programFolder)
{
    if (isBuildFolder(programFolder))
        return programFolder + QLatin1String("/modules");
    if (isBuildFolder(programFolder + QLatin1String("/..")))
        return programFolder + QLatin1String("/../modules");
    return programFolder + QLatin1String("/" QUILLSATCHEL_MODULES);
}

} // namespace

QString Module::file(const QString &programFolder, const char *name)
{
    const QString folder = moduleFolder(programFolder);
    const QString path = folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(".so");
    return canOthersWrite(folder) || canOthersWrite(path) ? QString() : path;
}

Module::AnyFunction Module::findMake(const char *name)
{
    const QString path = file(QCoreApplication::applicationDirPath(), name);
    return path.isEmpty() ? nullptr : QLibrary::resolve(path, "make");
}
