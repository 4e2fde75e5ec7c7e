#pragma once

#include "support/ByteSink.h"
#include "support/EarlierVersions.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

/// A file that the program reads once, keeps in memory, and replaces entirely at each save. The
/// first save after a failed load keeps the old bytes as `NAME.unreadable` (see RescueCopy), also
/// of a file that appeared after the load, for example on a disk that was not mounted yet. Other
/// states that a save replaces are kept as earlier versions.
class DocumentFile
{
public:
    /// `mayWrite` is called before each save. If it returns false, the save does nothing, and the
    /// next permitted save first keeps the file, which another process may have written.
    DocumentFile(
        QString path, EarlierVersions versions,
        std::function<bool()> mayWrite = [] { return true; })
        : m_path(std::move(path))
        , m_versions(std::move(versions))
        , m_mayWrite(std::move(mayWrite))
    {
    }

    /// The result of `decode`, an optional, for the bytes of the file. None without a readable
    /// file.
    template <typename Decode>
    std::invoke_result_t<Decode, const QByteArray &> load(Decode &&decode)
    {
        std::invoke_result_t<Decode, const QByteArray &> document;
        if (const auto bytes = readBytes())
            document = std::forward<Decode>(decode)(*bytes);
        m_needsRescue = !document;
        return document;
    }

    /// Replaces the file with what `write` passes to its sink, in one step. A failure is silent and
    /// leaves the file unchanged.
    void save(const std::function<void(const ByteSink &)> &write);

private:
    std::optional<QByteArray> readBytes();
    bool rescueFile();

    QString m_path;
    EarlierVersions m_versions;
    std::function<bool()> m_mayWrite;
    bool m_needsRescue = false; // before the next save
};
