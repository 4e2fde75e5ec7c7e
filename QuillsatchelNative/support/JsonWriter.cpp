#include "support/JsonWriter.h"

#include "support/Uuid.h"

#include <array>

namespace
{

// For each byte what follows the backslash, 'u' for a code, 0 where the byte stands for itself.
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
    const char *run = text.data();
    const char *const end = run + text.size();
    for (const char *at = run; at != end; ++at) {
        if (escapeOf(*at) == 0)
            continue;
        m_text.append(run, at);
        appendEscaped(m_text, *at);
        run = at + 1;
    }
    m_text.append(run, end);
    m_text += '"';
}

void JsonWriter::uuid(const QUuid &uuid)
{
    const auto text = uuidText(uuid);
    string({ text.data(), text.size() });
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
