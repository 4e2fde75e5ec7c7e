// Launchers come back from their file as they were, be they made up here or read from made-up
// bytes.
#include "Expect.h"
#include "MadeUp.h"
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

LauncherItem madeUpItem(FuzzedDataProvider &data)
{
    return { .id = MadeUp::uuid(data),
             .kind = data.ConsumeBool() ? LauncherKind::website : LauncherKind::application,
             .name = MadeUp::text(data),
             .target = MadeUp::text(data) };
}

LauncherSlots madeUpSlots(FuzzedDataProvider data)
{
    LauncherSlots slots;
    for (auto &slot : slots) {
        if (data.ConsumeBool())
            slot = madeUpItem(data);
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
    expect(decoded.has_value(), "what was encoded can be decoded");
    expect(*decoded == slots, "launchers come back as they were");
    expect(encoded(*decoded) == json, "the same slots give the same bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (const auto read = LauncherDocument::decode(
            { reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size) }))
        expectRoundTrip(*read);
    expectRoundTrip(madeUpSlots({ bytes, size }));
    return 0;
}
