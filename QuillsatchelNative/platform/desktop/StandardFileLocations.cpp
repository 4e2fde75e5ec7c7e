#include "platform/desktop/StandardFileLocations.h"

#include "platform/desktop/SingleInstance.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

QString StandardFileLocations::applicationSupport() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString StandardFileLocations::applicationState() const
{
    // QStandardPaths knows this folder only from Qt 6.7 on.
    const QByteArray folder = qgetenv("XDG_STATE_HOME");
    return folder.startsWith('/') ? QFile::decodeName(folder)
                                  : QDir::homePath() + QStringLiteral("/.local/state");
}

bool StandardFileLocations::mayWrite()
{
    return !m_instance || m_instance->mayWrite();
}
