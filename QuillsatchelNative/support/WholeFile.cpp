#include "support/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <vector>

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

QString fromPath(const std::filesystem::path &path)
{
    return QFile::decodeName(path.c_str());
}

std::vector<std::filesystem::directory_entry> entriesOf(const std::filesystem::path &folder)
{
    std::error_code error;
    std::vector<std::filesystem::directory_entry> entries;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(*entry);
    return entries;
}

void removeFile(const std::filesystem::directory_entry &entry)
{
    std::error_code error;
    if (entry.symlink_status(error).type() == std::filesystem::file_type::regular)
        std::filesystem::remove(entry.path(), error);
}

// What the temporary name of a file ends with. Nobody gives a file of his own such a name, as he
// may well call one "prompts.json.backup": what is left of it may be removed unasked.
constexpr std::string_view UnfinishedMark = ".saving-";
constexpr std::string_view RandomLetters = "XXXXXX";

QString unfinishedName(const QString &path)
{
    return path + QLatin1String(UnfinishedMark.data()) + QLatin1String(RandomLetters.data());
}

/// Whether `name` is one that `unfinishedName` becomes for a file named `finished`, or for any file
/// if that is empty.
bool isUnfinished(std::string_view name, std::string_view finished)
{
    if (name.size() <= UnfinishedMark.size() + RandomLetters.size())
        return false;
    const auto letters = name.substr(name.size() - RandomLetters.size());
    name.remove_suffix(letters.size());
    const auto isLetter = [](char each) {
        return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
    };
    if (!name.ends_with(UnfinishedMark) || !std::ranges::all_of(letters, isLetter))
        return false;
    name.remove_suffix(UnfinishedMark.size());
    return finished.empty() || name == finished;
}

// A second name for the same bytes needs neither room on the disk nor permission to read them.
bool makeLink(const std::filesystem::path &path, const std::filesystem::path &linkPath)
{
    std::error_code error;
    std::filesystem::create_hard_link(std::filesystem::canonical(path, error), linkPath, error);
    return !error;
}

bool makeCopy(const QString &path, const QString &copyPath)
{
    const auto bytes = read(path);
    return bytes && replace(copyPath, [&bytes](const ByteSink &sink) {
               sink({ bytes->data(), static_cast<std::size_t>(bytes->size()) });
           });
}

bool rename(const QString &path, const QString &newPath)
{
    return std::rename(QFile::encodeName(path).constData(),
                       QFile::encodeName(newPath).constData()) == 0;
}

/// What a file's links lead to, be it there or not; a link still if they lead round in a circle.
QString resolved(const QString &path)
{
    constexpr int MostLinks = 40;
    QFileInfo file(path);
    for (int link = 0; link < MostLinks && file.isSymLink(); ++link)
        file = QFileInfo(file.symLinkTarget());
    return file.filePath();
}

bool isReplaceable(const QFileInfo &file)
{
    if (!file.exists())
        return !file.isSymLink();
    return file.isFile() && file.isWritable(); // a folder, a pipe or a device is somebody's
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = ::write(file, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return false;
    }
    return true;
}

void removeUnfinishedBeside(const std::filesystem::path &path)
{
    for (const auto &entry : entriesOf(path.parent_path()))
        if (isUnfinished(entry.path().filename().native(), path.filename().native()))
            removeFile(entry);
}

/// Puts pieces into a file and has the disk begin with them while the next are made, so that the
/// flush at the end has little left to wait for.
class PieceWriter
{
public:
    explicit PieceWriter(int file)
        : m_file(file)
    {
    }

    void write(std::string_view piece)
    {
        m_isWhole = m_isWhole && writeAll(m_file, piece);
        m_waiting += piece.size();
        if (m_waiting < BytesWorthStarting)
            return;
        sync_file_range(m_file, 0, 0, SYNC_FILE_RANGE_WRITE);
        m_waiting = 0;
    }

    bool isWhole() const { return m_isWhole; }

private:
    static constexpr std::size_t BytesWorthStarting = 1024 * 1024;

    int m_file;
    std::size_t m_waiting = 0; // bytes that the disk has not been asked to begin with
    bool m_isWhole = true;
};

/// Flushes the file to the disk and gives it the name of `path`.
bool putInPlace(QTemporaryFile &file, const QString &path)
{
    if (fsync(file.handle()) != 0)
        return false;
    // Only from here on, where the file system can do that, does the file have a name at all.
    if (file.fileName().isEmpty() || !rename(file.fileName(), path))
        return false;
    file.setAutoRemove(false);
    return true;
}

} // namespace

std::optional<QByteArray> read(const QString &path, qint64 maximumSize)
{
    QFile file(path);
    // Opening a pipe would wait for somebody to write into it.
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
    const QFileInfo former(resolved(path));
    QTemporaryFile file(unfinishedName(former.filePath()));
    if (!isReplaceable(former) || !file.open())
        return false;
    if (former.exists())
        file.setPermissions(former.permissions());
    PieceWriter writer(file.handle());
    write([&writer](std::string_view piece) { writer.write(piece); });
    return writer.isWhole() && putInPlace(file, former.filePath());
}

void removeUnfinished(const QString &folder)
{
    for (const auto &entry : entriesOf(toPath(folder))) {
        std::error_code error;
        if (entry.is_symlink(error))
            removeUnfinishedBeside(toPath(resolved(fromPath(entry.path()))));
        else if (isUnfinished(entry.path().filename().native(), {}))
            removeFile(entry);
    }
}

bool keep(const QString &path, const QString &keptPath)
{
    const QFileInfo file(path);
    if (!file.exists())
        return true;
    // What was kept before goes only when this is kept.
    const QString unfinished = unfinishedName(keptPath);
    QFile::remove(unfinished);
    const bool isKept =
        file.isFile() &&
        (makeLink(toPath(path), toPath(unfinished)) || makeCopy(path, unfinished)) &&
        rename(unfinished, keptPath);
    QFile::remove(unfinished); // still there also where both were names of one file already
    return isKept;
}

} // namespace WholeFile
