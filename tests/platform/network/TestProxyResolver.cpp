#include "platform/network/TestProxyResolver.h"

#include <utility>

namespace
{

std::function<std::vector<std::string>(const std::string &, GCancellable *)> lookUpProxies;

char **lookUp(GProxyResolver * /*resolver*/, const char *address, GCancellable *cancellable,
              GError **error)
{
    const auto proxies = lookUpProxies(address, cancellable);
    if (proxies.empty()) {
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "none");
        return nullptr;
    }
    auto *const list = g_strv_builder_new();
    for (const auto &proxy : proxies)
        g_strv_builder_add(list, proxy.c_str());
    auto *const result = g_strv_builder_end(list);
    g_strv_builder_unref(list);
    return result;
}

GType resolverType()
{
    const GType type =
        g_type_register_static_simple(G_TYPE_OBJECT, "TestProxyResolver", sizeof(GObjectClass),
                                      nullptr, sizeof(GObject), nullptr, GTypeFlags(0));
    const auto fill = [](void *memory, void * /*data*/) {
        auto *const interface = static_cast<GProxyResolverInterface *>(memory);
        interface->is_supported = [](GProxyResolver * /*resolver*/) -> gboolean { return TRUE; };
        interface->lookup = lookUp;
    };
    const GInterfaceInfo info { fill, nullptr, nullptr };
    g_type_add_interface_static(type, G_TYPE_PROXY_RESOLVER, &info);
    return type;
}

} // namespace

void TestProxyResolver::install(
    std::function<std::vector<std::string>(const std::string &, GCancellable *)> lookUp)
{
    lookUpProxies = std::move(lookUp);
    constexpr const char *Name = "test";
    g_setenv("GIO_USE_PROXY_RESOLVER", Name, TRUE);
    g_io_extension_point_register(G_PROXY_RESOLVER_EXTENSION_POINT_NAME);
    g_io_extension_point_implement(G_PROXY_RESOLVER_EXTENSION_POINT_NAME, resolverType(), Name, 0);
}
