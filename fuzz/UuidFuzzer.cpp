// Only the canonical form is read, and it survives a round trip.
#include "Expect.h"
#include "support/Uuid.h"

#include <QUuid>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace
{

bool isSameLetter(unsigned char one, unsigned char other)
{
    return std::toupper(one) == other;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    const auto uuid = uuidFromText(text);
    if (!uuid)
        return 0;
    const auto written = uuidText(*uuid);
    expect(std::ranges::equal(text, written, isSameLetter), "a UUID is written as it was read");
    expect(uuidFromText({ written.data(), written.size() }) == uuid, "a written UUID can be read");
    return 0;
}
