#include "platform/desktop/BusText.h"

#include "support/Utf8.h"

namespace
{

constexpr std::size_t MaximumSize = 1024 * 1024;

} // namespace

std::optional<QString> BusText::make(std::string_view text)
{
    if (text.size() > MaximumSize || text.find('\0') != std::string_view::npos)
        return std::nullopt;
    return stringFromUtf8(text);
}
