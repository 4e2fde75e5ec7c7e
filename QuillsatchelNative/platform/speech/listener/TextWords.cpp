#include "platform/speech/listener/TextWords.h"

#include "platform/speech/listener/LatinLetter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{

using namespace std::string_view_literals;
using TextWords::Run;
using TextWords::Word;

constexpr std::array Openers { "("sv, "["sv,      "\""sv,     "'"sv,     "*"sv,
                               "_"sv, "\u201C"sv, "\u2018"sv, "\u00AB"sv };
constexpr std::array Closers { ")"sv, "]"sv,      "\""sv,     "'"sv,     "*"sv,
                               "_"sv, "\u201D"sv, "\u2019"sv, "\u00BB"sv };
constexpr std::array SentenceMarks { "."sv, "!"sv, "?"sv, ":"sv, ";"sv, "\u2026"sv };
constexpr std::array Hyphens { "-"sv, "\u2010"sv, "\u2011"sv };
constexpr auto CurlyApostrophe = "\u2019"sv;
constexpr auto Spaces = " \t\r\f\v"sv;

bool isSmallLetter(char character)
{
    return character >= 'a' && character <= 'z';
}

/// Removes one of the marks from the beginning; false if none is there.
template <typename Marks>
bool removePrefix(std::string_view &text, const Marks &marks)
{
    const auto mark = std::find_if(marks.begin(), marks.end(), [text](std::string_view candidate) {
        return text.starts_with(candidate);
    });
    if (mark == marks.end())
        return false;
    text.remove_prefix(mark->size());
    return true;
}

template <typename Marks>
bool removeSuffix(std::string_view &text, const Marks &marks)
{
    const auto mark = std::find_if(marks.begin(), marks.end(), [text](std::string_view candidate) {
        return text.ends_with(candidate);
    });
    if (mark == marks.end())
        return false;
    text.remove_suffix(mark->size());
    return true;
}

/// Removes the text before the first hyphen and the hyphen, and returns that text.
std::string_view removeFirstPart(std::string_view &text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto rest = text.substr(at);
        if (isSmallLetter(rest.front()) || !removePrefix(rest, Hyphens))
            continue;
        const auto part = text.substr(0, at);
        text = rest;
        return part;
    }
    return std::exchange(text, {});
}

/// A piece of text between spaces without the marks around it.
struct Piece {
    explicit Piece(std::string_view text)
        : core(text)
    {
        while (!beginsPlainly() && removePrefix(core, Openers))
            isQuoted = true;
        for (bool isChanged = true; isChanged && !endsPlainly();) {
            const bool isMark = removeSuffix(core, SentenceMarks);
            endsSentence = endsSentence || isMark;
            isChanged =
                isMark || removeSuffix(core, Closers) || removeSuffix(core, std::array { ","sv });
        }
    }

    std::string_view core;
    bool isQuoted = false;
    bool endsSentence = false;

private:
    // Most words have no marks, and comparing with each of them takes time.
    bool beginsPlainly() const { return !core.empty() && isSmallLetter(core.front()); }

    bool endsPlainly() const { return !core.empty() && isSmallLetter(core.back()); }
};

/// Whether capitals inside the word show that it is an identifier, such as "userName". Names may
/// have them too: "JavaScript", "iPhone", "macOS", "LaTeX".
bool isIdentifier(std::string_view word)
{
    const auto rest = word.substr(std::min<std::size_t>(word.size(), 1));
    if (std::all_of(rest.begin(), rest.end(), isSmallLetter))
        return false;                    // as most words
    constexpr std::size_t MaxName = 6;   // letters, with two capitals inside
    constexpr std::size_t MaxPrefix = 2; // small letters before a capital
    std::string cases;
    for (std::size_t at = 0; at < word.size();) {
        const auto letter = LatinLetter::first(word.substr(at));
        at += letter ? letter->size : 1;
        if (letter && letter->base != 0)
            cases += letter->isCapital ? 'A' : 'a';
    }
    std::size_t rises = 0;
    for (auto at = cases.find("aA"); at != std::string::npos; at = cases.find("aA", at + 1))
        ++rises;
    const auto prefix = cases.find('A');
    const bool isCapitalRest = cases.find('a', std::min(prefix, cases.size())) == std::string::npos;
    if (rises > 0 && prefix != 0)
        return rises > 1 || (prefix > MaxPrefix && !isCapitalRest);
    return rises > 1 && cases.size() > MaxName;
}

/// Whether it begins a mark of `isCode`. Most lines have no such character.
bool beginsPartOfCode(char character)
{
    return character == '=' || character == '-' || character == '&' || character == '|' ||
           character == '<' || character == '/' || character == '(';
}

/// Whether a line is likely to be code of a program, a shell or a markup language.
bool isCode(std::string_view line)
{
    constexpr std::array Ends { ";"sv, "{"sv, "}"sv, "\\"sv };
    constexpr std::array Starts { "$ "sv, "#!"sv, "//"sv, "</"sv };
    constexpr std::array Parts { "=="sv, "=>"sv, "->"sv, "&&"sv, "||"sv, "</"sv, "/>"sv, "();"sv };
    const auto isIn = [line](std::string_view part) { return line.find(part) != line.npos; };
    auto rest = line;
    return removeSuffix(rest, Ends) || removePrefix(rest, Starts) ||
           (std::any_of(line.begin(), line.end(), beginsPartOfCode) &&
            std::any_of(Parts.begin(), Parts.end(), isIn));
}

std::string_view trimmed(std::string_view line)
{
    const auto begin = line.find_first_not_of(Spaces);
    if (begin == line.npos)
        return {};
    return line.substr(begin, line.find_last_not_of(Spaces) + 1 - begin);
}

bool isFence(std::string_view line)
{
    return line.starts_with("```") || line.starts_with("~~~");
}

/// Collects the words of one text.
class Scanner
{
public:
    explicit Scanner(const std::function<void(const Run &)> &receive)
        : m_receive(receive)
    {
    }

    void scanLine(std::string_view line)
    {
        line = trimmed(line);
        if (isFence(line))
            m_isFenced = !m_isFenced;
        else if (!m_isFenced && !isCode(line))
            scanProse(line);
    }

private:
    void scanProse(std::string_view line)
    {
        m_isFirst = true;
        for (bool isInline = false; !line.empty(); isInline = !isInline) {
            const auto end = std::min(line.find('`'), line.size());
            if (isInline)
                finishRun(false);
            else
                scanPieces(line.substr(0, end));
            line.remove_prefix(std::min(end + 1, line.size()));
        }
        finishRun(true);
    }

    void scanPieces(std::string_view text)
    {
        while (!(text = trimmed(text)).empty()) {
            const auto end = std::min(text.find_first_of(Spaces), text.size());
            scanPiece(Piece(text.substr(0, end)));
            text.remove_prefix(end);
        }
    }

    void scanPiece(const Piece &piece)
    {
        m_isFirst = m_isFirst || piece.isQuoted;
        const auto parts = partsOf(piece.core);
        // A bullet or a number leaves the sentence at its beginning.
        if (parts.empty() && !m_run.words.empty())
            finishRun(false);
        for (const auto &word : parts)
            add(word);
        if (piece.endsSentence)
            finishRun(true);
        m_isFirst = piece.endsSentence || (m_isFirst && parts.empty());
    }

    /// The words between hyphens; none unless all are words.
    std::vector<Word> partsOf(std::string_view core) const
    {
        std::vector<Word> words;
        while (!core.empty()) {
            const auto part = removeFirstPart(core);
            auto key = isIdentifier(part) ? std::string() : TextWords::keyOf(part);
            if (key.empty())
                return {};
            words.push_back({ .key = std::move(key), .spelling = part });
        }
        return words;
    }

    void add(Word word)
    {
        word.isFirst = std::exchange(m_isFirst, false);
        m_run.beginsSentence = m_run.beginsSentence || (m_run.words.empty() && m_startsSentence);
        m_startsSentence = false;
        m_run.words.push_back(std::move(word));
    }

    void finishRun(bool endsSentence)
    {
        m_run.endsSentence = endsSentence;
        if (!m_run.words.empty())
            m_receive(m_run);
        m_run = {};
        m_startsSentence = endsSentence;
    }

    const std::function<void(const Run &)> &m_receive;
    Run m_run;
    bool m_isFenced = false;
    bool m_isFirst = true;
    bool m_startsSentence = true;
};

} // namespace

void TextWords::forEachRun(std::string_view text, const std::function<void(const Run &)> &receive)
{
    Scanner scanner(receive);
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        scanner.scanLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string TextWords::keyOf(std::string_view word)
{
    if (word.size() > MaxSize)
        return {};
    std::string key;
    while (!word.empty()) {
        if (const auto letter = LatinLetter::first(word)) {
            if (letter->base != 0)
                key += letter->base;
            word.remove_prefix(letter->size);
            continue;
        }
        if (key.empty() || !removePrefix(word, std::array { "'"sv, CurlyApostrophe }))
            return {};
        key += '\'';
    }
    const auto isLetter = [](char character) { return character != '\''; };
    const auto letters = std::count_if(key.begin(), key.end(), isLetter);
    return letters > 0 && letters <= static_cast<std::ptrdiff_t>(MaxLetters) ? key : std::string();
}
