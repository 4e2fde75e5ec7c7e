#include "support/JsonWriter.h"

#include "support/Uuid.h"

#include <array>
#include <cstdint>
#include <cstring>

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

using Word = std::uint64_t;

constexpr Word Ones = 0x0101010101010101;
constexpr Word Highs = 0x8080808080808080;

constexpr Word repeated(char byte)
{
    return Ones * static_cast<unsigned char>(byte);
}

/// Nonzero if a byte of `word` is below `limit`, which is at most 128.
constexpr Word bytesBelow(Word word, char limit)
{
    return (word - repeated(limit)) & ~word & Highs;
}

constexpr Word bytesEqual(Word word, char byte)
{
    return bytesBelow(word ^ repeated(byte), 1);
}

/// Tests eight bytes at a time, since most text needs no escape.
bool isPlainWord(const char *bytes)
{
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (bytesBelow(word, ' ') | bytesEqual(word, '"') | bytesEqual(word, '\\') |
            bytesEqual(word, '/')) == 0;
}

/// The number of leading bytes that need no escape.
std::size_t plainLength(std::string_view text)
{
    std::size_t length = 0;
    while (length + sizeof(Word) <= text.size() && isPlainWord(text.data() + length))
        length += sizeof(Word);
    while (length < text.size() && escapeOf(text[length]) == 0)
        ++length;
    return length;
}

void appendEscaped(std::string &text, char byte)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    const char escape = escapeOf(byte);
    text += '\\';
    text += escape;
    if (escape != 'u')
        return;
    const auto code = static_cast<unsigned char>(byte);
    text += "00";
    text += Digits[code >> 4];
    text += Digits[code & 0xF];
}

} // namespace

void JsonWriter::key(std::string_view key)
{
    beginValue();
    m_text += '"';
    m_text += key;
    m_text += "\" : ";
    m_followsKey = true;
}

void JsonWriter::string(std::string_view text)
{
    beginValue();
    m_text += '"';
    while (!text.empty()) {
        const auto plain = plainLength(text);
        m_text += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        appendEscaped(m_text, text.front());
        text.remove_prefix(1);
    }
    m_text += '"';
    if (m_text.size() >= PieceSize)
        flush();
}

void JsonWriter::null()
{
    beginValue();
    m_text += "null";
}

void JsonWriter::uuid(const QUuid &uuid)
{
    beginValue();
    const auto text = uuidText(uuid);
    m_text += '"';
    m_text.append(text.data(), text.size());
    m_text += '"';
}

void JsonWriter::begin(char bracket)
{
    beginValue();
    m_text += bracket;
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::end(char bracket)
{
    --m_depth;
    if (!m_isFirst)
        breakLine();
    m_text += bracket;
    m_isFirst = false;
}

void JsonWriter::beginValue()
{
    if (std::exchange(m_followsKey, false))
        return;
    if (!m_isFirst)
        m_text += ',';
    if (m_depth > 0)
        breakLine();
    m_isFirst = false;
}

void JsonWriter::breakLine()
{
    m_text += '\n';
    m_text.append(2 * m_depth, ' ');
}

void JsonWriter::flush()
{
    m_sink(m_text);
    m_text.clear();
}
