#include "support/JsonReader.h"

#include "support/Uuid.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace
{

/// An enumeration with a single case.
struct Answer {
    static std::optional<Answer> fromRawValue(std::string_view text)
    {
        return text == "yes" ? std::optional(Answer { true }) : std::nullopt;
    }

    bool isYes = false;
};

/// Reads a `Target` from the only element of a JSON array.
template <typename Target>
std::optional<Target> readFrom(const QByteArray &json)
{
    Target target {};
    const bool isRead = JsonReader::parse(json, [&target](JsonReader &reader) {
        return reader.readArray([&] { return reader.read(target); });
    });
    return isRead ? std::optional(target) : std::nullopt;
}

template <typename Target>
std::optional<Target> readAs(const QByteArray &json)
{
    return readFrom<Target>('[' + json + ']');
}

/// The value of the member "a" of a JSON object.
std::optional<std::string> memberOf(const QByteArray &json)
{
    std::string text;
    const bool isRead = JsonReader::parse(json, [&text](JsonReader &reader) {
        return reader.readObject({ { "a", [&] { return reader.read(text); } } });
    });
    return isRead ? std::optional(text) : std::nullopt;
}

TEST(JsonReaderTest, ReadsOnlyStringsAsText)
{
    EXPECT_EQ(readAs<std::string>(R"("a\/b")"), "a/b");
    EXPECT_EQ(readAs<std::string>(R"("")"), "");
    for (const auto *const json : { "1", "null", "true", "[]", "{}", R"(["a"])" })
        EXPECT_FALSE(readAs<std::string>(json)) << json;
}

TEST(JsonReaderTest, ReadsOnlyUuidStringsAsUuids)
{
    EXPECT_EQ(readAs<QUuid>(R"("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D")"),
              uuidFromText("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"));
    EXPECT_EQ(readAs<QUuid>(R"("00000000-0000-0000-0000-000000000000")"), QUuid());
    for (const auto *const json : { "1", "null", R"("")", R"("A1B2C3D4")" })
        EXPECT_FALSE(readAs<QUuid>(json)) << json;
}

TEST(JsonReaderTest, ReadsOnlyRawValuesAsEnumerations)
{
    const auto answer = readAs<Answer>(R"("yes")");
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->isYes);
    for (const auto *const json : { R"("no")", R"("Yes")", R"("")", "true", "null", R"(["yes"])" })
        EXPECT_FALSE(readAs<Answer>(json)) << json;
}

TEST(JsonReaderTest, RequiresAMember)
{
    EXPECT_EQ(memberOf(R"({"a" : "text"})"), "text");
    EXPECT_EQ(memberOf(R"({"b" : 1, "a" : "text", "c" : null})"), "text");
    EXPECT_FALSE(memberOf(R"({"A" : "text"})"));
    EXPECT_FALSE(memberOf(R"({"a" : 1})"));
    EXPECT_FALSE(memberOf(R"({"a" : null})"));
    EXPECT_FALSE(memberOf(R"({"b" : {"a" : "text"}})")) << "nested";
    EXPECT_FALSE(memberOf("{}"));
}

TEST(JsonReaderTest, DoesNotRequireAnOptionalMember)
{
    for (const auto *const json : { "{}", R"({"b" : 1})" }) {
        EXPECT_TRUE(JsonReader::parse(json, [](JsonReader &reader) {
            return reader.readObject({ { "a", [] { return false; }, false } });
        })) << json;
    }
}

TEST(JsonReaderTest, ReadsTheFirstOfEqualMembers)
{
    EXPECT_EQ(memberOf(R"({"a" : "one", "a" : "two"})"), "one");
    EXPECT_EQ(memberOf(R"({"a" : "one", "a" : [2]})"), "one");
    EXPECT_FALSE(memberOf(R"({"a" : 1, "a" : "two"})"));
    EXPECT_FALSE(memberOf(R"({"a" : "one", "a" : "\ud800"})"));
}

TEST(JsonReaderTest, ReadsEscapedKeys)
{
    EXPECT_EQ(memberOf(R"({"\u0061" : "text"})"), "text");
    EXPECT_FALSE(memberOf(R"({"a" : "text", "\ud800" : 1})"));
    EXPECT_FALSE(memberOf(R"({"a" : "text", "\x" : 1})"));
}

TEST(JsonReaderTest, IgnoresOtherMembersOfAnyForm)
{
    for (const auto *const value : { "null", "true", "-0.5E+2", "18446744073709551615", "\"\\n\"",
                                     "[]", "{}", R"([{"a" : [1, {}]}, "]}"])" }) {
        const auto member = QByteArray("\"b\" : ") + value;
        EXPECT_EQ(memberOf("{" + member + R"(, "a" : "text"})"), "text") << value;
        EXPECT_EQ(memberOf(R"({"a" : "text", )" + member + "}"), "text") << value;
    }
}

TEST(JsonReaderTest, FailsOnInvalidJsonInIgnoredMembers)
{
    for (const auto *const value : { "",
                                     "nul",
                                     "nullx",
                                     "tru",
                                     "01",
                                     "1.",
                                     "-",
                                     "1e400",
                                     "18446744073709551616",
                                     "1 2",
                                     R"("\x")",
                                     R"("\udc00")",
                                     "[1,]",
                                     "[,]",
                                     "[1 2]",
                                     "[1",
                                     "1]",
                                     "[1}",
                                     "{]",
                                     "[[1}]",
                                     "{1}",
                                     R"({"c"})",
                                     R"({"c" : })",
                                     R"({"c" : 1,})",
                                     R"({"c" 1})",
                                     R"({1 : 1})",
                                     ":",
                                     ",",
                                     "'c'",
                                     R"({"\ud800" : 1})",
                                     R"([{"c" : nul}])" }) {
        const auto member = QByteArray("\"b\" : ") + value;
        EXPECT_FALSE(memberOf("{" + member + R"(, "a" : "text"})")) << value;
        EXPECT_FALSE(memberOf(R"({"a" : "text", )" + member + "}")) << value;
    }
}

TEST(JsonReaderTest, ReadsNullOrAnotherValue)
{
    const auto readText = [](const QByteArray &json) {
        std::string text = "null";
        const bool isRead = JsonReader::parse(json, [&text](JsonReader &reader) {
            return reader.readArray([&] { return reader.readNull() || reader.read(text); });
        });
        return isRead ? text : "nothing";
    };
    EXPECT_EQ(readText("[null]"), "null");
    EXPECT_EQ(readText(R"(["text"])"), "text");
    for (const auto *const json : { "[1]", "[nul]", "[nulls]", "[nothing]", R"([null "text"])" })
        EXPECT_EQ(readText(json), "nothing") << json;
}

TEST(JsonReaderTest, FailsAtTheFirstElementThatIsNotRead)
{
    int count = 0;
    EXPECT_FALSE(JsonReader::parse("[1, 2, 3]", [&count](JsonReader &reader) {
        return reader.readArray([&count] { return ++count < 2; });
    }));
    EXPECT_EQ(count, 2);
}

TEST(JsonReaderTest, ReturnsTheResultOfReadingTheRoot)
{
    const auto isEmptyArray = [](JsonReader &reader) {
        return reader.readArray([] { return false; });
    };
    EXPECT_TRUE(JsonReader::parse("[]", isEmptyArray));
    EXPECT_FALSE(JsonReader::parse("[null]", isEmptyArray));
}

TEST(JsonReaderTest, FailsOnInvalidJson)
{
    for (const auto *const json :
         { "", "[", "]", "{", "[\"a\", ]", "[\"a\",, \"b\"]", "[\"a\" \"b\"]", "\xEF\xBB\xBF",
           "[\"a\"] 2", "[\"a\"]]", "[\"a\"}", "[\"\xFF\"]", "[\"a\", \"\\ud800\"]", "\"a\"", "1" })
        EXPECT_FALSE(readFrom<std::string>(json)) << json;
}

TEST(JsonReaderTest, SkipsOneByteOrderMarkWithAnyCapacity)
{
    for (const qsizetype capacity : { 0, 1, 31, 32, 64, 1000 }) {
        QByteArray json("\xEF\xBB\xBF[\"text\"]");
        json.reserve(json.size() + capacity);
        EXPECT_EQ(readFrom<std::string>(json), "text") << capacity;
    }
    EXPECT_FALSE(readFrom<std::string>("\xEF\xBB\xBF\xEF\xBB\xBF[\"text\"]"));
}

} // namespace
