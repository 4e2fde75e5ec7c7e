#include "support/Whitespace.h"

#include <algorithm>
#include <array>

namespace
{

using namespace std::string_view_literals;

// Unicode's White_Space property in UTF-8, so that no text needs decoding.
constexpr std::array Characters {
    "\t"sv,           "\n"sv,           "\v"sv,
    "\f"sv,           "\r"sv,           " "sv,
    "\xC2\x85"sv,     "\xC2\xA0"sv,     "\xE1\x9A\x80"sv,
    "\xE2\x80\x80"sv, "\xE2\x80\x81"sv, "\xE2\x80\x82"sv,
    "\xE2\x80\x83"sv, "\xE2\x80\x84"sv, "\xE2\x80\x85"sv,
    "\xE2\x80\x86"sv, "\xE2\x80\x87"sv, "\xE2\x80\x88"sv,
    "\xE2\x80\x89"sv, "\xE2\x80\x8A"sv, "\xE2\x80\xA8"sv,
    "\xE2\x80\xA9"sv, "\xE2\x80\xAF"sv, "\xE2\x81\x9F"sv,
    "\xE3\x80\x80"sv,
};

std::size_t leadingWhitespace(std::string_view text)
{
    const auto found = std::ranges::find_if(
        Characters, [text](std::string_view character) { return text.starts_with(character); });
    return found == Characters.end() ? 0 : found->size();
}

std::size_t trailingWhitespace(std::string_view text)
{
    const auto found = std::ranges::find_if(
        Characters, [text](std::string_view character) { return text.ends_with(character); });
    return found == Characters.end() ? 0 : found->size();
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    while (const auto length = leadingWhitespace(text))
        text.remove_prefix(length);
    while (const auto length = trailingWhitespace(text))
        text.remove_suffix(length);
    return text;
}

bool containsWhitespace(std::string_view text)
{
    for (; !text.empty(); text.remove_prefix(1)) {
        if (leadingWhitespace(text) > 0)
            return true;
    }
    return false;
}
