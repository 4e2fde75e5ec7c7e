#pragma once

#include "platform/Platform.h"

#include <QImage>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>

/// Icons of websites, one file per launcher, named by the launcher's id. A file holds the bytes
/// that the site sent. The cache has no other state. Main thread only.
class FaviconCache
{
public:
    /// Creates the folder if possible, for its owner only. Downloads still running when the cache
    /// is destroyed are dropped.
    FaviconCache(const QString &faviconFolder, Platform &platform);

    /// Downloads "/favicon.ico" from the website's host, on its standard port. If it is an image,
    /// stores it and then calls `onStored` asynchronously. Every failure is silent.
    void fetchFavicon(const QUuid &id, const WebAddress &website, std::function<void()> onStored);

    /// Deletes the launcher's icon, if it has one.
    void removeCachedIcon(const QUuid &id);

    /// The launcher's icon in the best size for `side` pixels; null if it has none. Reads the file
    /// on each call.
    QImage cachedIcon(const QUuid &id, int side) const;

private:
    Platform &m_platform;
    // Downloads on other threads hold a weak pointer to this to see whether the cache still exists.
    // They never lock it, because that would prolong its apparent lifetime.
    std::shared_ptr<const QString> m_faviconFolder;
};
