#pragma once

#include "platform/Platform.h"

#include <QImage>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>

/// The icons of websites, one file a launcher, named by the launcher's id. The file holds the bytes
/// as the site sent them; that it is there is all that the cache knows. Main thread only.
class FaviconCache
{
public:
    /// Makes the folder if it can, for its owner only. What is being fetched when the cache goes is
    /// dropped.
    FaviconCache(const QString &faviconFolder, Platform &platform);

    /// Fetches "/favicon.ico" from the website's host, on its standard port, and keeps it if it is
    /// a picture. Then calls `onStored`, on a later turn. Every failure is silent.
    void fetchFavicon(const QUuid &id, const WebAddress &website, std::function<void()> onStored);

    /// Forgets the launcher's icon, if it has one.
    void removeCachedIcon(const QUuid &id);

    /// The launcher's icon, best for `side` pixels; null if it has none. Reads the file each time.
    QImage cachedIcon(const QUuid &id, int side) const;

private:
    Platform &m_platform;
    // What is being fetched, on other threads, looks at this to see whether the cache lives. It
    // never locks it: the cache would seem to live on for as long.
    std::shared_ptr<const QString> m_faviconFolder;
};
