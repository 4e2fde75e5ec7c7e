#pragma once

#include "support/ByteSink.h"

#include <QUuid>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// Writes JSON in the layout of our files: two spaces per level, one member per line, a space on
/// both sides of the colon, `[]` and `{}` for empty containers, escaped slashes, no line break at
/// the end. The caller writes members in ascending byte order of their keys.
class JsonWriter
{
public:
    /// The text goes to `sink` in pieces of about 64 KiB, or longer ones for long strings; `finish`
    /// passes on the last one.
    explicit JsonWriter(ByteSink sink)
        : m_sink(std::move(sink))
    {
        // Growing copies the text and touches new pages at each step. The second half is for the
        // string that ends a piece.
        m_text.reserve(PieceSize + PieceSize / 2);
    }

    void beginObject() { begin('{'); }

    void endObject() { end('}'); }

    void beginArray() { begin('['); }

    void endArray() { end(']'); }

    /// The member's value follows. Keys are written without escaping.
    void key(std::string_view key);

    /// `text` must be valid UTF-8, which is not checked.
    void string(std::string_view text);
    void null();
    /// In upper case.
    void uuid(const QUuid &uuid);

    /// Call once, at the end.
    void finish() { flush(); }

private:
    // Bytes. Fits into the processor's cache, and the buffer is below malloc's limit for mapping
    // new pages.
    static constexpr std::size_t PieceSize = std::size_t(64) * 1024;

    void begin(char bracket);
    void end(char bracket);
    void beginValue();
    void breakLine();
    void flush();

    ByteSink m_sink;
    std::string m_text; // not yet passed to the sink
    std::size_t m_depth = 0;
    bool m_isFirst = true;
    bool m_followsKey = false;
};
