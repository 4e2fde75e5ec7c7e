#include "support/DocumentFile.h"

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
    if (m_keepsUnreadFile && !WholeFile::keep(m_path, m_path + QStringLiteral(".unreadable")))
        return;
    if (WholeFile::replace(m_path, write))
        m_keepsUnreadFile = false;
}
