#include "platform/speech/listener/EnglishVocabulary.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace
{

constexpr std::array AddedWords {
    EnglishVocabulary::Word { "api", "EY P IY AY", "database" },
    EnglishVocabulary::Word { "apis", "EY P IY AY Z", "databases" },
    EnglishVocabulary::Word { "async", "EY S IH NG K", "automated" },
    EnglishVocabulary::Word { "backend", "B AE K EH N D", "database" },
    EnglishVocabulary::Word { "boolean", "B UW L IY AH N", "variable" },
    EnglishVocabulary::Word { "chatbot", "CH AE T B AA T", "database" },
    EnglishVocabulary::Word { "chatbots", "CH AE T B AA T S", "databases" },
    EnglishVocabulary::Word { "css", "S IY EH S EH S", "software" },
    EnglishVocabulary::Word { "docker", "D AA K ER", "software" },
    EnglishVocabulary::Word { "emoji", "IH M OW JH IY", "icon" },
    EnglishVocabulary::Word { "frontend", "F R AH N T EH N D", "database" },
    EnglishVocabulary::Word { "git", "G IH T", "software" },
    EnglishVocabulary::Word { "github", "G IH T HH AH B", "software" },
    EnglishVocabulary::Word { "html", "EY CH T IY EH M EH L", "software" },
    EnglishVocabulary::Word { "javascript", "JH AA V AH S K R IH P T", "software" },
    EnglishVocabulary::Word { "json", "JH EY S AH N", "software" },
    EnglishVocabulary::Word { "kubernetes", "K UW B ER N EH T IY Z", "software" },
    EnglishVocabulary::Word { "login", "L AO G IH N", "password" },
    EnglishVocabulary::Word { "parser", "P AA R S ER", "database" },
    EnglishVocabulary::Word { "pdf", "P IY D IY EH F", "database" },
    EnglishVocabulary::Word { "plugin", "P L AH G IH N", "database" },
    EnglishVocabulary::Word { "proofread", "P R UW F R IY D", "rewrite" },
    EnglishVocabulary::Word { "recursive", "R IY K ER S IH V", "automated" },
    EnglishVocabulary::Word { "refactor", "R IY F AE K T ER", "rewrite" },
    EnglishVocabulary::Word { "refactoring", "R IY F AE K T ER IH NG", "editing" },
    EnglishVocabulary::Word { "regex", "R EH G EH K S", "database" },
    EnglishVocabulary::Word { "schema", "S K IY M AH", "database" },
    EnglishVocabulary::Word { "sql", "EH S K Y UW EH L", "software" },
    EnglishVocabulary::Word { "typescript", "T AY P S K R IH P T", "software" },
    EnglishVocabulary::Word { "url", "Y UW AA R EH L", "database" },
    EnglishVocabulary::Word { "urls", "Y UW AA R EH L Z", "databases" },
    EnglishVocabulary::Word { "workflow", "W ER K F L OW", "database" },
    EnglishVocabulary::Word { "yaml", "Y AE M AH L", "software" },
};

// In alphabetical order. Words that begin with these are excluded as well.
constexpr std::array<std::string_view, 20> ExcludedPrefixes {
    "asshole", "bitch",   "blowjob",        "bullshit", "cocksuck",  "cunt",       "dickhead",
    "dildo",   "dipshit", "faggot",         "fuck",     "horseshit", "motherfuck", "nigger",
    "shit",    "slut",    "son-of-a-bitch", "twat",     "wank",      "whore",
};
static_assert(std::is_sorted(ExcludedPrefixes.begin(), ExcludedPrefixes.end()));

} // namespace

std::span<const EnglishVocabulary::Word> EnglishVocabulary::addedWords()
{
    return AddedWords;
}

bool EnglishVocabulary::isExcluded(std::string_view word)
{
    // Only the last one that is not above the word can begin it.
    const auto next = std::upper_bound(ExcludedPrefixes.begin(), ExcludedPrefixes.end(), word);
    return next != ExcludedPrefixes.begin() && word.starts_with(*std::prev(next));
}
