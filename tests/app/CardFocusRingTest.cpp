#include "app/PanelFixture.h"
#include "views/LauncherSettingsCard.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

/// Focus rings in cards: shown after keyboard input, hidden after mouse clicks. A widget that
/// regains the focus when a card closes gets its ring back.
class CardFocusRingTest : public PanelFixture
{
protected:
    CardFocusRingTest() { start({ tabOf("Prompts", { "text" }) }); }

    /// Waits until the card has opened. Returns its focused button.
    template <typename Card>
    QAbstractButton &focusedButton()
    {
        settle();
        auto &card = *panel().findChild<Card *>();
        EXPECT_TRUE(QTest::qWaitFor([&card] { return Input::button(card, "Close")->hasFocus(); }));
        return *Input::button(card, "Close");
    }

    static bool hasRing(QAbstractButton &button)
    {
        const Picture picture(button, Qt::black);
        return picture.at(button.width() / 2.0, 0.6).lightness() > 100;
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
    {
        Input::key(panel(), which, modifiers);
        settle();
    }
};

TEST_F(CardFocusRingTest, HidesTheRingUntilAKeyIsPressedAfterAMouseClick)
{
    Input::click(editor(0));
    Input::type(panel(), "typed before");
    press("About Quillsatchel");
    auto &close = focusedButton<AboutCard>();
    EXPECT_FALSE(hasRing(close));

    key(Qt::Key_A);
    EXPECT_TRUE(close.hasFocus());
    EXPECT_TRUE(hasRing(close));
}

TEST_F(CardFocusRingTest, ShowsTheRingWhereTabMovesTheFocus)
{
    press("About Quillsatchel");
    auto &close = focusedButton<AboutCard>();
    key(Qt::Key_Tab);
    auto *const focused = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
    ASSERT_TRUE(focused);
    EXPECT_NE(focused, &close);
    EXPECT_TRUE(hasRing(*focused));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(hasRing(close));
}

TEST_F(CardFocusRingTest, ShowsTheRingInACardOpenedByKeyboard)
{
    Input::click(editor(0));
    button("About Quillsatchel").setFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_TRUE(hasRing(focusedButton<AboutCard>()));
}

TEST_F(CardFocusRingTest, ShowsTheRingInACardOpenedByShortcut)
{
    Input::click(editor(0));
    key(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(hasRing(focusedButton<LauncherSettingsCard>()));
}

TEST_F(CardFocusRingTest, RestoresTheRingWithTheFocus)
{
    auto &icon = button("About Quillsatchel");
    icon.setFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    Input::click(focusedButton<AboutCard>());
    settle();
    EXPECT_TRUE(icon.hasFocus());
    EXPECT_TRUE(hasRing(icon));
}

} // namespace
