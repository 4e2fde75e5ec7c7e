#include "views/PanelApplicationChooser.h"

#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "views/ApplicationPanel.h"
#include "views/Input.h"

#include <QCoreApplication>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace
{

class PanelApplicationChooserTest : public testing::Test
{
protected:
    using Answers = std::vector<std::optional<std::string>>;

    PanelApplicationChooserTest()
    {
        workspace.icon = QImage(24, 24, QImage::Format_RGB32);
        workspace.applications = { { "/apps/mail.desktop", "Mail", "", "" } };
    }

    /// Opens a panel with this title and records its answers.
    Answers &ask(const QString &title = QStringLiteral("Choose an Application"))
    {
        auto &answers = *answersOfAll.emplace_back(std::make_unique<Answers>());
        chooser->begin(title, QStringLiteral("Add Launcher"),
                       [&answers](const auto &path) { answers.push_back(path); });
        return answers;
    }

    static std::vector<ApplicationPanel *> allPanels()
    {
        std::vector<ApplicationPanel *> panels;
        for (auto *const widget : QApplication::topLevelWidgets()) {
            if (auto *const panel = qobject_cast<ApplicationPanel *>(widget))
                panels.push_back(panel);
        }
        return panels;
    }

    static std::vector<ApplicationPanel *> openPanels()
    {
        auto panels = allPanels();
        std::erase_if(panels, [](const auto *panel) { return !panel->isVisible(); });
        return panels;
    }

    static ApplicationPanel &panel()
    {
        EXPECT_EQ(openPanels().size(), 1U);
        auto *const panel = openPanels().front();
        // Qt also reports a window as active while its parent is.
        EXPECT_TRUE(QTest::qWaitFor([panel] { return QApplication::activeWindow() == panel; }));
        return *panel;
    }

    void chooseFirst()
    {
        workspace.finishListing();
        Input::key(panel(), Qt::Key_Down);
        Input::key(panel(), Qt::Key_Return);
    }

    /// Checks for one answer, without an application, and that the panel is closed.
    static void expectCancelled(const Answers &answers)
    {
        EXPECT_EQ(answers, Answers { std::nullopt });
        EXPECT_EQ(panelCount(), 0U);
    }

    static std::size_t panelCount()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return allPanels().size();
    }

    const Answers none { std::nullopt };
    std::vector<std::unique_ptr<Answers>> answersOfAll; // the destructor of the chooser answers
    FakeWorkspace workspace;
    ManualMainQueue mainQueue;
    std::unique_ptr<PanelApplicationChooser> chooser =
        std::make_unique<PanelApplicationChooser>(workspace, mainQueue, [](QDialog &) {});
};

TEST_F(PanelApplicationChooserTest, ShowsAPanelAndReturns)
{
    const auto &answers = ask(QStringLiteral("A title"));
    EXPECT_EQ(panel().windowTitle().toStdString(), "A title");
    EXPECT_TRUE(Input::button(panel(), "Add Launcher"));
    EXPECT_EQ(answers, Answers());
}

TEST_F(PanelApplicationChooserTest, AnswersWithTheChosenPath)
{
    const auto &answers = ask();
    chooseFirst();
    EXPECT_EQ(answers, Answers { "/apps/mail.desktop" });
    EXPECT_EQ(panelCount(), 0U);
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(PanelApplicationChooserTest, AnswersNoneWhenCancelled)
{
    const auto &answers = ask();
    Input::key(panel(), Qt::Key_Escape);
    expectCancelled(answers);
}

TEST_F(PanelApplicationChooserTest, CanBeginAgain)
{
    ask();
    Input::key(panel(), Qt::Key_Escape);
    const auto &answers = ask();
    chooseFirst();
    EXPECT_EQ(answers, Answers { "/apps/mail.desktop" });
}

TEST_F(PanelApplicationChooserTest, ANewRequestCancelsTheEarlierOne)
{
    const auto &earlier = ask(QStringLiteral("Earlier"));
    const auto &later = ask(QStringLiteral("Later"));
    EXPECT_EQ(earlier, none);
    EXPECT_EQ(panel().windowTitle().toStdString(), "Later");
    EXPECT_EQ(panelCount(), 1U);
    chooseFirst();
    EXPECT_EQ(later, Answers { "/apps/mail.desktop" });
    EXPECT_EQ(earlier, none);
}

TEST_F(PanelApplicationChooserTest, ACancelledRequestMayBeginAnother)
{
    const Answers *again = nullptr;
    chooser->begin({}, {}, [this, &again](const auto &path) {
        EXPECT_FALSE(path);
        again = &ask(QStringLiteral("Again"));
    });
    const auto &between = ask(QStringLiteral("Between"));
    ASSERT_TRUE(again);
    EXPECT_EQ(between, none);
    EXPECT_EQ(panel().windowTitle().toStdString(), "Again");
    EXPECT_EQ(panelCount(), 1U);
    chooseFirst();
    EXPECT_EQ(*again, Answers { "/apps/mail.desktop" });
}

TEST_F(PanelApplicationChooserTest, StaysAboveTheActiveWindow)
{
    QWidget window;
    Input::show(window);
    ask();
    EXPECT_EQ(panel().windowHandle()->transientParent(), window.windowHandle());
    ask();
    EXPECT_EQ(panel().windowHandle()->transientParent(), window.windowHandle())
        << "the panel that was active is closed";
    EXPECT_EQ(panelCount(), 1U);
    chooser->cancel();
}

TEST_F(PanelApplicationChooserTest, HasNoParentWithoutAnActiveWindow)
{
    ASSERT_FALSE(QApplication::activeWindow());
    ask();
    EXPECT_FALSE(panel().windowHandle()->transientParent());
}

TEST_F(PanelApplicationChooserTest, CancelsOnRequest)
{
    const auto &answers = ask();
    chooser->cancel();
    expectCancelled(answers);
    chooser->cancel();
    EXPECT_EQ(answers, none);
}

TEST_F(PanelApplicationChooserTest, CancelDoesNothingAfterAChoice)
{
    const auto &answers = ask();
    chooseFirst();
    chooser->cancel();
    chooser.reset();
    EXPECT_EQ(answers, Answers { "/apps/mail.desktop" });
}

TEST_F(PanelApplicationChooserTest, CancelsWhenDestroyed)
{
    const auto &answers = ask();
    chooser.reset();
    EXPECT_EQ(answers, none);
    EXPECT_EQ(openPanels().size(), 0U);
    EXPECT_EQ(panelCount(), 0U);
    workspace.finishListing();
    EXPECT_EQ(answers, none);
}

TEST_F(PanelApplicationChooserTest, MayBeDestroyedWhileAnswering)
{
    int answerCount = 0;
    chooser->begin({}, {}, [this, &answerCount](const auto &) {
        ++answerCount;
        const QPointer answering(allPanels().front());
        chooser.reset();
        EXPECT_TRUE(answering) << "the panel is still calling";
    });
    chooseFirst();
    EXPECT_EQ(answerCount, 1);
    EXPECT_EQ(panelCount(), 0U);
}

TEST_F(PanelApplicationChooserTest, CancelsWhenTheParentWindowIsDestroyed)
{
    auto window = std::make_unique<QWidget>();
    Input::show(*window);
    const auto &answers = ask();
    window.reset();
    expectCancelled(answers);
    chooser->cancel();
    EXPECT_EQ(answers, none);
}

TEST_F(PanelApplicationChooserTest, CancelsWhenAllWindowsClose)
{
    const auto &answers = ask();
    QApplication::closeAllWindows();
    expectCancelled(answers);
}

} // namespace
