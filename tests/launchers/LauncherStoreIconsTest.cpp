#include "fakes/PictureBytes.h"
#include "fakes/TestFiles.h"
#include "fakes/UnprivilegedScope.h"
#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// Downloading, showing and removing the icons of slots.
class LauncherStoreIconsTest : public LauncherStoreFixture
{
protected:
    void setWebsite(int slot, std::string_view text = "example.com")
    {
        ASSERT_TRUE(store().setWebsite(text, slot));
    }

    static QByteArray picture(int width = 16) { return PictureBytes::png(width, width); }

    static void expectGlobe(const LauncherIcon &icon)
    {
        EXPECT_TRUE(icon.image.isNull());
        EXPECT_EQ(icon.symbol, "globe");
        EXPECT_EQ(icon.description, "Website");
    }
};

TEST_F(LauncherStoreIconsTest, RequestsTheIconOfAStoredWebsite)
{
    struct Row {
        std::string_view typed;
        std::string_view icon;
    };

    constexpr std::array Rows {
        Row { "example.com", "https://example.com/favicon.ico" },
        Row { "http://example.com/docs", "http://example.com/favicon.ico" },
        Row { "www.example.com", "https://www.example.com/favicon.ico" },
        Row { "http://localhost:8080/app", "http://localhost/favicon.ico" },
        Row { "user:secret@example.com/a?b#c", "https://example.com/favicon.ico" },
        Row { "[::1]:8080", "https://[::1]/favicon.ico" },
        Row { "b\u00FCcher.example", "https://b%C3%BCcher.example/favicon.ico" },
        Row { "HTTP://Example.com", "HTTP://Example.com/favicon.ico" },
    };
    for (const auto &row : Rows) {
        machine.httpClient.requests.clear();
        setWebsite(0, row.typed);
        ASSERT_EQ(machine.httpClient.requests.size(), 1U) << row.typed;
        EXPECT_EQ(machine.httpClient.requests.front().address, row.icon);
    }
}

TEST_F(LauncherStoreIconsTest, RequestsTheIconAfterSavingTheLauncher)
{
    int requests = 0;
    machine.httpClient.onGet = [&] {
        ++requests;
        EXPECT_TRUE(item(3));
        EXPECT_TRUE(isSaved());
    };
    setWebsite(3);
    EXPECT_EQ(requests, 1);
}

TEST_F(LauncherStoreIconsTest, PublishesButDoesNotSaveWhenTheIconArrives)
{
    setWebsite(2);
    const auto before = store().slots().get();
    fs::remove(file);
    const Publications publications(store());
    machine.httpClient.answer(0, picture());
    EXPECT_EQ(publications.announced, 0) << "announced on the thread of the client";

    machine.mainQueue.runPending();
    EXPECT_EQ(publications.announced, 1);
    EXPECT_EQ(publications.delivered, 1);
    EXPECT_EQ(store().slots().get(), before);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(TestFiles::read(iconFile(item(2)->id)), picture().toStdString());
}

TEST_F(LauncherStoreIconsTest, ProvidesTheIconToItsSinks)
{
    setWebsite(2);
    int shown = 0;
    const auto receiving = store().slots().sink(
        [&](const LauncherSlots &slots) { shown = store().icon(*slots[2], 16).image.width(); });
    EXPECT_EQ(shown, 0);
    answer(picture());
    EXPECT_EQ(shown, 16);
}

TEST_F(LauncherStoreIconsTest, DropsAnErrorPage)
{
    setWebsite(0);
    const Publications publications(store());
    answer("<!DOCTYPE html><html><body>404 Not Found</body></html>");
    EXPECT_TRUE(fs::is_empty(favicons));
    EXPECT_EQ(publications.announced, 0);
    expectGlobe(store().icon(*item(0), 16));
}

// The client ignores the status, so only the body decides.
TEST_F(LauncherStoreIconsTest, StoresAnErrorPageThatIsAnImage)
{
    setWebsite(0);
    answer(PictureBytes::icon({ { 16, picture() } }));
    EXPECT_EQ(TestFiles::count(favicons), 1);
    EXPECT_EQ(store().icon(*item(0), 16).image.width(), 16);
}

TEST_F(LauncherStoreIconsTest, DropsAnEmptyAnswer)
{
    setWebsite(0);
    answer({});
    EXPECT_TRUE(fs::is_empty(favicons));
    expectGlobe(store().icon(*item(0), 16));
}

TEST_F(LauncherStoreIconsTest, IgnoresTheIconOfAReplacedWebsite)
{
    setWebsite(2, "old.example");
    const auto oldID = item(2)->id;
    setWebsite(2, "new.example");
    const auto slots = store().slots().get();
    const Publications publications(store());

    machine.httpClient.answer(0, picture(8));
    machine.mainQueue.runPending();
    EXPECT_EQ(TestFiles::read(iconFile(oldID)), picture(8).toStdString()) << "the old icon remains";
    EXPECT_EQ(publications.announced, 0);
    EXPECT_EQ(store().slots().get(), slots);
    expectGlobe(store().icon(*item(2), 16));

    machine.httpClient.answer(1, picture(16));
    machine.mainQueue.runPending();
    EXPECT_EQ(publications.announced, 1);
    EXPECT_EQ(TestFiles::read(iconFile(item(2)->id)), picture(16).toStdString());
    EXPECT_EQ(TestFiles::read(iconFile(oldID)), picture(8).toStdString());
}

TEST_F(LauncherStoreIconsTest, IgnoresTheIconIfTheWebsiteIsReplacedAfterTheAnswer)
{
    setWebsite(2, "old.example");
    machine.httpClient.answer(0, picture());
    setWebsite(2, "new.example");
    const Publications publications(store());
    machine.mainQueue.runPending();
    EXPECT_EQ(publications.announced, 0);
    EXPECT_TRUE(fs::is_empty(favicons)) << "the stored icon was not removed";
}

TEST_F(LauncherStoreIconsTest, IgnoresTheIconIfTheSlotWasCleared)
{
    setWebsite(2);
    const auto id = item(2)->id;
    store().clear(2);
    const Publications publications(store());
    answer(picture());
    EXPECT_EQ(publications.announced, 0);
    EXPECT_FALSE(item(2));
    EXPECT_TRUE(fs::exists(iconFile(id))) << "the old icon remains";
}

TEST_F(LauncherStoreIconsTest, IgnoresTheIconIfAnApplicationFilledTheSlot)
{
    setWebsite(2);
    fillWithApplication(2);
    const Publications publications(store());
    answer(picture());
    EXPECT_EQ(publications.announced, 0);
    EXPECT_EQ(item(2)->kind, LauncherKind::application);
}

TEST_F(LauncherStoreIconsTest, DownloadsForSeveralSlotsConcurrently)
{
    for (int slot = 0; slot < 5; ++slot)
        setWebsite(slot);
    ASSERT_EQ(machine.httpClient.requests.size(), 5U);
    const Publications publications(store());
    for (const std::size_t slot : { 3U, 0U, 4U, 1U, 2U }) {
        machine.httpClient.answer(slot, picture(static_cast<int>(slot) + 1));
        EXPECT_EQ(TestFiles::read(iconFile(item(slot)->id)),
                  picture(static_cast<int>(slot) + 1).toStdString());
    }
    machine.mainQueue.runPending();
    EXPECT_EQ(publications.announced, 5);
    EXPECT_EQ(TestFiles::count(favicons), 5);
}

TEST_F(LauncherStoreIconsTest, PublishesOncePerAnswer)
{
    setWebsite(0);
    const Publications publications(store());
    machine.httpClient.answer(0, picture());
    machine.httpClient.answer(0, picture());
    machine.mainQueue.runPending();
    EXPECT_EQ(publications.announced, 2);
    EXPECT_EQ(TestFiles::count(favicons), 1);
}

TEST_F(LauncherStoreIconsTest, RemovesOnlyTheIconOfTheClearedSlot)
{
    setWebsite(0);
    answer(picture());
    setWebsite(1);
    answer(picture());
    const auto id = item(0)->id;
    store().clear(0);
    EXPECT_FALSE(fs::exists(iconFile(id)));
    EXPECT_TRUE(fs::exists(iconFile(item(1)->id)));
    store().clear(0);
    EXPECT_EQ(TestFiles::count(favicons), 1);
}

TEST_F(LauncherStoreIconsTest, RemovesTheOldIconBeforeAnnouncingTheNewWebsite)
{
    setWebsite(0);
    answer(picture());
    const auto id = item(0)->id;
    int announced = 0;
    const Cancellable announcing(
        QObject::connect(&store(), &ObservableObject::objectWillChange, [&] {
            ++announced;
            EXPECT_FALSE(fs::exists(iconFile(id)));
            EXPECT_EQ(item(0)->id, id);
        }));
    setWebsite(0);
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(fs::is_empty(favicons));
}

TEST_F(LauncherStoreIconsTest, ClearsAnApplicationWithoutAnIcon)
{
    fillWithApplication(0);
    const Publications publications(store());
    store().clear(0);
    EXPECT_EQ(publications.announced, 1);
    EXPECT_TRUE(fs::is_empty(favicons));
}

TEST_F(LauncherStoreIconsTest, RemovesTheStoredIconOfAnApplicationToo)
{
    for (const bool isCleared : { true, false }) {
        fillWithApplication(0);
        const auto icon = iconFile(item(0)->id);
        TestFiles::write(icon, "icon");
        if (isCleared)
            store().clear(0);
        else
            fillWithApplication(0);
        EXPECT_FALSE(fs::exists(icon));
    }
}

TEST_F(LauncherStoreIconsTest, DropsAnswersAfterTheStoreIsDestroyed)
{
    setWebsite(0);
    stop();
    answer(picture());
    EXPECT_TRUE(fs::is_empty(favicons));
}

TEST_F(LauncherStoreIconsTest, PublishesNothingAfterTheStoreIsDestroyed)
{
    setWebsite(0);
    machine.httpClient.answer(0, picture());
    stop();
    machine.mainQueue.runPending();
    EXPECT_EQ(TestFiles::count(favicons), 1);
    EXPECT_EQ(ExampleLaunchers::decode(fileText())->at(0), item(0)) << "the next start loads it";
}

TEST_F(LauncherStoreIconsTest, ShowsTheIconAfterARestartWithoutADownload)
{
    setWebsite(0);
    answer(picture());
    machine.httpClient.requests.clear();
    restart();
    EXPECT_EQ(store().icon(*item(0), 16).image.width(), 16);
    EXPECT_TRUE(machine.httpClient.requests.empty());
}

TEST_F(LauncherStoreIconsTest, StaysUsableIfIconsCannotBeStored)
{
    setWebsite(0);
    {
        const UnprivilegedScope scope(machine.directory.path().toStdString());
        TestFiles::setMode(favicons, 0500);
        machine.httpClient.requests.front().receive(picture());
        TestFiles::setMode(favicons, 0700);
    }
    machine.mainQueue.runPending();
    expectGlobe(store().icon(*item(0), 16));
    store().launch(0);
    EXPECT_EQ(machine.workspace.opened.size(), 1U);
}

TEST_F(LauncherStoreIconsTest, ShowsAGlobeIfAWebsiteHasNoReadableIcon)
{
    const auto website = ExampleLaunchers::website();
    expectGlobe(store().icon(website, 16));
    TestFiles::write(iconFile(website.id), "no picture");
    expectGlobe(store().icon(website, 16));
    TestFiles::write(iconFile(website.id), "");
    expectGlobe(store().icon(website, 16));
}

TEST_F(LauncherStoreIconsTest, ShowsAWebsitesIconInTheRequestedSize)
{
    const auto website = ExampleLaunchers::website();
    TestFiles::write(iconFile(website.id), picture(24).toStdString());

    struct Row {
        double size;
        double scale;
        int pixels;
    };

    for (const auto row : { Row { 16, 1, 16 }, Row { 16, 2, 32 }, Row { 16, 1.5, 24 },
                            Row { 13, 1.25, 17 }, Row { 24, 1, 24 }, Row { 100, 3, 300 } }) {
        const auto icon = store().icon(website, row.size, row.scale);
        EXPECT_EQ(icon.image.size(), QSize(row.pixels, row.pixels)) << row.size;
        EXPECT_EQ(icon.image.devicePixelRatio(), row.scale) << row.size;
        EXPECT_EQ(icon.image.pixelColor(row.pixels / 2, row.pixels / 2), QColor(Qt::red));
        EXPECT_EQ(icon.description, "Website");
    }
    EXPECT_EQ(store().icon(website, 16).image.devicePixelRatio(), 1);
}

TEST_F(LauncherStoreIconsTest, ShowsEveryIconSquare)
{
    const auto website = ExampleLaunchers::website();
    TestFiles::write(iconFile(website.id), PictureBytes::png(40, 10).toStdString());
    EXPECT_EQ(store().icon(website, 16).image.size(), QSize(16, 16));
}

TEST_F(LauncherStoreIconsTest, ShowsTheImageThatBestFitsThePixelSize)
{
    const auto website = ExampleLaunchers::website();
    const auto icon = PictureBytes::icon({ { 16, PictureBytes::iconBitmap(16, Qt::red) },
                                           { 32, PictureBytes::png(32, 32, Qt::green) },
                                           { 256, PictureBytes::png(256, 256, Qt::blue) } });
    TestFiles::write(iconFile(website.id), icon.toStdString());
    const auto colorAt = [&](double size, double scale) {
        return store().icon(website, size, scale).image.pixelColor(5, 5);
    };
    EXPECT_EQ(colorAt(16, 1), QColor(Qt::red));
    EXPECT_EQ(colorAt(16, 1.25), QColor(Qt::green)) << "20 pixels";
    EXPECT_EQ(colorAt(16, 2), QColor(Qt::green));
    EXPECT_EQ(colorAt(16, 3), QColor(Qt::blue));
    EXPECT_EQ(colorAt(600, 1), QColor(Qt::blue));
}

TEST_F(LauncherStoreIconsTest, ReadsTheIconFromItsFileOnEachCall)
{
    const auto website = ExampleLaunchers::website();
    for (const auto color : { Qt::red, Qt::blue }) {
        TestFiles::write(iconFile(website.id), PictureBytes::png(16, 16, color).toStdString());
        EXPECT_EQ(store().icon(website, 16).image.pixelColor(0, 0), QColor(color));
    }
    fs::remove(iconFile(website.id));
    expectGlobe(store().icon(website, 16));
}

TEST_F(LauncherStoreIconsTest, ShowsTheDesktopsIconOfAnApplication)
{
    const auto application = ExampleLaunchers::application();
    machine.workspace.icon = PictureBytes::filled(64, 64, Qt::blue);
    TestFiles::write(iconFile(application.id), picture().toStdString());
    const auto icon = store().icon(application, 16, 2);
    EXPECT_EQ(machine.workspace.requestedIcons, std::vector<std::string> { application.target });
    EXPECT_EQ(icon.image.size(), QSize(32, 32));
    EXPECT_EQ(icon.image.devicePixelRatio(), 2);
    EXPECT_EQ(icon.image.pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(icon.description, "Application");
}

TEST_F(LauncherStoreIconsTest, ShowsASymbolIfTheDesktopHasNoIcon)
{
    const auto icon = store().icon(ExampleLaunchers::application(), 16);
    EXPECT_TRUE(icon.image.isNull());
    EXPECT_EQ(icon.symbol, "app");
}

} // namespace
