#include "app/StatusItem.h"

#include "fakes/FakeStatusBar.h"

#include <QAction>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

using Action = MenuItem::Action;
using Kind = StatusBar::Kind;

/// An icon whose bar comes and goes as the test says. That a bar really shows it is for the tests
/// of the whole program.
class StatusItemTest : public testing::Test
{
protected:
    void prepare()
    {
        ++preparations;
        item.setMenu(
            { .items = { { .action = Action::ShowPanel, .title = QStringLiteral("a_b & c") } } });
    }

    std::string label() const { return item.menu().actions().at(0)->text().toStdString(); }

    FakeStatusBar bar;
    std::vector<Action> performed;
    int preparations = 0;
    StatusItem item { bar, [this](const MenuItem &each) { performed.push_back(each.action); },
                      [this] { prepare(); } };
};

TEST_F(StatusItemTest, LooksForABarWhenItBegins)
{
    EXPECT_EQ(bar.beginCalls, 0);
    item.begin();
    EXPECT_EQ(bar.beginCalls, 1);
}

TEST_F(StatusItemTest, PreparesNoMenuWithoutABar)
{
    item.begin();
    EXPECT_EQ(preparations, 0);
    EXPECT_FALSE(item.isShown());
}

TEST_F(StatusItemTest, AppearsWhenABarDoesAndFollowsIt)
{
    item.begin();
    bar.kind.set(Kind::notifier);
    EXPECT_TRUE(item.isShown());
    bar.kind.set(Kind::none);
    EXPECT_FALSE(item.isShown());
    bar.kind.set(Kind::notifier);
    EXPECT_TRUE(item.isShown());
    EXPECT_EQ(preparations, 1);
}

TEST_F(StatusItemTest, MarksUnderscoresForBarsOverDBusAlone)
{
    item.begin();
    bar.kind.set(Kind::notifier);
    EXPECT_EQ(label(), "&a__b & c");
}

TEST_F(StatusItemTest, LeavesUnderscoresAloneInItsOwnMenu)
{
    item.begin();
    bar.kind.set(Kind::embedded);
    EXPECT_EQ(label(), "a_b && c");
}

TEST_F(StatusItemTest, PerformsWhatIsChosen)
{
    item.begin();
    bar.kind.set(Kind::notifier);
    item.menu().actions().at(0)->trigger();
    EXPECT_EQ(performed, std::vector({ Action::ShowPanel }));
}

} // namespace
