#include "library/ExampleLibrary.h"
#include "library/SatchelDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

using namespace std::string_literals;
using namespace std::string_view_literals;
using ExampleLibrary::decode;
using ExampleLibrary::decodedText;
using ExampleLibrary::with;

TEST(SatchelDocumentDecodingTest, ReadsTheWholeLibrary)
{
    EXPECT_EQ(decode(ExampleLibrary::json), ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, ReadsADocumentWithoutTabs)
{
    const auto document = decode(R"({"tabs" : []})");
    ASSERT_TRUE(document);
    EXPECT_EQ(*document, SatchelDocument());
}

TEST(SatchelDocumentDecodingTest, ReadsNoActiveTabFromAnAbsentOrNullKey)
{
    for (const auto &json :
         { with(R"("activeTabID" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D",)", ""),
           with(R"("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D")", "null") }) {
        const auto document = decode(json);
        ASSERT_TRUE(document) << json;
        EXPECT_FALSE(document->activeTabID);
        EXPECT_EQ(document->tabs, ExampleLibrary::document().tabs);
        EXPECT_EQ(document->encode().find("activeTabID"), std::string::npos);
    }
}

TEST(SatchelDocumentDecodingTest, KeepsAnActiveTabIdThatMatchesNoTab)
{
    const auto document = decode(with("\"A1B2", "\"FFFF"));
    ASSERT_TRUE(document);
    EXPECT_EQ(document->activeTabID, uuidFromText("FFFFC3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"));
}

TEST(SatchelDocumentDecodingTest, ReadsUuidsInLowerCase)
{
    std::string json(ExampleLibrary::json);
    for (const auto digits :
         { "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv, "0F1E2D3C-4B5A-4968-8776-655443322110"sv }) {
        for (auto at = json.find(digits); at != std::string::npos; at = json.find(digits)) {
            const auto begin = json.begin() + static_cast<std::ptrdiff_t>(at);
            std::transform(begin, begin + 36, begin,
                           [](char c) { return c >= 'A' ? static_cast<char>(c | 0x20) : c; });
        }
    }
    ASSERT_NE(json, ExampleLibrary::json);
    EXPECT_EQ(decode(json), ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, IgnoresUnknownKeysAtEveryLevel)
{
    constexpr std::array Values {
        R"(null)"sv,   R"(true)"sv,        R"(-1.5e3)"sv,
        R"("text")"sv, R"([1, [], {}])"sv, R"({"tabs" : 1, "id" : null, "text" : [{}]})"sv,
    };
    for (const auto value : Values) {
        const auto member = R"({ "extra" : )" + std::string(value) + ", ";
        std::string json;
        for (const char c : ExampleLibrary::json)
            json += c == '{' ? member : std::string(1, c);
        EXPECT_EQ(decode(json), ExampleLibrary::document()) << value;
    }
}

TEST(SatchelDocumentDecodingTest, ReadsKeysInAnyOrder)
{
    const auto document = decode(R"({
        "tabs" : [{ "name" : "Prompts", "id" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D", "blocks" : [
            { "text" : "Summarise the following text in three bullet points:",
              "id" : "0F1E2D3C-4B5A-4968-8776-655443322110", "color" : "green" },
            { "id" : "5A6B7C8D-9E0F-4A1B-8C2D-3E4F5A6B7C8D",
              "text" : "Review this code for bugs.", "color" : "none" }] }],
        "activeTabID" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D" })");
    EXPECT_EQ(document, ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, ReadsAnyJsonWhiteSpace)
{
    std::string compact;
    std::string wide = "\r\n\t ";
    bool isInString = false;
    for (const char c : ExampleLibrary::json) {
        if (c == '"')
            isInString = !isInString;
        const bool isBlank = !isInString && (c == ' ' || c == '\n');
        compact += isBlank ? "" : std::string(1, c);
        wide += isBlank ? "\r\n\t "s : std::string(1, c);
    }
    EXPECT_EQ(decode(compact), ExampleLibrary::document());
    EXPECT_EQ(decode(wide + "\r\n\t "), ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, IgnoresAByteOrderMark)
{
    EXPECT_EQ(decode("\xEF\xBB\xBF" + std::string(ExampleLibrary::json)),
              ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, KeepsTextsAndNamesUnchanged)
{
    EXPECT_EQ(decodedText(""), "");
    EXPECT_EQ(decodedText("  \u00A0 "), "  \u00A0 ");
    EXPECT_EQ(decodedText("\u00E9 \u65E5 \U0001F600 \uFFFF \u2028 \x7F"),
              "\u00E9 \u65E5 \U0001F600 \uFFFF \u2028 \x7F");
    EXPECT_EQ(decode(with("\"Prompts\"", "\"\""))->tabs.front().name, "");
}

TEST(SatchelDocumentDecodingTest, ReadsEveryEscape)
{
    EXPECT_EQ(decodedText(R"(\"\\\/\b\f\n\r\t)"), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(decodedText(R"(https:\/\/example.com\/)"), "https://example.com/");
    EXPECT_EQ(decodedText("https://example.com/"), "https://example.com/");
    EXPECT_EQ(decodedText(R"(\u0041\u00e9\u00E9\u65e5\u001f)"), "A\u00E9\u00E9\u65E5\x1F");
    EXPECT_EQ(decodedText(R"(a\u0000b)"), "a\0b"s);
    EXPECT_EQ(decodedText(R"(\ud83d\ude00\uDBFF\uDFFF)"), "\U0001F600\U0010FFFF");
    EXPECT_EQ(decodedText(R"(\ud7ff\ue000)"), "\uD7FF\uE000");
}

TEST(SatchelDocumentDecodingTest, ReadsEscapedKeys)
{
    EXPECT_EQ(decode(with("\"tabs\"", R"("\u0074abs")")), ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, ReadsLongTexts)
{
    const std::string text = ExampleLibrary::repeated("\U0001F600 many words\\n", 50'000);
    const auto decoded = decodedText(text);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->size(), text.size() - 50'000);
}

TEST(SatchelDocumentDecodingTest, KeepsDuplicateIdsAndOrder)
{
    const auto document = decode(
        with("5A6B7C8D-9E0F-4A1B-8C2D-3E4F5A6B7C8D", "0F1E2D3C-4B5A-4968-8776-655443322110"));
    ASSERT_TRUE(document);
    const auto &blocks = document->tabs.front().blocks;
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(blocks.front().id, blocks.back().id);
    EXPECT_EQ(blocks.back().text, "Review this code for bugs.");
}

TEST(SatchelDocumentDecodingTest, ReadsBytesWithSpareCapacity)
{
    QByteArray roomy(ExampleLibrary::json.data(),
                     static_cast<qsizetype>(ExampleLibrary::json.size()));
    roomy.reserve(roomy.size() + 1000);
    EXPECT_EQ(SatchelDocument::decode(roomy), ExampleLibrary::document());
}

TEST(SatchelDocumentDecodingTest, NeverReadsPastTheEnd)
{
    const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void *const pages =
        mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    char *const end = static_cast<char *>(pages) + pageSize;
    ASSERT_EQ(mprotect(end, pageSize, PROT_NONE), 0);
    constexpr auto Size = ExampleLibrary::json.size();
    std::ranges::copy(ExampleLibrary::json, end - Size);

    EXPECT_EQ(SatchelDocument::decode(QByteArray::fromRawData(end - Size, Size)),
              ExampleLibrary::document());
    munmap(pages, 2 * pageSize);
}

} // namespace
