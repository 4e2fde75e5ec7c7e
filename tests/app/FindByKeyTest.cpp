#include "app/PanelFixture.h"
#include "views/FindCard.h"
#include "views/TextField.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

/// The keys of the panel that open the find card.
class FindByKeyTest : public PanelFixture
{
protected:
    FindByKeyTest() { start({ tabOf("One", { "first", "" }), tabOf("Two", { "second" }) }); }

    static FindCard *card() { return panel().findChild<FindCard *>(); }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
    {
        Input::key(panel(), which, modifiers);
        settle();
    }

    void type(const std::string &letters)
    {
        Input::type(panel(), letters);
        settle();
    }

    /// Waits until the card has the focus. Returns its query.
    std::string query()
    {
        EXPECT_TRUE(card());
        if (!card())
            return "no card";
        auto *const field = card()->findChild<TextField *>();
        EXPECT_TRUE(QTest::qWaitFor([field] { return field->hasFocus(); }));
        return card()->query().toStdString();
    }

    void close()
    {
        key(Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([this] {
            settle();
            return !card();
        }));
    }
};

TEST_F(FindByKeyTest, CtrlFOpensTheCardWithoutAFocus)
{
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(query(), "");
}

TEST_F(FindByKeyTest, CtrlFOpensTheCardFromATextAndEscapeReturnsToIt)
{
    Input::click(editor(0));
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(query(), "");
    close();
    EXPECT_TRUE(editor(0).hasFocus());
    EXPECT_EQ(editor(0).toPlainText(), QStringLiteral("first"));
}

TEST_F(FindByKeyTest, CtrlFOpensTheCardFromTheFieldOfATab)
{
    Input::doubleClick(*chips()[0]);
    draw();
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(query(), "");
    EXPECT_EQ(panel().findChildren<FindCard *>().size(), 1);
}

TEST_F(FindByKeyTest, CtrlFReplacesTheAboutCard)
{
    delegate->showAbout();
    settle();
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(query(), "");
    EXPECT_TRUE(QTest::qWaitFor([this] {
        settle();
        return !panel().findChild<AboutCard *>();
    }));
}

TEST_F(FindByKeyTest, CtrlFInTheCardSelectsTheQuery)
{
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(query(), "");
    type("first");
    key(Qt::Key_F, Qt::ControlModifier);
    type("s");
    EXPECT_EQ(query(), "s");
}

TEST_F(FindByKeyTest, ALetterTypedWithoutAFocusBeginsTheQuery)
{
    type("sec");
    EXPECT_EQ(query(), "sec");
}

TEST_F(FindByKeyTest, ALetterTypedOnAControlBeginsTheQuery)
{
    for (const std::string name : { "Copy", "New tab", "Close", "New Node", "Node color" }) {
        button(name).setFocus();
        type("s");
        EXPECT_EQ(query(), "s") << name;
        close();
        EXPECT_TRUE(button(name).hasFocus()) << name;
    }
    chips()[0]->setFocus();
    type("s");
    EXPECT_EQ(query(), "s");
}

TEST_F(FindByKeyTest, AShiftedLetterADigitAndASignBeginTheQuery)
{
    for (const std::string letter : { "S", "1", "#" }) {
        type(letter);
        EXPECT_EQ(query(), letter);
        close();
    }
}

TEST_F(FindByKeyTest, TypingInATextDoesNotOpenTheCard)
{
    Input::click(editor(1));
    type("abc");
    EXPECT_FALSE(card());
    EXPECT_EQ(editor(1).toPlainText(), QStringLiteral("abc"));
    Input::doubleClick(*chips()[0]);
    draw();
    type("abc");
    EXPECT_FALSE(card());
}

TEST_F(FindByKeyTest, OtherKeysDoNotOpenTheCard)
{
    for (const auto which : { Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Delete,
                              Qt::Key_Backspace, Qt::Key_Tab, Qt::Key_Left, Qt::Key_F5 }) {
        panel().setFocus();
        key(which);
        EXPECT_FALSE(card()) << which;
    }
    panel().setFocus();
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_G, Qt::ControlModifier);
    key(Qt::Key_A, Qt::MetaModifier);
    EXPECT_FALSE(card());
}

TEST_F(FindByKeyTest, TypingInAnotherCardDoesNotOpenTheCard)
{
    delegate->showAbout();
    settle();
    type("abc");
    EXPECT_FALSE(card());
}

} // namespace
