// A library comes back from its file as it was, be it made up here or read from made-up bytes.
#include "Expect.h"
#include "MadeUp.h"
#include "library/SatchelDocument.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <optional>

namespace
{

PromptBlock madeUpBlock(FuzzedDataProvider &data)
{
    return { .id = MadeUp::uuid(data),
             .text = MadeUp::text(data),
             .color = data.PickValueInArray(BlockColor::allCases) };
}

PromptTab madeUpTab(FuzzedDataProvider &data)
{
    PromptTab tab { .id = MadeUp::uuid(data), .name = MadeUp::text(data) };
    while (data.ConsumeBool())
        tab.blocks.push_back(madeUpBlock(data));
    return tab;
}

SatchelDocument madeUpDocument(FuzzedDataProvider data)
{
    SatchelDocument document;
    if (data.ConsumeBool())
        document.activeTabID = MadeUp::uuid(data);
    while (data.ConsumeBool())
        document.tabs.push_back(madeUpTab(data));
    return document;
}

void expectRoundTrip(const SatchelDocument &document)
{
    const auto json = document.encode();
    const auto decoded = SatchelDocument::decode(QByteArray::fromStdString(json));
    expect(decoded.has_value(), "what was encoded can be decoded");
    expect(*decoded == document, "a document comes back as it was");
    expect(decoded->encode() == json, "the same library gives the same bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (const auto read = SatchelDocument::decode(
            { reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size) }))
        expectRoundTrip(*read);
    expectRoundTrip(madeUpDocument({ bytes, size }));
    return 0;
}
