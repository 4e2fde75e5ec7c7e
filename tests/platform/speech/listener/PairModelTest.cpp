#include "platform/speech/listener/PairModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>

namespace
{

/// A model read back from its text.
class PairModelTest : public testing::Test
{
protected:
    void read(const std::string &texts)
    {
        WordCounts counts;
        counts.add(texts, false);
        read(UserVocabulary::choose(counts, [](const auto &) { return true; }));
    }

    void read(const UserVocabulary &vocabulary)
    {
        std::istringstream stream(pairModel(vocabulary));
        int order = 0;
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with('\\'))
                order = line == "\\1-grams:" ? 1 : line == "\\2-grams:" ? 2 : 0;
            else if (line.starts_with("ngram "))
                declared[line[6] - '0'] = std::stoul(line.substr(8));
            else if (!line.empty())
                readEntry(line, order);
        }
    }

    void readEntry(const std::string &line, int order)
    {
        std::istringstream fields(line);
        double logarithm = 0;
        double backoff = 0;
        std::string first;
        std::string second;
        fields >> logarithm >> first;
        if (order == 2) {
            fields >> second;
            pairs[first + ' ' + second] = std::pow(10, logarithm);
        } else {
            fields >> backoff;
            singles[first] = std::pow(10, logarithm);
            backoffs[first] = std::pow(10, backoff);
        }
    }

    double probability(const std::string &first, const std::string &second) const
    {
        const auto pair = pairs.find(first + ' ' + second);
        return pair != pairs.end() ? pair->second : backoffs.at(first) * singles.at(second);
    }

    std::map<int, std::size_t> declared; // numbers of entries
    std::map<std::string, double> singles;
    std::map<std::string, double> backoffs;
    std::map<std::string, double> pairs;
};

TEST_F(PairModelTest, ListsAsManyEntriesAsItDeclares)
{
    read("red wine. white wine. red car");
    EXPECT_EQ(declared[1], singles.size());
    EXPECT_EQ(declared[2], pairs.size());
    EXPECT_EQ(singles.size(), 6U) << "with both ends of a sentence";
}

TEST_F(PairModelTest, ProbabilitiesAddUpToOne)
{
    read("red wine. white wine. red car, red wine\n7 red 7\nwine 8 car");
    double sum = 0;
    for (const auto &[word, single] : singles)
        sum += single;
    EXPECT_NEAR(sum, 1, 0.01);
    for (const auto &[first, backoff] : backoffs) {
        if (first == "</s>")
            continue;
        sum = 0;
        for (const auto &[second, single] : singles)
            sum += second == "<s>" ? 0 : probability(first, second);
        EXPECT_NEAR(sum, 1, 0.01) << first;
    }
}

TEST_F(PairModelTest, PrefersFrequentPairs)
{
    read("red wine, red wine, red car. old car. old car. old car");
    EXPECT_GT(singles["car"], singles["wine"]);
    EXPECT_GT(probability("red", "wine"), 2 * probability("red", "car"));
}

TEST_F(PairModelTest, IsEmptyWithoutWords)
{
    EXPECT_EQ(pairModel({}), "");
}

TEST_F(PairModelTest, MayHaveNoPairs)
{
    UserVocabulary vocabulary;
    vocabulary.words.push_back({ .key = "wine", .spelling = "wine", .count = 1 });
    read(vocabulary);
    EXPECT_EQ(declared.count(2), 0U);
    EXPECT_TRUE(pairs.empty());
    EXPECT_GT(singles["wine"], 0);
}

} // namespace
