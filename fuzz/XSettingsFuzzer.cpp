// Settings from any program are read safely, and damage does not affect the settings before it.
#include "Expect.h"
#include "platform/desktop/XSettings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view data(reinterpret_cast<const char *>(bytes), size);
    const auto all = XSettings::integersIn(data);
    const auto some = XSettings::integersIn(data.substr(0, size / 2));
    expect(some.size() <= all.size(), "less data has at most as many settings");
    for (const auto &[name, value] : some)
        expect(all.contains(name), "a setting of the first half is also one of the whole");
    return 0;
}
