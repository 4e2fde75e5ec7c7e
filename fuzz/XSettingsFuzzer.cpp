// Settings that any program may publish on the display are read without fault, and those before
// some damage are the same as without it.
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
    expect(some.size() <= all.size(), "less data has no more settings");
    for (const auto &[name, value] : some)
        expect(all.contains(name), "a setting of the first half is one of the whole");
    return 0;
}
