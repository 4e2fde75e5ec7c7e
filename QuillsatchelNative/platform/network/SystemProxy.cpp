#include "platform/network/SystemProxy.h"

#include "platform/gio/GObjectPointer.h"

#include <gio/gio.h>

#include <string_view>

namespace SystemProxy
{

namespace
{

/// In libcurl's notation. SOCKS proxies do the DNS lookup.
std::string inCurlNotation(std::string_view proxy)
{
    if (proxy == "direct://")
        return {};
    for (const std::string_view scheme : { "socks://", "socks5://" }) {
        if (proxy.starts_with(scheme))
            return "socks5h://" + std::string(proxy.substr(scheme.size()));
    }
    return std::string(proxy);
}

} // namespace

std::string forAddress(const std::string &address, const std::stop_token &stop)
{
    const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
    const std::stop_callback cancel(stop, [&] { g_cancellable_cancel(cancellable.get()); });
    const CPointer<char *, &g_strfreev> proxies(g_proxy_resolver_lookup(
        g_proxy_resolver_get_default(), address.c_str(), cancellable.get(), nullptr));
    const char *const first = proxies ? *proxies : nullptr;
    return first ? inCurlNotation(first) : std::string();
}

} // namespace SystemProxy
