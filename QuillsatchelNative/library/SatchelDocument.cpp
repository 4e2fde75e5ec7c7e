#include "library/SatchelDocument.h"

#include "support/JsonReader.h"
#include "support/JsonWriter.h"

#include <utility>

namespace
{

namespace Key
{
constexpr std::string_view activeTabID = "activeTabID";
constexpr std::string_view blocks = "blocks";
constexpr std::string_view color = "color";
constexpr std::string_view id = "id";
constexpr std::string_view name = "name";
constexpr std::string_view tabs = "tabs";
constexpr std::string_view text = "text";
} // namespace Key

bool read(JsonReader &reader, PromptBlock &block)
{
    return reader.readObject({
        { Key::color, [&] { return reader.read(block.color); } },
        { Key::id, [&] { return reader.read(block.id); } },
        { Key::text, [&] { return reader.read(block.text); } },
    });
}

bool read(JsonReader &reader, PromptTab &tab)
{
    const auto readBlock = [&] {
        // A null id, because the default is a random one, which `read` would replace.
        return read(reader, tab.blocks.emplace_back(PromptBlock { .id = {} }));
    };
    return reader.readObject({
        { Key::blocks, [&] { return reader.readArray(readBlock); } },
        { Key::id, [&] { return reader.read(tab.id); } },
        { Key::name, [&] { return reader.read(tab.name); } },
    });
}

bool read(JsonReader &reader, std::optional<QUuid> &id)
{
    return reader.readNull() || reader.read(id.emplace());
}

bool read(JsonReader &reader, SatchelDocument &document)
{
    const auto readTab = [&] {
        return read(reader, document.tabs.emplace_back(PromptTab { .id = {} }));
    };
    return reader.readObject({
        { Key::activeTabID, [&] { return read(reader, document.activeTabID); }, false },
        { Key::tabs, [&] { return reader.readArray(readTab); } },
    });
}

void write(JsonWriter &writer, const PromptBlock &block)
{
    writer.beginObject();
    writer.key(Key::color);
    writer.string(block.color.rawValue());
    writer.key(Key::id);
    writer.uuid(block.id);
    writer.key(Key::text);
    writer.string(block.text);
    writer.endObject();
}

void write(JsonWriter &writer, const PromptTab &tab)
{
    writer.beginObject();
    writer.key(Key::blocks);
    writer.beginArray();
    for (const auto &block : tab.blocks)
        write(writer, block);
    writer.endArray();
    writer.key(Key::id);
    writer.uuid(tab.id);
    writer.key(Key::name);
    writer.string(tab.name);
    writer.endObject();
}

} // namespace

std::optional<SatchelDocument> SatchelDocument::decode(const QByteArray &json)
{
    SatchelDocument document;
    const bool isValid =
        JsonReader::parse(json, [&document](JsonReader &reader) { return read(reader, document); });
    return isValid ? std::optional(std::move(document)) : std::nullopt;
}

std::string SatchelDocument::encode() const
{
    std::string json;
    encode(activeTabID, tabs, [&json](std::string_view piece) { json += piece; });
    return json;
}

void SatchelDocument::encode(const std::optional<QUuid> &activeTabID,
                             const std::vector<PromptTab> &tabs, ByteSink sink)
{
    JsonWriter writer(std::move(sink));
    writer.beginObject();
    if (activeTabID) {
        writer.key(Key::activeTabID);
        writer.uuid(*activeTabID);
    }
    writer.key(Key::tabs);
    writer.beginArray();
    for (const auto &tab : tabs)
        write(writer, tab);
    writer.endArray();
    writer.endObject();
    writer.finish();
}
