#include "support/DocumentFile.h"

#include "support/FilePath.h"
#include "support/FileStamp.h"
#include "support/ReadFile.h"
#include "support/ReplaceFile.h"
#include "support/RescueCopy.h"

#include <filesystem>

std::optional<QByteArray> DocumentFile::readBytes()
{
    m_versions.setRead(FileStamp::of(FilePath::native(m_path)));
    // Parsing needs up to sixteen times as much memory.
    constexpr qint64 MaximumSize = qint64(512) * 1024 * 1024;
    return readFile(m_path, MaximumSize);
}

void DocumentFile::save(const std::function<void(const ByteSink &)> &write)
{
    if (!m_mayWrite()) {
        m_needsRescue = true;
        return;
    }
    if (!rescueFile())
        return;
    const auto keep = [this](const std::filesystem::path &file) { m_versions.keep(file); };
    if (const auto written = replaceFile(m_path, write, keep)) {
        m_versions.setWritten(*written);
        m_needsRescue = false;
    }
}

bool DocumentFile::rescueFile()
{
    if (!m_needsRescue)
        return true;
    const auto path = FilePath::native(m_path);
    const auto outcome = RescueCopy::keep(path, std::filesystem::path(path) += ".unreadable");
    if (outcome == RescueCopy::Outcome::kept) {
        m_versions.setKept(FileStamp::of(path));
        m_needsRescue = false;
    }
    return outcome != RescueCopy::Outcome::failed;
}
