#include "launchers/LauncherStoreFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace
{

using namespace std::string_view_literals;

class LauncherStoreApplicationsTest : public LauncherStoreFixture
{
protected:
    /// The name of a launcher for an application with these names.
    std::string nameOf(const std::string &path, const std::optional<ApplicationNames> &names)
    {
        machine.workspace.names.clear();
        if (names)
            machine.workspace.names[path] = *names;
        fillWithApplication(0, path);
        EXPECT_EQ(item(0)->target, path);
        return item(0)->name;
    }

    static constexpr auto Editor = "/apps/editor.desktop";
};

TEST_F(LauncherStoreApplicationsTest, ShowsTheApplicationChooser)
{
    const Publications publications(store());
    store().chooseApplication(4);
    ASSERT_EQ(chooser.requests.size(), 1U);
    EXPECT_EQ(chooser.requests.front().title, QStringLiteral("Choose an Application"));
    EXPECT_EQ(chooser.requests.front().prompt, QStringLiteral("Add Launcher"));
    EXPECT_EQ(publications.announced, 0);
    EXPECT_EQ(store().slots().get(), LauncherSlots());
}

TEST_F(LauncherStoreApplicationsTest, ShowsNoChooserForInvalidSlots)
{
    for (const int slot : InvalidSlots)
        store().chooseApplication(slot);
    EXPECT_TRUE(chooser.requests.empty());
}

TEST_F(LauncherStoreApplicationsTest, FillsTheSlotWithTheChosenApplication)
{
    machine.workspace.names[Editor] = { .displayName = "Editor", .name = {} };
    for (int slot = 0; slot < 5; ++slot)
        fillWithApplication(slot, Editor);
    for (const auto &filled : store().slots().get()) {
        ASSERT_TRUE(filled);
        EXPECT_EQ(filled->kind, LauncherKind::application);
        EXPECT_EQ(filled->name, "Editor");
        EXPECT_EQ(filled->target, Editor);
        EXPECT_EQ(filled->id.version(), QUuid::Random);
    }
    EXPECT_TRUE(isSaved());
    EXPECT_NE(item(0)->id, item(1)->id);
}

TEST_F(LauncherStoreApplicationsTest, DoesNothingIfTheUserCancels)
{
    writeFile(ExampleLaunchers::json);
    store();
    std::filesystem::remove(file);
    TestFiles::write(iconFile(item(2)->id), "icon");
    const Publications publications(store());
    for (const int slot : { 0, 1, 2 }) {
        store().chooseApplication(slot);
        choose(std::nullopt);
    }
    EXPECT_EQ(store().slots().get(), ExampleLaunchers::slots());
    EXPECT_EQ(publications.announced, 0);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(TestFiles::read(iconFile(item(2)->id)), "icon");
}

TEST_F(LauncherStoreApplicationsTest, UsesTheDisplayName)
{
    EXPECT_EQ(nameOf(Editor, { { .displayName = "Display", .name = "Plain" } }), "Display");
    EXPECT_EQ(nameOf(Editor, { { .displayName = "Display", .name = {} } }), "Display");
}

TEST_F(LauncherStoreApplicationsTest, UsesTheUntranslatedNameWithoutADisplayName)
{
    EXPECT_EQ(nameOf(Editor, { { .displayName = {}, .name = "Plain" } }), "Plain");
}

TEST_F(LauncherStoreApplicationsTest, UsesTheFileNameWithoutAnyName)
{
    EXPECT_EQ(nameOf("/Applications/Safari.app", ApplicationNames()), "Safari");
    EXPECT_EQ(nameOf("/Applications/Safari.app", std::nullopt), "Safari") << "no application";
    EXPECT_EQ(nameOf(Editor, std::nullopt), "editor");
    EXPECT_EQ(nameOf("/apps/org.example.Editor.desktop", std::nullopt), "org.example.Editor");
    EXPECT_EQ(nameOf("/apps.d/editor", std::nullopt), "editor");
    EXPECT_EQ(nameOf("/apps/two words.desktop", std::nullopt), "two words");
    EXPECT_EQ(nameOf("/apps/\u00C9diteur.desktop", std::nullopt), "\u00C9diteur");
    EXPECT_EQ(nameOf("/apps/.desktop", std::nullopt), ".desktop");
}

TEST_F(LauncherStoreApplicationsTest, UsesAnEmptyName)
{
    EXPECT_EQ(nameOf(Editor, { { .displayName = "", .name = "Plain" } }), "");
    EXPECT_EQ(nameOf(Editor, { { .displayName = {}, .name = "" } }), "");
}

TEST_F(LauncherStoreApplicationsTest, AllowsSeveralOpenChoosers)
{
    store().chooseApplication(1);
    store().chooseApplication(3);
    chooser.requests.at(1).receive("/apps/b.desktop");
    chooser.requests.at(0).receive("/apps/a.desktop");
    EXPECT_EQ(item(1)->name, "a");
    EXPECT_EQ(item(3)->name, "b");
}

TEST_F(LauncherStoreApplicationsTest, KeepsTheLatestChoiceForASlot)
{
    store().chooseApplication(1);
    store().chooseApplication(1);
    chooser.requests.at(1).receive("/apps/b.desktop");
    chooser.requests.at(0).receive("/apps/a.desktop");
    EXPECT_EQ(item(1)->name, "a");
}

TEST_F(LauncherStoreApplicationsTest, ReplacesAWebsiteAndRemovesItsIcon)
{
    writeFile(ExampleLaunchers::json);
    const auto icon = iconFile(ExampleLaunchers::website().id);
    const auto other = iconFile(QUuid::createUuid());
    TestFiles::write(icon, "icon");
    TestFiles::write(other, "icon");
    fillWithApplication(2);
    EXPECT_EQ(item(2)->kind, LauncherKind::application);
    EXPECT_FALSE(std::filesystem::exists(icon));
    EXPECT_TRUE(std::filesystem::exists(other));
}

TEST_F(LauncherStoreApplicationsTest, CreatesANewLauncherForEachChoice)
{
    fillWithApplication(0, Editor);
    const auto first = *item(0);
    fillWithApplication(0, Editor);
    EXPECT_NE(item(0)->id, first.id);
    EXPECT_EQ(item(0)->target, first.target);
}

TEST_F(LauncherStoreApplicationsTest, DownloadsNoIcon)
{
    fillWithApplication(0);
    EXPECT_TRUE(machine.httpClient.requests.empty());
}

TEST_F(LauncherStoreApplicationsTest, IgnoresAChoiceAfterTheStoreIsDestroyed)
{
    store().chooseApplication(0);
    stop();
    choose(Editor);
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace
