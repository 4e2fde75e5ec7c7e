// Whatever a text holds, it is drawn on one line and in its own direction.
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

constexpr qsizetype MostCharacters = 4096;
constexpr std::size_t MostInMenus = 80; // characters as readers see them

bool isHarmful(QChar character)
{
    const ushort code = character.unicode();
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool turnsDirection =
        (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    return isControl || turnsDirection || breaksLine;
}

void expectLine(const QString &line)
{
    expect(std::ranges::none_of(line, isHarmful), "nothing in a line does harm");
    expect(line.size() <= MostCharacters, "a line is no longer than any screen");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    expectLine(SingleLine::beginning(text));
    expectLine(SingleLine::ends(text));
    const QString abridged = SingleLine::abridged(text);
    expectLine(abridged);
    expect(characterCount(abridged.toStdString(), MostInMenus + 1) <= MostInMenus,
           "no entry makes a menu too wide");
    return 0;
}
