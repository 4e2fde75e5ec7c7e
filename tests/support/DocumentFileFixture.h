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
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// A store, as far as it has a file.
class StartedStore
{
public:
    StartedStore() = default;
    StartedStore(const StartedStore &) = delete;
    StartedStore &operator=(const StartedStore &) = delete;
    virtual ~StartedStore() = default;

    /// Makes one change, each time another, and has it saved.
    virtual void changeAndSave() = 0;
    /// What it holds, as the file that it would save.
    virtual std::string contents() const = 0;
    virtual bool isAsWithoutFile() const = 0;
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

    bool isAsWithoutFile() const override
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

    bool isAsWithoutFile() const override { return m_store.configuredItems().empty(); }

private:
    FakeApplicationChooser m_chooser;
    LauncherStore m_store;
    int m_changes = 0;
};

/// One of the two files, and whose it is.
struct TestedFile {
    std::string name;
    std::string_view example;
    std::string_view text; ///< of the example, in quotes: it may be any other
    std::unique_ptr<StartedStore> (*start)(FakePlatform &);

    /// The example with another text in it, as JSON writes it.
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

/// What can happen to the file of a store. Each test runs for both stores.
class DocumentFileFixture : public testing::TestWithParam<TestedFile>
{
protected:
    void writeFile(std::string_view bytes) const { TestFiles::write(file, bytes); }

    std::string fileText() const { return TestFiles::read(file); }

    /// As a new start of the program does.
    StartedStore &start()
    {
        m_store.reset();
        m_store = GetParam().start(machine);
        return *m_store;
    }

    /// A start that finds the example in the file.
    StartedStore &startFromExample()
    {
        writeFile(GetParam().example);
        auto &store = start();
        EXPECT_EQ(store.contents(), GetParam().example);
        return store;
    }

    /// Changes the store twice: neither change may be lost from memory.
    static void changeInMemory(StartedStore &store)
    {
        const auto before = store.contents();
        store.changeAndSave();
        const auto between = store.contents();
        EXPECT_NE(between, before);
        store.changeAndSave();
        EXPECT_NE(store.contents(), between);
    }

    /// Changes the store and looks whether the file has it, and the next start too.
    void expectSaves(StartedStore &store)
    {
        store.changeAndSave();
        const auto contents = store.contents();
        EXPECT_EQ(fileText(), contents);
        EXPECT_EQ(start().contents(), contents);
    }

    /// Whether a start finds nothing it can read in the file, and yet nothing of it gets lost.
    void expectUnreadableButKept(std::string_view bytes)
    {
        writeFile(bytes);
        auto &store = start();
        EXPECT_TRUE(store.isAsWithoutFile());
        EXPECT_EQ(fileText(), bytes) << "nothing is written before something changes";
        expectSaves(store);
        EXPECT_EQ(TestFiles::read(kept), bytes);
        std::filesystem::remove(kept); // the next one would get a number
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

    FakePlatform machine;
    std::filesystem::path scratch = machine.directory.path().toStdString();
    std::filesystem::path folder = scratch / "Quillsatchel";
    std::filesystem::path file = folder / GetParam().name;
    std::filesystem::path kept = folder / (GetParam().name + ".unreadable");
    std::filesystem::path favicons = folder / "Favicons";

private:
    std::unique_ptr<StartedStore> m_store;
};
