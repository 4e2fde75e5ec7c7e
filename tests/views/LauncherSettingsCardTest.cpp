#include "views/LauncherSettingsCard.h"

#include "views/LauncherCardFixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace
{

/// Calls back before each paint event of a widget.
class PaintObserver final : public QObject
{
public:
    PaintObserver(QWidget &widget, std::function<void()> onPaint)
        : m_onPaint(std::move(onPaint))
    {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_onPaint();
        return false;
    }

private:
    std::function<void()> m_onPaint;
};

class LauncherSettingsCardTest : public LauncherCardFixture
{
protected:
    void openSmallCard()
    {
        panel.resize(390, 420);
        openCard();
    }

    void fillAll()
    {
        for (int slot = 0; slot < 5; ++slot)
            store().setWebsite("site" + std::to_string(slot) + ".example.com", slot);
    }

    /// The focused widget after each of `steps` key presses.
    std::vector<QWidget *> visit(int steps, Qt::Key key = Qt::Key_Tab,
                                 Qt::KeyboardModifiers modifiers = {})
    {
        std::vector<QWidget *> visited;
        for (int step = 0; step < steps; ++step) {
            Input::key(panel, key, modifiers);
            visited.push_back(QApplication::focusWidget());
        }
        return visited;
    }
};

TEST_F(LauncherSettingsCardTest, HasFiveNumberedEditors)
{
    for (const auto *const bytes :
         { "[]", "[null, null, null, null, null, null, null]", "broken" }) {
        writeFile(bytes);
        restart();
        openCard();
        ASSERT_EQ(editors().size(), 5);
        for (int slot = 0; slot < 5; ++slot) {
            EXPECT_EQ(Input::accessibleName(editor(slot)), "Launcher " + std::to_string(slot + 1));
            EXPECT_EQ(parts(slot).title(), "Empty launcher");
        }
        delete card;
    }
}

TEST_F(LauncherSettingsCardTest, ShowsTheContentOfTheSlots)
{
    store().setWebsite("https://example.com", 2);
    openCard();
    EXPECT_EQ(parts(2).urlText(), "https://example.com");
    EXPECT_EQ(parts(2).title(), "example.com");
    for (const int slot : { 0, 1, 3, 4 }) {
        EXPECT_EQ(parts(slot).urlText(), "") << slot;
        EXPECT_EQ(parts(slot).title(), "Empty launcher") << slot;
    }
}

TEST_F(LauncherSettingsCardTest, EachEditorFillsItsSlot)
{
    openCard();
    for (int slot = 0; slot < 5; ++slot) {
        parts(slot).submit("site" + std::to_string(slot) + ".example.com");
        settle();
        EXPECT_EQ(item(static_cast<std::size_t>(slot))->name,
                  "site" + std::to_string(slot) + ".example.com");
        EXPECT_EQ(store().configuredItems().size(), static_cast<std::size_t>(slot) + 1);
    }
    Input::click(parts(3).chooseButton());
    choose("/apps/editor.desktop");
    settle();
    EXPECT_EQ(item(3)->target, "/apps/editor.desktop");
    Input::click(*parts(1).clearButton());
    settle();
    EXPECT_FALSE(item(1));
    EXPECT_EQ(store().configuredItems().size(), 4U);
    EXPECT_TRUE(isSaved());
}

TEST_F(LauncherSettingsCardTest, ReopeningDiscardsInputAndMessages)
{
    store().setWebsite("https://example.com", 0);
    openCard();
    parts(0).submit("ftp://example.com");
    EXPECT_EQ(parts(0).message(), EditorParts::InvalidURL);
    delete card;
    openCard();
    EXPECT_EQ(parts(0).message(), "");
    EXPECT_EQ(parts(0).urlText(), "https://example.com");
}

TEST_F(LauncherSettingsCardTest, RendersOnceForSeveralChanges)
{
    for (int slot = 0; slot < 5; ++slot)
        fillWithApplication(slot);
    openCard();
    machine.workspace.requestedIcons.clear();
    store().setWebsite("example.com", 4);
    store().clear(4);
    fillWithApplication(4, "/apps/other.desktop");
    EXPECT_EQ(parts(4).subtitle(), "/apps/editor.desktop");
    settle();
    EXPECT_EQ(parts(4).subtitle(), "/apps/other.desktop");
    EXPECT_EQ(machine.workspace.requestedIcons.size(), 5U);
}

TEST_F(LauncherSettingsCardTest, ReloadsIconsWhenTheSlotsChange)
{
    fillAll();
    fillWithApplication(0);
    openCard();
    machine.workspace.requestedIcons.clear();
    machine.httpClient.answer(3, "no picture");
    settle();
    EXPECT_TRUE(machine.workspace.requestedIcons.empty());
    store().clear(4);
    settle();
    EXPECT_EQ(machine.workspace.requestedIcons,
              std::vector<std::string> { "/apps/editor.desktop" });
}

TEST_F(LauncherSettingsCardTest, StopsObservingWhenDestroyed)
{
    fillWithApplication(0);
    openCard();
    delete card;
    machine.workspace.requestedIcons.clear();
    store().clear(1);
    settle();
    EXPECT_TRUE(machine.workspace.requestedIcons.empty());
}

TEST_F(LauncherSettingsCardTest, ClosesByButtonOutsideClickAndEscape)
{
    openCard();
    Input::click(closeButton());
    EXPECT_EQ(closings, 1);
    Input::click(*card, QPoint(5, 300));
    EXPECT_EQ(closings, 2);
    Input::click(parts(1).field());
    Input::key(panel, Qt::Key_Escape);
    EXPECT_EQ(closings, 3);
    Input::click(*card, frameOf(editor(1)).center() + QPoint(0, -20));
    Input::click(*card, card->cardGeometry().topLeft() + QPoint(60, 20));
    EXPECT_EQ(closings, 3);
}

TEST_F(LauncherSettingsCardTest, HasTheAccessibleRoleOfADialog)
{
    openCard();
    EXPECT_EQ(Input::role(*card), QAccessible::Dialog);
    EXPECT_EQ(Input::accessibleName(*card), "Quick Launchers");
    EXPECT_EQ(closeButton().toolTip().toStdString(), "Close");
    EXPECT_TRUE(card->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(LauncherSettingsCardTest, TabVisitsTheControlsRowByRow)
{
    store().setWebsite("example.com", 1);
    fillWithApplication(3);
    openCard();
    std::vector<QWidget *> expected;
    for (int slot = 0; slot < 5; ++slot) {
        if (parts(slot).clearButton())
            expected.push_back(parts(slot).clearButton());
        expected.push_back(&parts(slot).chooseButton());
        expected.push_back(&parts(slot).field());
        if (parts(slot).setButton().isEnabled())
            expected.push_back(&parts(slot).setButton());
    }
    expected.push_back(&closeButton());
    ASSERT_TRUE(closeButton().hasFocus());
    EXPECT_EQ(visit(static_cast<int>(expected.size())), expected);
    std::vector<QWidget *> backwards(expected.rbegin() + 1, expected.rend());
    EXPECT_EQ(visit(static_cast<int>(backwards.size()), Qt::Key_Backtab, Qt::ShiftModifier),
              backwards);
}

TEST_F(LauncherSettingsCardTest, KeepsTheFocusInAnEditorClearedInTheBackground)
{
    fillAll();
    openCard();
    parts(2).clearButton()->setFocus(Qt::TabFocusReason);
    Input::whileInactive(panel, [this] {
        store().clear(2);
        settle();
    });
    EXPECT_TRUE(parts(2).chooseButton().hasFocus());
}

TEST_F(LauncherSettingsCardTest, DoesNotScrollWhenEverythingFits)
{
    openCard();
    EXPECT_EQ(scrollBar().maximum(), 0);
    for (int slot = 0; slot < 5; ++slot)
        EXPECT_TRUE(isFullyVisible(editor(slot))) << slot;
}

TEST_F(LauncherSettingsCardTest, ScrollsByTheWheelInASmallPanel)
{
    openSmallCard();
    EXPECT_GT(scrollBar().maximum(), 0);
    EXPECT_TRUE(isFullyVisible(editor(0)));
    EXPECT_FALSE(isFullyVisible(editor(4)));
    for (int notch = 0; notch < 10; ++notch)
        Input::wheel(list(), -1);
    EXPECT_FALSE(isFullyVisible(editor(0)));
    EXPECT_TRUE(isFullyVisible(editor(4)));
    EXPECT_EQ(frameOf(editor(4)).bottom(), frameOf(list()).bottom());
    Input::wheel(editor(4), 20);
    EXPECT_EQ(frameOf(editor(0)).top(), frameOf(list()).top());
}

TEST_F(LauncherSettingsCardTest, ScrollsByKeysWithAnyFocus)
{
    openSmallCard();
    ASSERT_TRUE(closeButton().hasFocus());
    Input::key(panel, Qt::Key_End);
    EXPECT_EQ(scrollBar().value(), scrollBar().maximum());
    Input::key(panel, Qt::Key_Home);
    EXPECT_EQ(scrollBar().value(), 0);
    Input::key(panel, Qt::Key_PageDown);
    const int page = scrollBar().value();
    EXPECT_GT(page, 0);
    Input::key(panel, Qt::Key_PageUp);
    EXPECT_EQ(scrollBar().value(), 0);
    Input::click(parts(0).field());
    Input::key(panel, Qt::Key_PageDown);
    EXPECT_EQ(scrollBar().value(), page);
    Input::key(panel, Qt::Key_Up);
    EXPECT_LT(scrollBar().value(), page);
    Input::key(panel, Qt::Key_Down);
    EXPECT_EQ(scrollBar().value(), page);
    EXPECT_TRUE(parts(0).field().hasFocus());
}

TEST_F(LauncherSettingsCardTest, ScrollsToTheFocusedEditor)
{
    fillAll();
    openSmallCard();
    for (int slot = 0; slot < 5; ++slot) {
        for (const auto *const stop : visit(4)) {
            EXPECT_TRUE(editor(slot).isAncestorOf(stop)) << slot;
            EXPECT_TRUE(isFullyVisible(editor(slot))) << slot;
        }
    }
    parts(0).field().setFocus(Qt::OtherFocusReason); // as assistive technology sets it
    EXPECT_TRUE(isFullyVisible(editor(0)));
}

TEST_F(LauncherSettingsCardTest, ScrollsToTheMessage)
{
    openSmallCard();
    Input::key(panel, Qt::Key_End);
    parts(4).submit("ftp://example.com");
    settle();
    EXPECT_TRUE(isFullyVisible(parts(4).label(2)));
    EXPECT_TRUE(parts(4).field().hasFocus());
}

TEST_F(LauncherSettingsCardTest, ScrollsToAMessageOfAnotherEditor)
{
    openSmallCard();
    Input::key(panel, Qt::Key_End);
    parts(3).enter("ftp://example.com");
    parts(4).enter("typed");
    // The buttons of editor 3 are the last visible row.
    scrollBar().setSliderPosition(editor(3).geometry().bottom() + 1 - list().height());
    Input::click(parts(3).setButton());
    settle();
    EXPECT_TRUE(isFullyVisible(parts(3).label(2)));
    EXPECT_TRUE(parts(4).field().hasFocus()); // clicking a button does not move the focus
}

TEST_F(LauncherSettingsCardTest, LetsTheUserScrollAwayFromTheFocus)
{
    openSmallCard();
    Input::click(parts(0).field());
    for (int notch = 0; notch < 10; ++notch)
        Input::wheel(list(), -1);
    ASSERT_FALSE(isFullyVisible(editor(0)));
    panel.resize(390, 430);
    card->setGeometry(panel.rect());
    settle();
    EXPECT_FALSE(isFullyVisible(editor(0)));
    EXPECT_TRUE(isFullyVisible(editor(4)));
}

TEST_F(LauncherSettingsCardTest, GrowsByTheHeightOfTheMessage)
{
    openCard();
    const QRect before = card->cardGeometry();
    parts(1).submit("ftp://example.com");
    settle();
    const QRect after = card->cardGeometry();
    EXPECT_EQ(after.height(), before.height() + 7 + parts(1).label(2).height());
    EXPECT_NEAR(QRectF(after).center().y(), QRectF(before).center().y(), 1);
    EXPECT_EQ(scrollBar().maximum(), 0);
    EXPECT_TRUE(isFullyVisible(editor(4)));
    parts(1).submit("example.com");
    settle();
    EXPECT_EQ(card->cardGeometry(), before);
}

TEST_F(LauncherSettingsCardTest, GrowsInTheFrameThatShowsTheMessage)
{
    openCard();
    int frames = 0;
    const PaintObserver observer(list(), [this, &frames] {
        frames += parts(1).message().empty() ? 0 : 1;
        EXPECT_EQ(list().height(), list().content()->sizeHint().height());
    });
    parts(1).submit("ftp://example.com");
    EXPECT_TRUE(QTest::qWaitFor([&frames] { return frames > 0; }));
}

TEST_F(LauncherSettingsCardTest, ScrollsAtItsMaximumHeight)
{
    openCard();
    for (int slot = 0; slot < 5; ++slot) {
        list().reveal(editor(slot)); // so that it can be clicked
        parts(slot).submit("ftp://example.com");
        settle();
        EXPECT_TRUE(isFullyVisible(editor(slot))) << slot;
    }
    EXPECT_EQ(card->cardGeometry().height(), 560);
    EXPECT_GT(scrollBar().maximum(), 0);
    EXPECT_FALSE(isFullyVisible(editor(0)));
}

} // namespace
