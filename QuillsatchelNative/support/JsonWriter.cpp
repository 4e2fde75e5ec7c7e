#include "support/JsonWriter.h"

#include "support/Uuid.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{

// For each byte the character after the backslash, 'u' for a \u escape, 0 for no escape.
constexpr std::array<char, 256> makeEscapes()
{
    std::array<char, 256> escapes {};
    for (std::size_t control = 0; control < 0x20; ++control)
        escapes.at(control) = 'u';
    escapes['\b'] = 'b';
    escapes['\t'] = 't';
    escapes['\n'] = 'n';
    escapes['\f'] = 'f';
    escapes['\r'] = 'r';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['/'] = '/';
    return escapes;
}

constexpr auto Escapes = makeEscapes();

char escapeOf(char byte)
{
    return Escapes[static_cast<unsigned char>(byte)];
}

constexpr std::size_t LongestEscape = std::string_view("\\u0000").size();

using Byte = unsigned char;

/// The highest bit is set if `byte` is below `limit`, which is at most 128.
constexpr Byte isBelow(Byte byte, Byte limit)
{
    return static_cast<Byte>((byte - limit) & ~byte);
}

constexpr std::size_t BlockSize = 32;

/// Whether no byte needs an escape. Compilers turn this loop, which has only arithmetic on bytes,
/// into instructions for 16 bytes at a time.
bool isPlainBlock(const char *block)
{
    Byte found = 0;
    for (std::size_t index = 0; index < BlockSize; ++index) {
        const auto byte = static_cast<Byte>(block[index]);
        found |= static_cast<Byte>(isBelow(byte, ' ') | isBelow(byte ^ '"', 1) |
                                   isBelow(byte ^ '\\', 1) | isBelow(byte ^ '/', 1));
    }
    return (found & 0x80) == 0;
}

/// Returns the position after the escape.
char *writeEscape(char *position, char byte)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    const char escape = escapeOf(byte);
    *position++ = '\\';
    *position++ = escape;
    if (escape != 'u')
        return position;
    const auto code = static_cast<Byte>(byte);
    for (const char digit : { '0', '0', Digits[code >> 4], Digits[code & 0xF] })
        *position++ = digit;
    return position;
}

/// Returns the position after the text.
char *writeBytes(char *position, std::string_view text)
{
    for (const char byte : text) {
        if (escapeOf(byte) == 0) [[likely]]
            *position++ = byte;
        else
            position = writeEscape(position, byte);
    }
    return position;
}

/// Returns the position after the text. Most blocks need no escape.
char *writeEscaped(char *position, std::string_view text)
{
    for (; text.size() >= BlockSize; text.remove_prefix(BlockSize)) {
        if (isPlainBlock(text.data()))
            position += text.copy(position, BlockSize);
        else
            position = writeBytes(position, text.substr(0, BlockSize));
    }
    return writeBytes(position, text);
}

} // namespace

void JsonWriter::key(std::string_view key)
{
    beginValue();
    append("\"");
    append(key);
    append("\" : ");
    m_followsKey = true;
}

void JsonWriter::string(std::string_view text)
{
    beginValue();
    append("\"");
    appendEscaped(text);
    append("\"");
}

void JsonWriter::null()
{
    beginValue();
    append("null");
}

void JsonWriter::uuid(const QUuid &uuid)
{
    beginValue();
    const auto text = uuidText(uuid);
    append("\"");
    append({ text.data(), text.size() });
    append("\"");
}

void JsonWriter::begin(char bracket)
{
    beginValue();
    append({ &bracket, 1 });
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::end(char bracket)
{
    --m_depth;
    if (!m_isFirst)
        breakLine();
    append({ &bracket, 1 });
    m_isFirst = false;
}

void JsonWriter::beginValue()
{
    if (std::exchange(m_followsKey, false))
        return;
    if (!m_isFirst)
        append(",");
    if (m_depth > 0)
        breakLine();
    m_isFirst = false;
}

void JsonWriter::breakLine()
{
    const std::size_t indentation = 2 * m_depth;
    append("\n");
    reserve(indentation);
    std::fill_n(m_piece.get() + m_size, indentation, ' ');
    m_size += indentation;
}

void JsonWriter::append(std::string_view text)
{
    reserve(text.size());
    m_size = static_cast<std::size_t>(std::ranges::copy(text, m_piece.get() + m_size).out -
                                      m_piece.get());
}

void JsonWriter::appendEscaped(std::string_view text)
{
    constexpr std::size_t Longest = PieceSize / LongestEscape;
    while (!text.empty()) {
        const auto part = text.substr(0, Longest);
        reserve(part.size() * LongestEscape);
        m_size =
            static_cast<std::size_t>(writeEscaped(m_piece.get() + m_size, part) - m_piece.get());
        text.remove_prefix(part.size());
    }
}

void JsonWriter::reserve(std::size_t size)
{
    if (PieceSize - m_size < size)
        flush();
}

void JsonWriter::flush()
{
    m_sink({ m_piece.get(), m_size });
    m_size = 0;
}
