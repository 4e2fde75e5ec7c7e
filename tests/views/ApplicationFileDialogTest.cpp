#include "views/ApplicationPanelFixture.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QListView>
#include <QTimer>
#include <gtest/gtest.h>

#include <set>

namespace
{

/// A panel without an application list, and a temporary folder for desktop entries.
class ApplicationFileDialogTest : public ApplicationPanelFixture
{
protected:
    ApplicationFileDialogTest()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.filePath(QStringLiteral("data"))));
        openEmpty();
    }

    void TearDown() override
    {
        qunsetenv("XDG_DATA_HOME");
        ApplicationPanelFixture::TearDown();
    }

    QString addFile(const QString &name) const
    {
        QString path = home.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        return path;
    }

    ApplicationFileDialog &openDialog()
    {
        Input::click(button("Other\u2026"));
        auto *const dialog = fileDialog();
        EXPECT_TRUE(dialog);
        // Qt also reports a window as active while its parent is.
        EXPECT_TRUE(QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }));
        return *dialog;
    }

    static void choose(ApplicationFileDialog &dialog, const QString &path)
    {
        auto &name = *dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name.setFocus();
        name.setText(path);
        Input::key(dialog, Qt::Key_Return);
    }

    QTemporaryDir home;
};

TEST_F(ApplicationFileDialogTest, ClosesThePanelWithTheChosenPath)
{
    const QString path = addFile(QStringLiteral("\u00DCbung \u2603.desktop"));
    choose(openDialog(), path);
    settle();
    EXPECT_FALSE(panel);
    EXPECT_EQ(answers, Answers { path.toUtf8().toStdString() });
}

TEST_F(ApplicationFileDialogTest, LeavesThePanelUsable)
{
    const auto &dialog = openDialog();
    EXPECT_FALSE(dialog.isModal());
    EXPECT_EQ(dialog.windowHandle()->transientParent(), panel->windowHandle());
    workspace.finishListing();
    panel->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
    type("mail");
    press(Qt::Key_Return);
    settle();
    EXPECT_EQ(answers, Answers { "/apps/mail.desktop" });
}

TEST_F(ApplicationFileDialogTest, ClosesWithThePanel)
{
    const QPointer<ApplicationFileDialog> dialog = &openDialog();
    panel->reject();
    settle();
    EXPECT_FALSE(dialog);
}

TEST_F(ApplicationFileDialogTest, CancellingLeavesThePanelOpen)
{
    Input::key(openDialog(), Qt::Key_Escape);
    EXPECT_FALSE(fileDialog());
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(answers, Answers());
    openDialog();
}

TEST_F(ApplicationFileDialogTest, OpensOnlyOnce)
{
    openDialog();
    Input::click(button("Other\u2026"));
    EXPECT_EQ(panel->findChildren<ApplicationFileDialog *>().size(), 1);
}

TEST_F(ApplicationFileDialogTest, StartsInUserApplicationsOrHome)
{
    EXPECT_EQ(openDialog().directory().path(), QDir::homePath());
    panel->reject();
    settle();
    openEmpty();
    const QString own = addFile(QStringLiteral("data/applications/own.desktop"));
    EXPECT_EQ(openDialog().directory().path(), QFileInfo(own).path());
}

TEST_F(ApplicationFileDialogTest, ShowsFoldersAndDesktopEntriesOnly)
{
    const auto folder = QFileInfo(addFile(QStringLiteral("here/one.desktop"))).path();
    addFile(QStringLiteral("here/two.txt"));
    addFile(QStringLiteral("here/below/three.desktop"));
    auto &dialog = openDialog();
    dialog.setDirectory(folder);
    const auto &view = *dialog.findChild<QListView *>(QStringLiteral("listView"));
    EXPECT_TRUE(view.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&view] { return view.model()->rowCount(view.rootIndex()) == 2; }));
    std::set<std::string> names; // sorted only once the disk has been read
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = view.model()->index(row, 0, view.rootIndex());
        names.insert(index.data().toString().toStdString());
    }
    EXPECT_EQ(names, (std::set<std::string> { "below", "one.desktop" }));
}

TEST_F(ApplicationFileDialogTest, RejectsOtherAndMissingFiles)
{
    const QString text = addFile(QStringLiteral("readme.txt"));
    auto &dialog = openDialog();
    for (const QString &path : { text, home.filePath(QStringLiteral("missing.desktop")) }) {
        choose(dialog, path);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(QApplication::activeModalWidget());
        EXPECT_EQ(answers, Answers());
    }
}

TEST_F(ApplicationFileDialogTest, OpensATypedFolder)
{
    const auto folder = QFileInfo(addFile(QStringLiteral("here/one.desktop"))).path();
    auto &dialog = openDialog();
    choose(dialog, folder);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.directory().path(), folder);
}

// A link such as "current" outlives the folder of the version that it points to.
TEST_F(ApplicationFileDialogTest, KeepsSymbolicLinksInThePath)
{
    const QString entry = addFile(QStringLiteral("store/1.0/app.desktop"));
    const QString link = home.filePath(QStringLiteral("current"));
    ASSERT_TRUE(QFile::link(QFileInfo(entry).path(), link));
    auto &dialog = openDialog();
    dialog.setDirectory(home.path());
    auto &view = *dialog.findChild<QListView *>(QStringLiteral("listView"));
    QModelIndex row;
    EXPECT_TRUE(QTest::qWaitFor([&row, &view] {
        row = view.model()->index(0, 0, view.rootIndex());
        return row.data() == QStringLiteral("current");
    }));
    const QPoint position = view.viewport()->mapTo(&dialog, view.visualRect(row).center());
    QTest::mouseDClick(dialog.windowHandle(), Qt::LeftButton, {}, position);
    EXPECT_EQ(dialog.directory().path(), link);
    choose(dialog, QStringLiteral("app.desktop"));
    settle();
    EXPECT_EQ(answers, Answers { (link + QStringLiteral("/app.desktop")).toStdString() });
}

TEST_F(ApplicationFileDialogTest, ShowsHiddenFilesOnRequest)
{
    auto &dialog = openDialog();
    auto &viewport = *dialog.findChild<QListView *>(QStringLiteral("listView"))->viewport();
    for (const bool isShown : { true, false }) {
        Input::withMenu(
            [&viewport] {
                Input::click(viewport, { 5, 5 }, Qt::RightButton);
            },
            [](QMenu &menu) { Input::choose(menu, menu.actions().first()); });
        EXPECT_EQ(dialog.filter().testFlag(QDir::Hidden), isShown);
    }
}

TEST_F(ApplicationFileDialogTest, ClosesWithThePanelWhileAMenuIsOpen)
{
    for (const auto &name : { QStringLiteral("listView"), QStringLiteral("sidebar") }) {
        const QPointer<ApplicationFileDialog> dialog = &openDialog();
        auto &viewport = *dialog->findChild<QListView *>(name)->viewport();
        // A menu that blocked would return only after the panel is deleted.
        QTimer::singleShot(0, qApp, [this] {
            panel->reject();
            settle();
        });
        Input::click(viewport, { 5, 5 }, Qt::RightButton);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !panel; }));
        EXPECT_FALSE(dialog);
        EXPECT_FALSE(Input::visibleMenu());
        openEmpty();
    }
}

TEST_F(ApplicationFileDialogTest, IsReadOnly)
{
    EXPECT_TRUE(openDialog().testOption(QFileDialog::ReadOnly));
}

TEST_F(ApplicationFileDialogTest, UsesThePanelsTexts)
{
    auto &dialog = openDialog();
    EXPECT_EQ(dialog.windowTitle().toStdString(), "Choose an Application");
    EXPECT_TRUE(Input::button(dialog, "Add Launcher"));
    const auto &types = *dialog.findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
    EXPECT_EQ(types.currentText().toStdString(), "Applications (*.desktop)");
}

TEST_F(ApplicationFileDialogTest, HasReadableContrast)
{
    const auto contrast = [](const QColor &a, const QColor &b) {
        return std::abs(a.lightness() - b.lightness());
    };
    auto &dialog = openDialog();
    const auto &view = *dialog.findChild<QListView *>(QStringLiteral("listView"));
    const QColor background = view.palette().color(QPalette::Base);
    EXPECT_EQ(background.alpha(), 255);
    EXPECT_GT(contrast(view.palette().color(QPalette::Text), background), 180);
    const QImage picture = dialog.grab().toImage();
    EXPECT_LT(picture.pixelColor(2, 2).lightness(), 60);
}

} // namespace
