#include "launchers/FaviconCache.h"

#include "support/RasterImage.h"
#include "support/ReadFile.h"
#include "support/ReplaceFile.h"
#include "support/Uuid.h"
#include "support/WebAddress.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string_view>
#include <utility>

namespace
{

QString pathOf(const QString &folder, const QUuid &id)
{
    const auto name = uuidText(id);
    return folder + QLatin1Char('/') + QLatin1String(name.data(), name.size()) +
           QStringLiteral(".png");
}

void store(const QString &path, const QByteArray &bytes)
{
    replaceFile(path, [&bytes](const ByteSink &sink) {
        sink({ bytes.constData(), static_cast<std::size_t>(bytes.size()) });
    });
}

} // namespace

FaviconCache::FaviconCache(const QString &faviconFolder, Platform &platform)
    : m_platform(platform)
    , m_faviconFolder(std::make_shared<const QString>(faviconFolder))
{
    QDir().mkpath(QFileInfo(faviconFolder).path());
    QDir().mkdir(faviconFolder,
                 QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

void FaviconCache::fetchFavicon(const QUuid &id, const WebAddress &website,
                                std::function<void()> onStored)
{
    const auto address = website.onSameHost("/favicon.ico");
    if (!address)
        return;
    const auto receive = [path = pathOf(*m_faviconFolder, id), onStored = std::move(onStored),
                          &mainQueue = m_platform.mainQueue,
                          cache = std::weak_ptr(m_faviconFolder)](const QByteArray &body) {
        if (cache.expired() || RasterImage::read(body, 1).isNull())
            return;
        store(path, body);
        mainQueue.async([onStored, cache] {
            if (!cache.expired())
                onStored();
        });
    };
    m_platform.httpClient.get(*address, receive);
}

void FaviconCache::removeCachedIcon(const QUuid &id)
{
    QFile::remove(pathOf(*m_faviconFolder, id));
}

QImage FaviconCache::cachedIcon(const QUuid &id, int side) const
{
    const auto bytes = readFile(pathOf(*m_faviconFolder, id), HttpClient::MaximumBodySize);
    return bytes ? RasterImage::read(*bytes, side) : QImage();
}
