#include "support/JsonWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace std::string_view_literals;

template <typename Write>
std::string writtenBy(Write &&write)
{
    std::string text;
    JsonWriter writer([&text](std::string_view piece) { text += piece; });
    std::forward<Write>(write)(writer);
    writer.finish();
    return text;
}

std::string written(std::string_view text)
{
    return writtenBy([text](JsonWriter &writer) { writer.string(text); });
}

TEST(JsonWriterTest, WritesEmptyObjectsAndArraysOnOneLine)
{
    const auto object = writtenBy([](JsonWriter &writer) {
        writer.beginObject();
        writer.endObject();
    });
    EXPECT_EQ(object, "{}");
    const auto array = writtenBy([](JsonWriter &writer) {
        writer.beginArray();
        writer.endArray();
    });
    EXPECT_EQ(array, "[]");
}

TEST(JsonWriterTest, WritesOneIndentedMemberPerLine)
{
    const auto text = writtenBy([](JsonWriter &writer) {
        writer.beginObject();
        writer.key("a");
        writer.string("one");
        writer.key("b");
        writer.beginArray();
        writer.string("two");
        writer.beginObject();
        writer.key("c");
        writer.string("three");
        writer.endObject();
        writer.endArray();
        writer.endObject();
    });

    EXPECT_EQ(text, "{\n"
                    "  \"a\" : \"one\",\n"
                    "  \"b\" : [\n"
                    "    \"two\",\n"
                    "    {\n"
                    "      \"c\" : \"three\"\n"
                    "    }\n"
                    "  ]\n"
                    "}");
}

TEST(JsonWriterTest, ContinuesAfterEmptyArraysAndObjects)
{
    const auto text = writtenBy([](JsonWriter &writer) {
        writer.beginArray();
        writer.beginArray();
        writer.endArray();
        writer.beginObject();
        writer.endObject();
        writer.beginObject();
        writer.key("a");
        writer.beginArray();
        writer.endArray();
        writer.key("b");
        writer.string("");
        writer.endObject();
        writer.endArray();
    });

    EXPECT_EQ(text, "[\n"
                    "  [],\n"
                    "  {},\n"
                    "  {\n"
                    "    \"a\" : [],\n"
                    "    \"b\" : \"\"\n"
                    "  }\n"
                    "]");
}

TEST(JsonWriterTest, WritesUuidsInUpperCase)
{
    const auto uuid = QUuid::fromString(u"a1b2c3d4-e5f6-4a5b-9c8d-7e6f5a4b3c2d");
    const auto text = writtenBy([&uuid](JsonWriter &writer) { writer.uuid(uuid); });
    EXPECT_EQ(text, "\"A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D\"");
}

TEST(JsonWriterTest, EscapesQuotesBackslashesAndSlashes)
{
    EXPECT_EQ(written("\""), R"("\"")");
    EXPECT_EQ(written("\\"), R"("\\")");
    EXPECT_EQ(written("/"), R"("\/")");
    EXPECT_EQ(written("https://example.com/"), R"("https:\/\/example.com\/")");
}

TEST(JsonWriterTest, EscapesControlCharactersInTheirShortForms)
{
    EXPECT_EQ(written("\b\t\n\f\r"), R"("\b\t\n\f\r")");
}

TEST(JsonWriterTest, EscapesOtherControlCharactersByCode)
{
    const std::vector<std::pair<char, std::string>> escapes {
        { '\x00', "0000" }, { '\x01', "0001" }, { '\x02', "0002" }, { '\x03', "0003" },
        { '\x04', "0004" }, { '\x05', "0005" }, { '\x06', "0006" }, { '\x07', "0007" },
        { '\x0B', "000b" }, { '\x0E', "000e" }, { '\x0F', "000f" }, { '\x10', "0010" },
        { '\x11', "0011" }, { '\x12', "0012" }, { '\x13', "0013" }, { '\x14', "0014" },
        { '\x15', "0015" }, { '\x16', "0016" }, { '\x17', "0017" }, { '\x18', "0018" },
        { '\x19', "0019" }, { '\x1A', "001a" }, { '\x1B', "001b" }, { '\x1C', "001c" },
        { '\x1D', "001d" }, { '\x1E', "001e" }, { '\x1F', "001f" },
    };
    for (const auto &[character, code] : escapes)
        EXPECT_EQ(written({ &character, 1 }), "\"\\u" + code + "\"");
}

TEST(JsonWriterTest, DoesNotEscapeOtherAsciiCharacters)
{
    for (int code = 0x20; code <= 0x7F; ++code) {
        const std::string text(1, static_cast<char>(code));
        const bool isEscaped = text == "\"" || text == "\\" || text == "/";
        EXPECT_EQ(written(text) == '"' + text + '"', !isEscaped) << text;
    }
}

TEST(JsonWriterTest, DoesNotEscapeCharactersOutsideAscii)
{
    EXPECT_EQ(written("\u0080\u00E9\u2028\u2029\uFEFF\uFFFF\U0001F600"),
              "\"\u0080\u00E9\u2028\u2029\uFEFF\uFFFF\U0001F600\"");
}

TEST(JsonWriterTest, EscapesAtTheEndsAndInBetween)
{
    EXPECT_EQ(written("/a/"), R"("\/a\/")");
    EXPECT_EQ(written("//ab\n\ncd//"), R"("\/\/ab\n\ncd\/\/")");
    EXPECT_EQ(written("a\0b"sv), R"("a\u0000b")");
}

TEST(JsonWriterTest, EscapesAtEveryPositionOfALongText)
{
    for (std::size_t position = 0; position < 100; ++position) {
        std::string text(100, 'a');
        text[position] = '\n';
        std::string expected(101, 'a');
        expected.replace(position, 2, "\\n");
        EXPECT_EQ(written(text), '"' + expected + '"') << position;
    }
}

TEST(JsonWriterTest, WritesTextsOfAnyLength)
{
    for (const auto length : { 31U, 32U, 33U, 65'534U, 65'535U, 65'536U, 3'000'000U }) {
        const std::string text(length, 'a');
        EXPECT_EQ(written(text), '"' + text + '"') << length;
    }
}

TEST(JsonWriterTest, WritesLongTextsOfWhichEachByteNeedsAnEscape)
{
    for (const auto length : { 10'922U, 10'923U, 300'000U }) {
        std::string expected;
        for (std::size_t index = 0; index < length; ++index)
            expected += "\\u0001";
        EXPECT_EQ(written(std::string(length, '\1')), '"' + expected + '"') << length;
    }
}

TEST(JsonWriterTest, PassesALongTextOnInPieces)
{
    std::string text;
    std::size_t longest = 0;
    JsonWriter writer([&](std::string_view piece) {
        text += piece;
        longest = std::max(longest, piece.size());
    });
    writer.beginArray();
    for (int i = 0; i < 4'000; ++i)
        writer.string(std::string(1'000, 'a'));
    writer.endArray();
    EXPECT_GT(text.size(), 3'900'000U) << "before the end";
    writer.finish();
    EXPECT_LE(longest, 65'536U);

    std::string expected = "[\n";
    for (int i = 0; i < 4'000; ++i)
        expected += "  \"" + std::string(1'000, 'a') + (i < 3'999 ? "\",\n" : "\"\n");
    EXPECT_EQ(text, expected + "]");
}

} // namespace
