#pragma once

#include "support/ByteSink.h"

#include <QUuid>

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

/// Writes JSON in the layout of our files: two spaces per level, one member per line, a space on
/// both sides of the colon, `[]` and `{}` for empty containers, escaped slashes, no line break at
/// the end. The caller writes members in ascending byte order of their keys.
class JsonWriter
{
public:
    /// The text goes to `sink` in pieces of at most 64 KiB; `finish` passes on the last one.
    explicit JsonWriter(ByteSink sink)
        : m_sink(std::move(sink))
        , m_piece(std::make_unique_for_overwrite<char[]>(PieceSize))
    {
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
    void append(std::string_view text);
    void appendEscaped(std::string_view text);
    /// Makes room in the piece for `size` bytes, at most `PieceSize`.
    void reserve(std::size_t size);
    void flush();

    ByteSink m_sink;
    std::unique_ptr<char[]> m_piece; // the text not yet passed to the sink
    std::size_t m_size = 0;          // of that text, bytes
    std::size_t m_depth = 0;
    bool m_isFirst = true;
    bool m_followsKey = false;
};
