#include "platform/speech/listener/EnglishVocabulary.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace
{

TEST(EnglishVocabularyTest, UsesOnlyPhonesOfTheModel)
{
    const std::set<std::string> phones { "AA", "AE", "AH", "AO", "AW", "AY", "B",  "CH", "D",  "DH",
                                         "EH", "ER", "EY", "F",  "G",  "HH", "IH", "IY", "JH", "K",
                                         "L",  "M",  "N",  "NG", "OW", "OY", "P",  "R",  "S",  "SH",
                                         "T",  "TH", "UH", "UW", "V",  "W",  "Y",  "Z",  "ZH" };
    for (const auto &word : EnglishVocabulary::addedWords()) {
        std::istringstream stream(word.phones);
        int count = 0;
        for (std::string phone; stream >> phone; ++count)
            EXPECT_TRUE(phones.contains(phone)) << word.spelling << ' ' << phone;
        EXPECT_GE(count, 3) << word.spelling;
    }
}

TEST(EnglishVocabularyTest, AddsEachWordOnceAndNoExcludedOne)
{
    std::set<std::string> words;
    for (const auto &word : EnglishVocabulary::addedWords()) {
        EXPECT_TRUE(words.insert(word.spelling).second) << word.spelling;
        EXPECT_FALSE(EnglishVocabulary::isExcluded(word.spelling)) << word.spelling;
    }
}

TEST(EnglishVocabularyTest, ExcludesVulgarWordsButNotSimilarOnes)
{
    EXPECT_TRUE(EnglishVocabulary::isExcluded("shit"));
    EXPECT_TRUE(EnglishVocabulary::isExcluded("shitty"));
    for (const auto *const word : { "shift", "cocktail", "title", "dickens", "scunthorpe", "as",
                                    "classic", "matsushita", "swank", "bit", "" })
        EXPECT_FALSE(EnglishVocabulary::isExcluded(word)) << word;
}

} // namespace
