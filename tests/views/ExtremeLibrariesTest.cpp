// Libraries as a paste or another program may create them. The limit of CPU time in each test
// catches algorithms whose time grows with the square of the size.

#include "support/ProcessorTime.h"
#include "views/PanelContentFixture.h"

#include <QClipboard>
#include <QLineEdit>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;

class ExtremeLibrariesTest : public PanelContentFixture
{
protected:
    void TearDown() override { EXPECT_LT(m_spent.seconds(), 40); }

    static std::string repeated(const std::string &unit, std::size_t bytes)
    {
        std::string text;
        text.reserve(bytes + unit.size());
        while (text.size() < bytes)
            text += unit;
        return text;
    }

    const std::string &text() const { return blocks().front().text; }

    void paint() { EXPECT_FALSE(view->grab().isNull()); }

    void focusEndOfNode()
    {
        editEnd(0);
        settle();
    }

    /// Shows the node, types a letter at its end and saves it, without losing anything.
    void expectShownTypedAndSaved(const std::string &shown)
    {
        openView(Texts { shown });
        paint();
        focusEndOfNode();
        paint();
        Input::type(editor(0), "x");
        settle();
        advance(SaveDelay);
        // EXPECT_EQ would print the texts.
        EXPECT_TRUE(text() == shown + "x") << "in memory";
        EXPECT_TRUE(savedDocument() == documentOf(store())) << "in the file";
    }

private:
    ProcessorTime m_spent;
};

TEST_F(ExtremeLibrariesTest, ShowsSelectsAndDeletesTenThousandTabs)
{
    std::vector<PromptTab> tabs;
    for (int number = 0; number < 10'000; ++number)
        tabs.push_back(tabOf("Tab " + std::to_string(number), { "text" }));
    openView(tabs);
    paint();
    store().selectTab(tabs.back().id);
    settle();
    EXPECT_FALSE(Input::button(*view, "Tab 9999")->visibleRegion().isEmpty());
    store().deleteTab(tabs.back().id);
    store().deleteTab(tabs[5000].id);
    settle();
    EXPECT_FALSE(Input::button(*view, "Tab 0")->visibleRegion().isEmpty());
    press("New tab");
    press("New Node");
    EXPECT_EQ(store().tabs().get().size(), 9999U);
    EXPECT_EQ(cards().size(), 1U);
    advance(SaveDelay);
    EXPECT_TRUE(savedDocument() == documentOf(store()));
}

TEST_F(ExtremeLibrariesTest, RenamesATabWithAOneMegabyteName)
{
    const std::string name(1'000'000, 'W');
    openView({ tabOf(name), tabOf("Other") });
    paint();
    Input::doubleClick(*view->findChild<TabChip *>());
    settle();
    paint();
    auto *const field = view->findChild<QLineEdit *>();
    ASSERT_TRUE(field);
    Input::key(*field, Qt::Key_End);
    Input::type(*field, "x");
    settle();
    EXPECT_TRUE(store().tabs().get().front().name == name + "x");
}

TEST_F(ExtremeLibrariesTest, KeepsTabNamesOfAnyCharacters)
{
    const Texts names { "\u05E9\u05DC\u05D5\u05DD \u0633\u0644\u0627\u0645",
                        "\u202Eturned",
                        "e" + repeated("\u0301", 1000),
                        repeated("\U0001F469\u200D", 1000),
                        "a\0b\0"s,
                        "\x01\x1B[31m\x7F",
                        "\uFFFE\uFFFF\U0010FFFF",
                        "line\nline\u2028line\u2029" };
    std::vector<PromptTab> tabs;
    for (const auto &name : names)
        tabs.push_back(tabOf(name, { name }));
    openView(tabs);
    for (const auto &tab : tabs) {
        store().selectTab(tab.id);
        settle();
        paint();
    }
    advance(SaveDelay);
    EXPECT_EQ(store().tabs().get(), tabs);
    EXPECT_EQ(savedDocument(), documentOf(store()));
}

TEST_F(ExtremeLibrariesTest, WrapsAMegabyteWithoutSpaces)
{
    expectShownTypedAndSaved(repeated("VGhpcyBpcyBhbiBpbWFnZQ", 1'000'000));
    EXPECT_GT(editor(0).verticalScrollBar()->maximum(), 1000) << "wrapped";
}

TEST_F(ExtremeLibrariesTest, PastesUndoesAndRedoesAMegabyteWithoutSpaces)
{
    const std::string pasted(1'000'000, 'x');
    openView(Texts { "before " });
    focusEndOfNode();
    QGuiApplication::clipboard()->setText(QString::fromStdString(pasted));
    Input::key(editor(0), Qt::Key_V, Qt::ControlModifier);
    settle();
    EXPECT_TRUE(text() == "before " + pasted);
    Input::key(editor(0), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(text(), "before ");
    Input::key(editor(0), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    settle();
    EXPECT_TRUE(text() == "before " + pasted);
}

TEST_F(ExtremeLibrariesTest, ShowsAnExternalMegabyteWithoutSpaces)
{
    const std::string text(1'000'000, 'x');
    openView(Texts { "before" });
    store().updateBlock(blocks().front().id, text);
    settle();
    EXPECT_TRUE(editor(0).toPlainText().toStdString() == text);
}

struct ExtremeText {
    const char *name;
    std::string beginning;
    std::string unit; ///< repeated up to `bytes`
    std::size_t bytes;
};

class ExtremeTextsTest :
    public ExtremeLibrariesTest,
    public testing::WithParamInterface<ExtremeText>
{
};

TEST_P(ExtremeTextsTest, ShowsEditsAndSavesTheNode)
{
    const auto &[name, beginning, unit, bytes] = GetParam();
    expectShownTypedAndSaved(beginning + repeated(unit, bytes));
}

INSTANTIATE_TEST_SUITE_P(
    Nodes, ExtremeTextsTest,
    testing::Values(ExtremeText { "FiftyMegabytesOfLines", "",
                                  "A line of a long prompt, as people paste them.\n", 50'000'000 },
                    ExtremeText { "AMegabyteOnOneLine", "", "words ", 1'000'000 },
                    ExtremeText { "AMegabyteOfNoBreakSpaces", "", "a\u00A0", 1'000'000 },
                    ExtremeText { "AMegabyteFromRightToLeft", "", "\u05E9\u05DC\u05D5\u05DD abc ",
                                  1'000'000 },
                    ExtremeText { "AMegabyteOfDirectionChanges", "", "\u202Ba\u202Eb ", 1'000'000 },
                    ExtremeText { "ThousandsOfAccentsOnOneLetter", "e", "\u0301", 20'000 },
                    ExtremeText { "NulCharacters", "", "\0"s, 100'000 }),
    [](const auto &text) { return std::string(text.param.name); });

} // namespace
