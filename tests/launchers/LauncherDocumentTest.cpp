#include "launchers/LauncherDocument.h"

#include "launchers/ExampleLaunchers.h"
#include "support/ProcessorTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>

namespace
{

using namespace std::string_literals;
using namespace std::string_view_literals;
using ExampleLaunchers::application;
using ExampleLaunchers::decode;
using ExampleLaunchers::encode;
using ExampleLaunchers::website;
using ExampleLaunchers::with;

/// A website as an element of the JSON array.
constexpr auto Website = R"({"id" : "0F7A2B94-5C1E-4D3B-A8E2-91B6C4D7F015",
"kind" : "website", "name" : "example.com", "target" : "https://www.example.com"})"sv;

std::string array(std::string_view element, std::size_t count)
{
    std::string text = "[";
    text.reserve((element.size() + 1) * count + 2);
    for (std::size_t i = 0; i < count; ++i) {
        text += i == 0 ? "" : ",";
        text += element;
    }
    return text + "]";
}

/// The name of the first launcher, decoded from the JSON string `literal`, given without quotes.
std::optional<std::string> decodedName(std::string_view literal)
{
    const auto slots = decode(with("Safari", literal));
    return slots ? std::optional(slots->front()->name) : std::nullopt;
}

TEST(LauncherDocumentTest, ReadsTheSlots)
{
    EXPECT_EQ(decode(ExampleLaunchers::json), ExampleLaunchers::slots());
}

TEST(LauncherDocumentTest, ReadsAnEmptyArrayAsFiveEmptySlots)
{
    EXPECT_EQ(decode("[]"), LauncherSlots());
}

TEST(LauncherDocumentTest, ReadsNullsAsEmptySlots)
{
    for (std::size_t count = 1; count <= 8; ++count)
        EXPECT_EQ(decode(array("null", count)), LauncherSlots()) << count;
}

TEST(LauncherDocumentTest, PadsAShortArrayAtItsEnd)
{
    EXPECT_EQ(decode("[null, null]"), LauncherSlots());
    const auto slots = decode("[null, " + std::string(Website) + "]");
    EXPECT_EQ(slots, (LauncherSlots { std::nullopt, website() }));
}

TEST(LauncherDocumentTest, KeepsTheFirstFiveOfSevenLaunchers)
{
    std::string json = "[";
    for (int number = 0; number < 7; ++number) {
        auto element = std::string(Website);
        json += (number == 0 ? "" : ",") +
                element.replace(element.find("example.com"), 11, std::to_string(number));
    }
    const auto slots = decode(json + "]");
    ASSERT_TRUE(slots);
    for (std::size_t slot = 0; slot < slots->size(); ++slot)
        EXPECT_EQ(slots->at(slot)->name, std::to_string(slot));
}

TEST(LauncherDocumentTest, FailsOnAnErrorAfterTheFifthSlot)
{
    for (const auto element : { "1"sv, "{}"sv, "[]"sv, "\"\""sv })
        EXPECT_FALSE(decode("[null, null, null, null, null, " + std::string(element) + "]"))
            << element;
}

TEST(LauncherDocumentTest, ReadsHugeArraysQuickly)
{
    const ProcessorTime spent;
    EXPECT_EQ(decode(array("null", 1'000'000)), LauncherSlots());
    const auto item = website();
    EXPECT_EQ(decode(array(Website, 20'000)), (LauncherSlots { item, item, item, item, item }));
    EXPECT_LT(spent.seconds(), 10);
}

TEST(LauncherDocumentTest, ReadsAnIdInLowerCaseAndWritesItInUpperCase)
{
    std::string json(ExampleLaunchers::json);
    const auto id = std::string("6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31");
    auto lowered = id;
    std::ranges::transform(lowered, lowered.begin(),
                           [](unsigned char digit) { return std::tolower(digit); });
    json.replace(json.find(id), id.size(), lowered);
    const auto slots = decode(json);
    ASSERT_TRUE(slots);
    EXPECT_EQ(*slots, ExampleLaunchers::slots());
    EXPECT_EQ(encode(*slots), ExampleLaunchers::json);
}

TEST(LauncherDocumentTest, KeepsTwoLaunchersWithEqualTargets)
{
    auto second = website();
    second.id = *uuidFromText("FFFFFFFF-5C1E-4D3B-A8E2-91B6C4D7F015");
    auto slots = ExampleLaunchers::slots();
    slots[4] = second;
    EXPECT_EQ(decode(encode(slots)), slots);
    EXPECT_NE(slots[2], slots[4]);
    EXPECT_EQ(slots[2]->target, slots[4]->target);
}

TEST(LauncherDocumentTest, KeepsTwoLaunchersWithEqualIds)
{
    EXPECT_EQ(decode(array(Website, 2)), (LauncherSlots { website(), website() }));
}

TEST(LauncherDocumentTest, ReadsPlainAndEscapedSlashes)
{
    EXPECT_EQ(decode(with(R"(\/Applications\/)", "/Applications/")), ExampleLaunchers::slots());
    EXPECT_EQ(decode(with(R"(\/Applications\/)", R"(/Applications\/)")), ExampleLaunchers::slots());
}

TEST(LauncherDocumentTest, ReadsMembersInAnyOrder)
{
    const auto slots = decode(R"([null, null, {"target" : "https://www.example.com",
        "name" : "example.com", "kind" : "website",
        "id" : "0F7A2B94-5C1E-4D3B-A8E2-91B6C4D7F015"}])");
    EXPECT_EQ(slots, (LauncherSlots { std::nullopt, std::nullopt, website() }));
}

TEST(LauncherDocumentTest, IgnoresUnknownMembers)
{
    constexpr std::array Values {
        R"(null)"sv,   R"(true)"sv,        R"(-1.5e3)"sv,
        R"("text")"sv, R"([1, [], {}])"sv, R"({"id" : 1, "kind" : []})"sv
    };
    for (const auto value : Values) {
        const auto member = R"({ "extra" : )" + std::string(value) + ", ";
        std::string json;
        for (const char c : ExampleLaunchers::json)
            json += c == '{' ? member : std::string(1, c);
        EXPECT_EQ(decode(json), ExampleLaunchers::slots()) << value;
    }
}

TEST(LauncherDocumentTest, UsesTheFirstOfDuplicateMembers)
{
    for (const auto member : { R"("name" : "other")"sv, R"("name" : 1)"sv, R"("kind" : "folder")"sv,
                               R"("id" : null)"sv, R"("target" : [])"sv }) {
        const auto after = with(R"("\/Applications\/Safari.app")",
                                R"("\/Applications\/Safari.app", )" + std::string(member));
        EXPECT_EQ(decode(after), ExampleLaunchers::slots()) << member;
    }
    const auto before = decode(with(R"("id")", R"("name" : "other", "id")"));
    ASSERT_TRUE(before);
    EXPECT_EQ(before->front()->name, "other");
}

TEST(LauncherDocumentTest, IgnoresAByteOrderMark)
{
    EXPECT_EQ(decode("\xEF\xBB\xBF" + std::string(ExampleLaunchers::json)),
              ExampleLaunchers::slots());
    EXPECT_EQ(decode("\xEF\xBB\xBF[]"), LauncherSlots());
    EXPECT_FALSE(decode("\xEF\xBB\xBF"));
    EXPECT_FALSE(decode("\xEF\xBB\xBF\xEF\xBB\xBF[]"));
}

TEST(LauncherDocumentTest, KeepsNamesAndTargetsUnchanged)
{
    EXPECT_EQ(decodedName(""), "");
    EXPECT_EQ(decodedName("  \u00A0 "), "  \u00A0 ");
    EXPECT_EQ(decodedName("\u00E9 \u65E5 \U0001F600"), "\u00E9 \u65E5 \U0001F600");
    EXPECT_EQ(decodedName(R"(\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00)"),
              "\"\\/\b\f\n\r\t\u00E9\U0001F600");
    EXPECT_EQ(decodedName(R"(a\u0000b)"), "a\0b"s);
    const auto slots = decode(with(R"(\/Applications\/Safari.app)", "not even a path"));
    ASSERT_TRUE(slots);
    EXPECT_EQ(slots->front()->target, "not even a path");
}

TEST(LauncherDocumentTest, ReadsNamesOfAMegabyte)
{
    const std::string name(1'000'000, 'x');
    EXPECT_EQ(decodedName(name), name);
}

TEST(LauncherDocumentTest, FailsWithoutAnyRequiredMember)
{
    EXPECT_FALSE(decode("[{}]"));
    for (const auto key : { R"("id")"sv, R"("kind")"sv, R"("name")"sv, R"("target")"sv }) {
        std::string renamed(key);
        renamed[1] = '_';
        EXPECT_FALSE(decode(with(key, renamed))) << key;
        renamed[1] = static_cast<char>(key[1] - 'a' + 'A');
        EXPECT_FALSE(decode(with(key, renamed))) << "keys are case-sensitive: " << key;
    }
}

TEST(LauncherDocumentTest, FailsOnAWrongTypeAnywhere)
{
    constexpr std::array Values { "null"sv, "true"sv,     "0"sv,    "1.5"sv, "{}"sv,
                                  "[]"sv,   "\"text\""sv, "[{}]"sv, "[1]"sv, "[null]"sv };
    constexpr std::array Members { R"("6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31")"sv,
                                   R"("application")"sv, R"("Safari")"sv,
                                   R"("\/Applications\/Safari.app")"sv };
    for (const auto value : Values) {
        for (const auto member : Members) {
            const bool isAnyText = member == Members[2] || member == Members[3];
            EXPECT_EQ(decode(with(member, value)).has_value(), isAnyText && value.starts_with('"'))
                << member << " as " << value;
        }
        EXPECT_EQ(decode(with("null", value)).has_value(), value == "null") << "slot " << value;
        EXPECT_EQ(decode(value).has_value(), value == "[]" || value == "[null]")
            << "root " << value;
    }
    EXPECT_FALSE(decode(R"({"slots" : []})"));
    EXPECT_FALSE(decode(Website)) << "a launcher outside an array";
}

TEST(LauncherDocumentTest, FailsOnAnUnknownKind)
{
    for (const auto kind : { "folder", "Application", "WEBSITE", "", "application ", "0" })
        EXPECT_FALSE(decode(with("\"application\"", '"' + std::string(kind) + '"'))) << kind;
}

TEST(LauncherDocumentTest, FailsOnAnInvalidId)
{
    for (const auto id :
         { "", "6B1D3C0E", "{6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31}",
           "6B1D3C0E2F444A579E0B7C1F2A9D8E31", "6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E3G",
           " 6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31" })
        EXPECT_FALSE(decode(with("6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31", id))) << id;
}

TEST(LauncherDocumentTest, FailsWhenTruncatedAnywhere)
{
    for (std::size_t length = 0; length < ExampleLaunchers::json.size(); ++length)
        ASSERT_FALSE(decode(ExampleLaunchers::json.substr(0, length))) << "cut at " << length;
}

TEST(LauncherDocumentTest, FailsOnAnythingAfterTheArray)
{
    const std::string json(ExampleLaunchers::json);
    EXPECT_EQ(decode(json + " \r\n\t"), ExampleLaunchers::slots());
    for (const auto tail :
         { "x"sv, "]"sv, ","sv, "0"sv, " null"sv, "[]"sv, "\0"sv, "\xEF\xBB\xBF"sv })
        EXPECT_FALSE(decode(json + std::string(tail))) << tail;
}

TEST(LauncherDocumentTest, FailsOnInvalidUtf8)
{
    constexpr std::array Bytes { "\x80"sv,         "\xC3"sv,
                                 "\xC3("sv,        "\xC0\x80"sv,
                                 "\xE2\x82"sv,     "\xED\xA0\x80"sv,
                                 "\xF0\x9F\x98"sv, "\xF4\x90\x80\x80"sv,
                                 "\xFF"sv };
    for (const auto bytes : Bytes) {
        EXPECT_FALSE(decodedName(bytes)) << testing::PrintToString(bytes);
        EXPECT_FALSE(decode(with("{", R"({"extra" : ")" + std::string(bytes) + R"(",)")))
            << testing::PrintToString(bytes);
    }
    EXPECT_FALSE(decodedName(R"(\ud800)"));
}

TEST(LauncherDocumentTest, FailsOnExtremeNesting)
{
    EXPECT_FALSE(decode(std::string(100'000, '[')));
    EXPECT_FALSE(decode(std::string(100'000, '[') + std::string(100'000, ']')));
}

TEST(LauncherDocumentTest, WritesTheExactFileLayout)
{
    EXPECT_EQ(encode(ExampleLaunchers::slots()), ExampleLaunchers::json);
}

TEST(LauncherDocumentTest, WritesFiveNullsIfAllSlotsAreEmpty)
{
    EXPECT_EQ(encode({}), "[\n  null,\n  null,\n  null,\n  null,\n  null\n]");
}

TEST(LauncherDocumentTest, WritesEverySlotAtItsIndex)
{
    for (std::size_t filled = 0; filled < 5; ++filled) {
        LauncherSlots slots;
        slots.at(filled) = website();
        EXPECT_EQ(decode(encode(slots)), slots);
    }
    LauncherSlots full;
    full.fill(application());
    EXPECT_EQ(decode(encode(full)), full);
}

TEST(LauncherDocumentTest, EscapesNamesAndTargets)
{
    LauncherSlots slots;
    slots.front() = application();
    slots.front()->name = "\"a\\b/c\"\n\t\x01\x1F\x7F\u00E9\U0001F600";
    slots.front()->target = "/\"\\";
    EXPECT_EQ(encode(slots), R"([
  {
    "id" : "6B1D3C0E-2F44-4A57-9E0B-7C1F2A9D8E31",
    "kind" : "application",
    "name" : "\"a\\b\/c\"\n\t\u0001\u001f)"
                             "\x7F\u00E9\U0001F600"
                             R"(",
    "target" : "\/\"\\"
  },
  null,
  null,
  null,
  null
])");
    EXPECT_EQ(decode(encode(slots)), slots);
}

} // namespace
