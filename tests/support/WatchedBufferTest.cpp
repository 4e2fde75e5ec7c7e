#include "support/WatchedBuffer.h"

#include <QDataStream>
#include <gtest/gtest.h>

namespace
{

const QByteArray Letters = "abcdef";

TEST(WatchedBufferTest, IsEnoughForReadsWithinTheBuffer)
{
    WatchedBuffer buffer(Letters);
    EXPECT_EQ(buffer.peek(6), Letters);
    EXPECT_EQ(buffer.read(4), "abcd");
    EXPECT_TRUE(buffer.seek(5));
    EXPECT_EQ(buffer.read(1), "f");
    EXPECT_TRUE(buffer.atEnd());
    EXPECT_TRUE(buffer.wasEnough());
}

TEST(WatchedBufferTest, DetectsAReadPastTheEnd)
{
    WatchedBuffer buffer(Letters);
    EXPECT_EQ(buffer.read(7), Letters);
    EXPECT_FALSE(buffer.wasEnough());
}

TEST(WatchedBufferTest, DetectsATruncatedNumber)
{
    WatchedBuffer buffer(Letters);
    QDataStream stream(&buffer);
    quint32 number = 0;
    stream >> number;
    EXPECT_TRUE(buffer.wasEnough());
    stream >> number;
    EXPECT_FALSE(buffer.wasEnough());
}

TEST(WatchedBufferTest, DetectsASeekPastTheEnd)
{
    WatchedBuffer buffer(Letters);
    EXPECT_TRUE(buffer.seek(6));
    EXPECT_TRUE(buffer.wasEnough());
    EXPECT_FALSE(buffer.seek(7));
    EXPECT_FALSE(buffer.wasEnough());
    EXPECT_EQ(buffer.pos(), 6);
}

TEST(WatchedBufferTest, RemembersAReadPastTheEnd)
{
    WatchedBuffer buffer(Letters);
    buffer.read(7);
    EXPECT_TRUE(buffer.seek(0));
    EXPECT_EQ(buffer.read(1), "a");
    EXPECT_FALSE(buffer.wasEnough());
}

} // namespace
