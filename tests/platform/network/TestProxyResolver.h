#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

/// The test's proxy settings for GIO.
namespace TestProxyResolver
{

/// Makes GIO call `lookUp` for the proxies of every address, on the calling thread. An empty result
/// is an error. Call it once, before the first lookup.
void install(
    std::function<std::vector<std::string>(const std::string &address, GCancellable *)> lookUp);

} // namespace TestProxyResolver
