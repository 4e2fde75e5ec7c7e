#include "support/JsonReader.h"

#include "support/Uuid.h"

#include <QByteArrayView>
#include <simdjson.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace
{

namespace ondemand = simdjson::ondemand;
using simdjson::SUCCESS;

constexpr QByteArrayView ByteOrderMark("\xEF\xBB\xBF");

QByteArray withoutByteOrderMark(const QByteArray &json)
{
    return json.startsWith(ByteOrderMark) ? json.mid(ByteOrderMark.size()) : json;
}

/// Copies the text only if it lacks the spare capacity that simdjson requires.
QByteArray padded(QByteArray text)
{
    const auto capacity = text.size() + qsizetype(simdjson::SIMDJSON_PADDING);
    if (text.capacity() < capacity)
        text.reserve(capacity);
    return text;
}

bool isAtEnd(ondemand::document &document)
{
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

template <typename Container>
bool readSource(ondemand::value value, std::string_view &text)
{
    Container container;
    return value.get(container) == SUCCESS && container.raw_json().get(text) == SUCCESS;
}

/// The source text of a value up to the next one. Checks only that the brackets are balanced.
bool readSource(ondemand::value value, std::string_view &text)
{
    text = value.raw_json_token();
    if (text.starts_with('{'))
        return readSource<ondemand::object>(value, text);
    return !text.starts_with('[') || readSource<ondemand::array>(value, text);
}

} // namespace

struct JsonReader::Parser {
    ondemand::parser parser;
    ondemand::value value;          ///< the current one
    simdjson::dom::parser ignored;  ///< for members that are not read
    std::vector<std::uint8_t> text; ///< the last one
};

bool JsonReader::parse(const QByteArray &json, const std::function<bool(JsonReader &)> &readRoot)
{
    const QByteArray text = padded(withoutByteOrderMark(json));
    if (text.startsWith(ByteOrderMark))
        return false; // newer versions of simdjson skip the second one
    Parser parser;
    JsonReader reader(parser);
    ondemand::document document;
    const auto size = static_cast<std::size_t>(text.size());
    const auto capacity = static_cast<std::size_t>(text.capacity());
    return parser.parser.iterate(text.constData(), size, capacity).get(document) == SUCCESS &&
           document.get_value().get(parser.value) == SUCCESS && readRoot(reader) &&
           isAtEnd(document);
}

bool JsonReader::readMembers(std::span<Member> members)
{
    ondemand::object object;
    if (m_parser.value.get(object) != SUCCESS)
        return false;
    for (auto field : object) {
        std::string_view key;
        if (field.unescaped_key().get(key) != SUCCESS ||
            field.value().get(m_parser.value) != SUCCESS || !readMember(members, key))
            return false;
    }
    return std::ranges::all_of(
        members, [](const Member &member) { return member.isRead || !member.isRequired; });
}

bool JsonReader::readMember(std::span<Member> members, std::string_view key)
{
    const auto member = std::ranges::find(members, key, &Member::key);
    return member == members.end() || std::exchange(member->isRead, true) ? readIgnored()
                                                                          : member->read();
}

bool JsonReader::readArray(const std::function<bool()> &readElement)
{
    ondemand::array array;
    if (m_parser.value.get(array) != SUCCESS)
        return false;
    for (auto element : array) {
        if (element.get(m_parser.value) != SUCCESS || !readElement())
            return false;
    }
    return true;
}

bool JsonReader::readNull()
{
    bool isNull = false;
    return m_parser.value.is_null().get(isNull) == SUCCESS && isNull;
}

bool JsonReader::read(std::string &text)
{
    const auto value = readText();
    text = value.value_or(std::string_view());
    return value.has_value();
}

bool JsonReader::read(QUuid &id)
{
    const auto text = readText();
    const auto uuid = text ? uuidFromText(*text) : std::nullopt;
    id = uuid.value_or(QUuid());
    return uuid.has_value();
}

std::optional<std::string_view> JsonReader::readText()
{
    // Not into the parser's own buffer, which keeps the texts of all values.
    auto &buffer = m_parser.text;
    const auto size = m_parser.value.raw_json_token().size() + simdjson::SIMDJSON_PADDING;
    buffer.resize(std::max(buffer.size(), size));
    auto *end = buffer.data();
    ondemand::raw_json_string raw;
    std::string_view text;
    const bool isRead = m_parser.value.get(raw) == SUCCESS &&
                        m_parser.parser.unescape(raw, end).get(text) == SUCCESS;
    return isRead ? std::optional(text) : std::nullopt;
}

bool JsonReader::readIgnored()
{
    std::string_view text;
    return readSource(m_parser.value, text) &&
           m_parser.ignored.parse(text.data(), text.size(), false).error() == SUCCESS;
}
