#include "library/BytePattern.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>

namespace
{

bool isEqual(unsigned char pattern, unsigned char byte)
{
    return pattern == byte || (std::islower(pattern) != 0 && std::toupper(pattern) == byte);
}

TEST(BytePatternTest, FindsEqualBytesAndBothCasesOfLetters)
{
    for (unsigned pattern = 0; pattern < 256; ++pattern) {
        if (std::isupper(static_cast<int>(pattern)) != 0)
            continue;
        const BytePattern search(static_cast<char>(pattern));
        for (unsigned first = 0; first < 256; first += ByteBlock::Size) {
            std::array<char, ByteBlock::Size> text {};
            std::uint64_t expected = 0;
            for (std::size_t i = 0; i < text.size(); ++i) {
                const auto byte = static_cast<unsigned char>(first + i);
                text.at(i) = static_cast<char>(byte);
                if (isEqual(static_cast<unsigned char>(pattern), byte))
                    expected |= std::uint64_t { 0x80 } << (8 * i);
            }
            EXPECT_EQ(search.equalBytes(text.data()), expected) << pattern << " in " << first;
        }
    }
}

} // namespace
