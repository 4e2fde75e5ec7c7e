// Valid UTF-8 survives conversion to QString and is cut into valid UTF-8.
#include "Expect.h"
#include "support/Utf8.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace
{

bool isUtf8(std::string_view text)
{
    return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

void expectCut(std::string_view text, std::string_view piece, std::size_t size)
{
    constexpr std::size_t MaximumCodePointSize = 4;
    expect(piece.size() <= size, "a piece is not longer than requested");
    expect(piece.size() + MaximumCodePointSize > std::min(size, text.size()),
           "a piece has all code points that fit");
    expect(isUtf8(piece), "a piece is valid UTF-8");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::size_t MaximumLength = 64;
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    const auto back = stringFromUtf8(text).toStdString();
    expect(isUtf8(back), "every string converts to valid UTF-8");
    expect(!isUtf8(text) || back == text, "valid text is preserved");
    if (!isUtf8(text))
        return 0;
    for (std::size_t length = 0; length <= std::min(size + 1, MaximumLength); ++length) {
        const auto beginning = utf8Beginning(text, length);
        const auto end = utf8End(text, length);
        expect(text.starts_with(beginning) && text.ends_with(end), "pieces are at the ends");
        expectCut(text, beginning, length);
        expectCut(text, end, length);
    }
    return 0;
}
