#include "platform/desktop/StandardFileLocations.h"

#include <QStandardPaths>

QString StandardFileLocations::applicationSupport() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}
