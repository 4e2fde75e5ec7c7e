#include "views/PanelContentFixture.h"
#include "views/Picture.h"

#include <QElapsedTimer>
#include <QVariantAnimation>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <set>

namespace
{

/// Opening, focus and closing of a card over the panel.
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

    void expectClosed()
    {
        EXPECT_FALSE(preferences.showsInfoCard.get());
        settle();
        EXPECT_TRUE(QTest::qWaitFor([this] {
            settle();
            return !aboutCard();
        }));
    }

    QPoint outside() const { return { 5, 300 }; }

    bool isFocusInCard() const { return aboutCard()->isAncestorOf(QApplication::focusWidget()); }
};

TEST_F(OverlayCardTest, OpensAndClosesWithItsFlag)
{
    EXPECT_FALSE(aboutCard());
    openCard();
    preferences.showsInfoCard.set(false);
    expectClosed();
    openCard();
}

TEST_F(OverlayCardTest, AnimatesOpeningAndClosing)
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
    expectClosed();
    EXPECT_GE(timer.elapsed(), 150);
}

TEST_F(OverlayCardTest, FadesInWhileOpening)
{
    const QColor background(120, 160, 200);
    preferences.showsInfoCard.set(true);
    settle();
    auto &card = *aboutCard();
    const QRect frame = card.cardGeometry();
    const auto brightnessOutside = [&card, &background] {
        return Picture(card, background).at(2, 2).lightness();
    };
    const int atFirst = brightnessOutside();
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    const int atLast = brightnessOutside();
    EXPECT_GT(atFirst, atLast);
    EXPECT_TRUE(
        isColor(Picture(card, background).at(2, 2), over(SrgbColor::black(0.58), background)));
    EXPECT_EQ(card.cardGeometry(), frame);
}

/// Progress of the cubic Bezier curve with the control points (0, 0) and (0.58, 1) after a quarter,
/// a half and three quarters of its time.
constexpr std::array<double, 3> EaseOut { 0.378, 0.685, 0.906 };

class OverlayCardFrameTest : public OverlayCardTest
{
protected:
    /// `openness` converts progress of the curve to openness from 0 to 1.
    void expectProgress(const std::function<double(double)> &openness)
    {
        for (std::size_t quarter = 0; quarter < EaseOut.size(); ++quarter) {
            stopAt(static_cast<int>(quarter) + 1);
            EXPECT_NEAR(opacity(), openness(EaseOut[quarter]), 0.012) << quarter;
            EXPECT_NEAR(scale(), 0.97 + 0.03 * openness(EaseOut[quarter]), tolerance()) << quarter;
        }
    }

private:
    /// Pauses the animation after `quarters` of its time.
    void stopAt(int quarters)
    {
        auto &animation = *aboutCard()->findChild<QVariantAnimation *>();
        animation.pause();
        animation.setCurrentTime(animation.duration() * quarters / 4);
    }

    /// The opacity of the dimming outside the card, relative to an open card.
    double opacity()
    {
        const QColor outside = Picture(*aboutCard(), Qt::white).at(2, 2);
        return (1 - outside.redF()) / 0.58;
    }

    /// The drawn width of the card relative to its width when open.
    double scale()
    {
        const QRectF card = aboutCard()->cardGeometry();
        const Picture picture(*aboutCard(), Qt::white);
        const double inset = edgeNear(picture, card.left(), card.center().y()) - card.left();
        return 1 - 2 * inset / card.width();
    }

    /// The accuracy of `scale`: painting a pixmap moves its edges to whole pixels.
    double tolerance()
    {
        return 1.5 / aboutCard()->devicePixelRatio() / aboutCard()->cardGeometry().width();
    }

    /// The left edge of the card, accurate to a fraction of a pixel: the position where the
    /// brightness falls below the mean of outside and inside.
    static double edgeNear(const Picture &picture, double left, double y)
    {
        const double pixel = 1 / picture.scale();
        const auto light = [&picture, y, pixel](double x) {
            return picture.at(x + pixel / 4, y).redF();
        };
        const double mean = (light(left - 2 * pixel) + light(left + 8)) / 2;
        double x = left - 2 * pixel;
        while (light(x + pixel) > mean)
            x += pixel;
        const double part = (light(x) - mean) / (light(x) - light(x + pixel));
        return x + (0.5 + part) * pixel;
    }
};

TEST_F(OverlayCardFrameTest, EasesOutAndGrowsFrom97PercentWhileOpening)
{
    preferences.showsInfoCard.set(true);
    settle();
    expectProgress([](double eased) { return eased; });
}

TEST_F(OverlayCardFrameTest, EasesOutAndShrinksTo97PercentWhileClosing)
{
    openCard();
    auto *const card = aboutCard();
    preferences.showsInfoCard.set(false);
    settle();
    ASSERT_EQ(aboutCard(), card);
    expectProgress([](double eased) { return 1 - eased; });
}

TEST_F(OverlayCardTest, ClosesByAClickOutsideTheCard)
{
    openCard();
    Input::click(*aboutCard(), outside());
    expectClosed();
}

TEST_F(OverlayCardTest, StaysOpenForAClickInsideTheCard)
{
    openCard();
    const QRect card = aboutCard()->cardGeometry();
    for (const QPoint position :
         { card.center(), card.topLeft() + QPoint(8, 30), card.bottomLeft() + QPoint(30, -4) }) {
        Input::click(*aboutCard(), position);
        settle();
        EXPECT_TRUE(preferences.showsInfoCard.get());
    }
}

TEST_F(OverlayCardTest, StaysOpenUnlessPressAndReleaseAreOutside)
{
    openCard();
    const QPoint inside = aboutCard()->cardGeometry().center();
    Input::press(*aboutCard(), inside);
    Input::release(*aboutCard(), outside());
    EXPECT_TRUE(preferences.showsInfoCard.get());
    Input::press(*aboutCard(), outside());
    Input::release(*aboutCard(), inside);
    EXPECT_TRUE(preferences.showsInfoCard.get());
}

TEST_F(OverlayCardTest, ClosesByItsButton)
{
    openCard();
    Input::click(*Input::button(*aboutCard(), "Close"));
    expectClosed();
}

TEST_F(OverlayCardTest, ClosesOnEscape)
{
    openCard();
    Input::key(*view, Qt::Key_Escape);
    expectClosed();
}

TEST_F(OverlayCardTest, ClosesOnEscapeWhileOpening)
{
    preferences.showsInfoCard.set(true);
    settle();
    Input::key(*view, Qt::Key_Escape);
    expectClosed();
}

TEST_F(OverlayCardTest, ReopensWhileClosing)
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

TEST_F(OverlayCardTest, TakesTheFocusAndReturnsIt)
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
    expectClosed();
    EXPECT_TRUE(editor(1).hasFocus());
    Input::key(*view, Qt::Key_End);
    Input::type(*view, "x");
    EXPECT_EQ(blocks()[1].text, "bx");
}

TEST_F(OverlayCardTest, ReturnsTheFocusWhenOpenedFromAnotherWindow)
{
    Input::click(editor(1));
    Input::whileInactive(*view, [this] {
        preferences.showsInfoCard.set(true);
        settle();
    });
    EXPECT_TRUE(QTest::qWaitFor([this] { return isOpen(); }));
    EXPECT_TRUE(aboutCard()->hasFocus() || isFocusInCard());
    Input::key(*view, Qt::Key_Escape);
    expectClosed();
    EXPECT_TRUE(editor(1).hasFocus());
}

TEST_F(OverlayCardTest, KeepsTheFocusWhileOpen)
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

TEST_F(OverlayCardTest, BlocksWheelAndClicksBelow)
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

TEST_F(OverlayCardTest, HasTheAccessibleRoleOfADialog)
{
    openCard();
    EXPECT_EQ(Input::role(*aboutCard()), QAccessible::Dialog);
    EXPECT_EQ(Input::accessibleName(*aboutCard()), "About Quillsatchel");
}

} // namespace
