#include "views/ApplicationSearch.h"

#include "support/TextFolding.h"

#include <QStringList>

#include <algorithm>
#include <string>

namespace
{

enum class Rank {
    nameStart,
    wordStarts,
    elsewhere
};

QString normalized(TextFolding &folding, const std::string &text)
{
    const auto folded = folding.fold(text);
    return QString::fromUtf8(folded.data(), static_cast<qsizetype>(folded.size())).simplified();
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
    TextFolding folding;
    m_entries.reserve(applications.size());
    for (const auto &application : applications) {
        const QString name = normalized(folding, application.name);
        // Words contain no line breaks, so no word matches across two texts.
        const QString allTexts = name + u'\n' + normalized(folding, application.comment) + u'\n' +
                                 normalized(folding, application.keywords);
        m_entries.push_back({ name, allTexts });
    }
}

std::vector<std::size_t> ApplicationSearch::find(const QString &typed) const
{
    TextFolding folding;
    const QString text = normalized(folding, typed.toStdString());
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
