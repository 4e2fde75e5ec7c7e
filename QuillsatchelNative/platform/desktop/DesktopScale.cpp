#include "platform/desktop/DesktopScale.h"

#include "platform/desktop/X11Connection.h"
#include "platform/desktop/XSettings.h"

#include <QByteArray>
#include <QtGlobal>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using X11Connection::ReplyPointer;

namespace DesktopScale
{

namespace
{

constexpr auto ScaleVariable = "QT_SCALE_FACTOR";
constexpr double StandardResolution = 96;
bool isPrepared = false;

bool isChosenByEnvironment()
{
    constexpr std::array Names { ScaleVariable, "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI",
                                 "QT_ENABLE_HIGHDPI_SCALING", "QT_USE_PHYSICAL_DPI" };
    return std::ranges::any_of(Names,
                               [](const auto *name) { return qEnvironmentVariableIsSet(name); });
}

bool isOnX11()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return !qEnvironmentVariableIsEmpty("DISPLAY") &&
           (platform.isEmpty() || platform.startsWith("xcb"));
}

std::string property(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name)
{
    constexpr std::uint32_t MaximumWords = 65536;
    const ReplyPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, MaximumWords),
        nullptr));
    if (!reply || reply->format != 8)
        return {};
    const auto *const bytes = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return { bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) };
}

/// `Xft.dpi` of the X resources, which Qt reads if XSETTINGS has no resolution.
std::optional<double> resourceResolution(xcb_connection_t *connection)
{
    constexpr std::string_view Name = "Xft.dpi:";
    const auto resources =
        '\n' + property(connection, X11Connection::root(connection), XCB_ATOM_RESOURCE_MANAGER);
    const auto line = resources.find('\n' + std::string(Name));
    if (line == std::string::npos)
        return std::nullopt;
    const auto begin = line + 1 + Name.size();
    const auto value = resources.substr(begin, resources.find('\n', begin) - begin);
    const double resolution = QByteArray::fromStdString(value).trimmed().toDouble();
    return resolution > 0 ? std::optional(resolution) : std::nullopt;
}

Settings settingsOf(xcb_connection_t *connection)
{
    const auto owner =
        X11Connection::selectionOwner(connection, X11Connection::atom(connection, "_XSETTINGS_S0"));
    if (owner == XCB_WINDOW_NONE)
        return {};
    const auto integers = XSettings::integersIn(
        property(connection, owner, X11Connection::atom(connection, "_XSETTINGS_SETTINGS")));
    const auto resolution = [&integers](const char *name) -> std::optional<double> {
        const auto found = integers.find(name);
        return found != integers.end() && found->second > 0 ? std::optional(found->second / 1024.0)
                                                            : std::nullopt;
    };
    const auto scale = integers.find("Gdk/WindowScalingFactor");
    Settings settings { .windowScale = scale == integers.end() ? 1 : scale->second,
                        .resolution = resolution("Xft/DPI"),
                        .unscaledResolution = resolution("Gdk/UnscaledDPI") };
    if (settings.windowScale > 1 && !settings.resolution)
        settings.resolution = resourceResolution(connection);
    return settings;
}

} // namespace

double factorFor(const Settings &settings)
{
    constexpr int MaximumScale = 8;
    if (settings.windowScale <= 1 || settings.windowScale > MaximumScale)
        return 1;
    const double resolution = settings.resolution.value_or(StandardResolution);
    if (settings.unscaledResolution)
        return std::max(1.0, *settings.unscaledResolution * settings.windowScale / resolution);
    return resolution < StandardResolution * settings.windowScale ? settings.windowScale : 1;
}

void prepare()
{
    if (isChosenByEnvironment() || !isOnX11())
        return;
    const auto connection = X11Connection::connectSeparately();
    if (xcb_connection_has_error(connection.get()) != 0)
        return;
    const double factor = factorFor(settingsOf(connection.get()));
    isPrepared = factor > 1;
    if (isPrepared)
        qputenv(ScaleVariable, QByteArray::number(factor));
}

void clear()
{
    if (isPrepared)
        qunsetenv(ScaleVariable);
    isPrepared = false;
}

} // namespace DesktopScale
