#include "platform/desktop/StandardFileLocations.h"

#include "platform/desktop/SingleInstance.h"

#include <QStandardPaths>

QString StandardFileLocations::applicationSupport() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

bool StandardFileLocations::mayWrite()
{
    return !m_instance || m_instance->mayWrite();
}
