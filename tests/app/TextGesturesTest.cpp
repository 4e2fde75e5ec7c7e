#include "app/PanelFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTextDocument>

namespace
{

using namespace Qt::StringLiterals;

class TextGesturesTest : public PanelFixture
{
protected:
    void SetUp() override
    {
        // Qt itself would paste this.
        QGuiApplication::clipboard()->setText(u"of Qt"_s);
        machine.pasteboard.contents = "\uFEFFpasted";
    }

    void rightClick(QWidget &widget)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, widget.rect().center(),
                                widget.mapToGlobal(widget.rect().center()));
        QCoreApplication::sendEvent(&widget, &event);
    }

    static QMenu *menu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

    static QAction *entry(const QString &title)
    {
        for (auto *const action : menu()->actions()) {
            if (action->text() == title)
                return action;
        }
        return nullptr;
    }

    /// The first node's text without conversions.
    std::string text() { return editor(0).document()->toRawText().toStdString(); }

    QLineEdit *renameFirstTab()
    {
        Input::doubleClick(*chips()[0]);
        settle();
        return qobject_cast<QLineEdit *>(QApplication::focusWidget());
    }
};

TEST_F(TextGesturesTest, PastesByEveryShortcut)
{
    start({ tabOf("Prompts", { "" }) });
    Input::click(editor(0));
    Input::key(panel(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text(), "\uFEFFpasted");
    Input::key(panel(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(text(), "\uFEFFpasted\uFEFFpasted");
}

TEST_F(TextGesturesTest, PastesIntoFields)
{
    start();
    auto *const field = renameFirstTab();
    ASSERT_TRUE(field);
    Input::key(panel(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field->text().toStdString(), "\uFEFFpasted");
}

TEST_F(TextGesturesTest, PastesNothingWithoutText)
{
    machine.pasteboard.contents.reset();
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    Input::key(panel(), Qt::Key_A, Qt::ControlModifier);
    Input::key(panel(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor(0).toPlainText().toStdString(), "abc");
    rightClick(*editor(0).viewport());
    ASSERT_TRUE(menu());
    EXPECT_FALSE(entry(u"Paste"_s)->isEnabled());
    menu()->close();
}

TEST_F(TextGesturesTest, OffersTheEditMenuAtARightClick)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    rightClick(*editor(0).viewport());
    ASSERT_TRUE(menu());
    EXPECT_FALSE(entry(u"Undo"_s)->isEnabled());
    EXPECT_FALSE(entry(u"Cut"_s)->isEnabled());
    EXPECT_TRUE(entry(u"Paste"_s)->isEnabled());
    Input::click(*menu(), menu()->actionGeometry(entry(u"Select All"_s)).center());
    EXPECT_FALSE(menu());
    EXPECT_EQ(editor(0).textCursor().selectedText().toStdString(), "abc");
    rightClick(*editor(0).viewport());
    Input::click(*menu(), menu()->actionGeometry(entry(u"Paste"_s)).center());
    EXPECT_EQ(text(), "\uFEFFpasted");
}

TEST_F(TextGesturesTest, ClosesTheMenuOfADeletedText)
{
    start({ tabOf("Prompts", { "abc" }) });
    Input::click(editor(0));
    rightClick(*editor(0).viewport());
    const QPointer<QMenu> open = menu();
    ASSERT_TRUE(open);
    button("Delete node").click(); // as assistive technology does while a menu is open
    settle();
    settle();
    EXPECT_FALSE(menu());
    EXPECT_FALSE(open);
}

} // namespace
