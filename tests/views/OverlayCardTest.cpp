#include "views/PanelContentFixture.h"
#include "views/Picture.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <set>

namespace
{

/// How a card over the panel comes, keeps the keyboard, and goes.
class OverlayCardTest : public PanelContentFixture
{
protected:
    OverlayCardTest() { openView(Texts { "a", "b" }); }

    void openCard()
    {
        preferences.showsInfoCard.set(true);
        settle();
        ASSERT_TRUE(aboutCard());
        EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    }

    bool isOpen() const
    {
        const auto *const card = aboutCard();
        const auto *const close = card ? Input::button(*card, "Close") : nullptr;
        return close && close->isVisible();
    }

    void expectToClose()
    {
        EXPECT_FALSE(preferences.showsInfoCard.get());
        settle();
        EXPECT_TRUE(QTest::qWaitFor([this] {
            settle();
            return !aboutCard();
        }));
    }

    QPoint beside() const { return { 5, 300 }; }

    bool isFocusInCard() const { return aboutCard()->isAncestorOf(QApplication::focusWidget()); }
};

TEST_F(OverlayCardTest, OpensAndClosesWithItsFlag)
{
    EXPECT_FALSE(aboutCard());
    openCard();
    preferences.showsInfoCard.set(false);
    expectToClose();
    openCard();
}

TEST_F(OverlayCardTest, ComesAndGoesWithinAFewFrames)
{
    QElapsedTimer timer;
    timer.start();
    preferences.showsInfoCard.set(true);
    settle();
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    EXPECT_GE(timer.elapsed(), 150);
    timer.restart();
    preferences.showsInfoCard.set(false);
    expectToClose();
    EXPECT_GE(timer.elapsed(), 150);
}

TEST_F(OverlayCardTest, FadesAndGrowsWhileItComes)
{
    const QColor ground(120, 160, 200);
    preferences.showsInfoCard.set(true);
    settle();
    auto &card = *aboutCard();
    const QRect place = card.cardGeometry();
    const auto brightnessBeside = [&card, &ground] {
        return Picture(card, ground).at(2, 2).lightness();
    };
    const int atFirst = brightnessBeside();
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    const int atLast = brightnessBeside();
    EXPECT_GT(atFirst, atLast);
    EXPECT_TRUE(isColor(Picture(card, ground).at(2, 2), over(SrgbColor::black(0.58), ground)));
    EXPECT_EQ(card.cardGeometry(), place);
}

TEST_F(OverlayCardTest, ClosesByAClickBesideTheCard)
{
    openCard();
    Input::click(*aboutCard(), beside());
    expectToClose();
}

TEST_F(OverlayCardTest, StaysOpenForAClickInsideTheCard)
{
    openCard();
    const QRect card = aboutCard()->cardGeometry();
    for (const QPoint place :
         { card.center(), card.topLeft() + QPoint(8, 30), card.bottomLeft() + QPoint(30, -4) }) {
        Input::click(*aboutCard(), place);
        settle();
        EXPECT_TRUE(preferences.showsInfoCard.get());
    }
}

TEST_F(OverlayCardTest, StaysOpenForAPressThatDoesNotBeginAndEndBeside)
{
    openCard();
    const QPoint inside = aboutCard()->cardGeometry().center();
    Input::press(*aboutCard(), inside);
    Input::release(*aboutCard(), beside());
    EXPECT_TRUE(preferences.showsInfoCard.get());
    Input::press(*aboutCard(), beside());
    Input::release(*aboutCard(), inside);
    EXPECT_TRUE(preferences.showsInfoCard.get());
}

TEST_F(OverlayCardTest, ClosesByItsButton)
{
    openCard();
    Input::click(*Input::button(*aboutCard(), "Close"));
    expectToClose();
}

TEST_F(OverlayCardTest, ClosesOnEscape)
{
    openCard();
    Input::key(*view, Qt::Key_Escape);
    expectToClose();
}

TEST_F(OverlayCardTest, ClosesOnEscapeEvenWhileItComes)
{
    preferences.showsInfoCard.set(true);
    settle();
    Input::key(*view, Qt::Key_Escape);
    expectToClose();
}

TEST_F(OverlayCardTest, ComesBackWhileItStillGoes)
{
    openCard();
    preferences.showsInfoCard.set(false);
    settle();
    preferences.showsInfoCard.set(true);
    settle();
    EXPECT_TRUE(QTest::qWaitFor([this] {
        settle();
        return view->findChildren<AboutCard *>().size() == 1 && isOpen();
    }));
}

TEST_F(OverlayCardTest, TakesTheKeyboardAndGivesItBack)
{
    Input::click(editor(1));
    ASSERT_TRUE(editor(1).hasFocus());
    openCard();
    EXPECT_TRUE(isFocusInCard());
    Input::type(*view, "lost");
    EXPECT_EQ(blocks()[1].text, "b");
    Input::key(*view, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] {
        settle();
        return editor(1).hasFocus();
    }));
    expectToClose();
    EXPECT_TRUE(editor(1).hasFocus());
    Input::key(*view, Qt::Key_End);
    Input::type(*view, "x");
    EXPECT_EQ(blocks()[1].text, "bx");
}

TEST_F(OverlayCardTest, GivesTheKeyboardBackAlsoIfItWasOpenedFromAnotherWindow)
{
    Input::click(editor(1));
    QWidget other;
    Input::show(other);
    preferences.showsInfoCard.set(true);
    settle();
    other.hide();
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*view));
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    EXPECT_TRUE(aboutCard()->hasFocus() || isFocusInCard());
    Input::key(*view, Qt::Key_Escape);
    expectToClose();
    EXPECT_TRUE(editor(1).hasFocus());
}

TEST_F(OverlayCardTest, KeepsTheKeyboardWhileItIsOpen)
{
    openCard();
    std::vector<QWidget *> visited;
    for (int count = 0; count < 8; ++count) {
        Input::key(*view, count < 4 ? Qt::Key_Tab : Qt::Key_Backtab,
                   count < 4 ? Qt::NoModifier : Qt::ShiftModifier);
        ASSERT_TRUE(isFocusInCard()) << count;
        visited.push_back(QApplication::focusWidget());
    }
    EXPECT_EQ(std::set<QWidget *>(visited.begin(), visited.end()).size(), 3U);
    EXPECT_EQ(visited[0], visited[3]);
    EXPECT_EQ(visited[2], visited[4]);
}

TEST_F(OverlayCardTest, KeepsWheelAndClicksFromWhatLiesBelow)
{
    for (int count = 0; count < 10; ++count)
        store().addBlock();
    settle();
    Input::wheel(card(0), -1);
    const int scrolled = card(0).y();
    ASSERT_LT(scrolled, 10);
    openCard();
    const auto before = blocks();
    Input::wheel(*aboutCard(), -1);
    EXPECT_EQ(card(0).y(), scrolled);
    Input::click(*Input::button(*view, "New Node"));
    EXPECT_EQ(blocks(), before);
}

TEST_F(OverlayCardTest, IsADialogForThoseWhoCannotSee)
{
    openCard();
    EXPECT_EQ(Input::role(*aboutCard()), QAccessible::Dialog);
    EXPECT_EQ(Input::spokenName(*aboutCard()), "About Quillsatchel");
}

} // namespace
