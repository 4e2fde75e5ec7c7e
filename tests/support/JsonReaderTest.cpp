#include "support/JsonReader.h"

#include "support/Uuid.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace
{

namespace dom = JsonReader::dom;

/// An enumeration with a single case.
struct Answer {
    static std::optional<Answer> fromRawValue(std::string_view text)
    {
        return text == "yes" ? std::optional(Answer { true }) : std::nullopt;
    }

    bool isYes = false;
};

/// Reads a `Value` from a JSON text.
template <typename Value>
std::optional<Value> readAs(const QByteArray &json)
{
    Value value {};
    const bool isRead = JsonReader::parse(
        json, [&value](dom::element root) { return JsonReader::read(root, value); });
    return isRead ? std::optional(value) : std::nullopt;
}

bool hasText(const QByteArray &json, std::string_view key)
{
    std::string text;
    return JsonReader::parse(json, [&](dom::element root) {
        dom::object object;
        return root.get(object) == simdjson::SUCCESS && JsonReader::readMember(object, key, text);
    });
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
    EXPECT_TRUE(hasText(R"({"a" : "text"})", "a"));
    EXPECT_TRUE(hasText(R"({"b" : 1, "a" : "text"})", "a"));
    EXPECT_FALSE(hasText(R"({"a" : "text"})", "b"));
    EXPECT_FALSE(hasText(R"({"a" : 1})", "a"));
    EXPECT_FALSE(hasText(R"({"a" : null})", "a"));
    EXPECT_FALSE(hasText(R"({"b" : {"a" : "text"}})", "a")) << "nested";
    EXPECT_FALSE(hasText("{}", "a"));
}

TEST(JsonReaderTest, ReturnsTheResultOfReadingTheRoot)
{
    EXPECT_TRUE(JsonReader::parse("1", [](dom::element) { return true; }));
    EXPECT_FALSE(JsonReader::parse("1", [](dom::element) { return false; }));
}

TEST(JsonReaderTest, DoesNotReadTheRootOfInvalidJson)
{
    for (const auto *const json : { "", "[", "[1, ]", "\xEF\xBB\xBF", "1 2", "\"\xFF\"" }) {
        bool isRead = false;
        EXPECT_FALSE(JsonReader::parse(json, [&isRead](dom::element) { return isRead = true; }));
        EXPECT_FALSE(isRead) << json;
    }
}

TEST(JsonReaderTest, SkipsOneByteOrderMarkWithAnyCapacity)
{
    for (const qsizetype capacity : { 0, 1, 31, 32, 64, 1000 }) {
        QByteArray json("\xEF\xBB\xBF\"text\"");
        json.reserve(json.size() + capacity);
        EXPECT_EQ(readAs<std::string>(json), "text") << capacity;
    }
    EXPECT_FALSE(readAs<std::string>("\xEF\xBB\xBF\xEF\xBB\xBF\"text\""));
}

} // namespace
