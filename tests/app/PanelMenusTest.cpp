#include "app/PanelFixture.h"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace
{

using namespace Qt::StringLiterals;

class PanelMenusTest : public PanelFixture
{
protected:
    void TearDown() override
    {
        if (auto *const open = menu())
            open->close();
    }

    static QMenu *menu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

    static Texts titlesOf(const QMenu &menu)
    {
        Texts titles;
        for (const auto *const action : menu.actions())
            titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
        return titles;
    }

    /// An entry of the open menu or of its Edit submenu.
    static QAction &entry(const QString &title)
    {
        for (auto *const action : menu()->actions()) {
            if (action->text() == title)
                return *action;
            if (!action->menu())
                continue;
            Q_EMIT action->menu()->aboutToShow();
            for (auto *const inner : action->menu()->actions()) {
                if (inner->text() == title)
                    return *inner;
            }
        }
        throw std::runtime_error("no entry " + title.toStdString());
    }

    static QColor backgroundOfMenu()
    {
        const auto picture = menu()->grab().toImage();
        return picture.pixelColor(4, picture.height() - 4);
    }

    void openByKey() { Input::key(panel(), Qt::Key_F10); }

    /// Sends the event of a Menu key or a right click.
    void requestMenu(QWidget &widget, QContextMenuEvent::Reason reason)
    {
        QContextMenuEvent event(reason, widget.rect().center(),
                                widget.mapToGlobal(widget.rect().center()));
        QApplication::sendEvent(&widget, &event);
    }
};

TEST_F(PanelMenusTest, OpensByF10WithAllEntries)
{
    start({ tabOf("Prompts", { "a" }) });
    Input::click(editor(0));
    openByKey();
    ASSERT_TRUE(menu());
    EXPECT_EQ(titlesOf(*menu()), Texts({ "About Quillsatchel", "Settings\u2026", "-",
                                         "Hide Quillsatchel", "Quit Quillsatchel", "-", "Edit" }));
    EXPECT_EQ(menu()->actions().front()->parent()->property("title"), u"Quillsatchel"_s);
    EXPECT_EQ(titlesOf(*menu()->actions().back()->menu()),
              Texts({ "Undo", "Redo", "-", "Cut", "Copy", "Paste", "Select All" }));
    EXPECT_EQ(menu()->pos(), panel().mapToGlobal(QPoint(0, TitleBar::Height)));
}

TEST_F(PanelMenusTest, OpensByARightClickOnTheTitleBar)
{
    start();
    auto *const titleBar = panel().findChild<TitleBar *>();
    requestMenu(*titleBar, QContextMenuEvent::Mouse);
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->pos(), titleBar->mapToGlobal(titleBar->rect().center()));
}

TEST_F(PanelMenusTest, OpensByARightClickOnAButtonInTheTitleBar)
{
    start();
    requestMenu(button("About Quillsatchel"), QContextMenuEvent::Mouse);
    EXPECT_TRUE(menu());
}

TEST_F(PanelMenusTest, StaysClosedAfterARightClickBelowTheTitleBar)
{
    start();
    requestMenu(button("New Node"), QContextMenuEvent::Mouse);
    EXPECT_FALSE(menu());
}

TEST_F(PanelMenusTest, OpensByTheMenuKeyForAWidgetWithoutAMenu)
{
    start();
    requestMenu(button("New Node"), QContextMenuEvent::Keyboard);
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->pos(), panel().mapToGlobal(QPoint(0, TitleBar::Height)));
}

TEST_F(PanelMenusTest, LeavesTheMenuKeyToATextWithAMenu)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    requestMenu(*editor(0).viewport(), QContextMenuEvent::Keyboard);
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->actions().front()->text().toStdString(), "Undo");
}

TEST_F(PanelMenusTest, IsAsDarkAsTheMenusOfTexts)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    openByKey();
    EXPECT_LT(backgroundOfMenu().lightnessF(), 0.3);
    EXPECT_EQ(backgroundOfMenu().alpha(), 255);
    menu()->close();
    requestMenu(*editor(0).viewport(), QContextMenuEvent::Keyboard);
    EXPECT_LT(backgroundOfMenu().lightnessF(), 0.3);
    EXPECT_EQ(backgroundOfMenu().alpha(), 255);
}

TEST_F(PanelMenusTest, KeepsTheRenamingOfATabOpen)
{
    machine.pasteboard.contents = "pasted";
    start();
    Input::doubleClick(*chips()[0]);
    settle();
    auto *const field = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_TRUE(field);
    openByKey();
    ASSERT_TRUE(menu());
    EXPECT_TRUE(entry(u"Paste"_s).isEnabled());
    entry(u"Paste"_s).trigger();
    EXPECT_EQ(field->text().toStdString(), "pasted");
    settle();
    EXPECT_EQ(chips()[0]->text().toStdString(), "pasted");
    EXPECT_TRUE(chips()[0]->isAncestorOf(field));
}

TEST_F(PanelMenusTest, EnablesTheCommandsForTheFocusedText)
{
    QGuiApplication::clipboard()->clear();
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    openByKey();
    EXPECT_FALSE(entry(u"Undo"_s).isEnabled());
    EXPECT_FALSE(entry(u"Copy"_s).isEnabled());
    EXPECT_FALSE(entry(u"Paste"_s).isEnabled());
    EXPECT_TRUE(entry(u"Select All"_s).isEnabled());
    entry(u"Select All"_s).trigger();
    EXPECT_EQ(editor(0).textCursor().selectedText().toStdString(), "abc");
    EXPECT_TRUE(entry(u"Cut"_s).isEnabled());
    entry(u"Cut"_s).trigger();
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "abc");
    entry(u"Undo"_s).trigger();
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "abc");
    EXPECT_TRUE(entry(u"Redo"_s).isEnabled());
}

TEST_F(PanelMenusTest, DisablesEditingWithoutAFocusedText)
{
    start({ tabOf("Prompts", { "abc" }) });
    button("New Node").setFocus();
    openByKey();
    for (const auto *const title : { "Undo", "Redo", "Cut", "Copy", "Paste", "Select All" })
        EXPECT_FALSE(entry(QString::fromLatin1(title)).isEnabled()) << title;
}

TEST_F(PanelMenusTest, ActsOnTheFocusedTextWhenUsedByKeyboard)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    openByKey();
    QTest::keyClick(menu(), Qt::Key_Up);
    QTest::keyClick(menu(), Qt::Key_Right);
    ASSERT_EQ(titlesOf(*menu()).front(), "Undo");
    const auto *const selectAll = menu()->actions().last();
    EXPECT_TRUE(selectAll->isEnabled());
    QTest::keyClick(menu(), Qt::Key_Up);
    QTest::keyClick(menu(), Qt::Key_Return);
    EXPECT_FALSE(menu());
    EXPECT_EQ(editor(0).textCursor().selectedText().toStdString(), "abc");
}

TEST_F(PanelMenusTest, ActsOnTheNameOfARenamedTabWhenUsedByKeyboard)
{
    start();
    Input::doubleClick(*chips()[0]);
    settle();
    const QPointer field = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_TRUE(field);
    openByKey();
    QTest::keyClick(menu(), Qt::Key_Up);
    QTest::keyClick(menu(), Qt::Key_Right);
    EXPECT_TRUE(menu()->activeAction()->isEnabled());
    EXPECT_EQ(menu()->activeAction()->text().toStdString(), "Cut");
    QTest::keyClick(menu(), Qt::Key_Return);
    settle();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->text().toStdString(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Prompts");
}

TEST_F(PanelMenusTest, SelectsTheFirstEntryWhenOpenedByKeyboard)
{
    start();
    openByKey();
    ASSERT_TRUE(menu()->activeAction());
    EXPECT_EQ(menu()->activeAction()->text().toStdString(), "About Quillsatchel");
    menu()->close();
    requestMenu(*panel().findChild<TitleBar *>(), QContextMenuEvent::Mouse);
    EXPECT_FALSE(menu()->activeAction());
}

TEST_F(PanelMenusTest, OpensByShiftF10LikeTheMenuKey)
{
    start({ tabOf("Prompts", { "abc" }) });
    const auto titlesAfterShiftF10 = [this](QWidget &focused) {
        focused.setFocus();
        Input::key(panel(), Qt::Key_F10, Qt::ShiftModifier);
        auto *const open = menu();
        auto titles = open ? titlesOf(*open) : Texts();
        if (open)
            open->close();
        panel().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&panel()));
        return titles;
    };
    EXPECT_EQ(titlesAfterShiftF10(*chips()[0]), Texts({ "Rename Tab", "-", "Delete Tab" }));
    EXPECT_EQ(titlesAfterShiftF10(button("New Node")).front(), "About Quillsatchel");
    EXPECT_TRUE(titlesAfterShiftF10(editor(0)).front().starts_with("Undo"));
}

TEST_F(PanelMenusTest, ListsTheLaunchersWithoutATray)
{
    start();
    setWebsite(4, "four.example");
    setWebsite(1, "a&b.example/docs");
    Input::key(panel(), Qt::Key_Escape);
    ASSERT_TRUE(disappears<LauncherSettingsCard>());
    openByKey();
    EXPECT_EQ(titlesOf(*menu()),
              Texts({ "About Quillsatchel", "Settings\u2026", "-", "a&&b.example", "four.example",
                      "-", "Hide Quillsatchel", "Quit Quillsatchel", "-", "Edit" }));
    EXPECT_FALSE(entry(u"four.example"_s).icon().isNull());
    entry(u"a&&b.example"_s).trigger();
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://a&b.example/docs" }));
    EXPECT_FALSE(menu());

    machine.statusBar.kind.set(StatusBar::Kind::notifier);
    openByKey();
    EXPECT_EQ(menu()->actions().size(), 7) << "the menu of the tray lists them";
    menu()->close();
    machine.statusBar.kind.set(StatusBar::Kind::none);
    openByKey();
    EXPECT_EQ(menu()->actions().size(), 10);
}

TEST_F(PanelMenusTest, LeavesEditShortcutsToTheText)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    button("New Node").setFocus();
    openByKey();
    EXPECT_FALSE(entry(u"Select All"_s).isEnabled());
    menu()->close();
    panel().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
    Input::click(editor(0));
    Input::key(panel(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(editor(0).textCursor().selectedText().toStdString(), "abc");
    Input::key(panel(), Qt::Key_X, Qt::ControlModifier);
    Input::key(panel(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "abc");
    Input::key(panel(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "");
}

} // namespace
