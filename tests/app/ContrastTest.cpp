#include "views/Contrast.h"

#include "app/MiniSwitch.h"
#include "app/PanelFixture.h"
#include "launchers/ExampleLaunchers.h"
#include "views/AccessibleTree.h"
#include "views/ApplicationPanel.h"
#include "views/ChoiceList.h"
#include "views/EmptyState.h"
#include "views/FindCard.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"
#include "views/MessageLine.h"
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

constexpr double MinTextContrast = 4.5;
constexpr double MinShapeContrast = 3; // focus rings, symbols and borders of fields

/// The minimum contrast of short texts in the accent colour, which is below `MinTextContrast`. A
/// symbol or a position conveys them too, and so does the accessibility tree.
const std::map<std::string, double> AccentTexts {
    { "Copied", 2.7 },
    { "Stop", 2.7 },
    { "The microphone could not be started.", 3.7 },
    { "Enter a valid http or https website.", 4 },
};

/// Contrast measured on painted pixels, over white and over black backdrops.
class ContrastTest : public PanelFixture
{
protected:
    /// The lowest contrast in a part of the active window over white and black, with and without
    /// compositing and blur.
    double lowestContrast(const QRect &area)
    {
        return lowestContrast(*QApplication::activeWindow(), area);
    }

    double lowestContrast(QWidget &window, const QRect &area)
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

    /// In window coordinates.
    static QRect place(const QWidget &widget)
    {
        return { widget.mapTo(widget.window(), QPoint()), widget.size() };
    }

    /// The selected part of the editor's first line, in window coordinates.
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

    /// A part of the widget's left edge and its surroundings.
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

    /// Checks icons and texts of the enabled entries in the open menu, selected and not.
    void expectReadableEntries()
    {
        auto &menu = *Input::visibleMenu();
        for (auto *const action : menu.actions()) {
            if (action->isSeparator() || !action->isEnabled())
                continue;
            for (auto *const selected : { static_cast<QAction *>(nullptr), action }) {
                SCOPED_TRACE(action->text().toStdString() + (selected ? ", selected" : ""));
                menu.setActiveAction(selected);
                expectReadableEntry(menu, action);
            }
        }
        menu.close();
    }

    void expectReadableEntry(QMenu &menu, QAction *action)
    {
        constexpr int IconColumn = 24;
        const QRect row = menu.actionGeometry(action);
        const QRect icon(row.topLeft(), QSize(IconColumn, row.height()));
        EXPECT_GE(lowestContrast(menu, row.adjusted(IconColumn, 2, -2, -2)), MinTextContrast);
        if (!action->icon().isNull()) {
            const QImage picture =
                Contrast::renderEnlarged(menu, icon.adjusted(2, 2, 0, -2), Qt::black);
            EXPECT_GE(Contrast::ofScaled(picture), MinShapeContrast);
        }
    }

    /// Checks all visible texts in `widget`.
    void expectReadableTexts(QWidget &widget)
    {
        int count = 0;
        for (const auto &object : AccessibleTree::visibleObjects(widget)) {
            if (!object.widget() || !showsText(object) || !object.isFullyVisible())
                continue;
            ++count;
            const double contrast = lowestContrast(inside(*object.widget()));
            const auto exception = AccentTexts.find(object.name());
            EXPECT_GE(contrast,
                      exception == AccentTexts.end() ? MinTextContrast : exception->second)
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

TEST_F(ContrastTest, ComputesContrastAsWcagDefinesIt)
{
    EXPECT_NEAR(Contrast::ratio(qRgb(0, 0, 0), qRgb(255, 255, 255)), 21, 1e-9);
    EXPECT_NEAR(Contrast::ratio(qRgb(255, 255, 255), qRgb(255, 255, 255)), 1, 1e-9);
    EXPECT_NEAR(Contrast::ratio(qRgb(0x77, 0x77, 0x77), qRgb(255, 255, 255)), 4.48, 0.01);
    EXPECT_NEAR(Contrast::ratio(qRgb(255, 0, 0), qRgb(255, 255, 255)), 4.0, 0.01);
}

TEST_F(ContrastTest, MeasuresThePaintedColors)
{
    start({ tabOf("One") });
    machine.windowSystem.isCompositing.set(false);
    const auto &empty = *panel().findChild<EmptyState *>();
    const double contrast =
        Contrast::of(Contrast::renderEnlarged(panel(), place(empty), Qt::black));
    // White at 0.56 on the nearly black background without a compositor.
    EXPECT_NEAR(contrast, 6.3, 0.3);
}

TEST_F(ContrastTest, IsEnoughForTheTextsOfThePanel)
{
    start({ tabOf("One", { "", "https://example.com" }), tabOf("Two") });
    expectReadableTexts(panel());
}

TEST_F(ContrastTest, IsEnoughForTheTextsOfAnEmptyPanel)
{
    start({ tabOf("One") });
    expectReadableTexts(panel());
}

TEST_F(ContrastTest, IsEnoughForTheTextsOnEveryColor)
{
    startWithEveryColor();
    expectReadableTexts(panel());
    for (auto *const card : cards()) {
        auto &editor = *card->findChild<NodeEditor *>();
        editor.selectAll();
        Input::click(*Input::button(*card, "Copy"));
        settle();
        settle();
        expectReadableTexts(*card);
        EXPECT_GE(lowestContrast(selection(editor)), MinTextContrast) << "unfocused";
        editor.setFocus();
        EXPECT_GE(lowestContrast(selection(editor)), MinTextContrast) << "focused";
    }
}

TEST_F(ContrastTest, IsEnoughForTheTextsWhileDictating)
{
    start({ tabOf("One", { "a" }) });
    dictate();
    expectReadableTexts(panel());
}

TEST_F(ContrastTest, IsEnoughForMessages)
{
    machine.speech.startsEngine = false;
    start({ tabOf("One", { "a" }) });
    dictate();
    expectReadableTexts(panel());
}

TEST_F(ContrastTest, IsEnoughForTheNameOfARenamedTab)
{
    start({ tabOf("One", { "a" }), tabOf("") });
    for (const std::size_t index : { 0U, 1U }) {
        Input::doubleClick(*chips()[index]);
        settle();
        settle();
        auto *const field = chips()[index]->findChild<QLineEdit *>();
        ASSERT_TRUE(field);
        QRect text = inside(*field);
        text.setRight(text.center().x() - 6); // in an empty name, the cursor is in the middle
        EXPECT_GE(lowestContrast(text), MinTextContrast) << index;
    }
}

TEST_F(ContrastTest, IsEnoughForTheAboutCard)
{
    start({ tabOf("One") });
    delegate->showAbout();
    expectReadableTexts(openedCard<AboutCard>());
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
    expectReadableTexts(card);

    auto &empty = *card.findChildren<TextField *>()[1];
    const QRect badge = { place(*card.findChild<LauncherSlotEditor *>()).topLeft() + QPoint(13, 13),
                          QSize(10, 12) };
    EXPECT_GE(lowestContrast(inside(empty)), MinTextContrast) << "placeholder";
    EXPECT_GE(lowestContrast(badge), MinTextContrast) << "slot number";
    EXPECT_GE(lowestContrast(edge(empty)), MinShapeContrast) << "border of the field";
}

TEST_F(ContrastTest, IsEnoughForTheChooser)
{
    auto &chooser = openChooser();
    auto &field = *chooser.findChild<TextField *>();
    auto &list = *chooser.findChild<ChoiceList *>();
    list.setFocus(); // removes cursor and ring from the field
    EXPECT_GE(lowestContrast(inside(field)), MinTextContrast) << "placeholder";
    EXPECT_GE(lowestContrast(edge(field)), MinShapeContrast) << "border of the field";

    list.selectFirst();
    settle();
    expectReadableTexts(chooser);
    for (int row = 0; row < 2; ++row) {
        const QRect texts = list.visualRect(list.model()->index(row, 0))
                                .translated(place(*list.viewport()).topLeft())
                                .adjusted(50, 3, -50, -3);
        const int half = texts.height() / 2;
        EXPECT_GE(lowestContrast(texts.adjusted(0, 0, 0, -half)), MinTextContrast) << row;
        EXPECT_GE(lowestContrast(texts.adjusted(0, half + 1, 0, 0)), MinTextContrast) << row;
    }
}

TEST_F(ContrastTest, IsEnoughForTheFindCard)
{
    start({ tabOf("first found", { "MMM found MMM", "MMM found MMM" }) });
    Input::key(panel(), Qt::Key_F, Qt::ControlModifier);
    auto &card = *panel().findChild<FindCard *>();
    auto &field = *card.findChild<TextField *>();
    ASSERT_TRUE(QTest::qWaitFor([&field] { return field.hasFocus(); }));
    Input::button(card, "Close")->setFocus(); // removes cursor and ring from the field
    EXPECT_GE(lowestContrast(inside(field)), MinTextContrast) << "placeholder";
    EXPECT_GE(lowestContrast(edge(field)), MinShapeContrast) << "border of the field";

    card.setQuery(QStringLiteral("found"));
    settle();
    EXPECT_GE(lowestContrast(place(*card.findChild<MessageLine *>())), MinTextContrast);
    auto &list = *card.findChild<ChoiceList *>();
    for (int row = 0; row < 2; ++row) {
        const QRect texts = list.visualRect(list.model()->index(row, 0))
                                .translated(place(*list.viewport()).topLeft())
                                .adjusted(26, 4, -100, -4);
        const int half = texts.height() / 2;
        EXPECT_GE(lowestContrast(texts.adjusted(0, 0, 0, -half)), MinTextContrast) << row;
        EXPECT_GE(lowestContrast(texts.adjusted(0, half + 2, 0, 0)), MinTextContrast) << row;
    }
}

TEST_F(ContrastTest, IsEnoughForButtonsUnderThePointer)
{
    auto &chooser = openChooser();
    chooser.findChild<ChoiceList *>()->selectFirst();
    settle();
    for (const auto *const name : { "Other…", "Cancel", "Add Launcher" }) {
        auto &button = *Input::button(chooser, name);
        Input::moveTo(button, button.rect().center());
        settle();
        ASSERT_TRUE(button.underMouse());
        EXPECT_GE(lowestContrast(inside(button)), MinTextContrast) << name;
    }
}

TEST_F(ContrastTest, IsEnoughForTheMenuOfColors)
{
    startWithEveryColor();
    for (auto *const card : cards()) {
        Input::click(*Input::button(*card, "Node color"));
        ASSERT_TRUE(Input::visibleMenu());
        SCOPED_TRACE(Input::accessibleName(*card));
        expectReadableEntries();
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
        expectReadableEntries();
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
        EXPECT_GE(lowestContrast(place(*button)), MinShapeContrast)
            << button->accessibleName().toStdString();
    }
    EXPECT_GT(count, 5);
}

TEST_F(ContrastTest, IsEnoughForFocusRings)
{
    startWithEveryColor();
    for (auto *const card : cards()) {
        for (auto *const control : card->findChildren<QWidget *>()) {
            if (!control->isVisible() || !(control->focusPolicy() & Qt::TabFocus))
                continue;
            control->setFocus(Qt::TabFocusReason);
            settle();
            EXPECT_GE(lowestContrast(edge(*control)), MinShapeContrast)
                << Input::accessibleName(*card) << ", " << Input::accessibleName(*control);
        }
    }
}

} // namespace
