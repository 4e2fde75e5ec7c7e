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

struct Resolver {
    GObject parent;
};

struct ResolverClass {
    GObjectClass parent;
};

void fillInterface(GProxyResolverInterface *interface)
{
    interface->is_supported = [](GProxyResolver * /*resolver*/) -> gboolean { return TRUE; };
    interface->lookup = lookUp;
}

G_DEFINE_TYPE_WITH_CODE(Resolver, resolver, G_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(G_TYPE_PROXY_RESOLVER, fillInterface))

void resolver_init(Resolver * /*resolver*/) {}

void resolver_class_init(ResolverClass * /*type*/) {}

} // namespace

void TestProxyResolver::install(
    std::function<std::vector<std::string>(const std::string &, GCancellable *)> lookUp)
{
    lookUpProxies = std::move(lookUp);
    constexpr const char *Name = "test";
    g_setenv("GIO_USE_PROXY_RESOLVER", Name, TRUE);
    g_io_extension_point_register(G_PROXY_RESOLVER_EXTENSION_POINT_NAME);
    g_io_extension_point_implement(G_PROXY_RESOLVER_EXTENSION_POINT_NAME, resolver_get_type(), Name,
                                   0);
}
