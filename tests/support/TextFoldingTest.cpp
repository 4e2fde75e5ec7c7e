#include "support/TextFolding.h"

#include <QChar>
#include <QString>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace
{

class TextFoldingTest : public testing::Test
{
protected:
    std::string folded(std::string_view text) { return std::string(folding.fold(text)); }

    void expectEqual(std::string_view a, std::string_view b)
    {
        EXPECT_EQ(folded(a), folded(b)) << a << " and " << b;
    }

    TextFolding folding;
};

TEST_F(TextFoldingTest, IgnoresCase)
{
    EXPECT_EQ(folded("QuickLY"), "quickly");
    expectEqual("ЖУРНАЛ", "журнал");
    expectEqual("ΑΘΗΝΑ", "αθηνα");
    expectEqual("ＡＢＣ", "ａｂｃ");
}

TEST_F(TextFoldingTest, IgnoresAccents)
{
    EXPECT_EQ(folded("Résumé"), "resume");
    EXPECT_EQ(folded("Ångström, naïve, Škoda, øre, Łódź, đak"),
              "angstrom, naive, skoda, ore, lodz, dak");
    expectEqual("Αθήνα", "αθηνα");
    expectEqual("ёж", "еж");
    expectEqual("שָׁלוֹם", "שלום");
    expectEqual("مُحَمَّد", "محمد");
}

TEST_F(TextFoldingTest, FoldsComposedAndDecomposedLettersEqually)
{
    expectEqual("Re\u0301sume\u0301", "Résumé");
    expectEqual("\u1EC7", "e\u0323\u0302");
    expectEqual("\u304C", "\u304B\u3099");
    expectEqual("\uD55C", "\u1112\u1161\u11AB");
    expectEqual("\u0CCB", "\u0CC6\u0CC2\u0CD5");
}

TEST_F(TextFoldingTest, FoldsSharpSToDoubleS)
{
    EXPECT_EQ(folded("Straße"), "strasse");
    EXPECT_EQ(folded("STRASSE"), "strasse");
    EXPECT_EQ(folded("STRAẞE"), "strasse");
}

TEST_F(TextFoldingTest, FoldsTurkishLettersToI)
{
    EXPECT_EQ(folded("ışık"), "isik");
    EXPECT_EQ(folded("IŞIK"), "isik");
    EXPECT_EQ(folded("İstanbul"), "istanbul");
}

TEST_F(TextFoldingTest, FoldsFinalSigma)
{
    expectEqual("ΛΟΓΟΣ", "λόγος");
    expectEqual("λογοσ", "λογος");
}

TEST_F(TextFoldingTest, FoldsWidthAndLigatures)
{
    EXPECT_EQ(folded("Ｆｕｌｌ\u3000１２３"), "full 123");
    expectEqual("ｶﾞｷﾞ", "ガギ");
    EXPECT_EQ(folded("ﬁnal oﬃce ℡ №"), "final office tel no");
    EXPECT_EQ(folded("\u212Aelvin"), "kelvin");
}

TEST_F(TextFoldingTest, DropsInvisibleCharacters)
{
    EXPECT_EQ(folded("un\u00ADbreak\u200Bable\uFEFF"), "unbreakable");
    expectEqual("\u2764\uFE0F", "\u2764");
    expectEqual("\u200F\u05D0\u200E", "\u05D0");
}

TEST_F(TextFoldingTest, KeepsPartsOfLettersOfOtherScripts)
{
    EXPECT_NE(folded("か"), folded("が"));
    EXPECT_NE(folded("하"), folded("한"));
    EXPECT_NE(folded("ที่"), folded("ท"));
    EXPECT_NE(folded("क्"), folded("क"));
    EXPECT_EQ(folded("日本語"), "日本語");
    EXPECT_EQ(folded("👍🏽"), "👍🏽");
}

TEST_F(TextFoldingTest, FoldsLongForms)
{
    EXPECT_EQ(folded("\uFDFA"), "صلى الله عليه وسلم");
    EXPECT_EQ(folded("\uFDFA\uFDFA").size(), 2 * folded("\uFDFA").size());
}

TEST_F(TextFoldingTest, KeepsWhiteSpaceAndControls)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(folded("a\tb\nc\0d"sv), "a\tb\nc\0d"sv);
    EXPECT_EQ(folded(""), "");
}

TEST_F(TextFoldingTest, TellsWhereEachByteComesFrom)
{
    std::vector<std::size_t> sources;
    EXPECT_EQ(folding.fold("Aße\u0301\u00ADn", sources), "assen");
    EXPECT_EQ(sources, (std::vector<std::size_t> { 0, 1, 1, 3, 8 }));
    EXPECT_EQ(folding.fold("か\u3099x", sources), "がx");
    EXPECT_EQ(sources, (std::vector<std::size_t> { 0, 0, 0, 6 }));
}

TEST_F(TextFoldingTest, AcceptsBytesThatAreNotUtf8)
{
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        const char c = static_cast<char>(byte);
        std::vector<std::size_t> sources;
        for (const std::string &text :
             { std::string(1, c), "a" + std::string(1, c) + "b", std::string(9, c) }) {
            const std::string expected = folded(text);
            EXPECT_EQ(folding.fold(text, sources), expected);
            EXPECT_EQ(sources.size(), expected.size());
        }
    }
}

TEST_F(TextFoldingTest, FoldsAsciiCharactersAtEveryOffset)
{
    for (char c = 0; c >= 0 && c < 127; ++c) {
        const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        for (std::size_t before = 0; before < 9; ++before) {
            for (const std::string_view after : { "", "é", "........" }) {
                const std::string dots(before, '.');
                EXPECT_EQ(folded(dots + c + std::string(after)), dots + lower + folded(after));
            }
        }
    }
}

TEST_F(TextFoldingTest, FoldsKnownCharactersAsNewOnes)
{
    for (char32_t c = 0x80; c < 0x2'0000; ++c) {
        if (QChar::isSurrogate(c) || QChar::category(c) == QChar::Other_NotAssigned)
            continue;
        const std::string text = QString::fromUcs4(&c, 1).toStdString();
        const std::string expected = folded(text);
        EXPECT_EQ(folded(text), expected) << text;
        EXPECT_EQ(folded("-" + text + "-"), "-" + expected + "-") << text;
    }
}

TEST_F(TextFoldingTest, RecognisesAsciiTexts)
{
    EXPECT_TRUE(TextFolding::isAscii(""));
    for (const std::size_t size : { 1U, 7U, 8U, 9U, 40U, 63U, 64U, 65U, 127U, 128U, 129U }) {
        std::string text(size, 'a');
        EXPECT_TRUE(TextFolding::isAscii(text));
        text.back() = '\xC3';
        EXPECT_FALSE(TextFolding::isAscii(text));
        EXPECT_FALSE(TextFolding::isAscii(text + std::string(100, 'a')));
    }
}

} // namespace
