#include "library/Excerpt.h"

#include "library/QueryMatcher.h"
#include "support/SingleLine.h"
#include "support/Utf8.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace
{

constexpr int MaximumLead = 24;            // graphemes before the offset
constexpr int MaximumLength = 200;         // graphemes, more than fit on two lines
constexpr std::size_t MaximumBytes = 1024; // read on each side of the offset
constexpr QChar Ellipsis(0x2026);

QString line(std::string_view text)
{
    QString line = SingleLine::beginning(text);
    const auto areSpaces = [](QChar a, QChar b) { return a.isSpace() && b.isSpace(); };
    line.erase(std::unique(line.begin(), line.end(), areSpaces), line.end());
    std::ranges::replace_if(
        line, [](QChar c) { return c.isSpace(); }, QLatin1Char(' '));
    return line;
}

/// The next beginning of a word, if there is one before `limit`.
qsizetype wordStart(QTextBoundaryFinder &finder, qsizetype start, qsizetype limit)
{
    const qsizetype next = finder.string().indexOf(u' ', start) + 1;
    finder.setPosition(next);
    return next > start && next < limit && finder.isAtBoundary() ? next : start;
}

/// Where the excerpt starts; `offset` is in it. If the line is cut, its first grapheme may be
/// incomplete.
qsizetype startBefore(QTextBoundaryFinder &finder, qsizetype offset, bool isLineCut)
{
    finder.setPosition(offset);
    qsizetype start = offset;
    for (int count = 0; count < MaximumLead && start > 0; ++count)
        start = finder.toPreviousBoundary();
    if (start > 0)
        return wordStart(finder, start, offset);
    return isLineCut ? std::min(finder.toNextBoundary(), offset) : 0;
}

/// Where the excerpt ends. If the line is cut, its last grapheme may be incomplete.
qsizetype endAfter(QTextBoundaryFinder &finder, qsizetype start, bool isLineCut)
{
    const qsizetype size = finder.string().size();
    finder.setPosition(start);
    qsizetype end = start;
    for (int count = 0; count < MaximumLength && end < size; ++count)
        end = finder.toNextBoundary();
    return end == size && isLineCut ? std::max(finder.toPreviousBoundary(), start) : end;
}

void prependEllipsis(Excerpt &excerpt)
{
    excerpt.text.prepend(Ellipsis);
    for (auto &range : excerpt.emphasised)
        ++range.start;
}

} // namespace

Excerpt Excerpt::around(std::string_view text, std::size_t offset, const QueryMatcher &matcher)
{
    const std::string_view before = utf8End(text.substr(0, offset), MaximumBytes);
    const std::string_view after = utf8Beginning(text.substr(offset), MaximumBytes);
    const bool isCutBefore = before.size() < offset;
    const bool isCutAfter = offset + after.size() < text.size();
    const QString lead = line(before);
    const QString whole = lead + line(after);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, whole);
    const qsizetype start = startBefore(finder, lead.size(), isCutBefore);
    const qsizetype end = endAfter(finder, start, isCutAfter);

    Excerpt excerpt { .text = whole.mid(start, end - start).trimmed() };
    excerpt.emphasised = matcher.matches(excerpt.text);
    if (end < whole.size() || isCutAfter)
        excerpt.text += Ellipsis;
    if (start > 0 || isCutBefore)
        prependEllipsis(excerpt);
    return excerpt;
}
