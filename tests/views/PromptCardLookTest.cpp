#include "views/ActionButton.h"
#include "views/DragHandle.h"
#include "views/Picture.h"
#include "views/PromptCardFixture.h"
#include "views/Symbol.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace
{

constexpr SrgbColor Raised { 0.125, 0.12, 0.14 };

struct Tagged {
    BlockColor color;
    std::optional<SrgbColor> display;
};

const std::array<Tagged, 8> AllColors { {
    { BlockColor::none, std::nullopt },
    { BlockColor::red, SrgbColor { 0.91, 0.16, 0.17 } },
    { BlockColor::orange, SrgbColor { 1.0, 159 / 255.0, 10 / 255.0 } },
    { BlockColor::yellow, SrgbColor { 1.0, 214 / 255.0, 10 / 255.0 } },
    { BlockColor::green, SrgbColor { 0.31, 0.71, 0.39 } },
    { BlockColor::blue, SrgbColor { 10 / 255.0, 132 / 255.0, 1.0 } },
    { BlockColor::purple, SrgbColor { 191 / 255.0, 90 / 255.0, 242 / 255.0 } },
    { BlockColor::pink, SrgbColor { 1.0, 55 / 255.0, 95 / 255.0 } },
} };

SrgbColor fillOf(const Tagged &tag)
{
    return tag.display ? tag.display->withOpacity(0.09) : Raised;
}

SrgbColor borderOf(const Tagged &tag)
{
    return tag.display ? tag.display->withOpacity(0.45) : SrgbColor::white(0.1);
}

class PromptCardLookTest : public PromptCardFixture
{
protected:
    PromptCardLookTest() { show(); }

    Picture takePicture() { return Picture(card, Background); }

    /// The expected shape of a card without its content.
    Picture shape(const Tagged &tag) const
    {
        return { card, Background, [&](QPainter &painter) {
                    drawBox(painter, card.rect(), 9, fillOf(tag), borderOf(tag));
                } };
    }

    /// Whether the action shows this symbol before its title.
    bool showsSymbol(const std::string &name, const std::string &symbol, bool isActive)
    {
        auto &action = *button(name);
        const auto accent = SrgbColor { 0.91, 0.16, 0.17 };
        const QColor fill =
            over(isActive ? accent.withOpacity(0.18) : SrgbColor::white(0.045), Background);
        const QRectF frame(8, (action.height() - 12) / 2, 12, 12); // NOLINT(*-integer-division)
        const Picture expected(action, fill, [&](QPainter &painter) {
            Symbol::paint(painter, QString::fromStdString(symbol), frame,
                          isActive ? accent : SrgbColor::white(0.56));
        });
        return Picture(action, Background).differenceFrom(expected, frame, 8) == QRectF();
    }

    QRect frameOf(const std::string &name) const { return button(name)->geometry(); }
};

TEST_F(PromptCardLookTest, HasFillAndBorderOfEachColor)
{
    for (const auto &tag : AllColors) {
        block.color = tag.color;
        render();
        const QColor fill = over(fillOf(tag), Background);
        const Picture picture = takePicture();
        EXPECT_TRUE(isColor(picture.at(5, 60), fill)) << block.color.title();
        EXPECT_TRUE(isColor(picture.at(200, 0.4), over(borderOf(tag), fill)))
            << block.color.title();
        EXPECT_TRUE(isColor(picture.at(0.4, 60), over(borderOf(tag), fill))) << block.color.title();
    }
}

TEST_F(PromptCardLookTest, HasA1PointBorderAndCornerRadius9)
{
    for (const auto &tag : AllColors) {
        block.color = tag.color;
        render();
        const Picture picture = takePicture();
        const Picture expected = shape(tag);
        for (const QRectF &corner : cornersOf(card.rect(), 10))
            EXPECT_EQ(picture.differenceFrom(expected, corner), QRectF()) << block.color.title();
        EXPECT_TRUE(isColor(picture.at(0.2, 0.2), Background));
    }
}

TEST_F(PromptCardLookTest, PadsItsContentBy10AndSpacesItBy8Points)
{
    const auto &handle = *card.findChild<DragHandle *>();
    EXPECT_EQ(handle.geometry(), QRect(10, 10, 44, 24));
    EXPECT_EQ(editor().geometry(), QRect(12, 42, card.width() - 24, 82));
    EXPECT_EQ(frameOf("Dictate").top(), 132);
    EXPECT_EQ(frameOf("Dictate").left(), 10);
    EXPECT_EQ(frameOf("Copy").top(), 132);
    EXPECT_EQ(frameOf("Copy").right(), card.width() - 11);
    EXPECT_EQ(card.height(), 132 + ActionButton::buttonHeight() + 10);
}

TEST_F(PromptCardLookTest, AlignsItsContentAtAnyWidth)
{
    card.resize(500, card.height());
    EXPECT_EQ(editor().geometry(), QRect(12, 42, 476, 82));
    EXPECT_EQ(frameOf("Copy").right(), 489);
    EXPECT_EQ(frameOf("Delete node").right(), 489);
}

TEST_F(PromptCardLookTest, PlacesColorAndDeleteButtonsAtTheRight)
{
    const QRect trash = frameOf("Delete node");
    const QRect palette = frameOf("Node color");
    EXPECT_EQ(trash.right(), card.width() - 11);
    EXPECT_EQ(palette.width(), 20);
    EXPECT_EQ(trash.left() - (palette.right() + 1), 8);
    EXPECT_EQ(palette.center().y(), 21);
    EXPECT_EQ(trash.center().y(), 21);
}

TEST_F(PromptCardLookTest, SpacesItsActionsBy6Points)
{
    renderText("https://example.com");
    EXPECT_EQ(frameOf("Launch").left() - (frameOf("Dictate").right() + 1), 6);
    renderText("");
    EXPECT_EQ(frameOf("Paste").left(), 10);
    EXPECT_EQ(frameOf("Dictate").left() - (frameOf("Paste").right() + 1), 6);
}

TEST_F(PromptCardLookTest, DrawsTheHandleInTheSecondaryColor)
{
    const QColor fill = over(Raised, Background);
    const Picture picture = takePicture();
    const QRectF handle(10, 10, 44, 24);
    const QRectF lines = picture.inkIn(handle, fill);
    EXPECT_GE(lines.left(), 10);
    EXPECT_LE(lines.right(), 34);
    EXPECT_LE(lines.height(), 9);
    EXPECT_GE(lines.height(), 6);
    EXPECT_NEAR(lines.center().y(), 22, 0.75);
    EXPECT_TRUE(
        isColor(picture.strongestInkIn(handle, fill), over(SrgbColor::white(0.56), fill), 24));
}

TEST_F(PromptCardLookTest, DrawsHeaderSymbolsInTheSecondaryColor)
{
    const QColor fill = over(Raised, Background);
    const Picture picture = takePicture();
    for (const auto *const name : { "Node color", "Delete node" }) {
        const QRectF ink = picture.inkIn(frameOf(name), fill);
        EXPECT_NEAR(ink.center().x(), QRectF(frameOf(name)).center().x(), 1) << name;
        EXPECT_NEAR(ink.center().y(), QRectF(frameOf(name)).center().y(), 1.5) << name;
        EXPECT_LE(ink.height(), 15) << name;
        EXPECT_GE(ink.height(), 9) << name;
        EXPECT_TRUE(isGrey(picture.strongestInkIn(frameOf(name), fill))) << name;
    }
}

TEST_F(PromptCardLookTest, EditorIsTransparent)
{
    renderText("");
    const QColor fill = over(Raised, Background);
    EXPECT_EQ(takePicture().inkIn(editor().geometry(), fill), QRectF());
    EXPECT_EQ(editor().font().pixelSize(), 13);
}

TEST_F(PromptCardLookTest, HighlightsCopiedAndStop)
{
    const QColor plain = over(SrgbColor::white(0.045), over(Raised, Background));
    const QColor active = over({ 0.91, 0.16, 0.17, 0.18 }, over(Raised, Background));
    const auto fillOfAction = [this](const std::string &name) {
        const QRect frame = frameOf(name);
        return takePicture().at(frame.left() + 4, frame.center().y());
    };
    EXPECT_TRUE(isColor(fillOfAction("Copy"), plain));
    EXPECT_TRUE(isColor(fillOfAction("Dictate"), plain));
    render(true, true);
    EXPECT_TRUE(isColor(fillOfAction("Copied"), active));
    EXPECT_TRUE(isColor(fillOfAction("Stop"), active));
}

TEST_F(PromptCardLookTest, ShowsTheSymbolOfEachAction)
{
    renderText("");
    EXPECT_TRUE(showsSymbol("Paste", "doc.on.clipboard", false));
    EXPECT_TRUE(showsSymbol("Dictate", "mic", false));
    renderText("https://example.com");
    EXPECT_TRUE(showsSymbol("Launch", "arrow.up.right.square", false));
    EXPECT_TRUE(showsSymbol("Copy", "doc.on.doc", false));
    EXPECT_FALSE(showsSymbol("Copy", "checkmark", false));
    render(true, true);
    EXPECT_TRUE(showsSymbol("Copied", "checkmark", true));
    EXPECT_TRUE(showsSymbol("Stop", "waveform", true));
}

TEST_F(PromptCardLookTest, RepaintsWhenTheColorChanges)
{
    const Picture before = takePicture();
    block.color = BlockColor::blue;
    render();
    EXPECT_NE(takePicture().differenceFrom(before), QRectF());
    block.color = BlockColor::none;
    render();
    EXPECT_EQ(takePicture().differenceFrom(before), QRectF());
}

} // namespace
