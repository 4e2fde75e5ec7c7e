#include "fakes/TestFiles.h"
#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"
#include "support/RasterImage.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace
{

using namespace Qt::StringLiterals;
using TestDesktop::addEntry;
using TestDesktop::entryText;

/// An icon theme whose images have a colour per folder.
class ApplicationIconTest : public testing::Test
{
protected:
    ApplicationIconTest()
    {
        addIndex();
        QIcon::setThemeSearchPaths({ fileName("icons") });
        QIcon::setThemeName(u"hicolor"_s);
        // Changing the theme clears the icon cache of Qt.
        QIcon::setFallbackThemeName(u"None"_s);
    }

    void TearDown() override
    {
        std::filesystem::remove_all(TestDesktop::path("icons"));
        QIcon::setThemeName(u"None"_s);
    }

    static QString fileName(const std::string &relative)
    {
        return QString::fromStdString(TestDesktop::path(relative));
    }

    static void addPicture(const std::string &relative, const QSize &size, const QColor &color)
    {
        QImage picture(size, QImage::Format_ARGB32);
        picture.fill(color);
        std::filesystem::create_directories(TestDesktop::path(relative).parent_path());
        EXPECT_TRUE(picture.save(fileName(relative)));
    }

    static void addThemed(const std::string &folder, const std::string &name, int side,
                          const QColor &color)
    {
        addPicture("icons/hicolor/" + folder + "/apps/" + name + ".png", { side, side }, color);
    }

    static void addDrawing(const std::string &name)
    {
        TestFiles::write(TestDesktop::path("icons/hicolor/scalable/apps/" + name + ".svg"),
                         "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 2'>"
                         "<path fill='#00f' d='M0 0h1v2H0z'/></svg>");
    }

    static void addGeneric() { addThemed("32x32", "application-x-executable", 32, Qt::gray); }

    QImage iconOf(const std::string &icon, double size, double scale)
    {
        const auto entry = addEntry("icon.desktop", entryText("sh", "Icon=" + icon + "\n"));
        return workspace.applicationIcon(entry, size, scale);
    }

    static QColor centerColor(const QImage &image)
    {
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    QtMainQueue mainQueue;
    GioWorkspace workspace { mainQueue };

private:
    static void addIndex()
    {
        std::string index = "[Icon Theme]\nName=Hicolor\nDirectories=";
        for (const auto *const folder : { "16x16", "32x32", "16x16@2", "128x128", "scalable" })
            index += std::string(folder) + "/apps,";
        index += "\n[16x16/apps]\nSize=16\nType=Threshold\n"
                 "[32x32/apps]\nSize=32\nType=Threshold\n"
                 "[16x16@2/apps]\nSize=16\nScale=2\nType=Threshold\n"
                 "[128x128/apps]\nSize=128\nType=Threshold\n"
                 "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n";
        TestFiles::write(TestDesktop::path("icons/hicolor/index.theme"), index);
    }
};

TEST_F(ApplicationIconTest, UsesTheThemeIconOfTheEntry)
{
    addThemed("16x16", "tool", 16, Qt::red);
    const auto icon = iconOf("tool", 16, 1);
    EXPECT_EQ(icon.size(), QSize(16, 16));
    EXPECT_EQ(icon.devicePixelRatio(), 1);
    EXPECT_EQ(centerColor(icon), QColor(Qt::red));
}

TEST_F(ApplicationIconTest, UsesTheImageOfItsSize)
{
    addThemed("16x16", "tool", 16, Qt::red);
    addThemed("32x32", "tool", 32, Qt::green);
    EXPECT_EQ(centerColor(iconOf("tool", 16, 1)), QColor(Qt::red));
    EXPECT_EQ(centerColor(iconOf("tool", 32, 1)), QColor(Qt::green));
}

TEST_F(ApplicationIconTest, UsesTheImageOfItsScale)
{
    addThemed("16x16", "tool", 16, Qt::red);
    addThemed("16x16@2", "tool", 32, Qt::yellow);
    addThemed("32x32", "tool", 32, Qt::green);
    const auto icon = iconOf("tool", 16, 2);
    EXPECT_EQ(icon.size(), QSize(32, 32));
    EXPECT_EQ(icon.devicePixelRatio(), 2);
    EXPECT_EQ(centerColor(icon), QColor(Qt::yellow));
}

TEST_F(ApplicationIconTest, HasExactlyTheRequestedPixels)
{
    addThemed("16x16", "tool", 16, Qt::red);
    addDrawing("drawing");
    for (const auto *const name : { "tool", "drawing" })
        for (const double size : { 7.0, 16.0, 20.0, 20.5, 64.0 })
            for (const double scale : { 1.0, 1.25, 1.5, 2.0, 3.0 }) {
                const auto icon = iconOf(name, size, scale);
                const int side = qRound(size * scale);
                EXPECT_EQ(icon.size(), QSize(side, side)) << name << size << "@" << scale;
                EXPECT_EQ(icon.devicePixelRatio(), scale);
            }
}

TEST_F(ApplicationIconTest, RendersVectorIconsAtTheRequestedSize)
{
    addDrawing("drawing");
    for (const double scale : { 1.0, 1.25, 2.0 }) {
        const auto icon = iconOf("drawing", 80, scale);
        const int half = icon.width() / 2;
        EXPECT_EQ(icon.pixelColor(half - 1, half), QColor(Qt::blue));
        EXPECT_EQ(icon.pixelColor(half, half).alpha(), 0);
    }
}

TEST_F(ApplicationIconTest, PrefersScalingDownToScalingUp)
{
    addThemed("16x16", "tool", 16, Qt::red);
    addThemed("128x128", "tool", 128, Qt::green);
    EXPECT_EQ(centerColor(iconOf("tool", 24, 1)), QColor(Qt::green));
    EXPECT_EQ(centerColor(iconOf("tool", 24, 1.25)), QColor(Qt::green));
    EXPECT_EQ(centerColor(iconOf("tool", 24, 2)), QColor(Qt::green));
}

TEST_F(ApplicationIconTest, ScalesUpTheOnlyImage)
{
    addThemed("16x16", "tool", 16, Qt::red);
    const auto icon = iconOf("tool", 48, 1);
    EXPECT_EQ(icon.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(46, 46), QColor(Qt::red));
}

TEST_F(ApplicationIconTest, UsesTheImageFileOfTheEntry)
{
    addPicture("my pictures/tool.png", { 64, 64 }, Qt::red);
    const auto icon = iconOf(TestDesktop::path("my pictures/tool.png"), 20, 1.25);
    EXPECT_EQ(icon.size(), QSize(25, 25));
    EXPECT_EQ(centerColor(icon), QColor(Qt::red));
}

TEST_F(ApplicationIconTest, AcceptsLargerImagesThanWebsiteIcons)
{
    addPicture("large.png", { 3000, 3000 }, Qt::green);
    RasterImage::read("GIF89a", 16);
    EXPECT_EQ(centerColor(iconOf(TestDesktop::path("large.png"), 16, 1)), QColor(Qt::green));
}

TEST_F(ApplicationIconTest, CentersImagesThatAreNotSquare)
{
    for (const int width : { 128, 32, 16 }) {
        addPicture("wide.png", { width, width / 2 }, Qt::red);
        const auto icon = iconOf(TestDesktop::path("wide.png"), 16, 2);
        EXPECT_EQ(icon.size(), QSize(32, 32));
        EXPECT_EQ(icon.pixelColor(16, 7).alpha(), 0);
        EXPECT_EQ(icon.pixelColor(0, 8), QColor(Qt::red));
        EXPECT_EQ(icon.pixelColor(31, 23), QColor(Qt::red));
        EXPECT_EQ(icon.pixelColor(16, 24).alpha(), 0);
    }
}

TEST_F(ApplicationIconTest, FallsBackToTheGenericIcon)
{
    addGeneric();
    TestFiles::write(TestDesktop::path("broken.png"), "no picture");
    TestFiles::write(TestDesktop::path("icons/hicolor/16x16/apps/broken.png"), "no picture");
    ASSERT_EQ(mkfifo(TestDesktop::path("pipe.png").c_str(), 0600), 0);
    for (const auto &name :
         { std::string(), std::string("missing"), std::string("broken"), std::string("../x/y"),
           TestDesktop::path("missing.png").string(), TestDesktop::path("broken.png").string(),
           TestDesktop::path("pipe.png").string(), TestDesktop::path("icons").string() })
        EXPECT_EQ(centerColor(iconOf(name, 32, 1)), QColor(Qt::gray)) << name;
}

TEST_F(ApplicationIconTest, UsesTheGenericIconForInvalidEntries)
{
    addGeneric();
    const std::string missing = TestDesktop::path("missing.desktop");
    for (const auto &path : { std::string(), std::string("relative"), missing,
                              std::string("/dev/null"), std::string("/") }) {
        const auto icon = workspace.applicationIcon(path, 16, 2);
        EXPECT_EQ(icon.size(), QSize(32, 32)) << path;
        EXPECT_EQ(icon.devicePixelRatio(), 2);
        EXPECT_EQ(centerColor(icon), QColor(Qt::gray));
    }
}

TEST_F(ApplicationIconTest, IsNullWithoutAGenericIcon)
{
    EXPECT_TRUE(iconOf("missing", 16, 1).isNull());
    EXPECT_TRUE(workspace.applicationIcon(TestDesktop::path("missing.desktop"), 16, 1).isNull());
}

TEST_F(ApplicationIconTest, IsNullForInvalidSizes)
{
    addThemed("16x16", "tool", 16, Qt::red);
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double size : { 0.0, -16.0, 1e9, Infinite, NotANumber }) {
        EXPECT_TRUE(iconOf("tool", size, 1).isNull()) << size;
        EXPECT_TRUE(iconOf("tool", 16, size).isNull()) << size;
    }
    EXPECT_TRUE(iconOf("tool", -16, -1).isNull());
}

TEST_F(ApplicationIconTest, UsesTheDefaultThemeIfTheUserHasNone)
{
    TestFiles::write(TestDesktop::path("icons/Adwaita/index.theme"),
                     "[Icon Theme]\nName=Adwaita\nDirectories=32x32/apps\n"
                     "\n[32x32/apps]\nSize=32\nType=Threshold\n");
    addPicture("icons/Adwaita/32x32/apps/tool.png", { 32, 32 }, Qt::cyan);
    QIcon::setFallbackThemeName(u"hicolor"_s);
    const GioWorkspace other(mainQueue);
    EXPECT_EQ(centerColor(iconOf("tool", 32, 1)), QColor(Qt::cyan));
}

TEST_F(ApplicationIconTest, KeepsTheUsersTheme)
{
    QIcon::setFallbackThemeName(u"Breeze"_s);
    const GioWorkspace other(mainQueue);
    EXPECT_EQ(QIcon::fallbackThemeName(), u"Breeze"_s);
    EXPECT_EQ(QIcon::themeName(), u"hicolor"_s);
}

TEST_F(ApplicationIconTest, FollowsChangesOfTheEntry)
{
    addThemed("16x16", "tool", 16, Qt::red);
    addThemed("16x16", "other", 16, Qt::green);
    EXPECT_EQ(centerColor(iconOf("tool", 16, 1)), QColor(Qt::red));
    EXPECT_EQ(centerColor(iconOf("other", 16, 1)), QColor(Qt::green));
}

} // namespace
