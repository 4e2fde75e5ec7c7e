#include "platform/speech/listener/LatinLetter.h"

namespace
{

constexpr unsigned FirstAccented = 0xC0;
/// The letters from U+00C0 to U+017F without their accents. Two are signs.
constexpr std::string_view Bases = "aaaaaaaceeeeiiiidnooooo.ouuuuyts"
                                   "aaaaaaaceeeeiiiidnooooo.ouuuuyty"
                                   "aaaaaaccccccccddddeeeeeeeeeegggggggghhhh"
                                   "iiiiiiiiiiiijjkkkllllllllllnnnnnnnnn"
                                   "oooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(Bases.size() == 0x180 - FirstAccented);

bool isContinuation(char byte)
{
    return (byte & 0xC0) == 0x80;
}

bool isCapital(unsigned codePoint)
{
    if (codePoint < 0x100)
        return codePoint < 0xDF;
    const bool isOddCapital =
        (codePoint >= 0x139 && codePoint <= 0x148) || (codePoint >= 0x179 && codePoint <= 0x17E);
    const bool hasNoCapital = codePoint == 0x138 || codePoint == 0x149 || codePoint == 0x17F;
    return !hasNoCapital && (codePoint == 0x178 || (codePoint % 2 == 1) == isOddCapital);
}

} // namespace

std::optional<LatinLetter> LatinLetter::first(std::string_view text)
{
    const char byte = text.empty() ? '\0' : text.front();
    if (byte >= 'a' && byte <= 'z')
        return LatinLetter { .base = byte };
    if (byte >= 'A' && byte <= 'Z')
        return LatinLetter { .base = static_cast<char>(byte - 'A' + 'a'), .isCapital = true };
    if (text.size() < 2 || (byte & 0xE0) != 0xC0 || !isContinuation(text[1]))
        return std::nullopt;
    const auto codePoint = static_cast<unsigned>((byte & 0x1F) << 6 | (text[1] & 0x3F));
    if (codePoint >= 0x300 && codePoint < 0x370) // combining accents
        return LatinLetter { .size = 2 };
    if (codePoint < FirstAccented || codePoint >= FirstAccented + Bases.size())
        return std::nullopt;
    const char base = Bases[codePoint - FirstAccented];
    if (base == '.')
        return std::nullopt;
    return LatinLetter { .base = base, .isCapital = ::isCapital(codePoint), .size = 2 };
}
