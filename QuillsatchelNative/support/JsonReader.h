#pragma once

#include <QByteArray>
#include <QUuid>
#include <simdjson.h>

#include <functional>
#include <string>
#include <string_view>

/// Reads JSON strictly: each function returns false unless the value has exactly the expected form,
/// and a single error fails the entire text.
namespace JsonReader
{

namespace dom = simdjson::dom;

bool read(dom::element json, std::string &text);
/// The canonical form, in either case.
bool read(dom::element json, QUuid &id);

/// A raw value of an enumeration.
template <typename Enumeration>

requires requires(std::string_view text)
{
    Enumeration::fromRawValue(text);
}

bool read(dom::element json, Enumeration &value)
{
    std::string_view text;
    if (json.get(text) != simdjson::SUCCESS)
        return false;
    const auto known = Enumeration::fromRawValue(text);
    value = known.value_or(value);
    return known.has_value();
}

/// A required member.
template <typename Value>
bool readMember(dom::object object, std::string_view key, Value &value)
{
    dom::element member;
    return object.at_key(key).get(member) == simdjson::SUCCESS && read(member, value);
}

/// Parses `json`, passes its root to `readRoot` and returns the result. Skips one byte order mark.
/// Numbers that do not fit into 64 bits are errors.
bool parse(const QByteArray &json, const std::function<bool(dom::element)> &readRoot);

} // namespace JsonReader
