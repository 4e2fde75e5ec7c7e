#include "library/SatchelDocument.h"

#include "support/JsonReader.h"
#include "support/JsonWriter.h"

#include <utility>

namespace
{

namespace dom = JsonReader::dom;
using JsonReader::readMember;

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

bool read(dom::element json, PromptBlock &block);
bool read(dom::element json, PromptTab &tab);

template <typename Record>
bool readRecords(dom::object object, std::string_view key, std::vector<Record> &records)
{
    dom::array array;
    if (object.at_key(key).get(array) != simdjson::SUCCESS)
        return false;
    records.reserve(array.size());
    for (const dom::element element : array) {
        // A null id, because the default is a random one, which `read` would replace.
        if (!read(element, records.emplace_back(Record { .id = {} })))
            return false;
    }
    return true;
}

bool read(dom::element json, PromptBlock &block)
{
    dom::object object;
    return json.get(object) == simdjson::SUCCESS && readMember(object, Key::id, block.id) &&
           readMember(object, Key::text, block.text) && readMember(object, Key::color, block.color);
}

bool read(dom::element json, PromptTab &tab)
{
    dom::object object;
    return json.get(object) == simdjson::SUCCESS && readMember(object, Key::id, tab.id) &&
           readMember(object, Key::name, tab.name) && readRecords(object, Key::blocks, tab.blocks);
}

bool readActiveTab(dom::object object, std::optional<QUuid> &activeTabID)
{
    dom::element member;
    if (object.at_key(Key::activeTabID).get(member) != simdjson::SUCCESS || member.is_null())
        return true;
    return JsonReader::read(member, activeTabID.emplace());
}

bool read(dom::element json, SatchelDocument &document)
{
    dom::object object;
    return json.get(object) == simdjson::SUCCESS && readActiveTab(object, document.activeTabID) &&
           readRecords(object, Key::tabs, document.tabs);
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
        JsonReader::parse(json, [&document](dom::element root) { return read(root, document); });
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
