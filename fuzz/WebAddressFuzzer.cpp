// An address stays the same when its text is parsed again.
#include "Expect.h"
#include "support/WebAddress.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace
{

/// Decodes all percent-encoded bytes.
std::string decoded(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        unsigned char byte = 0;
        const auto digits = text.substr(1, 2);
        const bool isEncoded =
            text.front() == '%' && digits.size() == 2 &&
            std::from_chars(digits.begin(), digits.end(), byte, 16).ptr == digits.end();
        bytes += isEncoded ? static_cast<char>(byte) : text.front();
        text.remove_prefix(isEncoded ? 3 : 1);
    }
    return bytes;
}

bool isPrintableAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char each) { return each > ' ' && each < '\x7F'; });
}

bool isSame(const WebAddress &one, const WebAddress &other)
{
    return one.absoluteString() == other.absoluteString() && one.scheme() == other.scheme() &&
           one.host() == other.host() && one.isHttp() == other.isHttp();
}

/// Only hosts may have brackets.
bool isBracketed(const WebAddress &address)
{
    return address.absoluteString().find('[') != std::string::npos;
}

void expectRoundTrip(const WebAddress &address)
{
    const auto again = WebAddress::parse(address.absoluteString());
    expect(again && isSame(*again, address), "an address parses to itself");
}

void expectParts(const WebAddress &address)
{
    const auto &text = address.absoluteString();
    expect(isPrintableAscii(text), "an address is ASCII without spaces");
    expect(address.scheme().empty() || text.starts_with(std::string(address.scheme()) + ':'),
           "an address begins with its scheme");
    const auto host = address.host();
    expect(QUtf8StringView(host.data(), static_cast<qsizetype>(host.size())).isValidUtf8(),
           "a host is valid UTF-8");
    expect(decoded(text).find(decoded(host)) != std::string::npos, "a host is part of its address");
    const auto authority = isBracketed(address) ? '[' + host + ']' : host;
    const auto again = WebAddress::parse("//" + authority);
    expect(again && again->host() == host, "a host parses to itself");
}

void expectFavicon(const WebAddress &address)
{
    const auto favicon = address.onSameHost("/favicon.ico");
    expect(favicon.has_value() == !address.host().empty(),
           "an address with a host has others on the same host");
    if (!favicon)
        return;
    expect(favicon->host() == address.host() && isBracketed(*favicon) == isBracketed(address),
           "the host stays the same");
    expect(favicon->scheme() == (address.scheme().empty() ? "https" : address.scheme()),
           "the scheme stays the same");
    const auto &text = favicon->absoluteString();
    const auto host = text.find("://") + 3;
    expect(text.find('/', host) == text.size() - std::string_view("/favicon.ico").size() &&
               text.ends_with("/favicon.ico") && text.find_first_of("@?#") == std::string::npos,
           "the other address has only scheme, host and path");
    expectRoundTrip(*favicon);
    expect(isSame(*favicon->onSameHost("/favicon.ico"), *favicon),
           "the favicon address is its own favicon address");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    const auto address = WebAddress::parse(text);
    if (!address)
        return 0;
    expect(decoded(address->absoluteString()) == decoded(text),
           "an address decodes to the typed text");
    expectRoundTrip(*address);
    expectParts(*address);
    expectFavicon(*address);
    return 0;
}
