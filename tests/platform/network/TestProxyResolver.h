#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

/// What the desktop knows of proxies, as the test says.
namespace TestProxyResolver
{

/// Makes GIO ask `lookUp` for the proxies of every address from now on, on the thread of who asks.
/// None of them is an error. Call it once, before anything has asked.
void install(
    std::function<std::vector<std::string>(const std::string &address, GCancellable *)> lookUp);

} // namespace TestProxyResolver
