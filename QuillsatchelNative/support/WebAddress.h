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
    /// None if `text` (UTF-8) is not an address, absolute or relative. Nothing is trimmed.
    static std::optional<WebAddress> parse(std::string_view text);

    /// The whole address, ASCII only.
    const std::string &absoluteString() const { return m_text; }

    /// As typed, empty where the address has none.
    std::string_view scheme() const { return std::string_view(m_text).substr(0, m_schemeLength); }

    /// Whether the scheme is http or https, in letters of either case.
    bool isHttp() const;

private:
    WebAddress(std::string text, std::size_t schemeLength)
        : m_text(std::move(text))
        , m_schemeLength(schemeLength)
    {
    }

    std::string m_text;
    std::size_t m_schemeLength; // the scheme begins the text
};
