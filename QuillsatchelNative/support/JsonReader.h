#pragma once

#include <QByteArray>
#include <QUuid>
#include <simdjson.h>

#include <functional>
#include <string>
#include <string_view>

/// Reads our JSON files strictly: each function is false where the text does not hold exactly what
/// is asked for, and one fault anywhere fails the whole.
namespace JsonReader
{

namespace dom = simdjson::dom;

bool read(dom::element json, std::string &text);
/// The canonical form, in letters of either case.
bool read(dom::element json, QUuid &id);

/// One of the raw values of an enumeration.
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

/// A member that must be there.
template <typename Value>
bool readMember(dom::object object, std::string_view key, Value &value)
{
    dom::element member;
    return object.at_key(key).get(member) == simdjson::SUCCESS && read(member, value);
}

/// Parses `json` and gives its root to `readRoot`, whose answer is the answer. A byte order mark
/// before the text is skipped; a number that no 64 bits hold is a fault.
bool parse(const QByteArray &json, const std::function<bool(dom::element)> &readRoot);

} // namespace JsonReader
