// What is an address stays the same address, however often it is read.
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

/// With every byte that is written as percent and two digits as itself.
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

/// Brackets may stand nowhere but around a host.
bool isBracketed(const WebAddress &address)
{
    return address.absoluteString().find('[') != std::string::npos;
}

void expectReadsAsItself(const WebAddress &address)
{
    const auto again = WebAddress::parse(address.absoluteString());
    expect(again && isSame(*again, address), "an address reads as itself");
}

void expectParts(const WebAddress &address)
{
    const auto &text = address.absoluteString();
    expect(isPrintableAscii(text), "an address is ASCII, without blanks");
    expect(address.scheme().empty() || text.starts_with(std::string(address.scheme()) + ':'),
           "an address begins with its scheme");
    const auto host = address.host();
    expect(QUtf8StringView(host.data(), static_cast<qsizetype>(host.size())).isValidUtf8(),
           "a host is valid UTF-8");
    expect(decoded(text).find(decoded(host)) != std::string::npos, "a host is part of its address");
    const auto authority = isBracketed(address) ? '[' + host + ']' : host;
    const auto again = WebAddress::parse("//" + authority);
    expect(again && again->host() == host, "a host reads as itself");
}

void expectFavicon(const WebAddress &address)
{
    const auto favicon = address.onSameHost("/favicon.ico");
    expect(favicon.has_value() == !address.host().empty(), "every host has its own addresses");
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
           "nothing but scheme, host and path is in the other address");
    expectReadsAsItself(*favicon);
    expect(isSame(*favicon->onSameHost("/favicon.ico"), *favicon), "a favicon's favicon is itself");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    const auto address = WebAddress::parse(text);
    if (!address)
        return 0;
    expect(decoded(address->absoluteString()) == decoded(text), "an address says what was typed");
    expectReadsAsItself(*address);
    expectParts(*address);
    expectFavicon(*address);
    return 0;
}
