#include "support/DocumentFile.h"

#include "support/FilePath.h"
#include "support/RescueCopy.h"
#include "support/WholeFile.h"

std::optional<QByteArray> DocumentFile::readBytes() const
{
    return WholeFile::read(m_path);
}

void DocumentFile::save(const std::function<void(const ByteSink &)> &write)
{
    if (!m_mayWrite()) {
        m_keepsUnreadFile = true;
        return;
    }
    if (keepUnreadFile() && WholeFile::replace(m_path, write))
        m_keepsUnreadFile = false;
}

bool DocumentFile::keepUnreadFile()
{
    if (!m_keepsUnreadFile)
        return true;
    const auto path = FilePath::native(m_path);
    const auto outcome = RescueCopy::keep(path, std::filesystem::path(path) += ".unreadable");
    if (outcome == RescueCopy::Outcome::kept)
        m_keepsUnreadFile = false;
    return outcome != RescueCopy::Outcome::failed;
}
