#include "platform/ApplicationFolder.h"

#include "platform/FileLocations.h"

#include <QDir>

QString prepareApplicationFolder(const FileLocations &locations)
{
    const QString applicationSupport = locations.applicationSupport();
    if (applicationSupport.isEmpty())
        qFatal("This machine has no folder for a user's data.");
    const QDir parent(applicationSupport);
    parent.mkpath(QStringLiteral("."));
    parent.mkdir(QStringLiteral("Quillsatchel"),
                 QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return parent.filePath(QStringLiteral("Quillsatchel"));
}
