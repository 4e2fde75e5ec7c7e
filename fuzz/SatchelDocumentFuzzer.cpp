// A library survives encoding and decoding.
#include "Expect.h"
#include "FuzzedValues.h"
#include "library/SatchelDocument.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <optional>

namespace
{

PromptBlock fuzzedBlock(FuzzedDataProvider &data)
{
    return { .id = FuzzedValues::uuid(data),
             .text = FuzzedValues::text(data),
             .color = data.PickValueInArray(BlockColor::allCases) };
}

PromptTab fuzzedTab(FuzzedDataProvider &data)
{
    PromptTab tab { .id = FuzzedValues::uuid(data), .name = FuzzedValues::text(data) };
    while (data.ConsumeBool())
        tab.blocks.push_back(fuzzedBlock(data));
    return tab;
}

SatchelDocument fuzzedDocument(FuzzedDataProvider data)
{
    SatchelDocument document;
    if (data.ConsumeBool())
        document.activeTabID = FuzzedValues::uuid(data);
    while (data.ConsumeBool())
        document.tabs.push_back(fuzzedTab(data));
    return document;
}

void expectRoundTrip(const SatchelDocument &document)
{
    const auto json = document.encode();
    const auto decoded = SatchelDocument::decode(QByteArray::fromStdString(json));
    expect(decoded.has_value(), "an encoded library can be decoded");
    expect(*decoded == document, "decoding restores the library");
    expect(decoded->encode() == json, "equal libraries have equal bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (const auto read = SatchelDocument::decode(
            { reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size) }))
        expectRoundTrip(*read);
    expectRoundTrip(fuzzedDocument({ bytes, size }));
    return 0;
}
