// Launchers survive encoding and decoding.
#include "Expect.h"
#include "FuzzedValues.h"
#include "launchers/LauncherDocument.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <optional>
#include <string>
#include <string_view>

namespace
{

LauncherItem fuzzedItem(FuzzedDataProvider &data)
{
    return { .id = FuzzedValues::uuid(data),
             .kind = data.ConsumeBool() ? LauncherKind::website : LauncherKind::application,
             .name = FuzzedValues::text(data),
             .target = FuzzedValues::text(data) };
}

LauncherSlots fuzzedSlots(FuzzedDataProvider data)
{
    LauncherSlots slots;
    for (auto &slot : slots) {
        if (data.ConsumeBool())
            slot = fuzzedItem(data);
    }
    return slots;
}

std::string encoded(const LauncherSlots &slots)
{
    std::string json;
    LauncherDocument::encode(slots, [&json](std::string_view piece) { json += piece; });
    return json;
}

void expectRoundTrip(const LauncherSlots &slots)
{
    const auto json = encoded(slots);
    const auto decoded = LauncherDocument::decode(QByteArray::fromStdString(json));
    expect(decoded.has_value(), "encoded launchers can be decoded");
    expect(*decoded == slots, "decoding restores the launchers");
    expect(encoded(*decoded) == json, "equal slots have equal bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (const auto read = LauncherDocument::decode(
            { reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size) }))
        expectRoundTrip(*read);
    expectRoundTrip(fuzzedSlots({ bytes, size }));
    return 0;
}
