#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A web address as it was typed: nothing is lower-cased and no slash is added. Only what an
/// address may not hold (blanks, letters outside ASCII, stray percent signs) is percent-encoded.
class WebAddress
{
public:
    /// None if `text` (UTF-8) is not an address, absolute or relative, or its host has invisible
    /// characters: blanks, control or format characters, encoded or not. Nothing is trimmed.
    static std::optional<WebAddress> parse(std::string_view text);

    /// The whole address, ASCII only.
    const std::string &absoluteString() const { return m_text; }

    /// As typed, empty where the address has none.
    std::string_view scheme() const { return part(m_parts.scheme); }

    /// Whether the scheme is http or https, in letters of either case.
    bool isHttp() const;

    /// As typed, with letters outside ASCII as letters and an IPv6 address without its brackets;
    /// empty where the address has none. Valid UTF-8.
    std::string host() const;

    /// The address of `path`, which begins with a slash, on the same host: no user, port, query or
    /// fragment is carried over. https where this address has no scheme, none where it has no host.
    std::optional<WebAddress> onSameHost(std::string_view path) const;

private:
    /// A part of the text.
    struct Range {
        std::size_t begin = 0;
        std::size_t length = 0;
    };

    struct Parts {
        Range scheme;
        Range host; // without brackets
    };

    static std::optional<Parts> findParts(std::string_view encoded);

    WebAddress(std::string text, const Parts &parts)
        : m_text(std::move(text))
        , m_parts(parts)
    {
    }

    std::string_view part(const Range &range) const
    {
        return std::string_view(m_text).substr(range.begin, range.length);
    }

    std::string m_text;
    Parts m_parts;
};
