#include "support/WebAddress.h"

#include "support/Utf8.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QUtf8StringView>
#include <uriparser/Uri.h>

#include <algorithm>
#include <cctype>

namespace
{

bool isOneOf(std::string_view characters, char character)
{
    return characters.find(character) != std::string_view::npos;
}

bool isHexDigit(char character)
{
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

bool isAsciiLetterOrDigit(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 &&
           static_cast<unsigned char>(character) < 0x80;
}

bool startsPercentEncoding(std::string_view text)
{
    return text.size() >= 3 && text[0] == '%' && isHexDigit(text[1]) && isHexDigit(text[2]);
}

/// The range of user, host and port. Only these may contain square brackets; their forbidden ASCII
/// characters cannot be percent-encoded.
struct Authority {
    std::size_t begin = std::string_view::npos;
    std::size_t end = std::string_view::npos;

    bool contains(std::size_t position) const { return position >= begin && position < end; }
};

/// Begins with two slashes, at the start of the text or after the colon of a scheme.
Authority findAuthority(std::string_view text)
{
    const auto slashes = text.find_first_of("/?#");
    const bool hasAuthority = slashes != std::string_view::npos &&
                              text.substr(slashes).starts_with("//") &&
                              (slashes == 0 || text[slashes - 1] == ':');
    if (!hasAuthority)
        return {};
    const auto begin = slashes + 2;
    return { begin, std::min(text.find_first_of("/?#", begin), text.size()) };
}

bool isAllowed(std::string_view text, std::size_t position, const Authority &authority,
               std::size_t firstHash)
{
    const char character = text[position];
    if (isAsciiLetterOrDigit(character) || isOneOf("-._~:/?@!$&'()*+,;=", character))
        return true;
    if (character == '%')
        return startsPercentEncoding(text.substr(position));
    if (character == '#')
        return position == firstHash;
    if (character == '[' || character == ']')
        return authority.contains(position);
    return false;
}

void appendEncoded(std::string &encoded, char byte)
{
    constexpr std::string_view HexDigits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(byte);
    encoded += '%';
    encoded += HexDigits[code >> 4];
    encoded += HexDigits[code & 0xF];
}

/// None if the authority contains white space or another forbidden ASCII character.
std::optional<std::string> encodeForbiddenCharacters(std::string_view text)
{
    const auto authority = findAuthority(text);
    const auto firstHash = text.find('#');
    std::string encoded;
    encoded.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const bool isAscii = static_cast<unsigned char>(text[position]) < 0x80;
        if (isAllowed(text, position, authority, firstHash))
            encoded += text[position];
        else if (isAscii && authority.contains(position))
            return std::nullopt;
        else
            appendEncoded(encoded, text[position]);
    }
    return encoded;
}

int hexValue(char digit)
{
    return digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
}

/// Decodes bytes outside ASCII. Other characters stay encoded, because some would end the host.
std::string decodeNonAscii(std::string_view text)
{
    std::string decoded;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (!startsPercentEncoding(text.substr(position)) || hexValue(text[position + 1]) < 8) {
            decoded += text[position];
            continue;
        }
        decoded +=
            static_cast<char>(hexValue(text[position + 1]) * 16 + hexValue(text[position + 2]));
        position += 2;
    }
    return decoded;
}

bool isVisible(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

/// Invisible characters could make different hosts look identical.
bool isVisible(std::string_view host)
{
    const auto characters = stringFromUtf8(host).toUcs4();
    return std::all_of(characters.begin(), characters.end(),
                       [](char32_t character) { return isVisible(character); });
}

} // namespace

std::optional<WebAddress> WebAddress::parse(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    auto encoded = encodeForbiddenCharacters(text);
    if (!encoded)
        return std::nullopt;
    const auto parts = findParts(*encoded);
    if (!parts)
        return std::nullopt;
    WebAddress address(std::move(*encoded), *parts);
    return isVisible(address.host()) ? std::optional(std::move(address)) : std::nullopt;
}

std::optional<WebAddress::Parts> WebAddress::findParts(std::string_view encoded)
{
    const char *const begin = encoded.data();
    UriUriA uri {};
    const char *errorAt = nullptr;
    if (uriParseSingleUriExA(&uri, begin, begin + encoded.size(), &errorAt) != URI_SUCCESS)
        return std::nullopt;
    const auto rangeOf = [begin](const UriTextRangeA &range) {
        if (range.first == range.afterLast)
            return Range(); // it may point outside the text
        return Range { static_cast<std::size_t>(range.first - begin),
                       static_cast<std::size_t>(range.afterLast - range.first) };
    };
    const Parts parts { rangeOf(uri.scheme), rangeOf(uri.hostText) };
    uriFreeUriMembersA(&uri);
    return parts;
}

std::string WebAddress::host() const
{
    const auto typed = part(m_parts.host);
    auto decoded = decodeNonAscii(typed);
    const bool isText = QUtf8StringView(decoded.data(), qsizetype(decoded.size())).isValidUtf8();
    return isText ? decoded : std::string(typed);
}

std::optional<WebAddress> WebAddress::onSameHost(std::string_view path) const
{
    if (m_parts.host.length == 0)
        return std::nullopt;
    const bool isBracketed = m_text[m_parts.host.begin - 1] == '[';
    std::string text(scheme().empty() ? "https" : scheme());
    text += isBracketed ? "://[" : "://";
    text += part(m_parts.host);
    text += isBracketed ? "]" : "";
    text += path;
    return parse(text);
}

bool WebAddress::isHttp() const
{
    std::string lowered(scheme());
    std::ranges::transform(lowered, lowered.begin(),
                           [](unsigned char letter) { return std::tolower(letter); });
    return lowered == "http" || lowered == "https";
}
