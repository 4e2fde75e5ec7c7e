#include "support/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace WholeFile
{

namespace
{

// The JSON parser reads this far past the end; without the room it would copy the whole text.
constexpr qsizetype SpareCapacity = 64;

std::filesystem::path toPath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

// A second name for the same bytes needs neither room on the disk nor permission to read them.
bool linkInto(const std::filesystem::path &path, const std::filesystem::path &keptPath)
{
    std::error_code error;
    std::filesystem::remove(keptPath, error);
    std::filesystem::create_hard_link(std::filesystem::canonical(path, error), keptPath, error);
    return !error;
}

} // namespace

std::optional<QByteArray> read(const QString &path)
{
    QFile file(path);
    // Opening a pipe would wait for somebody to write into it.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
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
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // A full disk takes the beginning of a piece without an error: the commit would not fail.
    bool isWhole = true;
    write([&file, &isWhole](std::string_view bytes) {
        const auto size = static_cast<qint64>(bytes.size());
        isWhole = isWhole && file.write(bytes.data(), size) == size;
    });
    return isWhole && file.commit();
}

bool keep(const QString &path, const QString &keptPath)
{
    if (!QFileInfo::exists(path) || linkInto(toPath(path), toPath(keptPath)))
        return true;
    const auto bytes = read(path);
    return bytes && replace(keptPath, [&bytes](const ByteSink &sink) {
               sink({ bytes->data(), static_cast<std::size_t>(bytes->size()) });
           });
}

} // namespace WholeFile
