#pragma once

#include "support/ByteSink.h"

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
    /// The text goes to `sink` in pieces small enough to stay in the processor's cache, whatever
    /// the size of the whole; `finish` gives the last.
    explicit JsonWriter(ByteSink sink)
        : m_sink(std::move(sink))
    {
    }

    void beginObject() { begin('{'); }

    void endObject() { end('}'); }

    void beginArray() { begin('['); }

    void endArray() { end(']'); }

    /// What follows is this member's value. Keys are our own plain words, written as they are.
    void key(std::string_view key);

    /// `text` must be valid UTF-8; it is checked nowhere.
    void string(std::string_view text);
    void null();
    /// In upper case.
    void uuid(const QUuid &uuid);

    /// Gives the sink what it has not been given yet; to be called once, at the end.
    void finish() { flush(); }

private:
    void begin(char bracket);
    void end(char bracket);
    void beginValue();
    void breakLine();
    void flush();

    ByteSink m_sink;
    std::string m_text; // what the sink has not been given yet
    std::size_t m_depth = 0;
    bool m_isFirst = true;
    bool m_followsKey = false;
};
