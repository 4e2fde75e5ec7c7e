#pragma once

#include "support/ByteSink.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

/// A file that the program reads once, keeps in memory, and replaces whole at each save. A file
/// that could not be read is never lost: before the first save takes its place, its bytes are kept
/// beside it as `NAME.unreadable` (see RescueCopy). The same holds for a file that appears after
/// the start, for example on a disk that was not mounted yet.
class DocumentFile
{
public:
    /// `mayWrite` is called before each save. A save that it forbids does not happen, and the next
    /// one that it allows first keeps what another process may have written meanwhile.
    explicit DocumentFile(
        QString path, std::function<bool()> mayWrite = [] { return true; })
        : m_path(std::move(path))
        , m_mayWrite(std::move(mayWrite))
    {
    }

    /// What `decode` makes of the file's bytes, an optional; empty too without such a file.
    /// Writes nothing.
    template <typename Decode>
    std::invoke_result_t<Decode, const QByteArray &> load(Decode &&decode)
    {
        std::invoke_result_t<Decode, const QByteArray &> document;
        if (const auto bytes = readBytes())
            document = std::forward<Decode>(decode)(*bytes);
        m_keepsUnreadFile = !document;
        return document;
    }

    /// Puts what `write` gives its sink in the file's place, in one step. A failure is silent and
    /// leaves the file as it was.
    void save(const std::function<void(const ByteSink &)> &write);

private:
    std::optional<QByteArray> readBytes() const;
    bool keepUnreadFile();

    QString m_path;
    std::function<bool()> m_mayWrite;
    bool m_keepsUnreadFile = false;
};
