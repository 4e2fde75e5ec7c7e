#include "views/ApplicationSearch.h"

#include <QStringList>

#include <algorithm>

namespace
{

enum class Rank {
    Name,
    WordsOfName,
    Elsewhere
};

/// The letters whose stroke Unicode does not take for an accent.
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

QString madeAlike(const QString &text)
{
    // By way of the upper case, for what has but one there: sharp s and double s, two sigmas.
    const QString folded = text.normalized(QString::NormalizationForm_KD).toUpper().toCaseFolded();
    QString plain;
    plain.reserve(folded.size());
    for (const QChar letter : folded) {
        if (letter.combiningClass() == 0)
            plain += baseLetter(letter);
    }
    return plain.simplified();
}

QString madeAlike(const std::string &text)
{
    return madeAlike(QString::fromStdString(text));
}

bool beginsAWord(const QString &text, const QString &beginning)
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
        return Rank::Name;
    const bool isOfWords = std::ranges::all_of(
        words, [&name](const QString &word) { return beginsAWord(name, word); });
    return isOfWords ? Rank::WordsOfName : Rank::Elsewhere;
}

} // namespace

ApplicationSearch::ApplicationSearch(const std::vector<Application> &applications)
{
    m_entries.reserve(applications.size());
    for (const auto &application : applications) {
        const QString name = madeAlike(application.name);
        // Words have no line breaks, so none is found across two texts.
        const QString everything =
            name + u'\n' + madeAlike(application.comment) + u'\n' + madeAlike(application.keywords);
        m_entries.push_back({ name, everything });
    }
}

std::vector<std::size_t> ApplicationSearch::find(const QString &typed) const
{
    const QString alike = madeAlike(typed);
    const QStringList words = alike.split(u' ', Qt::SkipEmptyParts);
    std::vector<std::size_t> found;
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        const auto &everything = m_entries[place].everything;
        if (std::ranges::all_of(words, [&](const QString &w) { return everything.contains(w); }))
            found.push_back(place);
    }
    std::ranges::stable_sort(found, {}, [this, &alike, &words](std::size_t place) {
        return rank(m_entries[place].name, alike, words);
    });
    return found;
}
