#include "support/TextFolding.h"

#include "support/Utf8.h"

#include <QChar>
#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace
{

constexpr std::size_t PageSize = 64; // code points
constexpr std::size_t PlaneSize = 0x10000;
constexpr std::size_t PlaneCount = 17;
constexpr std::size_t MaximumGrowth = 2; // two bytes may become an entry of four
constexpr std::uint64_t HighBits = 0x8080'8080'8080'8080;

std::uint64_t load(const char *bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

bool isAsciiCharacter(char c)
{
    return (c & 0x80) == 0;
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Soft hyphens, joiners, directional marks and variation selectors.
bool isInvisible(uint c)
{
    return c == 0xAD || c == 0x34F || c == 0x61C || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x2064) ||
           (c >= 0x2066 && c <= 0x2069) || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF;
}

/// Accents, Hebrew points and Arabic vowel marks. Other marks are parts of a letter: Japanese
/// voicing marks (combining class 8), viramas (9), vowels and tones (84 to 132).
bool isAccent(uint c)
{
    const int combiningClass = QChar::combiningClass(c);
    const bool isPartOfLetter = combiningClass == 8 || combiningClass == 9 ||
                                (combiningClass >= 84 && combiningClass <= 132);
    return combiningClass != 0 && !isPartOfLetter;
}

/// Japanese voicing marks, Korean vowels and final consonants.
bool joinsPrevious(uint c)
{
    return c == 0x3099 || c == 0x309A || (c >= 0x1161 && c <= 0x1175) ||
           (c >= 0x11A8 && c <= 0x11C2);
}

/// Handles the letters whose stroke Unicode does not decompose into an accent.
uint baseLetter(uint letter)
{
    switch (letter) {
    case U'\u00F8':
        return U'o';
    case U'\u0111':
        return U'd';
    case U'\u0127':
        return U'h';
    case U'\u0142':
        return U'l';
    case U'\u0167':
        return U't';
    default:
        return letter;
    }
}

QString stringFrom(const QList<uint> &codePoints)
{
    const std::u32string text(codePoints.begin(), codePoints.end());
    return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size()));
}

QList<uint> plainLetters(const QString &text)
{
    QList<uint> letters = text.toUcs4();
    letters.removeIf([](uint c) { return isAccent(c) || isInvisible(c); });
    return letters;
}

/// The folded form of a code point, except that parts of a letter are not joined.
QList<uint> foldedLetters(char32_t codePoint)
{
    const QString decomposed =
        QString::fromUcs4(&codePoint, 1).normalized(QString::NormalizationForm_KD);
    // Upper case makes small sharp s equal to double s, both small sigmas equal, and dotless i
    // equal to i. Folding first makes capital sharp s small.
    const QString upper = stringFrom(plainLetters(decomposed)).toCaseFolded().toUpper();
    QList<uint> letters = plainLetters(upper.toCaseFolded());
    std::ranges::transform(letters, letters.begin(), baseLetter);
    return letters;
}

/// Composes the last letter of `before` with `letter`. Empty if Unicode has no such character.
QByteArray joined(std::string_view before, std::string_view letter)
{
    const std::string both = std::string(lastCodePoint(before)).append(letter);
    const QString composed = QString::fromStdString(both).normalized(QString::NormalizationForm_C);
    return composed.size() == 1 ? composed.toUtf8() : QByteArray();
}

std::string joinedLetters(const QList<uint> &letters)
{
    std::string text;
    for (const uint letter : letters) {
        const std::string next = stringFrom({ letter }).toStdString();
        const QByteArray both = joinsPrevious(letter) ? joined(text, next) : QByteArray();
        if (!both.isEmpty())
            text.resize(text.size() - lastCodePoint(text).size());
        text += both.isEmpty() ? next : both.toStdString();
    }
    return text;
}

} // namespace

/// The folded form of a code point.
struct TextFolding::Entry {
    enum class Kind : std::uint8_t {
        unknown,
        bytes,      ///< the first `size` of `bytes`
        joinsBytes, ///< likewise, and may form one character with the one before
        longText    ///< the text of `m_longTexts` at `index`
    };
    Kind kind = Kind::unknown;
    std::uint8_t size = 0;
    std::uint16_t index = 0;
    std::array<char, 4> bytes {};
};

struct TextFolding::Page {
    std::array<Entry, PageSize> entries;
};

struct TextFolding::Plane {
    std::array<std::unique_ptr<Page>, PlaneSize / PageSize> pages;
};

TextFolding::TextFolding()
    : m_planes(PlaneCount)
{
}

TextFolding::~TextFolding() = default;

bool TextFolding::isAscii(std::string_view text)
{
    std::uint64_t all = 0;
    std::size_t at = 0;
    for (; at + sizeof(all) <= text.size(); at += sizeof(all))
        all |= load(text.data() + at);
    return (all & HighBits) == 0 && std::ranges::all_of(text.substr(at), isAsciiCharacter);
}

std::string_view TextFolding::fold(std::string_view text)
{
    return foldEach(text, [](std::size_t, std::size_t) {});
}

std::string_view TextFolding::fold(std::string_view text, std::vector<std::size_t> &sources)
{
    sources.clear();
    return foldEach(
        text, [&sources](std::size_t source, std::size_t size) { sources.resize(size, source); });
}

/// Calls `note(offset, size)` after each code point: its offset in `text`, and the size of the
/// folded text so far. The buffer always has room for the rest of the text, unless that has long
/// forms.
template <typename Note>
std::string_view TextFolding::foldEach(std::string_view text, Note &&note)
{
    char *out = room(0, text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t source = at;
        if (isAsciiCharacter(text[at])) {
            *out++ = lowered(text[at++]);
        } else {
            const std::string_view next = firstCodePoint(text.substr(at));
            at += next.size();
            out = append(entry(decodedCodePoint(next)), out, text.size() - at);
        }
        note(source, static_cast<std::size_t>(out - m_buffer.data()));
    }
    return { m_buffer.data(), static_cast<std::size_t>(out - m_buffer.data()) };
}

/// Writes to `out`, which is in the buffer, and returns the end. `left` bytes of the text follow.
char *TextFolding::append(const Entry &entry, char *out, std::size_t left)
{
    if (entry.kind == Entry::Kind::bytes) {
        std::memcpy(out, entry.bytes.data(), entry.bytes.size());
        return out + entry.size;
    }
    auto size = static_cast<std::size_t>(out - m_buffer.data());
    std::string letters(entry.bytes.data(), entry.size);
    if (entry.kind == Entry::Kind::longText) {
        letters = m_longTexts[entry.index];
    } else if (const auto both = joined({ m_buffer.data(), size }, letters); !both.isEmpty()) {
        letters = both.toStdString();
        size -= lastCodePoint({ m_buffer.data(), size }).size();
    }
    return std::ranges::copy(letters, room(size, letters.size() + left)).out;
}

/// The end of the `used` bytes in the buffer, with room for the folded form of `left` bytes.
char *TextFolding::room(std::size_t used, std::size_t left)
{
    const std::size_t needed = used + MaximumGrowth * left + sizeof(Entry::bytes);
    if (m_buffer.size() < needed)
        m_buffer.resize(needed);
    return m_buffer.data() + used;
}

const TextFolding::Entry &TextFolding::entry(char32_t codePoint)
{
    auto &plane = m_planes[codePoint / PlaneSize];
    if (!plane)
        plane = std::make_unique<Plane>();
    auto &page = plane->pages.at(codePoint % PlaneSize / PageSize);
    if (!page)
        page = std::make_unique<Page>();
    Entry &entry = page->entries.at(codePoint % PageSize);
    if (entry.kind == Entry::Kind::unknown)
        entry = computed(codePoint);
    return entry;
}

TextFolding::Entry TextFolding::computed(char32_t codePoint)
{
    const QList<uint> letters = foldedLetters(codePoint);
    const std::string text = joinedLetters(letters);
    Entry entry;
    if (text.size() > entry.bytes.size()) {
        entry.kind = Entry::Kind::longText;
        entry.index = static_cast<std::uint16_t>(m_longTexts.size());
        m_longTexts.push_back(text);
        return entry;
    }
    const bool joins = !letters.isEmpty() && joinsPrevious(letters.front());
    entry.kind = joins ? Entry::Kind::joinsBytes : Entry::Kind::bytes;
    entry.size = static_cast<std::uint8_t>(text.size());
    std::ranges::copy(text, entry.bytes.begin());
    return entry;
}
