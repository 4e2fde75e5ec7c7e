#include "app/PanelFixture.h"
#include "app/PanelFrame.h"
#include "views/Picture.h"

#include <QScreen>
#include <gtest/gtest.h>

namespace
{

class FloatingPanelTest : public PanelFixture
{
protected:
    FloatingPanelTest() { start({ tabOf("Prompts", { "a", "b" }) }); }

    /// Alpha of the outermost pixel of a corner, 0 to 255.
    int cornerOpacity() { return Picture(panel(), Qt::white).at(0.3, 0.3).alpha(); }

    /// Moves the panel out of view, as if its screen had been removed.
    void loseScreen()
    {
        const QRect gone = screen().geometry().translated(screen().size().width(), 0);
        panel().windowHandle()->setPosition(gone.topLeft());
    }

    static QScreen &screen() { return *QGuiApplication::primaryScreen(); }

    bool movesIntoView()
    {
        return QTest::qWaitFor([this] {
            return screen().availableGeometry().contains(panel().windowHandle()->geometry());
        });
    }
};

/// Counts the events of one type that a widget receives.
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

TEST_F(FloatingPanelTest, HasItsSizeMinimumSizeAndTitle)
{
    EXPECT_EQ(panel().size(), QSize(430, 650));
    EXPECT_EQ(panel().minimumSize(), QSize(390, 420));
    panel().resize(100, 100);
    EXPECT_EQ(panel().size(), QSize(390, 420));
    EXPECT_EQ(panel().windowTitle().toStdString(), "Quillsatchel");
    EXPECT_TRUE(panel().windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(FloatingPanelTest, AppearsAtTheCentreOfTheScreen)
{
    const QPoint distance =
        panel().geometry().center() - panel().screen()->availableGeometry().center();
    EXPECT_LE(distance.manhattanLength(), 2);
}

TEST_F(FloatingPanelTest, MovesIntoViewWhenScreensChange)
{
    loseScreen();
    Q_EMIT screen().geometryChanged(screen().geometry());
    EXPECT_TRUE(movesIntoView());
    loseScreen();
    Q_EMIT screen().availableGeometryChanged(screen().availableGeometry());
    EXPECT_TRUE(movesIntoView());
    loseScreen();
    Q_EMIT qGuiApp->screenRemoved(&screen());
    EXPECT_TRUE(movesIntoView());
}

TEST_F(FloatingPanelTest, MovesIntoViewWhileItIsHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    loseScreen();
    Q_EMIT screen().geometryChanged(screen().geometry());
    EXPECT_TRUE(movesIntoView());
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(FloatingPanelTest, StaysInPlaceWhenAnotherScreenChanges)
{
    panel().move(11, 12);
    Q_EMIT screen().geometryChanged(screen().geometry());
    QTest::qWait(300); // longer than the debouncing
    EXPECT_EQ(panel().windowHandle()->position(), QPoint(11, 12));
}

TEST_F(FloatingPanelTest, LaysOutItsContentWhenResized)
{
    panel().resize(600, 500);
    settle();
    EXPECT_EQ(placeOf(*panel().findChild<TitleBar *>()), QRect(0, 0, 600, 28));
    EXPECT_EQ(placeOf(button("New Node")), QRect(8, 500 - 8 - 29, 584, 29));
    EXPECT_EQ(cards()[0]->width(), 580);
}

TEST_F(FloatingPanelTest, FocusesTheClickedEditor)
{
    Input::click(editor(1));
    EXPECT_TRUE(panel().isActiveWindow());
    EXPECT_TRUE(editor(1).hasFocus());
    Input::type(panel(), "x");
    EXPECT_EQ(editor(1).toPlainText().size(), 2);
}

TEST_F(FloatingPanelTest, FocusesNoControlAtFirst)
{
    EXPECT_EQ(QApplication::focusWidget(), &panel());
}

TEST_F(FloatingPanelTest, HidesWhenClosedAndComesBackUnchanged)
{
    Input::click(editor(1));
    Input::key(panel(), Qt::Key_End);
    Input::type(panel(), "xyz");
    panel().resize(500, 600);
    settle();
    const auto *const before = &panel();
    const auto *const editorBefore = &editor(1);
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
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

TEST_F(FloatingPanelTest, StaysZoomedWhileHiddenAndRestoresItsEarlierFrame)
{
    const QRect before(20, 30, 450, 600);
    panel().setGeometry(before);
    panel().showMaximized();
    settle();
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    EXPECT_FALSE(panel().isVisible());

    delegate->showPanel();
    settle();
    EXPECT_TRUE(panel().isMaximized());
    panel().showNormal();
    settle();
    EXPECT_EQ(panel().geometry(), before);
}

TEST_F(FloatingPanelTest, KeepsTheProgramRunningWhenClosed)
{
    EXPECT_FALSE(QApplication::quitOnLastWindowClosed());
}

TEST_F(FloatingPanelTest, ChangesItsLevelWithoutHiding)
{
    const EventCount hides(panel(), QEvent::Hide);
    const auto *const window = panel().windowHandle();
    ASSERT_TRUE(isFloating());
    delegate->toggleFloating();
    EXPECT_FALSE(isFloating());
    delegate->toggleFloating();
    EXPECT_TRUE(isFloating());
    settle();
    EXPECT_TRUE(panel().isVisible());
    EXPECT_EQ(hides.count, 0);
    EXPECT_EQ(panel().windowHandle(), window);
}

TEST_F(FloatingPanelTest, IgnoresWritesThatDoNotChangeThePreference)
{
    WindowPreferences preferences;
    FloatingPanel other(machine.windowSystem, preferences);
    other.show();
    const auto isFloating = [&other] {
        return other.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
    };
    other.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, false);
    preferences.alwaysOnTop.set(true);
    EXPECT_FALSE(isFloating());
    preferences.alwaysOnTop.set(false);
    preferences.alwaysOnTop.set(true);
    EXPECT_TRUE(isFloating());
}

TEST_F(FloatingPanelTest, KeepsItsLevelWhileItIsHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    delegate->toggleFloating();
    delegate->showPanel();
    EXPECT_FALSE(isFloating());
}

TEST_F(FloatingPanelTest, RequestsAllDesktopsWheneverItIsShown)
{
    const int atFirst = machine.windowSystem.showOnAllDesktopsCalls;
    EXPECT_GE(atFirst, 1);
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    EXPECT_EQ(machine.windowSystem.showOnAllDesktopsCalls, atFirst);
    delegate->showPanel();
    EXPECT_GT(machine.windowSystem.showOnAllDesktopsCalls, atFirst);
}

TEST_F(FloatingPanelTest, RequestsAllDesktopsFromANewWindowManager)
{
    const int before = machine.windowSystem.showOnAllDesktopsCalls;
    machine.windowSystem.hasWindowManager.set(true);
    EXPECT_GT(machine.windowSystem.showOnAllDesktopsCalls, before);
    EXPECT_TRUE(isFloating());
}

TEST_F(FloatingPanelTest, RequestsNothingFromANewWindowManagerWhileHidden)
{
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    const int before = machine.windowSystem.showOnAllDesktopsCalls;
    machine.windowSystem.hasWindowManager.set(true);
    EXPECT_EQ(machine.windowSystem.showOnAllDesktopsCalls, before);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(FloatingPanelTest, RestoresFromMinimised)
{
    panel().showMinimized();
    delegate->showPanel();
    EXPECT_FALSE(panel().isMinimized());
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(FloatingPanelTest, HasRoundCornersUnderACompositor)
{
    EXPECT_EQ(cornerOpacity(), 0);
    machine.windowSystem.isCompositing.set(false);
    EXPECT_EQ(cornerOpacity(), 255);
    machine.windowSystem.isCompositing.set(true);
    EXPECT_EQ(cornerOpacity(), 0);
}

TEST_F(FloatingPanelTest, IsOpaqueWithoutACompositor)
{
    machine.windowSystem.isCompositing.set(false);
    EXPECT_EQ(Picture(panel(), Qt::white).differenceFrom(Picture(panel(), Qt::black), 0), QRectF());
    machine.windowSystem.isCompositing.set(true);
    EXPECT_NE(Picture(panel(), Qt::white).differenceFrom(Picture(panel(), Qt::black), 0), QRectF());
}

TEST_F(FloatingPanelTest, RequestsNoBlurWhereItIsUnsupported)
{
    panel().resize(500, 600);
    EXPECT_TRUE(machine.windowSystem.blurs.empty());
}

TEST_F(FloatingPanelTest, RequestsBlurForItsWholeArea)
{
    using Blur = FakeWindowSystem::Blur;
    const auto &blurs = machine.windowSystem.blurs;
    machine.windowSystem.isBlurring.set(true);
    ASSERT_FALSE(blurs.empty());
    EXPECT_EQ(blurs.back(), (Blur { QSize(430, 650), PanelFrame::CornerRadius }));

    panel().resize(500, 600);
    EXPECT_EQ(blurs.back(), (Blur { QSize(500, 600), PanelFrame::CornerRadius }));

    panel().showMaximized();
    settle();
    EXPECT_EQ(blurs.back(), (Blur { panel().size(), 0 }));
}

TEST_F(FloatingPanelTest, RequestsBlurWheneverItIsShown)
{
    machine.windowSystem.isBlurring.set(true);
    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    panel().close();
    const auto before = machine.windowSystem.blurs.size();
    delegate->showPanel();
    EXPECT_GT(machine.windowSystem.blurs.size(), before);
}

TEST_F(FloatingPanelTest, IsMoreTranslucentOverABlurredBackdrop)
{
    const auto background = [this] { return Picture(panel(), Qt::white).at(4, 300); };
    const QColor sharp = background();
    machine.windowSystem.isBlurring.set(true);
    EXPECT_GT(background().lightness(), sharp.lightness() + 5);
    machine.windowSystem.isBlurring.set(false);
    EXPECT_EQ(background(), sharp);
}

TEST_F(FloatingPanelTest, HasSquareCornersWhileMaximized)
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

TEST_F(FloatingPanelTest, StaysInPlaceWhenItsBackgroundIsDragged)
{
    const QPoint before = panel().pos();
    Input::press(panel(), { 4, 300 });
    Input::moveTo(panel(), { 60, 340 });
    Input::release(panel(), { 60, 340 });
    EXPECT_EQ(panel().pos(), before);
}

} // namespace
