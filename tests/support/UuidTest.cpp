#include "support/Uuid.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace
{

using namespace std::string_view_literals;

std::string written(const QUuid &uuid)
{
    const auto text = uuidText(uuid);
    return { text.data(), text.size() };
}

TEST(UuidTest, ReadsTheCanonicalFormInEitherCase)
{
    const QUuid expected(0xA1B2C3D4, 0xE5F6, 0x4A5B, 0x9C, 0x8D, 0x7E, 0x6F, 0x5A, 0x4B, 0x3C,
                         0x2D);
    EXPECT_EQ(uuidFromText("A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"), expected);
    EXPECT_EQ(uuidFromText("a1b2c3d4-e5f6-4a5b-9c8d-7e6f5a4b3c2d"), expected);
    EXPECT_EQ(uuidFromText("a1B2c3D4-E5f6-4a5B-9C8d-7e6F5a4b3C2d"), expected);
}

TEST(UuidTest, ReadsUuidsOfAnyVersion)
{
    EXPECT_EQ(uuidFromText("00000000-0000-0000-0000-000000000000"), QUuid());
    EXPECT_TRUE(uuidFromText("FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"));
    EXPECT_TRUE(uuidFromText("01234567-89AB-CDEF-0123-456789ABCDEF"));
}

TEST(UuidTest, RejectsOtherForms)
{
    constexpr std::array Texts {
        ""sv,
        "A1B2C3D4"sv,
        "{A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D}"sv,
        "{1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2}"sv,
        "A1B2C3D4E5F64A5B9C8D7E6F5A4B3C2D"sv,
        "A1B2C3D4E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D0"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2G"sv,
        "a1b2c3d4-e5f6-4a5b-9c8d-7e6f5a4b3c2g"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2@"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2/"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2:"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2`"sv,
        "A1B2C3D-4E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
        "A1B2C3D4_E5F6_4A5B_9C8D_7E6F5A4B3C2D"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C\0D"sv,
        " 1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
        "+1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
        "0x12C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
        "------------------------------------"sv,
        "A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C\u00E9"sv,
        "urn:uuid:A1B2C3D4-E5F6-4A5B-9C8D-7E6F5A4B3C2D"sv,
    };
    for (const auto text : Texts)
        EXPECT_FALSE(uuidFromText(text)) << text;
}

TEST(UuidTest, WritesTheCanonicalFormInUpperCase)
{
    EXPECT_EQ(
        written(QUuid(0x0A1B2C3D, 0x4E5F, 0x6A7B, 0x8C, 0x9D, 0xAE, 0xBF, 0xC0, 0xD1, 0xE2, 0xF3)),
        "0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3");
    EXPECT_EQ(written(QUuid()), "00000000-0000-0000-0000-000000000000");
}

TEST(UuidTest, ReadsBackWhatItWrites)
{
    for (int i = 0; i < 100; ++i) {
        const auto uuid = QUuid::createUuid();
        EXPECT_EQ(uuidFromText(written(uuid)), uuid);
    }
}

} // namespace
