#include "support/SrgbColor.h"

#include <gtest/gtest.h>

namespace
{

TEST(SrgbColorTest, IsOpaqueByDefault)
{
    EXPECT_EQ((SrgbColor { 0.1, 0.2, 0.3 }), (SrgbColor { 0.1, 0.2, 0.3, 1 }));
    EXPECT_EQ(SrgbColor::white(), (SrgbColor { 1, 1, 1, 1 }));
    EXPECT_EQ(SrgbColor::black(0.5), (SrgbColor { 0, 0, 0, 0.5 }));
}

TEST(SrgbColorTest, ReadsAHexadecimalNumber)
{
    EXPECT_EQ(SrgbColor::fromHex(0xFF0000), (SrgbColor { 1, 0, 0 }));
    EXPECT_EQ(SrgbColor::fromHex(0x00FF00), (SrgbColor { 0, 1, 0 }));
    EXPECT_EQ(SrgbColor::fromHex(0x0000FF), (SrgbColor { 0, 0, 1 }));
    EXPECT_EQ(SrgbColor::fromHex(0x336699), (SrgbColor { 0.2, 0.4, 0.6 }));
}

TEST(SrgbColorTest, ChangesOnlyTheOpacity)
{
    EXPECT_EQ((SrgbColor { 0.1, 0.2, 0.3 }.withOpacity(0.4)), (SrgbColor { 0.1, 0.2, 0.3, 0.4 }));
}

TEST(SrgbColorTest, ComparesAllComponents)
{
    const SrgbColor color { 0.1, 0.2, 0.3, 0.4 };
    EXPECT_NE(color, (SrgbColor { 0, 0.2, 0.3, 0.4 }));
    EXPECT_NE(color, (SrgbColor { 0.1, 0, 0.3, 0.4 }));
    EXPECT_NE(color, (SrgbColor { 0.1, 0.2, 0, 0.4 }));
    EXPECT_NE(color, color.withOpacity(0));
}

} // namespace
