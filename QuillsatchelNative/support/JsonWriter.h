#pragma once

#include <QUuid>

#include <string>
#include <string_view>
#include <utility>

/// Writes a JSON text in the one layout our files have: two spaces a level, one member a line, a
/// space on both sides of the colon, `[]` and `{}` for what is empty, slashes escaped, no line
/// break at the end. The caller gives members in ascending byte order of their keys.
class JsonWriter
{
public:
    /// `expectedSize` in bytes saves growing the text step by step; a guess is good enough.
    explicit JsonWriter(std::size_t expectedSize = 0) { m_text.reserve(expectedSize); }

    void beginObject() { begin('{'); }

    void endObject() { end('}'); }

    void beginArray() { begin('['); }

    void endArray() { end(']'); }

    /// What follows is this member's value. Keys are our own plain words, written as they are.
    void key(std::string_view key);

    /// `text` must be valid UTF-8; it is checked nowhere.
    void string(std::string_view text);
    void uuid(const QUuid &uuid);

    std::string take() { return std::move(m_text); }

private:
    void begin(char bracket);
    void end(char bracket);
    void beginValue();
    void breakLine();

    std::string m_text;
    std::size_t m_depth = 0;
    bool m_isFirst = true;
    bool m_followsKey = false;
};
