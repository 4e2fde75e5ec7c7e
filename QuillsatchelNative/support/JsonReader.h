#pragma once

#include <QByteArray>
#include <QUuid>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Reads JSON strictly: each function returns false unless the value has exactly the expected form,
/// and a single error anywhere fails the entire text. Keeps no copy of the text, so that reading a
/// large file needs little more memory than its records.
///
/// The functions read the current value, which is the root, or the element or member for which a
/// function is called. They read it only once.
class JsonReader
{
public:
    struct Member {
        std::string_view key;
        std::function<bool()> read; ///< reads the first member that has the key
        bool isRequired = true;
        bool isRead = false; ///< set by readObject
    };

    /// Parses `json`, calls `readRoot` and returns the result. The root must be an object or an
    /// array. Skips one byte order mark. Numbers that do not fit into 64 bits are errors.
    static bool parse(const QByteArray &json, const std::function<bool(JsonReader &)> &readRoot);

    /// An object that has these members, in any order. It may have others of any form.
    template <std::size_t Count>
    bool readObject(Member (&&members)[Count])
    {
        return readMembers(members);
    }

    /// Calls `readElement` for each element until it returns false.
    bool readArray(const std::function<bool()> &readElement);

    /// If this returns false, another function can read the value.
    bool readNull();

    bool read(std::string &text);

    /// The canonical form, in either case.
    bool read(QUuid &id);

    /// A raw value of an enumeration.
    template <typename Enumeration>

    requires requires(std::string_view text) { Enumeration::fromRawValue(text); }

    bool read(Enumeration &value)
    {
        const auto text = readText();
        const auto known = text ? Enumeration::fromRawValue(*text) : std::nullopt;
        value = known.value_or(value);
        return known.has_value();
    }

private:
    struct Parser;

    explicit JsonReader(Parser &parser)
        : m_parser(parser)
    {
    }

    bool readMembers(std::span<Member> members);
    bool readMember(std::span<Member> members, std::string_view key);

    /// The text lasts until the next call.
    std::optional<std::string_view> readText();
    bool readIgnored();

    Parser &m_parser;
};
