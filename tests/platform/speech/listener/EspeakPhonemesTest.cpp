#include "platform/speech/listener/EspeakPhonemes.h"

#include <gtest/gtest.h>

namespace
{

TEST(EspeakPhonemesTest, MapsMnemonicsToPhones)
{
    EXPECT_EQ(arpabetPhones("dZ_'eI_s_@_n"), "JH EY S AH N");
    EXPECT_EQ(arpabetPhones("k_,u:_b_3_n_'E_t_i:_z"), "K UW B ER N EH T IY Z");
}

TEST(EspeakPhonemesTest, SeparatesAtSpacesToo)
{
    EXPECT_EQ(arpabetPhones("s_'i:_ _'E_s"), "S IY EH S");
    EXPECT_EQ(arpabetPhones(" _s_'i: \n"), "S IY");
}

TEST(EspeakPhonemesTest, IgnoresMarksAndPhonemesWithoutSound)
{
    EXPECT_EQ(arpabetPhones("b_'V_?_%n"), "B AH N");
}

TEST(EspeakPhonemesTest, IsNoneForUnknownMnemonics)
{
    EXPECT_EQ(arpabetPhones("s_y:_s"), std::nullopt);
    EXPECT_EQ(arpabetPhones("(en)_s"), std::nullopt);
    EXPECT_EQ(arpabetPhones("\xFF"), std::nullopt);
}

TEST(EspeakPhonemesTest, IsNoneWithoutPhones)
{
    EXPECT_EQ(arpabetPhones(""), std::nullopt);
    EXPECT_EQ(arpabetPhones("_?_'_ "), std::nullopt);
}

} // namespace
