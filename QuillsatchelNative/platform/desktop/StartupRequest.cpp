#include "platform/desktop/StartupRequest.h"

#include <algorithm>

namespace StartupRequest
{

namespace
{

constexpr std::string_view Greeting = "Quillsatchel, come forward\n";
constexpr std::size_t MaximumTokenSize = 512; // bytes; real ones have some dozens

bool isToken(std::string_view text)
{
    const auto isControl = [](char each) {
        return static_cast<unsigned char>(each) < ' ' || each == '\x7F';
    };
    return text.size() <= MaximumTokenSize && std::ranges::none_of(text, isControl);
}

std::string tokenOrEmpty(std::string_view text)
{
    return std::string(isToken(text) ? text : std::string_view());
}

/// Removes the first line of `text` and returns it.
std::string_view takeLine(std::string_view &text)
{
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

} // namespace

std::string encode(const StartupToken &token)
{
    return std::string(Greeting) + tokenOrEmpty(token.activationToken) + '\n' +
           tokenOrEmpty(token.startupID) + '\n';
}

std::optional<StartupToken> decode(std::string_view text)
{
    if (!text.starts_with(Greeting))
        return std::nullopt;
    text.remove_prefix(Greeting.size());
    const auto activationToken = takeLine(text);
    const auto startupID = takeLine(text);
    return StartupToken { .activationToken = tokenOrEmpty(activationToken),
                          .startupID = tokenOrEmpty(startupID) };
}

} // namespace StartupRequest
