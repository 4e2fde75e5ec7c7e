#include "views/ApplicationSearch.h"

#include <QStringList>

#include <algorithm>

namespace
{

enum class Rank {
    nameStart,
    wordStarts,
    elsewhere
};

/// Handles the letters whose stroke Unicode does not decompose into an accent.
QChar baseLetter(QChar letter)
{
    switch (letter.unicode()) {
    case u'\u00F8':
        return u'o';
    case u'\u0111':
        return u'd';
    case u'\u0142':
        return u'l';
    default:
        return letter;
    }
}

QString normalized(const QString &text)
{
    // Upper case first: it makes sharp s equal to double s, and both small sigmas equal.
    const QString folded = text.normalized(QString::NormalizationForm_KD).toUpper().toCaseFolded();
    QString plain;
    plain.reserve(folded.size());
    for (const QChar letter : folded) {
        if (letter.combiningClass() == 0)
            plain += baseLetter(letter);
    }
    return plain.simplified();
}

QString normalized(const std::string &text)
{
    return normalized(QString::fromStdString(text));
}

bool startsWord(const QString &text, const QString &beginning)
{
    for (auto at = text.indexOf(beginning); at >= 0; at = text.indexOf(beginning, at + 1)) {
        if (at == 0 || !text[at - 1].isLetterOrNumber())
            return true;
    }
    return false;
}

Rank rank(const QString &name, const QString &typed, const QStringList &words)
{
    if (name.startsWith(typed))
        return Rank::nameStart;
    const bool startsWords =
        std::ranges::all_of(words, [&name](const QString &word) { return startsWord(name, word); });
    return startsWords ? Rank::wordStarts : Rank::elsewhere;
}

} // namespace

ApplicationSearch::ApplicationSearch(const std::vector<Application> &applications)
{
    m_entries.reserve(applications.size());
    for (const auto &application : applications) {
        const QString name = normalized(application.name);
        // Words contain no line breaks, so no word matches across two texts.
        const QString allTexts = name + u'\n' + normalized(application.comment) + u'\n' +
                                 normalized(application.keywords);
        m_entries.push_back({ name, allTexts });
    }
}

std::vector<std::size_t> ApplicationSearch::find(const QString &typed) const
{
    const QString text = normalized(typed);
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        const auto &allTexts = m_entries[index].allTexts;
        if (std::ranges::all_of(words, [&](const QString &w) { return allTexts.contains(w); }))
            found.push_back(index);
    }
    std::ranges::stable_sort(found, {}, [this, &text, &words](std::size_t index) {
        return rank(m_entries[index].name, text, words);
    });
    return found;
}
