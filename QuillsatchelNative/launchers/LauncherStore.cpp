#include "launchers/LauncherStore.h"

#include "launchers/LauncherDocument.h"
#include "platform/ApplicationDocument.h"
#include "platform/ApplicationFolder.h"
#include "support/WebAddress.h"
#include "support/Whitespace.h"

#include <QPointer>

#include <cmath>
#include <filesystem>
#include <optional>
#include <utility>

namespace
{

std::size_t indexOf(int slot)
{
    return static_cast<std::size_t>(slot);
}

/// The http or https address that the user typed, perhaps without "https://"; none otherwise.
std::optional<WebAddress> websiteAddress(std::string_view text)
{
    const auto core = trimmed(text);
    if (core.empty())
        return std::nullopt;
    const bool hasScheme = core.find("://") != std::string_view::npos;
    auto address = WebAddress::parse((hasScheme ? "" : "https://") + std::string(core));
    const bool isWebsite = address && address->isHttp() && !address->host().empty();
    return isWebsite ? std::move(address) : std::nullopt;
}

/// The host without "www.", in the case in which it was typed.
std::string websiteName(const WebAddress &address)
{
    constexpr std::string_view Prefix = "www.";
    std::string host = address.host();
    return host.starts_with(Prefix) ? host.substr(Prefix.size()) : host;
}

} // namespace

LauncherStore::LauncherStore(ApplicationChooser &applicationChooser, Platform &platform)
    : m_platform(platform)
    , m_applicationChooser(applicationChooser)
    , m_file(applicationDocument(QStringLiteral("launchers.json"), platform))
    , m_favicons(prepareApplicationFolder(platform.fileLocations) + QStringLiteral("/Favicons"),
                 platform)
{
    if (auto slots = m_file.load(&LauncherDocument::decode))
        m_slots.set(std::move(*slots));
}

std::vector<LauncherStore::ConfiguredItem> LauncherStore::configuredItems() const
{
    std::vector<ConfiguredItem> items;
    int slot = 0;
    for (const auto &item : m_slots.get()) {
        if (item)
            items.push_back({ slot, *item });
        ++slot;
    }
    return items;
}

LauncherIcon LauncherStore::icon(const LauncherItem &item, double size, double scale) const
{
    if (item.kind == LauncherKind::application)
        return { m_platform.workspace.applicationIcon(item.target, size, scale), "app",
                 "Application" };
    const int side = static_cast<int>(std::ceil(size * scale));
    QImage image = m_favicons.cachedIcon(item.id, side);
    if (!image.isNull()) {
        image = image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        image.setDevicePixelRatio(scale);
    }
    return { std::move(image), "globe", "Website" };
}

void LauncherStore::launch(int slot)
{
    if (!hasSlot(slot) || !m_slots.get()[indexOf(slot)])
        return;
    const auto &item = *m_slots.get()[indexOf(slot)];
    if (item.kind == LauncherKind::application)
        m_platform.workspace.openApplication(item.target);
    else if (const auto address = WebAddress::parse(item.target))
        m_platform.workspace.open(*address);
}

void LauncherStore::chooseApplication(int slot)
{
    if (!hasSlot(slot))
        return;
    const auto receive = [store = QPointer(this), slot](const std::optional<std::string> &path) {
        if (store && path)
            store->setApplication(*path, slot);
    };
    m_applicationChooser.begin(tr("Choose an Application"), tr("Add Launcher"), receive);
}

bool LauncherStore::setWebsite(std::string_view text, int slot)
{
    if (!hasSlot(slot))
        return false;
    const auto address = websiteAddress(text);
    if (!address)
        return false;
    const LauncherItem item { .kind = LauncherKind::website,
                              .name = websiteName(*address),
                              .target = address->absoluteString() };
    fill(slot, item);
    m_favicons.fetchFavicon(item.id, *address, [this, slot, id = item.id] { republish(slot, id); });
    return true;
}

void LauncherStore::clear(int slot)
{
    if (!hasSlot(slot))
        return;
    removeCachedIcon(slot);
    m_slots.edit([slot](LauncherSlots &slots) { slots[indexOf(slot)].reset(); });
    save();
}

void LauncherStore::setApplication(const std::string &path, int slot)
{
    fill(slot,
         { .kind = LauncherKind::application, .name = applicationName(path), .target = path });
}

std::string LauncherStore::applicationName(const std::string &path) const
{
    const auto names = m_platform.workspace.applicationNames(path).value_or(ApplicationNames());
    if (names.displayName)
        return *names.displayName;
    return names.name ? *names.name : std::filesystem::path(path).stem().string();
}

void LauncherStore::fill(int slot, LauncherItem item)
{
    removeCachedIcon(slot);
    m_slots.edit([slot, &item](LauncherSlots &slots) { slots[indexOf(slot)] = std::move(item); });
    save();
}

void LauncherStore::removeCachedIcon(int slot)
{
    if (const auto &item = m_slots.get()[indexOf(slot)])
        m_favicons.removeCachedIcon(item->id);
}

// Publishes the unchanged slots, so that views reload the icon that was just downloaded.
void LauncherStore::republish(int slot, const QUuid &id)
{
    const auto &item = m_slots.get()[indexOf(slot)];
    if (item && item->id == id)
        m_slots.edit([](LauncherSlots & /*unchanged*/) {});
}

void LauncherStore::save()
{
    m_file.save([this](const ByteSink &sink) { LauncherDocument::encode(m_slots.get(), sink); });
}

bool LauncherStore::hasSlot(int slot) const
{
    return slot >= 0 && indexOf(slot) < m_slots.get().size();
}
