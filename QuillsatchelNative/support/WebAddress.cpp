#include "support/WebAddress.h"

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

/// The host and what goes with it (user, port): it is the only place for square brackets, and
/// what it may not hold cannot be mended by encoding when it is plain ASCII.
struct Authority {
    std::size_t begin = std::string_view::npos;
    std::size_t end = std::string_view::npos;

    bool contains(std::size_t place) const { return place >= begin && place < end; }
};

Authority findAuthority(std::string_view text)
{
    const auto slashes = text.find("//");
    const auto firstDelimiter = text.find_first_of("/?#");
    if (slashes == std::string_view::npos || slashes != firstDelimiter)
        return {};
    const auto begin = slashes + 2;
    return { begin, std::min(text.find_first_of("/?#", begin), text.size()) };
}

bool mayStand(std::string_view text, std::size_t place, const Authority &authority,
              std::size_t firstHash)
{
    const char character = text[place];
    if (isAsciiLetterOrDigit(character) || isOneOf("-._~:/?@!$&'()*+,;=", character))
        return true;
    if (character == '%')
        return startsPercentEncoding(text.substr(place));
    if (character == '#')
        return place == firstHash;
    if (character == '[' || character == ']')
        return authority.contains(place);
    return false;
}

void appendEncoded(std::string &encoded, char byte)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(byte);
    encoded += '%';
    encoded += Digits[code >> 4];
    encoded += Digits[code & 0xF];
}

/// None where a blank or another forbidden ASCII character stands in the authority.
std::optional<std::string> encodeWhatMayNotStand(std::string_view text)
{
    const auto authority = findAuthority(text);
    const auto firstHash = text.find('#');
    std::string encoded;
    encoded.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isAscii = static_cast<unsigned char>(text[place]) < 0x80;
        if (mayStand(text, place, authority, firstHash))
            encoded += text[place];
        else if (isAscii && authority.contains(place))
            return std::nullopt;
        else
            appendEncoded(encoded, text[place]);
    }
    return encoded;
}

/// The length of the scheme of a well-formed address; none for any other text.
std::optional<std::size_t> parsedSchemeLength(const std::string &text)
{
    UriUriA uri {};
    const char *errorAt = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorAt) != URI_SUCCESS)
        return std::nullopt;
    const auto length = static_cast<std::size_t>(uri.scheme.afterLast - uri.scheme.first);
    uriFreeUriMembersA(&uri);
    return length;
}

} // namespace

std::optional<WebAddress> WebAddress::parse(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    auto encoded = encodeWhatMayNotStand(text);
    if (!encoded)
        return std::nullopt;
    const auto schemeLength = parsedSchemeLength(*encoded);
    if (!schemeLength)
        return std::nullopt;
    return WebAddress(std::move(*encoded), *schemeLength);
}

bool WebAddress::isHttp() const
{
    std::string lowered(scheme());
    std::ranges::transform(lowered, lowered.begin(),
                           [](unsigned char letter) { return std::tolower(letter); });
    return lowered == "http" || lowered == "https";
}
