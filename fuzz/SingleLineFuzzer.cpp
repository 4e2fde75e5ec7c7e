// Any text becomes a single line without bidirectional controls.
#include "Expect.h"
#include "support/CharacterCount.h"
#include "support/SingleLine.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace
{

constexpr qsizetype MaximumLength = 4096;     // UTF-16 code units
constexpr std::size_t MaximumMenuLength = 80; // graphemes

bool isForbidden(QChar character)
{
    const ushort code = character.unicode();
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool isBidirectional =
        (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    return isControl || isBidirectional || breaksLine;
}

void expectLine(const QString &line)
{
    expect(std::ranges::none_of(line, isForbidden), "a line has no controls");
    expect(line.size() <= MaximumLength, "a line has a limited length");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    expectLine(SingleLine::beginning(text));
    expectLine(SingleLine::ends(text));
    const QString abridged = SingleLine::abridged(text);
    expectLine(abridged);
    expect(characterCount(abridged.toStdString(), MaximumMenuLength + 1) <= MaximumMenuLength,
           "a menu text has a limited length");
    return 0;
}
