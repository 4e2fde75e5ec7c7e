#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/TestFiles.h"
#include "library/SatchelDocument.h"
#include "library/SatchelStore.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A fake machine, and the file that the store loads and saves.
class SatchelStoreFixture : public testing::Test
{
protected:
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds SaveDelay { 250 };
    static constexpr Milliseconds Long { 60'000 };

    void writeFile(std::string_view bytes) const { TestFiles::write(file, bytes); }

    void writeFile(const std::vector<PromptTab> &tabs,
                   const std::optional<QUuid> &activeTabID = {}) const
    {
        writeFile(SatchelDocument { .activeTabID = activeTabID, .tabs = tabs }.encode());
    }

    std::string fileText() const { return TestFiles::read(file); }

    /// The library in the file; none if there is no valid file.
    std::optional<SatchelDocument> savedDocument() const
    {
        return SatchelDocument::decode(QByteArray::fromStdString(fileText()));
    }

    static SatchelDocument documentOf(const SatchelStore &store)
    {
        return { .activeTabID = store.activeTabID().get(), .tabs = store.tabs().get() };
    }

    void advance(Milliseconds duration) { machine.mainQueue.advance(duration); }

    /// Whether `change` is saved. Checks that this happens exactly after the delay.
    template <typename Change>
    bool saves(Change &&change)
    {
        advance(Long);
        std::filesystem::remove(file);
        std::forward<Change>(change)();
        advance(SaveDelay - Milliseconds(1));
        EXPECT_FALSE(std::filesystem::exists(file)) << "saved too early";
        advance(Milliseconds(1));
        const bool isSavedInTime = std::filesystem::exists(file);
        advance(Long);
        EXPECT_EQ(std::filesystem::exists(file), isSavedInTime) << "saved too late";
        return isSavedInTime;
    }

    FakePlatform machine;
    std::filesystem::path folder =
        std::filesystem::path(machine.directory.path().toStdString()) / "Quillsatchel";
    std::filesystem::path file = folder / "prompts.json";
};
