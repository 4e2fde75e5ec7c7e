// A text that is valid UTF-8 comes back from a string of Qt's as it was.
#include "Expect.h"
#include "support/Utf8.h"

#include <QUtf8StringView>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    const auto back = stringFromUtf8(text).toStdString();
    expect(isUtf8(back), "every string is a text");
    expect(!isUtf8(text) || back == text, "a text comes back as it was");
    return 0;
}
