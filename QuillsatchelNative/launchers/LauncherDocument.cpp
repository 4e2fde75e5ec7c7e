#include "launchers/LauncherDocument.h"

#include "support/JsonReader.h"
#include "support/JsonWriter.h"

#include <utility>

namespace LauncherDocument
{

namespace
{

namespace dom = JsonReader::dom;
using JsonReader::readMember;

namespace Key
{
constexpr std::string_view id = "id";
constexpr std::string_view kind = "kind";
constexpr std::string_view name = "name";
constexpr std::string_view target = "target";
} // namespace Key

bool read(dom::element json, LauncherItem &item)
{
    dom::object object;
    return json.get(object) == simdjson::SUCCESS && readMember(object, Key::id, item.id) &&
           readMember(object, Key::kind, item.kind) && readMember(object, Key::name, item.name) &&
           readMember(object, Key::target, item.target);
}

bool read(dom::element json, LauncherSlots &slots)
{
    dom::array array;
    if (json.get(array) != simdjson::SUCCESS)
        return false;
    std::size_t slot = 0;
    for (const dom::element element : array) {
        std::optional<LauncherItem> item;
        if (!element.is_null() && !read(element, item.emplace(LauncherItem { .id = {} })))
            return false;
        if (slot < slots.size())
            slots[slot++] = std::move(item);
    }
    return true;
}

void write(JsonWriter &writer, const std::optional<LauncherItem> &item)
{
    if (!item) {
        writer.null();
        return;
    }
    writer.beginObject();
    writer.key(Key::id);
    writer.uuid(item->id);
    writer.key(Key::kind);
    writer.string(item->kind.rawValue());
    writer.key(Key::name);
    writer.string(item->name);
    writer.key(Key::target);
    writer.string(item->target);
    writer.endObject();
}

} // namespace

std::optional<LauncherSlots> decode(const QByteArray &json)
{
    LauncherSlots slots;
    const bool isValid =
        JsonReader::parse(json, [&slots](dom::element root) { return read(root, slots); });
    return isValid ? std::optional(std::move(slots)) : std::nullopt;
}

void encode(const LauncherSlots &slots, ByteSink sink)
{
    JsonWriter writer(std::move(sink));
    writer.beginArray();
    for (const auto &item : slots)
        write(writer, item);
    writer.endArray();
    writer.finish();
}

} // namespace LauncherDocument
