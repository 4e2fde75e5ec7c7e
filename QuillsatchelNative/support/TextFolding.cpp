#include "support/TextFolding.h"

#include "support/ByteBlock.h"
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

constexpr std::size_t PageSize = 64;                       // code points
constexpr std::size_t BasicPageCount = 0x10000 / PageSize; // of the Basic Multilingual Plane
constexpr std::size_t MaximumGrowth = 2;                   // two bytes may become an entry of four

bool isAsciiCharacter(char c)
{
    return (c & 0x80) == 0;
}

/// Reads the whole text.
bool hasOnlyAscii(std::string_view text)
{
    std::uint64_t all = 0;
    std::size_t at = 0;
    for (; at + ByteBlock::Size <= text.size(); at += ByteBlock::Size)
        all |= ByteBlock::load(text.data() + at);
    return (all & ByteBlock::HighBits) == 0 &&
           std::ranges::all_of(text.substr(at), isAsciiCharacter);
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// As `lowered`, for each byte. Bytes that are not ASCII get any value.
std::uint64_t loweredBlock(std::uint64_t block)
{
    // The highest bit of a sum tells whether the byte is at least 'A', or greater than 'Z'.
    const std::uint64_t bytes = block & ~ByteBlock::HighBits;
    const std::uint64_t reachA = bytes + (0x80 - 'A') * ByteBlock::EachByte;
    const std::uint64_t exceedZ = bytes + (0x7F - 'Z') * ByteBlock::EachByte;
    return bytes | ((reachA & ~exceedZ & ByteBlock::HighBits) >> 2);
}

/// Writes the folded form of the ASCII characters at the beginning of `text` to `out`, which has
/// room for eight bytes. Returns the number of characters, at most eight.
std::size_t foldAscii(std::string_view text, char *out)
{
    if (text.size() >= ByteBlock::Size) {
        const std::uint64_t block = ByteBlock::load(text.data());
        ByteBlock::store(loweredBlock(block), out);
        return ByteBlock::firstIndex(block & ByteBlock::HighBits);
    }
    const auto end = std::ranges::find_if_not(text, isAsciiCharacter);
    std::transform(text.begin(), end, out, lowered);
    return static_cast<std::size_t>(end - text.begin());
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

struct TextFolding::Page : std::array<Entry, PageSize> {
};

TextFolding::TextFolding() = default;
TextFolding::~TextFolding() = default;

bool TextFolding::isAscii(std::string_view text)
{
    constexpr std::size_t Stride = 128; // few branches, and an early end in other texts
    for (; text.size() > Stride; text.remove_prefix(Stride)) {
        if (!hasOnlyAscii(text.substr(0, Stride)))
            return false;
    }
    return hasOnlyAscii(text);
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
        const std::size_t count = foldAscii(text.substr(at), out);
        for (const std::size_t end = at + count; at < end; ++at)
            note(at, static_cast<std::size_t>(++out - m_buffer.data()));
        while (at < text.size() && !isAsciiCharacter(text[at])) {
            const std::size_t source = at;
            out = append(text, at, out);
            note(source, static_cast<std::size_t>(out - m_buffer.data()));
        }
    }
    return { m_buffer.data(), static_cast<std::size_t>(out - m_buffer.data()) };
}

/// Writes the folded form of the code point at `at`, which is moved to the next one, to `out`,
/// which is in the buffer. Returns the end.
inline char *TextFolding::append(std::string_view text, std::size_t &at, char *out)
{
    const auto byte = [text, at](std::size_t index) {
        return static_cast<unsigned char>(text[at + index]);
    };
    const std::size_t size = byte(0) < 0xE0 ? 2 : 3;
    if (byte(0) < 0xF0 && size <= text.size() - at && !m_pages.empty()) {
        const std::size_t page =
            size == 2 ? byte(0) & 0x1FU : (byte(0) & 0xFU) << 6 | (byte(1) & 0x3FU);
        if (const auto &entries = m_pages[page]) {
            const Entry &entry = (*entries)[byte(size - 1) & 0x3FU];
            if (entry.kind == Entry::Kind::bytes) {
                std::memcpy(out, entry.bytes.data(), entry.bytes.size());
                at += size;
                return out + entry.size;
            }
        }
    }
    return appendSpecial(text, at, out);
}

/// As `append`, for code points that are new or need more than a copy. Not inline, because that
/// would slow down the others.
[[gnu::noinline]] char *TextFolding::appendSpecial(std::string_view text, std::size_t &at,
                                                   char *out)
{
    const std::string_view character = firstCodePoint(text.substr(at));
    at += character.size();
    const Entry &entry = this->entry(decodedCodePoint(character));
    auto size = static_cast<std::size_t>(out - m_buffer.data());
    std::string letters(entry.bytes.data(), entry.size);
    if (entry.kind == Entry::Kind::longText) {
        letters = m_longTexts[entry.index];
    } else if (entry.kind == Entry::Kind::joinsBytes) {
        const auto both = joined({ m_buffer.data(), size }, letters);
        if (!both.isEmpty()) {
            letters = both.toStdString();
            size -= lastCodePoint({ m_buffer.data(), size }).size();
        }
    }
    return std::ranges::copy(letters, room(size, letters.size() + text.size() - at)).out;
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
    const std::size_t index = codePoint / PageSize;
    if (index >= m_pages.size())
        m_pages.resize(std::max(index + 1, BasicPageCount));
    auto &page = m_pages[index];
    if (!page)
        page = std::make_unique<Page>();
    Entry &entry = page->at(codePoint % PageSize);
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
