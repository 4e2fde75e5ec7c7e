#include "library/ExampleLibrary.h"
#include "library/SatchelDocument.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace std::string_literals;

/// Generates libraries full of characters that need escaping. Equal seeds give equal libraries.
class RandomLibrary
{
public:
    explicit RandomLibrary(unsigned seed)
        : m_engine(seed)
    {
    }

    SatchelDocument document()
    {
        SatchelDocument document;
        document.tabs.resize(below(6));
        for (auto &tab : document.tabs)
            fill(tab);
        if (below(3) > 0)
            document.activeTabID = QUuid::createUuid();
        return document;
    }

private:
    void fill(PromptTab &tab)
    {
        tab.name = text();
        tab.blocks.resize(below(6));
        for (auto &block : tab.blocks) {
            block.text = text();
            block.color = BlockColor::allCases.at(below(BlockColor::allCases.size()));
        }
    }

    std::string text()
    {
        std::u32string text(below(100), U'\0');
        for (auto &character : text)
            character = this->character();
        return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size())).toStdString();
    }

    char32_t character()
    {
        constexpr std::array<char32_t, 4> Ends { 0x30, 0x100, 0xD800, 0x110000 };
        const auto character = static_cast<char32_t>(below(Ends.at(below(Ends.size()))));
        return character >= 0xD800 && character < 0xE000 ? U'/' : character;
    }

    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_engine);
    }

    std::mt19937 m_engine;
};

SatchelDocument documentWithText(std::string text)
{
    auto document = ExampleLibrary::document();
    document.tabs.front().blocks.back().text = std::move(text);
    return document;
}

TEST(SatchelDocumentEncodingTest, WritesTheExactFileLayout)
{
    EXPECT_EQ(ExampleLibrary::document().encode(), ExampleLibrary::json);
}

TEST(SatchelDocumentEncodingTest, OmitsTheKeyOfAMissingActiveTab)
{
    auto document = ExampleLibrary::document();
    document.activeTabID.reset();
    EXPECT_EQ(document.encode(),
              ExampleLibrary::with(
                  "  \"activeTabID\" : \"A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D\",\n", ""));
}

TEST(SatchelDocumentEncodingTest, WritesEmptyListsOnOneLine)
{
    EXPECT_EQ(SatchelDocument().encode(), "{\n  \"tabs\" : []\n}");
    const auto tabID = *uuidFromText("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D");
    const SatchelDocument document { .activeTabID = {},
                                     .tabs = { { .id = tabID, .name = "", .blocks = {} } } };
    EXPECT_EQ(document.encode(), R"({
  "tabs" : [
    {
      "blocks" : [],
      "id" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D",
      "name" : ""
    }
  ]
})");
}

TEST(SatchelDocumentEncodingTest, WritesEveryColorByItsRawValue)
{
    for (const BlockColor color : BlockColor::allCases) {
        auto document = ExampleLibrary::document();
        document.tabs.front().blocks.back().color = color;
        EXPECT_EQ(document.encode(),
                  ExampleLibrary::with("\"none\"", '"' + std::string(color.rawValue()) + '"'));
    }
}

TEST(SatchelDocumentEncodingTest, EscapesTextsAndNames)
{
    EXPECT_EQ(documentWithText("\"a\\b/c\"\n\t\x01\x1F\x7F\u00E9\U0001F600").encode(),
              ExampleLibrary::with("Review this code for bugs.",
                                   R"(\"a\\b\/c\"\n\t\u0001\u001f)" + "\x7F\u00E9\U0001F600"s));
    auto document = ExampleLibrary::document();
    document.tabs.front().name = "a/\"b\"";
    EXPECT_EQ(document.encode(), ExampleLibrary::with("\"Prompts\"", R"("a\/\"b\"")"));
}

TEST(SatchelDocumentEncodingTest, EscapesSlashesAndReadsThemBackUnchanged)
{
    const auto document = documentWithText("https://example.com/a//b");
    const auto json = document.encode();
    EXPECT_NE(json.find(R"("https:\/\/example.com\/a\/\/b")"), std::string::npos);
    EXPECT_EQ(SatchelDocument::decode(QByteArray::fromStdString(json)), document);
}

TEST(SatchelDocumentEncodingTest, ReadsBackWhatItWrote)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        const auto document = RandomLibrary(seed).document();
        EXPECT_EQ(SatchelDocument::decode(QByteArray::fromStdString(document.encode())), document)
            << "seed " << seed;
    }
}

TEST(SatchelDocumentEncodingTest, ReadsBackALargeLibrary)
{
    SatchelDocument document { .activeTabID = {}, .tabs = std::vector<PromptTab>(100) };
    std::size_t length = 0;
    for (auto &tab : document.tabs) {
        tab.blocks.resize(20);
        for (auto &block : tab.blocks)
            block.text = std::string(length++, 'a') + "/";
    }
    const auto json = document.encode();
    EXPECT_GT(json.size(), 2'000'000U);
    EXPECT_EQ(SatchelDocument::decode(QByteArray::fromStdString(json)), document);
}

TEST(SatchelDocumentEncodingTest, WritesEqualLibrariesToEqualBytes)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const auto document = RandomLibrary(seed).document();
        const auto copy = document;
        EXPECT_EQ(document.encode(), copy.encode()) << "seed " << seed;
    }
}

} // namespace
