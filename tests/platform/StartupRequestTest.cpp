#include "platform/desktop/StartupRequest.h"

#include <gtest/gtest.h>

namespace
{

using StartupRequest::decode;
using StartupRequest::encode;

TEST(StartupRequestTest, DecodesTheEncodedToken)
{
    for (const StartupToken &token :
         { StartupToken(), StartupToken { "token", "" }, StartupToken { "", "host-1_TIME42" },
           StartupToken { "a \"token\" \\", "\u00E9_TIME0" } })
        EXPECT_EQ(decode(encode(token)), token);
}

TEST(StartupRequestTest, OmitsInvalidTokens)
{
    const StartupToken token { std::string(513, 'x'), "two\nlines" };
    EXPECT_EQ(decode(encode(token)), StartupToken());
    EXPECT_EQ(decode(encode({ "escape\x1B", "zero" + std::string(1, '\0') })), StartupToken());
    EXPECT_EQ(decode(encode({ std::string(512, 'x'), "" }))->activationToken.size(), 512U);
}

TEST(StartupRequestTest, IgnoresInvalidTokensInARequest)
{
    const auto request = encode({});
    const auto greeting = request.substr(0, request.size() - 2);
    EXPECT_EQ(decode(greeting), StartupToken());
    EXPECT_EQ(decode(greeting + "a\tb"), StartupToken());
    EXPECT_EQ(decode(greeting + std::string(2000, 'x') + "\nid\n"), (StartupToken { "", "id" }));
}

TEST(StartupRequestTest, RejectsOtherTexts)
{
    for (const auto *const text : { "", "\n", "come forward", "Quillsatchel" })
        EXPECT_EQ(decode(text), std::nullopt);
    EXPECT_EQ(decode(StartupRequest::Answer), std::nullopt);
}

} // namespace
