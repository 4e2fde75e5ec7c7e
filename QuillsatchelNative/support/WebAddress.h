#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A web address as typed, without normalisation. Only forbidden characters (white space,
/// characters outside ASCII, stray percent signs) are percent-encoded.
class WebAddress
{
public:
    /// `text` is UTF-8 and may be a relative address. None if it is invalid, or the host has white
    /// space, control or format characters, encoded or not. Trims nothing.
    static std::optional<WebAddress> parse(std::string_view text);

    /// ASCII only.
    const std::string &absoluteString() const { return m_text; }

    /// As typed; may be empty.
    std::string_view scheme() const { return part(m_parts.scheme); }

    /// Whether the scheme is http or https, in either case.
    bool isHttp() const;

    /// As typed, in valid UTF-8: characters outside ASCII are decoded, and an IPv6 address has no
    /// brackets. May be empty.
    std::string host() const;

    /// The address of `path`, which begins with a slash, on the same host, without user, port,
    /// query and fragment. The scheme defaults to https. None if this address has no host.
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
