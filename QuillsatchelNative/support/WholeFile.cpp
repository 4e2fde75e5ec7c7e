#include "support/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
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

/// Puts pieces into a file and has the disk begin with them while the next are made, so that the
/// flush at the end has little left to wait for.
class PieceWriter
{
public:
    explicit PieceWriter(QSaveFile &file)
        : m_file(file)
    {
    }

    void write(std::string_view piece)
    {
        // A full disk takes the beginning of a piece without an error: the commit would not fail.
        const auto size = static_cast<qint64>(piece.size());
        m_isWhole = m_isWhole && m_file.write(piece.data(), size) == size;
        m_waiting += size;
        if (m_waiting < BytesWorthStarting)
            return;
        sync_file_range(m_file.handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
        m_waiting = 0;
    }

    bool isWhole() const { return m_isWhole; }

private:
    static constexpr qint64 BytesWorthStarting = 1024 * 1024;

    QSaveFile &m_file;
    qint64 m_waiting = 0; // bytes that the disk has not been asked to begin with
    bool m_isWhole = true;
};

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
    PieceWriter writer(file);
    write([&writer](std::string_view piece) { writer.write(piece); });
    return writer.isWhole() && file.commit();
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
