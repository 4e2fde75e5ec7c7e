#include "launchers/LauncherDocument.h"

#include "support/JsonReader.h"
#include "support/JsonWriter.h"

#include <utility>

namespace LauncherDocument
{

namespace
{

namespace Key
{
constexpr std::string_view id = "id";
constexpr std::string_view kind = "kind";
constexpr std::string_view name = "name";
constexpr std::string_view target = "target";
} // namespace Key

bool read(JsonReader &reader, LauncherItem &item)
{
    return reader.readObject({
        { Key::id, [&] { return reader.read(item.id); } },
        { Key::kind, [&] { return reader.read(item.kind); } },
        { Key::name, [&] { return reader.read(item.name); } },
        { Key::target, [&] { return reader.read(item.target); } },
    });
}

bool read(JsonReader &reader, LauncherSlots &slots)
{
    std::size_t slot = 0;
    return reader.readArray([&] {
        std::optional<LauncherItem> item;
        if (!reader.readNull() && !read(reader, item.emplace(LauncherItem { .id = {} })))
            return false;
        if (slot < slots.size())
            slots[slot++] = std::move(item);
        return true;
    });
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
        JsonReader::parse(json, [&slots](JsonReader &reader) { return read(reader, slots); });
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
