#pragma once

#include "fakes/FakeApplicationChooser.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFiles.h"
#include "launchers/ExampleLaunchers.h"
#include "launchers/LauncherStore.h"
#include "support/Cancellable.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// A fake machine, and the files that the store loads and saves.
class LauncherStoreFixture : public testing::Test
{
protected:
    /// Counts what the store announces and delivers during the lifetime of this object.
    class Publications
    {
    public:
        explicit Publications(LauncherStore &store)
            : m_announcing(QObject::connect(&store, &ObservableObject::objectWillChange,
                                            [this] { ++announced; }))
            , m_receiving(store.slots().sink([this](const LauncherSlots &) { ++delivered; }))
        {
            delivered = 0; // `sink` delivers the current slots immediately
        }

        int announced = 0;
        int delivered = 0;

    private:
        Cancellable m_announcing;
        Cancellable m_receiving;
    };

    static constexpr std::array InvalidSlots { -1, 5, std::numeric_limits<int>::max(),
                                               std::numeric_limits<int>::min() };

    /// The store, created by the first call.
    LauncherStore &store()
    {
        if (!m_store)
            m_store = std::make_unique<LauncherStore>(chooser, machine.platform);
        return *m_store;
    }

    /// Destroys the store, as the end of the process does.
    void stop() { m_store.reset(); }

    LauncherStore &restart()
    {
        stop();
        return store();
    }

    void writeFile(std::string_view bytes) const { TestFiles::write(file, bytes); }

    std::string fileText() const { return TestFiles::read(file); }

    const std::optional<LauncherItem> &item(std::size_t slot)
    {
        return store().slots().get().at(slot);
    }

    /// Whether the file contains exactly the store's slots.
    bool isSaved() { return fileText() == ExampleLaunchers::encode(store().slots().get()); }

    /// Answers the latest request of the application chooser.
    void choose(const std::optional<std::string> &path) const
    {
        chooser.requests.back().receive(path);
    }

    void fillWithApplication(int slot, const std::string &path = "/apps/editor.desktop")
    {
        store().chooseApplication(slot);
        choose(path);
    }

    std::filesystem::path iconFile(const QUuid &id) const
    {
        const auto name = id.toString(QUuid::WithoutBraces).toUpper().toStdString();
        return favicons / (name + ".png");
    }

    /// Answers the latest download and runs the pending work of the main thread.
    void answer(const QByteArray &body)
    {
        machine.httpClient.answer(machine.httpClient.requests.size() - 1, body);
        machine.mainQueue.runPending();
    }

    FakePlatform machine;
    FakeApplicationChooser chooser;
    std::filesystem::path folder =
        std::filesystem::path(machine.directory.path().toStdString()) / "Quillsatchel";
    std::filesystem::path file = folder / "launchers.json";
    std::filesystem::path favicons = folder / "Favicons";

private:
    std::unique_ptr<LauncherStore>
        m_store; // on the heap, so that sanitizers detect use after destruction
};
