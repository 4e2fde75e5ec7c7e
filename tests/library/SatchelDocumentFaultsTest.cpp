#include "library/ExampleLibrary.h"
#include "library/SatchelDocument.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace
{

using namespace std::string_view_literals;
using ExampleLibrary::decode;
using ExampleLibrary::decodedText;
using ExampleLibrary::repeated;
using ExampleLibrary::with;

constexpr auto TabID = R"("id" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D")"sv;

// A single error anywhere makes the whole document invalid.

TEST(SatchelDocumentFaultsTest, FailsWithoutAnyRequiredKey)
{
    EXPECT_FALSE(decode("{}"));
    for (const auto key :
         { R"("tabs")"sv, R"("blocks")"sv, R"("name")"sv, R"("color")"sv, R"("text")"sv,
           R"("id" : "0F)"sv, R"("id" : "5A)"sv, R"("id" : "A1)"sv }) {
        std::string renamed(key);
        renamed[1] = '_';
        EXPECT_FALSE(decode(with(key, renamed))) << key;
        renamed[1] = static_cast<char>(key[1] - 'a' + 'A');
        EXPECT_FALSE(decode(with(key, renamed))) << "keys are case-sensitive: " << key;
    }
}

TEST(SatchelDocumentFaultsTest, FailsOnAWrongTypeAnywhere)
{
    constexpr std::array Values { "null"sv, "true"sv,     "0"sv,    "1.5"sv, "{}"sv,
                                  "[]"sv,   "\"text\""sv, "[{}]"sv, "[1]"sv, "[null]"sv };
    constexpr std::array Members {
        R"("Review this code for bugs.")"sv,
        R"("none")"sv,
        R"("Prompts")"sv,
        R"("0F1E2D3C-4B5A-4968-8776-655443322110")"sv,
        R"("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D")"sv,
    };
    for (const auto member : Members) {
        for (const auto value : Values) {
            const bool isAnyText =
                value.starts_with('"') && (member == Members[0] || member == Members[2]);
            const bool isAbsent = value == "null" && member == Members[4];
            EXPECT_EQ(decode(with(member, value)).has_value(), isAnyText || isAbsent)
                << member << " as " << value;
        }
    }
    for (const auto value : Values) {
        const auto text = std::string(value);
        EXPECT_FALSE(decode(text)) << "root " << value;
        EXPECT_FALSE(decode(with(TabID, R"("id" : )" + text))) << "tab id " << value;
        if (value == "[]")
            continue;
        EXPECT_FALSE(decode(R"({"tabs" : )" + text + "}")) << "tabs " << value;
        EXPECT_FALSE(decode(R"({"tabs" : [{"id" : "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D",)"
                            R"( "name" : "Prompts", "blocks" : )" +
                            text + "}]}"))
            << "blocks " << value;
    }
}

TEST(SatchelDocumentFaultsTest, FailsOnAnInvalidUuidAnywhere)
{
    constexpr std::array Texts { ""sv,
                                 "{A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D}"sv,
                                 "A1B2C3D4E5F64A5B9C8D7E6F5A4B3C2D"sv,
                                 "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2"sv,
                                 "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2DD"sv,
                                 "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2G"sv,
                                 " A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv };
    for (const auto text : Texts) {
        const auto quoted = '"' + std::string(text) + '"';
        EXPECT_FALSE(decode(with(TabID, R"("id" : )" + quoted))) << text;
        EXPECT_FALSE(decode(with(R"("0F1E2D3C-4B5A-4968-8776-655443322110")", quoted))) << text;
        EXPECT_FALSE(decode(with(R"("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D")", quoted))) << text;
    }
}

TEST(SatchelDocumentFaultsTest, FailsOnAnUnknownOrCapitalisedColor)
{
    for (const auto color : { "Red", "GREEN", "grey", "", "red ", "0" })
        EXPECT_FALSE(decode(with("\"none\"", '"' + std::string(color) + '"'))) << color;
}

TEST(SatchelDocumentFaultsTest, FailsOnATabWithoutAName)
{
    EXPECT_FALSE(decode(with(",\n      \"name\" : \"Prompts\"", "")));
}

TEST(SatchelDocumentFaultsTest, FailsWhenTruncatedAnywhere)
{
    for (std::size_t length = 0; length < ExampleLibrary::json.size(); ++length)
        ASSERT_FALSE(decode(ExampleLibrary::json.substr(0, length))) << "cut at " << length;
}

TEST(SatchelDocumentFaultsTest, FailsOnAnythingAfterTheDocument)
{
    const std::string json(ExampleLibrary::json);
    for (const auto tail : { "x"sv, "}"sv, "]"sv, ","sv, "\""sv, "0"sv, " null"sv, "\n{}"sv, "\0"sv,
                             "\xEF\xBB\xBF"sv, "\u00A0"sv, "// comment"sv })
        EXPECT_FALSE(decode(json + std::string(tail))) << tail;
    EXPECT_FALSE(decode(json + json));
    EXPECT_FALSE(decode(json + "\n" + json));
}

TEST(SatchelDocumentFaultsTest, FailsOnInvalidJson)
{
    constexpr std::array Texts {
        ""sv,
        " "sv,
        "\n"sv,
        "\0"sv,
        "{"sv,
        "tabs"sv,
        "nothing"sv,
        "\xEF\xBB\xBF"sv,
        "{'tabs' : []}"sv,
        "{tabs : []}"sv,
        R"({"tabs" : [],})"sv,
        R"({"tabs" : [,]})"sv,
        R"({"tabs" [] })"sv,
        R"({"tabs" : [] /* all */})"sv,
        "<tabs></tabs>"sv,
        "\xFF\xFE{\0}\0"sv,
        "\0{\0}"sv,
        "\u00A0{\"tabs\" : []}"sv,
    };
    for (const auto text : Texts)
        EXPECT_FALSE(decode(text)) << text;
}

TEST(SatchelDocumentFaultsTest, FailsOnInvalidNumbers)
{
    for (const auto number :
         { "01", "+1", "1.", ".5", "1e", "0x10", "NaN", "Infinity", "-", "1_0" })
        EXPECT_FALSE(decode(R"({"extra" : )" + std::string(number) + R"(, "tabs" : []})"))
            << number;
    EXPECT_TRUE(decode(R"({"extra" : -0.5E+2, "tabs" : []})"));
}

// We write no numbers, so such a file comes from another program. The store keeps a copy of it.
TEST(SatchelDocumentFaultsTest, FailsOnNumbersThatDoNotFitInto64Bits)
{
    for (const auto number : { "18446744073709551616", "1e400", "-1e400" })
        EXPECT_FALSE(decode(R"({"extra" : )" + std::string(number) + R"(, "tabs" : []})"))
            << number;
    EXPECT_TRUE(decode(R"({"extra" : 18446744073709551615, "tabs" : []})"));
    EXPECT_TRUE(decode(R"({"extra" : 1e-400, "tabs" : []})"));
}

TEST(SatchelDocumentFaultsTest, FailsOnUnescapedControlCharacters)
{
    for (char control = 0; control < 0x20; ++control)
        EXPECT_FALSE(decodedText({ &control, 1 })) << static_cast<int>(control);
}

TEST(SatchelDocumentFaultsTest, FailsOnInvalidEscapes)
{
    for (const auto escape :
         { R"(\x41)", R"(\')", R"(\0)", R"(\a)", R"(\u12)", R"(\u12g4)", R"(\U00000041)" })
        EXPECT_FALSE(decodedText(escape)) << escape;
}

TEST(SatchelDocumentFaultsTest, FailsOnUnpairedSurrogates)
{
    for (const auto half : { R"(\ud800)", R"(\udbff)", R"(\udc00)", R"(\udfff)", R"(\ud800x)",
                             R"(\ud800\n)", R"(\ud800\ud800)", R"(\ud83d\ud83d\ude00)",
                             R"(\ude00\ud83d)", R"(\ud800\u0041)", R"(\ud800 \udc00)" })
        EXPECT_FALSE(decodedText(half)) << half;
}

TEST(SatchelDocumentFaultsTest, FailsOnUnpairedSurrogatesInIgnoredMembers)
{
    EXPECT_FALSE(decode(R"({"extra" : "\udc00", "tabs" : []})"));
    EXPECT_FALSE(decode(R"({"\udc00" : 1, "tabs" : []})"));
}

TEST(SatchelDocumentFaultsTest, FailsOnInvalidUtf8)
{
    constexpr std::array Bytes {
        "\x80"sv,
        "\xBF"sv,
        "\xC3"sv,
        "\xC3("sv,
        "\xC0\x80"sv,
        "\xC1\xBF"sv,
        "\xE0\x80\x80"sv,
        "\xE2\x82"sv,
        "\xED\xA0\x80"sv,
        "\xED\xBF\xBF"sv,
        "\xED\xA0\xBD\xED\xB8\x80"sv,
        "\xF0\x80\x80\x80"sv,
        "\xF0\x9F\x98"sv,
        "\xF4\x90\x80\x80"sv,
        "\xF5\x80\x80\x80"sv,
        "\xF8\x88\x80\x80\x80"sv,
        "\xFE"sv,
        "\xFF"sv,
    };
    for (const auto bytes : Bytes) {
        EXPECT_FALSE(decodedText(bytes)) << testing::PrintToString(bytes);
        EXPECT_FALSE(decode(R"({"extra" : ")" + std::string(bytes) + R"(", "tabs" : []})"))
            << testing::PrintToString(bytes);
    }
}

TEST(SatchelDocumentFaultsTest, FailsOnExtremeNesting)
{
    constexpr std::size_t Levels = 100'000;
    const auto arrays = repeated("[", Levels) + repeated("]", Levels);
    const auto objects = repeated(R"({"a":)", Levels) + "1" + repeated("}", Levels);
    for (const auto &bomb : { arrays, objects }) {
        EXPECT_FALSE(decode(bomb));
        EXPECT_FALSE(decode(R"({"tabs" : )" + bomb + "}"));
        EXPECT_FALSE(decode(R"({"extra" : )" + bomb + R"(, "tabs" : []})"));
    }
    EXPECT_FALSE(decode(repeated("[", Levels)));
    EXPECT_FALSE(decode(repeated(R"({"a":)", Levels)));
}

} // namespace
