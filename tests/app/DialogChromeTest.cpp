#include "app/DialogChrome.h"

#include "app/DialogTitleBar.h"
#include "app/PanelFrame.h"
#include "fakes/FakeWindowSystem.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "views/ApplicationPanel.h"
#include "views/Input.h"
#include "views/Picture.h"

#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

namespace
{

class DialogChromeTest : public testing::Test
{
protected:
    DialogChromeTest()
    {
        dialog.setWindowTitle(QStringLiteral("Choose"));
        auto *const layout = new QVBoxLayout(&dialog);
        layout->setContentsMargins(12, 12, 12, 12);
        layout->addWidget(content);
        dialog.setMinimumSize(100, 100);
        dialog.resize(300, 200);
        DialogChrome::addTo(dialog, windowSystem);
        Input::show(dialog);
    }

    /// Alpha of the outermost pixel of a corner, 0 to 255.
    int cornerOpacity() { return Picture(dialog, Qt::white).at(0.3, 0.3).alpha(); }

    FakeWindowSystem windowSystem;
    QDialog dialog;
    QWidget *content = new QWidget(&dialog);
};

TEST_F(DialogChromeTest, ReplacesTheWindowManagersDecoration)
{
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(dialog.findChild<QLabel *>()->text().toStdString(), "Choose");
}

TEST_F(DialogChromeTest, KeepsTheSizeOfTheContent)
{
    EXPECT_EQ(dialog.size(), QSize(300, 228));
    EXPECT_EQ(dialog.minimumSize(), QSize(100, 128));
    EXPECT_EQ(content->geometry(), QRect(12, 40, 276, 176));
}

TEST_F(DialogChromeTest, KeepsTheSizeOfTheContentOfAnApplicationPanel)
{
    FakeWorkspace workspace;
    ManualMainQueue mainQueue;
    ApplicationPanel panel(
        QStringLiteral("Choose"), QStringLiteral("Add"), workspace, mainQueue,
        [this](QDialog &decorated) { DialogChrome::addTo(decorated, windowSystem); }, nullptr);
    const auto expectSizes = [&panel](const char *when) {
        Input::show(panel);
        EXPECT_EQ(panel.size(), QSize(420, 508)) << when;
        EXPECT_EQ(panel.minimumSize(), QSize(320, 328)) << when;
        EXPECT_EQ(panel.windowHandle()->minimumSize(), QSize(320, 328)) << when;
    };
    expectSizes("first shown");
    panel.hide();
    expectSizes("shown again");
}

TEST_F(DialogChromeTest, FollowsTheSizeOfTheDialog)
{
    dialog.resize(400, 260);
    EXPECT_EQ(dialog.findChild<DialogTitleBar *>()->geometry(), QRect(0, 0, 400, 28));
    EXPECT_EQ(dialog.findChild<PanelFrame *>()->geometry(), QRect(0, 0, 400, 260));
}

TEST_F(DialogChromeTest, ClosesTheDialogByItsButton)
{
    Input::click(*Input::button(dialog, "Close"));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(DialogChromeTest, HasRoundCornersUnderACompositor)
{
    EXPECT_EQ(cornerOpacity(), 0);
    windowSystem.isCompositing.set(false);
    EXPECT_EQ(cornerOpacity(), 255);
    windowSystem.isCompositing.set(true);
    dialog.showMaximized();
    EXPECT_EQ(cornerOpacity(), 255);
}

TEST_F(DialogChromeTest, IsOpaqueWithinItsCorners)
{
    const Picture onWhite(dialog, Qt::white);
    EXPECT_EQ(onWhite.at(150, 14).alpha(), 255);
    EXPECT_EQ(onWhite.at(6, 100).alpha(), 255);
    EXPECT_LT(onWhite.at(6, 100).lightness(), 80);
}

} // namespace
