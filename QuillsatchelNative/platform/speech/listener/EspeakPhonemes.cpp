#include "platform/speech/listener/EspeakPhonemes.h"

#include <algorithm>
#include <array>

namespace
{

struct Entry {
    std::string_view mnemonic;
    std::string_view phones;
};

// The mnemonics of the voice "en-us".
constexpr std::array Phones {
    Entry { "0", "AA" },      Entry { "0#", "AA" },     Entry { "3", "ER" },
    Entry { "3:", "ER" },     Entry { "3R", "ER" },     Entry { "?", "" },
    Entry { "@", "AH" },      Entry { "@-", "AH" },     Entry { "@2", "AH" },
    Entry { "@5", "AH" },     Entry { "@L", "AH L" },   Entry { "@r", "ER" },
    Entry { "A:", "AA" },     Entry { "A@", "AA R" },   Entry { "D", "DH" },
    Entry { "E", "EH" },      Entry { "E#", "EH" },     Entry { "E2", "EH" },
    Entry { "I", "IH" },      Entry { "I#", "IH" },     Entry { "I2", "IH" },
    Entry { "I@", "IH R" },   Entry { "N", "NG" },      Entry { "O", "AO" },
    Entry { "O2", "AO" },     Entry { "O:", "AO" },     Entry { "O@", "AO R" },
    Entry { "OI", "OY" },     Entry { "R", "R" },       Entry { "S", "SH" },
    Entry { "T", "TH" },      Entry { "U", "UH" },      Entry { "U@", "UH R" },
    Entry { "V", "AH" },      Entry { "VR", "AH R" },   Entry { "Z", "ZH" },
    Entry { "a", "AE" },      Entry { "a#", "AH" },     Entry { "aI", "AY" },
    Entry { "aI3", "AY ER" }, Entry { "aI@", "AY AH" }, Entry { "aU", "AW" },
    Entry { "aU@", "AW ER" }, Entry { "aa", "AA" },     Entry { "b", "B" },
    Entry { "d", "D" },       Entry { "d2", "D" },      Entry { "dZ", "JH" },
    Entry { "e@", "EH R" },   Entry { "eI", "EY" },     Entry { "f", "F" },
    Entry { "g", "G" },       Entry { "h", "HH" },      Entry { "i", "IY" },
    Entry { "i:", "IY" },     Entry { "i@", "IY AH" },  Entry { "i@3", "IH R" },
    Entry { "j", "Y" },       Entry { "k", "K" },       Entry { "l", "L" },
    Entry { "l#", "L" },      Entry { "m", "M" },       Entry { "n", "N" },
    Entry { "n-", "AH N" },   Entry { "o@", "AO R" },   Entry { "oU", "OW" },
    Entry { "oU#", "OW" },    Entry { "p", "P" },       Entry { "r", "R" },
    Entry { "r-", "R" },      Entry { "s", "S" },       Entry { "t", "T" },
    Entry { "t#", "T" },      Entry { "t2", "T" },      Entry { "tS", "CH" },
    Entry { "ts", "T S" },    Entry { "u", "UW" },      Entry { "u:", "UW" },
    Entry { "v", "V" },       Entry { "w", "W" },       Entry { "x", "K" },
    Entry { "z", "Z" },       Entry { "z#", "Z" },
};

static_assert(std::is_sorted(Phones.begin(), Phones.end(),
                             [](const Entry &one, const Entry &other) {
                                 return one.mnemonic < other.mnemonic;
                             }));

constexpr bool isSeparator(char character)
{
    return character == '_' || character == ' ' || character == '\n';
}

/// Removes the marks of stress and of the boundaries of syllables.
std::string withoutMarks(std::string_view mnemonic)
{
    std::string text(mnemonic);
    std::erase_if(text, [](char mark) {
        return std::string_view("',;%=|~").find(mark) != std::string_view::npos;
    });
    return text;
}

const Entry *find(std::string_view mnemonic)
{
    const auto *const entry = std::lower_bound(
        Phones.begin(), Phones.end(), mnemonic,
        [](const Entry &one, std::string_view other) { return one.mnemonic < other; });
    return entry != Phones.end() && entry->mnemonic == mnemonic ? entry : nullptr;
}

} // namespace

std::optional<std::string> arpabetPhones(std::string_view mnemonics)
{
    std::string phones;
    while (!mnemonics.empty()) {
        const auto end = std::find_if(mnemonics.begin(), mnemonics.end(), isSeparator);
        const auto size = static_cast<std::size_t>(end - mnemonics.begin());
        const auto mnemonic = withoutMarks(mnemonics.substr(0, size));
        mnemonics.remove_prefix(std::min(size + 1, mnemonics.size()));
        if (mnemonic.empty())
            continue;
        const auto *const entry = find(mnemonic);
        if (!entry)
            return std::nullopt;
        if (!entry->phones.empty())
            (phones += phones.empty() ? "" : " ") += entry->phones;
    }
    return phones.empty() ? std::nullopt : std::optional(phones);
}
