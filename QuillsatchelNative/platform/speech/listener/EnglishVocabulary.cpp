#include "platform/speech/listener/EnglishVocabulary.h"

#include <algorithm>
#include <array>

namespace
{

constexpr std::array AddedWords {
    EnglishVocabulary::Word { "api", "EY P IY AY" },
    EnglishVocabulary::Word { "apis", "EY P IY AY Z" },
    EnglishVocabulary::Word { "async", "EY S IH NG K" },
    EnglishVocabulary::Word { "backend", "B AE K EH N D" },
    EnglishVocabulary::Word { "boolean", "B UW L IY AH N" },
    EnglishVocabulary::Word { "chatbot", "CH AE T B AA T" },
    EnglishVocabulary::Word { "chatbots", "CH AE T B AA T S" },
    EnglishVocabulary::Word { "css", "S IY EH S EH S" },
    EnglishVocabulary::Word { "docker", "D AA K ER" },
    EnglishVocabulary::Word { "emoji", "IH M OW JH IY" },
    EnglishVocabulary::Word { "frontend", "F R AH N T EH N D" },
    EnglishVocabulary::Word { "git", "G IH T" },
    EnglishVocabulary::Word { "github", "G IH T HH AH B" },
    EnglishVocabulary::Word { "html", "EY CH T IY EH M EH L" },
    EnglishVocabulary::Word { "javascript", "JH AA V AH S K R IH P T" },
    EnglishVocabulary::Word { "json", "JH EY S AH N" },
    EnglishVocabulary::Word { "kubernetes", "K UW B ER N EH T IY Z" },
    EnglishVocabulary::Word { "login", "L AO G IH N" },
    EnglishVocabulary::Word { "parser", "P AA R S ER" },
    EnglishVocabulary::Word { "pdf", "P IY D IY EH F" },
    EnglishVocabulary::Word { "plugin", "P L AH G IH N" },
    EnglishVocabulary::Word { "proofread", "P R UW F R IY D" },
    EnglishVocabulary::Word { "recursive", "R IY K ER S IH V" },
    EnglishVocabulary::Word { "refactor", "R IY F AE K T ER" },
    EnglishVocabulary::Word { "refactoring", "R IY F AE K T ER IH NG" },
    EnglishVocabulary::Word { "regex", "R EH G EH K S" },
    EnglishVocabulary::Word { "schema", "S K IY M AH" },
    EnglishVocabulary::Word { "sql", "EH S K Y UW EH L" },
    EnglishVocabulary::Word { "typescript", "T AY P S K R IH P T" },
    EnglishVocabulary::Word { "url", "Y UW AA R EH L" },
    EnglishVocabulary::Word { "urls", "Y UW AA R EH L Z" },
    EnglishVocabulary::Word { "workflow", "W ER K F L OW" },
    EnglishVocabulary::Word { "yaml", "Y AE M AH L" },
};

// With all that begins so.
constexpr std::array<std::string_view, 20> LeftOut {
    "asshole", "bitch",   "blowjob",        "bullshit", "cocksuck",  "cunt",       "dickhead",
    "dildo",   "dipshit", "faggot",         "fuck",     "horseshit", "motherfuck", "nigger",
    "shit",    "slut",    "son-of-a-bitch", "twat",     "wank",      "whore",
};

} // namespace

std::span<const EnglishVocabulary::Word> EnglishVocabulary::addedWords()
{
    return AddedWords;
}

bool EnglishVocabulary::isLeftOut(std::string_view word)
{
    return std::any_of(LeftOut.begin(), LeftOut.end(),
                       [word](std::string_view beginning) { return word.starts_with(beginning); });
}
