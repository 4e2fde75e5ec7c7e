#include "views/Contrast.h"

#include "app/MiniSwitch.h"
#include "app/PanelFixture.h"
#include "launchers/ExampleLaunchers.h"
#include "views/AccessibleTree.h"
#include "views/ApplicationList.h"
#include "views/ApplicationPanel.h"
#include "views/EmptyState.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"
#include "views/PushButton.h"
#include "views/TextField.h"

#include <QTextCursor>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr double EnoughForText = 4.5;
constexpr double EnoughForShapes = 3; // what shows where the keyboard is and where to type

/// Texts in the house's red on its dark grounds, and the least that they have. They are short,
/// and what they say is heard and shown by a symbol or a place, too.
const std::map<std::string, double> HouseColors {
    { "Copied", 2.7 },
    { "Stop", 2.7 },
    { "The microphone could not be started.", 3.7 },
    { "Enter a valid http or https website.", 4 },
};

/// How well the eye can tell what is drawn, measured on what is drawn, whatever is behind it.
class ContrastTest : public PanelFixture
{
protected:
    /// Of what is drawn in a part of the active window, on white and on black, in each way in
    /// which the panel lets them through.
    double least(const QRect &area) { return least(*QApplication::activeWindow(), area); }

    double least(QWidget &window, const QRect &area)
    {
        double contrast = 21;
        for (const auto &[isCompositing, isBlurring] :
             { std::pair(false, false), { true, false }, { true, true } }) {
            machine.windowSystem.isCompositing.set(isCompositing);
            machine.windowSystem.isBlurring.set(isBlurring);
            for (const QColor behind : { Qt::white, Qt::black }) {
                const QImage picture = Contrast::renderEnlarged(window, area, behind);
                contrast = std::min(contrast, Contrast::of(picture));
            }
        }
        return contrast;
    }

    /// In the window.
    static QRect place(const QWidget &widget)
    {
        return { widget.mapTo(widget.window(), QPoint()), widget.size() };
    }

    /// The selected part of the editor's first line, in the window.
    static QRect selection(const NodeEditor &editor)
    {
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(cursor.selectionStart());
        const QRect start = editor.cursorRect(cursor);
        cursor.movePosition(QTextCursor::EndOfLine);
        const QRect end = editor.cursorRect(cursor);
        return { editor.viewport()->mapTo(editor.window(), start.topLeft()),
                 QSize(end.left() - start.left(), start.height()) };
    }

    /// Without the widget's own border.
    static QRect inside(const QWidget &widget) { return place(widget).adjusted(3, 3, -3, -3); }

    /// A piece of the widget's left edge and of what is beside it.
    static QRect edge(const QWidget &widget)
    {
        const QRect all = place(widget);
        return { all.left() - 3, all.center().y() - 2, 6, 5 };
    }

    static bool showsText(const AccessibleObject &object)
    {
        if (const auto *const button = qobject_cast<QAbstractButton *>(object.widget()))
            return button->isEnabled() && !button->text().isEmpty();
        const auto value = object.accessible->text(QAccessible::Value);
        return object.role() == QAccessible::StaticText ||
               object.role() == QAccessible::AlertMessage ||
               (object.role() == QAccessible::EditableText && !value.isEmpty());
    }

    /// The icons and texts of the open menu, selected and not. What cannot be chosen may be faint.
    void expectEntriesToStandOut()
    {
        auto &menu = *Input::visibleMenu();
        for (auto *const action : menu.actions()) {
            if (action->isSeparator() || !action->isEnabled())
                continue;
            for (auto *const selected : { static_cast<QAction *>(nullptr), action }) {
                SCOPED_TRACE(action->text().toStdString() + (selected ? ", selected" : ""));
                menu.setActiveAction(selected);
                expectEntryToStandOut(menu, action);
            }
        }
        menu.close();
    }

    void expectEntryToStandOut(QMenu &menu, QAction *action)
    {
        constexpr int IconColumn = 24;
        const QRect row = menu.actionGeometry(action);
        const QRect icon(row.topLeft(), QSize(IconColumn, row.height()));
        EXPECT_GE(least(menu, row.adjusted(IconColumn, 2, -2, -2)), EnoughForText);
        if (!action->icon().isNull()) {
            const QImage picture =
                Contrast::renderEnlarged(menu, icon.adjusted(2, 2, 0, -2), Qt::black);
            EXPECT_GE(Contrast::ofScaled(picture), EnoughForShapes);
        }
    }

    /// All texts below the widget that is not covered.
    void expectTextsToStandOut(QWidget &widget)
    {
        int count = 0;
        for (const auto &object : AccessibleTree::visibleObjects(widget)) {
            if (!object.widget() || !showsText(object) || !object.isFullyVisible())
                continue;
            ++count;
            const double contrast = least(inside(*object.widget()));
            const auto fixed = HouseColors.find(object.name());
            EXPECT_GE(contrast, fixed == HouseColors.end() ? EnoughForText : fixed->second)
                << object.path;
        }
        EXPECT_GT(count, 0);
    }

    template <typename Card>
    Card &openedCard()
    {
        settle();
        auto &card = *panel().findChild<Card *>();
        EXPECT_TRUE(QTest::qWaitFor([&card] { return Input::button(card, "Close")->hasFocus(); }));
        return card;
    }

    void startWithEveryColor()
    {
        PromptTab tab { .name = "Colors", .blocks = {} };
        for (const auto color : BlockColor::allCases)
            tab.blocks.push_back({ .text = "https://example.com", .color = color });
        start({ tab });
        panel().resize(430, 1600);
        draw();
        ASSERT_EQ(cards().size(), BlockColor::allCases.size());
    }

    QWidget &openChooser()
    {
        machine.workspace.icon = QImage(48, 48, QImage::Format_ARGB32_Premultiplied);
        machine.workspace.applications = { { "/apps/a.desktop", "Calculator", "Do sums", "" },
                                           { "/apps/b.desktop", "Calendar", "See days", "" } };
        start({ tabOf("One") });
        delegate->showSettings();
        openedCard<LauncherSettingsCard>();
        press("Choose App…");
        machine.workspace.finishListing();
        EXPECT_TRUE(QTest::qWaitFor(
            [] { return qobject_cast<ApplicationPanel *>(QApplication::activeWindow()); }));
        settle();
        return *QApplication::activeWindow();
    }
};

TEST_F(ContrastTest, ReckonsAsTheGuidelinesDo)
{
    EXPECT_NEAR(Contrast::ratio(qRgb(0, 0, 0), qRgb(255, 255, 255)), 21, 1e-9);
    EXPECT_NEAR(Contrast::ratio(qRgb(255, 255, 255), qRgb(255, 255, 255)), 1, 1e-9);
    EXPECT_NEAR(Contrast::ratio(qRgb(0x77, 0x77, 0x77), qRgb(255, 255, 255)), 4.48, 0.01);
    EXPECT_NEAR(Contrast::ratio(qRgb(255, 0, 0), qRgb(255, 255, 255)), 4.0, 0.01);
}

TEST_F(ContrastTest, MeasuresTheColorsThatAreDrawn)
{
    start({ tabOf("One") });
    machine.windowSystem.isCompositing.set(false);
    const auto &empty = *panel().findChild<EmptyState *>();
    const double contrast =
        Contrast::of(Contrast::renderEnlarged(panel(), place(empty), Qt::black));
    // White at 0.56 on the ground without a compositor, which is all but black.
    EXPECT_NEAR(contrast, 6.3, 0.3);
}

TEST_F(ContrastTest, IsEnoughForTheTextsOfThePanel)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    expectTextsToStandOut(panel());
}

TEST_F(ContrastTest, IsEnoughForTheTextsOfAnEmptyPanel)
{
    start({ tabOf("One") });
    expectTextsToStandOut(panel());
}

TEST_F(ContrastTest, IsEnoughForTheTextsOnEveryColor)
{
    startWithEveryColor();
    expectTextsToStandOut(panel());
    for (auto *const card : cards()) {
        auto &editor = *card->findChild<NodeEditor *>();
        editor.selectAll();
        Input::click(*Input::button(*card, "Copy"));
        settle();
        settle();
        expectTextsToStandOut(*card);
        EXPECT_GE(least(selection(editor)), EnoughForText) << "without the keyboard";
        editor.setFocus();
        EXPECT_GE(least(selection(editor)), EnoughForText) << "with the keyboard";
    }
}

TEST_F(ContrastTest, IsEnoughForTheTextsWhileDictating)
{
    start({ tabOf("One", { "a" }) });
    dictate();
    expectTextsToStandOut(panel());
}

TEST_F(ContrastTest, IsEnoughForMessages)
{
    machine.speech.startsEngine = false;
    start({ tabOf("One", { "a" }) });
    dictate();
    expectTextsToStandOut(panel());
}

TEST_F(ContrastTest, IsEnoughForTheNameThatIsTyped)
{
    start({ tabOf("One", { "a" }), tabOf("") });
    for (const std::size_t index : { 0U, 1U }) {
        Input::doubleClick(*chips()[index]);
        settle();
        settle();
        auto *const field = chips()[index]->findChild<QLineEdit *>();
        ASSERT_TRUE(field);
        QRect text = inside(*field);
        text.setRight(text.center().x() - 6); // the cursor stands in the middle of no name
        EXPECT_GE(least(text), EnoughForText) << index;
    }
}

TEST_F(ContrastTest, IsEnoughForTheAboutCard)
{
    start({ tabOf("One") });
    delegate->showAbout();
    expectTextsToStandOut(openedCard<AboutCard>());
}

TEST_F(ContrastTest, IsEnoughForTheLaunchers)
{
    TestFiles::write(folder / "launchers.json", ExampleLaunchers::json);
    start({ tabOf("One", { "a" }) });
    delegate->showSettings();
    auto &card = openedCard<LauncherSettingsCard>();
    auto &field = *card.findChild<TextField *>();
    field.setText(QStringLiteral("ftp://example.com"));
    Input::click(field);
    Input::key(panel(), Qt::Key_Return);
    settle();
    panel().setFocus();
    expectTextsToStandOut(card);

    auto &empty = *card.findChildren<TextField *>()[1];
    const QRect badge = { place(*card.findChild<LauncherSlotEditor *>()).topLeft() + QPoint(13, 13),
                          QSize(10, 12) };
    EXPECT_GE(least(inside(empty)), EnoughForText) << "what a field asks for";
    EXPECT_GE(least(badge), EnoughForText) << "the slot's number";
    EXPECT_GE(least(edge(empty)), EnoughForShapes) << "where to type";
}

TEST_F(ContrastTest, IsEnoughForTheChooser)
{
    auto &chooser = openChooser();
    auto &field = *chooser.findChild<TextField *>();
    auto &list = *chooser.findChild<ApplicationList *>();
    list.setFocus(); // the field has neither cursor nor ring then
    EXPECT_GE(least(inside(field)), EnoughForText) << "what the field asks for";
    EXPECT_GE(least(edge(field)), EnoughForShapes) << "where to type";

    list.selectFirst();
    settle();
    expectTextsToStandOut(chooser);
    for (int row = 0; row < 2; ++row) {
        const QRect texts = list.visualRect(list.model()->index(row, 0))
                                .translated(place(*list.viewport()).topLeft())
                                .adjusted(50, 3, -50, -3);
        const int half = texts.height() / 2;
        EXPECT_GE(least(texts.adjusted(0, 0, 0, -half)), EnoughForText) << row;
        EXPECT_GE(least(texts.adjusted(0, half + 1, 0, 0)), EnoughForText) << row;
    }
}

TEST_F(ContrastTest, IsEnoughForButtonsUnderThePointer)
{
    auto &chooser = openChooser();
    chooser.findChild<ApplicationList *>()->selectFirst();
    settle();
    for (const auto *const name : { "Other…", "Cancel", "Add Launcher" }) {
        auto &button = *Input::button(chooser, name);
        Input::moveTo(button, button.rect().center());
        settle();
        ASSERT_TRUE(button.underMouse());
        EXPECT_GE(least(inside(button)), EnoughForText) << name;
    }
}

TEST_F(ContrastTest, IsEnoughForTheMenuOfColors)
{
    startWithEveryColor();
    for (auto *const card : cards()) {
        Input::click(*Input::button(*card, "Node color"));
        ASSERT_TRUE(Input::visibleMenu());
        SCOPED_TRACE(Input::accessibleName(*card));
        expectEntriesToStandOut();
    }
}

TEST_F(ContrastTest, IsEnoughForTheMenusOfThePanelATabAndAText)
{
    TestFiles::write(folder / "launchers.json", ExampleLaunchers::json);
    start({ tabOf("One", { "a" }), tabOf("Two") });
    auto &text = editor(0);
    text.selectAll();
    const std::vector<QWidget *> owners { chips()[0], &button("New Node"), &text };
    for (auto *const focused : owners) {
        panel().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
        focused->setFocus();
        Input::key(panel(), Qt::Key_F10, Qt::ShiftModifier);
        ASSERT_TRUE(Input::visibleMenu());
        expectEntriesToStandOut();
    }
}

TEST_F(ContrastTest, IsEnoughForSymbols)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    int count = 0;
    for (const auto *const button : panel().findChildren<QAbstractButton *>()) {
        if (!button->isVisible() || !button->text().isEmpty())
            continue;
        ++count;
        EXPECT_GE(least(place(*button)), EnoughForShapes) << button->accessibleName().toStdString();
    }
    EXPECT_GT(count, 5);
}

TEST_F(ContrastTest, IsEnoughToSeeWhereTheKeyboardIs)
{
    startWithEveryColor();
    for (auto *const card : cards()) {
        for (auto *const control : card->findChildren<QWidget *>()) {
            if (!control->isVisible() || !(control->focusPolicy() & Qt::TabFocus))
                continue;
            control->setFocus(Qt::TabFocusReason);
            settle();
            EXPECT_GE(least(edge(*control)), EnoughForShapes)
                << Input::accessibleName(*card) << ", " << Input::accessibleName(*control);
        }
    }
}

} // namespace
