#include "platform/ApplicationDocument.h"

#include "platform/ApplicationFolder.h"
#include "platform/Platform.h"
#include "support/FilePath.h"

#include <utility>

DocumentFile applicationDocument(const QString &name, Platform &platform)
{
    auto &locations = platform.fileLocations;
    EarlierVersions versions(
        FilePath::native(locations.applicationState()) / "Quillsatchel" / "Earlier versions",
        FilePath::native(name), [&clock = platform.wallClock] { return clock.now(); });
    return { prepareApplicationFolder(locations) + QLatin1Char('/') + name, std::move(versions),
             [&locations] { return locations.mayWrite(); } };
}
