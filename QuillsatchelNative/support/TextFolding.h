#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Folds texts for searching. Texts that differ only in case, accents, width or the composition of
/// letters get the same folded form: "Straße" and "STRASSE", "Résumé" and "resume", "ﬁ" and "fi".
/// Invisible characters are dropped. White space is kept, also if it is folded to other white
/// space.
///
/// Caches the folded form of every non-ASCII character that it meets, so keep one object for many
/// texts.
class TextFolding
{
public:
    TextFolding();
    ~TextFolding();
    TextFolding(const TextFolding &) = delete;
    TextFolding &operator=(const TextFolding &) = delete;

    /// The folded form of `text`, both UTF-8. Valid until the next call.
    std::string_view fold(std::string_view text);

    /// As `fold`. Sets `sources` to the offsets in `text` of the code points from which the bytes
    /// of the result come, in ascending order.
    std::string_view fold(std::string_view text, std::vector<std::size_t> &sources);

    /// Whether `text` has only ASCII characters; folding then only changes the case of letters.
    static bool isAscii(std::string_view text);

private:
    struct Entry;
    struct Page;

    template <typename Note>
    std::string_view foldEach(std::string_view text, Note &&note);
    char *append(std::string_view text, std::size_t &at, char *out);
    char *appendSpecial(std::string_view text, std::size_t &at, char *out);
    char *room(std::size_t used, std::size_t left);
    const Entry &entry(char32_t codePoint);
    Entry computed(char32_t codePoint);

    std::vector<std::unique_ptr<Page>> m_pages; // null until one of their code points is met
    std::vector<std::string> m_longTexts;       // folded forms that do not fit into an entry
    std::vector<char> m_buffer;                 // of the folded text; only grows
};
