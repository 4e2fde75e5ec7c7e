#pragma once

#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFiles.h"
#include "launchers/ExampleLaunchers.h"
#include "launchers/LauncherStore.h"
#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// One of the two stores, reduced to its file.
class StartedStore
{
public:
    StartedStore() = default;
    StartedStore(const StartedStore &) = delete;
    StartedStore &operator=(const StartedStore &) = delete;
    virtual ~StartedStore() = default;

    /// Makes a change that differs from the previous ones, and waits until it is saved.
    virtual void changeAndSave() = 0;
    /// The bytes that the store would save.
    virtual std::string contents() const = 0;
    /// Whether the store holds what it starts with without a file.
    virtual bool hasDefaults() const = 0;
};

class StartedSatchelStore final : public StartedStore
{
public:
    explicit StartedSatchelStore(FakePlatform &machine)
        : m_machine(machine)
    {
    }

    void changeAndSave() override
    {
        m_store.addTab();
        m_machine.mainQueue.advance(std::chrono::seconds(1));
    }

    std::string contents() const override
    {
        return SatchelDocument { .activeTabID = m_store.activeTabID().get(),
                                 .tabs = m_store.tabs().get() }
            .encode();
    }

    bool hasDefaults() const override
    {
        const auto &tabs = m_store.tabs().get();
        return tabs.size() == 1 && tabs.front().name == "Prompts" && tabs.front().blocks.empty();
    }

private:
    FakePlatform &m_machine;
    SatchelStore m_store { m_machine.platform };
};

class StartedLauncherStore final : public StartedStore
{
public:
    explicit StartedLauncherStore(FakePlatform &machine)
        : m_store(m_chooser, machine.platform)
    {
    }

    void changeAndSave() override
    {
        m_store.setWebsite("example.com/" + std::to_string(++m_changes), 3);
    }

    std::string contents() const override
    {
        return ExampleLaunchers::encode(m_store.slots().get());
    }

    bool hasDefaults() const override { return m_store.configuredItems().empty(); }

private:
    FakeApplicationChooser m_chooser;
    LauncherStore m_store;
    int m_changes = 0;
};

/// The file of one of the two stores.
struct TestedFile {
    std::string name;
    std::string_view example;
    std::string_view text; ///< a quoted text in the example that may be replaced
    std::unique_ptr<StartedStore> (*start)(FakePlatform &);

    /// The example with another text, which is escaped as in JSON.
    std::string with(std::string_view other) const
    {
        std::string changed(example);
        return changed.replace(changed.find(text), text.size(), '"' + std::string(other) + '"');
    }
};

template <typename Store>
std::unique_ptr<StartedStore> startStore(FakePlatform &machine)
{
    return std::make_unique<Store>(machine);
}

inline void PrintTo(const TestedFile &file, std::ostream *stream)
{
    *stream << file.name;
}

inline auto bothFiles()
{
    return testing::Values(TestedFile { .name = "prompts.json",
                                        .example = ExampleLibrary::json,
                                        .text = R"("Review this code for bugs.")",
                                        .start = &startStore<StartedSatchelStore> },
                           TestedFile { .name = "launchers.json",
                                        .example = ExampleLaunchers::json,
                                        .text = R"("Safari")",
                                        .start = &startStore<StartedLauncherStore> });
}

inline std::string nameOfFile(const testing::TestParamInfo<TestedFile> &file)
{
    return file.index == 0 ? "Prompts" : "Launchers";
}

/// Tests of the file of a store. Each test runs for both stores.
class DocumentFileFixture : public testing::TestWithParam<TestedFile>
{
protected:
    void writeFile(std::string_view bytes) const { TestFiles::write(file, bytes); }

    std::string fileText() const { return TestFiles::read(file); }

    /// Starts the program again.
    StartedStore &start()
    {
        m_store.reset();
        m_store = GetParam().start(machine);
        return *m_store;
    }

    /// Starts with the example in the file.
    StartedStore &startFromExample()
    {
        writeFile(GetParam().example);
        auto &store = start();
        EXPECT_EQ(store.contents(), GetParam().example);
        return store;
    }

    /// Changes the store twice and expects that memory keeps both changes.
    static void changeInMemory(StartedStore &store)
    {
        const auto before = store.contents();
        store.changeAndSave();
        const auto between = store.contents();
        EXPECT_NE(between, before);
        store.changeAndSave();
        EXPECT_NE(store.contents(), between);
    }

    /// Changes the store and expects the change in the file and after the next start.
    void expectSaves(StartedStore &store)
    {
        store.changeAndSave();
        const auto contents = store.contents();
        EXPECT_EQ(fileText(), contents);
        EXPECT_EQ(start().contents(), contents);
    }

    /// Expects that the store cannot read `bytes` and keeps them.
    void expectUnreadableButKept(std::string_view bytes)
    {
        writeFile(bytes);
        auto &store = start();
        EXPECT_TRUE(store.hasDefaults());
        EXPECT_EQ(fileText(), bytes) << "written before anything changed";
        expectSaves(store);
        EXPECT_EQ(TestFiles::read(kept), bytes);
        std::filesystem::remove(kept); // or the next one gets a number
    }

    std::vector<std::string> entries() const
    {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path() != favicons)
                names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        return names;
    }

    /// The contents of the earlier versions, in the order of their names.
    std::vector<std::string> keptVersions() const
    {
        std::error_code error;
        std::map<std::string, std::string> texts;
        for (const auto &entry : std::filesystem::directory_iterator(versions, error))
            texts[entry.path().filename()] = TestFiles::read(entry.path());
        std::vector<std::string> ordered;
        for (const auto &[name, text] : texts)
            ordered.push_back(text);
        return ordered;
    }

    FakePlatform machine;
    std::filesystem::path scratch = machine.directory.path().toStdString();
    std::filesystem::path folder = scratch / "Quillsatchel";
    std::filesystem::path file = folder / GetParam().name;
    std::filesystem::path kept = folder / (GetParam().name + ".unreadable");
    std::filesystem::path favicons = folder / "Favicons";
    std::filesystem::path state = machine.fileLocations.stateFolder.toStdString();
    std::filesystem::path versions = state / "Quillsatchel" / "Earlier versions";

private:
    std::unique_ptr<StartedStore> m_store;
};
