// Words are short pieces of the text in its order, and their keys are words too.
#include "Expect.h"
#include "platform/speech/listener/TextWords.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace
{

using TextWords::Run;
using TextWords::Word;

bool isOfKeys(char character)
{
    return (character >= 'a' && character <= 'z') || character == '\'';
}

void expectKey(const Word &word)
{
    const std::string_view key = word.key;
    expect(!key.empty() && std::all_of(key.begin(), key.end(), isOfKeys),
           "a key has small letters and apostrophes");
    expect(std::count(key.begin(), key.end(), '\'') + std::ptrdiff_t(TextWords::MaxLetters) >=
               std::ptrdiff_t(key.size()),
           "a key has a limited number of letters");
    expect(TextWords::keyOf(word.spelling) == key, "a spelling has the key of its word");
    expect(TextWords::keyOf(key) == key, "a key is its own key");
}

/// Checks that words follow each other in a text.
class Order
{
public:
    explicit Order(std::string_view text)
        : m_rest(text)
    {
    }

    void expectNext(std::string_view spelling)
    {
        const std::less_equal<> isBefore;
        expect(!spelling.empty() && spelling.size() <= TextWords::MaxSize,
               "a spelling has a limited size");
        expect(isBefore(m_rest.data(), spelling.data()) &&
                   isBefore(spelling.data() + spelling.size(), m_rest.data() + m_rest.size()),
               "a spelling is in the text after the word before it");
        const auto end = spelling.data() + spelling.size() - m_rest.data();
        m_rest.remove_prefix(static_cast<std::size_t>(end));
    }

private:
    std::string_view m_rest;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    Order order(text);
    TextWords::forEachRun(text, [&order](const Run &run) {
        expect(!run.words.empty(), "a run has words");
        for (const auto &word : run.words) {
            order.expectNext(word.spelling);
            expectKey(word);
        }
    });
    return 0;
}
