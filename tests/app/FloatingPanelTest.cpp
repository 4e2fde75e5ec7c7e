#include "app/PanelFixture.h"
#include "app/VisualEffectBackground.h"
#include "views/Picture.h"

#include <QScreen>
#include <gtest/gtest.h>

namespace
{

class FloatingPanelTest : public PanelFixture
{
protected:
    FloatingPanelTest() { start({ tabOf("Prompts", { "a", "b" }) }); }

    /// How opaque the panel's very corner is, from 0 to 255.
    int cornerOpacity() { return Picture(panel(), Qt::white).at(0.3, 0.3).alpha(); }

    /// Puts the panel where no screen is, as if its screen had gone from there.
    void loseScreen()
    {
        const QRect gone = screen().geometry().translated(screen().size().width(), 0);
        panel().windowHandle()->setPosition(gone.topLeft());
    }

    static QScreen &screen() { return *QGuiApplication::primaryScreen(); }

    bool comesBack()
    {
        return QTest::qWaitFor([this] {
            return screen().availableGeometry().contains(panel().windowHandle()->geometry());
        });
    }
};

/// Counts the events of one kind that a widget gets.
class EventCount final : public QObject
{
public:
    EventCount(QWidget &widget, QEvent::Type type)
        : m_type(type)
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject * /*object*/, QEvent *event) override
    {
        if (event->type() == m_type)
            ++count;
        return false;
    }

    int count = 0;

private:
    QEvent::Type m_type;
};

TEST_F(FloatingPanelTest, HasItsSizesAndItsTitle)
{
    EXPECT_EQ(panel().size(), QSize(430, 650));
    EXPECT_EQ(panel().minimumSize(), QSize(390, 420));
    panel().resize(100, 100);
    EXPECT_EQ(panel().size(), QSize(390, 420));
    EXPECT_EQ(panel().windowTitle().toStdString(), "Quillsatchel");
    EXPECT_TRUE(panel().windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(FloatingPanelTest, AppearsInTheMiddleOfTheScreen)
{
    const QPoint distance =
        panel().geometry().center() - panel().screen()->availableGeometry().center();
    EXPECT_LE(distance.manhattanLength(), 2);
}

TEST_F(FloatingPanelTest, ComesBackWhenTheScreensHaveChanged)
{
    loseScreen();
    Q_EMIT screen().geometryChanged(screen().geometry());
    EXPECT_TRUE(comesBack());
    loseScreen();
    Q_EMIT screen().availableGeometryChanged(screen().availableGeometry());
    EXPECT_TRUE(comesBack());
    loseScreen();
    Q_EMIT qGuiApp->screenRemoved(&screen());
    EXPECT_TRUE(comesBack());
}

TEST_F(FloatingPanelTest, ComesBackWhileItIsHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    loseScreen();
    Q_EMIT screen().geometryChanged(screen().geometry());
    EXPECT_TRUE(comesBack());
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(FloatingPanelTest, StaysWhereItIsWhenAnotherScreenChanges)
{
    panel().move(11, 12);
    Q_EMIT screen().geometryChanged(screen().geometry());
    QTest::qWait(300); // by now it would have moved
    EXPECT_EQ(panel().windowHandle()->position(), QPoint(11, 12));
}

TEST_F(FloatingPanelTest, FollowsItsSizeWithAllThatIsInIt)
{
    panel().resize(600, 500);
    settle();
    EXPECT_EQ(placeOf(*panel().findChild<TitleBar *>()), QRect(0, 0, 600, 28));
    EXPECT_EQ(placeOf(button("New Node")), QRect(8, 500 - 8 - 29, 584, 29));
    EXPECT_EQ(cards()[0]->width(), 580);
}

TEST_F(FloatingPanelTest, GivesTheKeyboardToTheEditorThatIsClicked)
{
    Input::click(editor(1));
    EXPECT_TRUE(panel().isActiveWindow());
    EXPECT_TRUE(editor(1).hasFocus());
    Input::type(panel(), "x");
    EXPECT_EQ(editor(1).toPlainText().size(), 2);
}

TEST_F(FloatingPanelTest, ChoosesNoControlByItself)
{
    EXPECT_EQ(QApplication::focusWidget(), &panel());
}

TEST_F(FloatingPanelTest, IsHiddenWhenItIsClosedAndComesBackAsItWas)
{
    Input::click(editor(1));
    Input::key(panel(), Qt::Key_End);
    Input::type(panel(), "xyz");
    panel().resize(500, 600);
    settle();
    const auto *const before = &panel();
    const auto *const editorBefore = &editor(1);
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    EXPECT_FALSE(panel().isVisible());
    advance(Long);

    delegate->showPanel();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
    settle();
    EXPECT_EQ(&panel(), before);
    EXPECT_EQ(panel().size(), QSize(500, 600));
    EXPECT_EQ(&editor(1), editorBefore);
    EXPECT_EQ(editor(1).toPlainText().toStdString(), "bxyz");
    EXPECT_EQ(editor(1).textCursor().position(), 4);
    EXPECT_EQ(panel().focusWidget(), &editor(1));
}

TEST_F(FloatingPanelTest, IsStillZoomedWhenItComesBackAndReturnsToItsEarlierSize)
{
    const QRect before(20, 30, 450, 600);
    panel().setGeometry(before);
    panel().showMaximized();
    settle();
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    EXPECT_FALSE(panel().isVisible());

    delegate->showPanel();
    settle();
    EXPECT_TRUE(panel().isMaximized());
    panel().showNormal();
    settle();
    EXPECT_EQ(panel().geometry(), before);
}

TEST_F(FloatingPanelTest, DoesNotEndTheProgramWhenItIsClosed)
{
    EXPECT_FALSE(QApplication::quitOnLastWindowClosed());
}

TEST_F(FloatingPanelTest, ChangesItsLevelWithoutBeingHidden)
{
    const EventCount hides(panel(), QEvent::Hide);
    const auto *const window = panel().windowHandle();
    ASSERT_TRUE(isFloating());
    panel().setFloating(false);
    EXPECT_FALSE(isFloating());
    panel().setFloating(true);
    EXPECT_TRUE(isFloating());
    settle();
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(hides.count, 0);
    EXPECT_EQ(panel().windowHandle(), window);
}

TEST_F(FloatingPanelTest, KeepsItsLevelWhileItIsHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    panel().setFloating(false);
    delegate->showPanel();
    EXPECT_FALSE(isFloating());
}

TEST_F(FloatingPanelTest, AsksForAllDesktopsWheneverItIsShown)
{
    const int atFirst = machine.windowSystem.showOnAllDesktopsCalls;
    EXPECT_GE(atFirst, 1);
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    EXPECT_EQ(machine.windowSystem.showOnAllDesktopsCalls, atFirst);
    delegate->showPanel();
    EXPECT_GT(machine.windowSystem.showOnAllDesktopsCalls, atFirst);
}

TEST_F(FloatingPanelTest, AsksANewWindowManagerForAllDesktops)
{
    const int before = machine.windowSystem.showOnAllDesktopsCalls;
    machine.windowSystem.hasWindowManager.set(true);
    EXPECT_GT(machine.windowSystem.showOnAllDesktopsCalls, before);
    EXPECT_TRUE(isFloating());
}

TEST_F(FloatingPanelTest, AsksANewWindowManagerForNothingWhileItIsHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    const int before = machine.windowSystem.showOnAllDesktopsCalls;
    machine.windowSystem.hasWindowManager.set(true);
    EXPECT_EQ(machine.windowSystem.showOnAllDesktopsCalls, before);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(FloatingPanelTest, ComesBackFromBeingMinimised)
{
    panel().showMinimized();
    delegate->showPanel();
    EXPECT_FALSE(panel().isMinimized());
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(FloatingPanelTest, HasRoundCornersWhereThereIsACompositor)
{
    EXPECT_EQ(cornerOpacity(), 0);
    machine.windowSystem.isCompositing.set(false);
    EXPECT_EQ(cornerOpacity(), 255);
    machine.windowSystem.isCompositing.set(true);
    EXPECT_EQ(cornerOpacity(), 0);
}

TEST_F(FloatingPanelTest, IsOpaqueWhereThereIsNoCompositor)
{
    machine.windowSystem.isCompositing.set(false);
    EXPECT_EQ(Picture(panel(), Qt::white).differenceFrom(Picture(panel(), Qt::black), 0), QRectF());
    machine.windowSystem.isCompositing.set(true);
    EXPECT_NE(Picture(panel(), Qt::white).differenceFrom(Picture(panel(), Qt::black), 0), QRectF());
}

TEST_F(FloatingPanelTest, AsksForNoBlurWhereThereIsNone)
{
    panel().resize(500, 600);
    EXPECT_TRUE(machine.windowSystem.blurs.empty());
}

TEST_F(FloatingPanelTest, HasWhatIsBehindItBlurredAsFarAsItReaches)
{
    using Blur = FakeWindowSystem::Blur;
    const auto &blurs = machine.windowSystem.blurs;
    machine.windowSystem.isBlurring.set(true);
    ASSERT_FALSE(blurs.empty());
    EXPECT_EQ(blurs.back(), (Blur { QSize(430, 650), FloatingPanel::CornerRadius }));

    panel().resize(500, 600);
    EXPECT_EQ(blurs.back(), (Blur { QSize(500, 600), FloatingPanel::CornerRadius }));

    panel().showMaximized();
    settle();
    EXPECT_EQ(blurs.back(), (Blur { panel().size(), 0 }));
}

TEST_F(FloatingPanelTest, AsksForItsBlurWheneverItIsShown)
{
    machine.windowSystem.isBlurring.set(true);
    machine.statusBar.kind.set(StatusBar::Kind::notifier); // which brings it back
    panel().close();
    const auto before = machine.windowSystem.blurs.size();
    delegate->showPanel();
    EXPECT_GT(machine.windowSystem.blurs.size(), before);
}

TEST_F(FloatingPanelTest, IsMoreTranslucentWhereWhatIsBehindItIsBlurred)
{
    const auto ground = [this] { return Picture(panel(), Qt::white).at(4, 300); };
    const QColor sharp = ground();
    machine.windowSystem.isBlurring.set(true);
    EXPECT_GT(ground().lightness(), sharp.lightness() + 5);
    machine.windowSystem.isBlurring.set(false);
    EXPECT_EQ(ground(), sharp);
}

TEST_F(FloatingPanelTest, HasSquareCornersWhileItFillsTheScreen)
{
    panel().showMaximized();
    settle();
    EXPECT_EQ(cornerOpacity(), 255);
    panel().showNormal();
    settle();
    EXPECT_EQ(cornerOpacity(), 0);
}

TEST_F(FloatingPanelTest, LooksTheSameWhileAnotherWindowIsActive)
{
    const Picture before(panel(), Qt::blue);
    QWidget other;
    Input::show(other);
    EXPECT_FALSE(panel().isActiveWindow());
    EXPECT_EQ(Picture(panel(), Qt::blue).differenceFrom(before), QRectF());
}

TEST_F(FloatingPanelTest, StaysWhereItIsWhenItsGroundIsDragged)
{
    const QPoint before = panel().pos();
    Input::press(panel(), { 4, 300 });
    Input::moveTo(panel(), { 60, 340 });
    Input::release(panel(), { 60, 340 });
    EXPECT_EQ(panel().pos(), before);
}

} // namespace
