// Any clipboard content becomes valid UTF-8, in every format that can be chosen.
#include "Expect.h"
#include "platform/desktop/TextFormat.h"

#include <QUtf8StringView>

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view data(reinterpret_cast<const char *>(bytes), size);
    const auto lineEnd = data.find('\n');
    const auto name = data.substr(0, lineEnd);
    const auto format = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    if (TextFormat::best({ format }).isEmpty() || lineEnd == std::string_view::npos)
        return 0;
    const auto content = data.substr(lineEnd + 1);
    const auto text = TextFormat::decoded(
        QByteArray(content.data(), static_cast<qsizetype>(content.size())), format);
    expect(QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8(),
           "every text is valid UTF-8");
    return 0;
}
