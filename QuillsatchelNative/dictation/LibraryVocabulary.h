#pragma once

#include "launchers/LauncherStore.h"
#include "library/SatchelStore.h"
#include "platform/VocabularySource.h"
#include "support/Cancellable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

/// The texts of the library: names and nodes of the active tab, the names of the launchers, and
/// then names and nodes of the other tabs. If a reader stops early, it has the few names of the
/// launchers. Copies nothing. Observes the stores from the first use on, because most runs of the
/// program have no dictation.
class LibraryVocabulary final : public VocabularySource
{
public:
    /// The stores must outlive this object.
    LibraryVocabulary(const SatchelStore &store, const LauncherStore &launcherStore);

    std::uint64_t revision() override;
    void rewind() override;
    std::optional<Text> next() override;

private:
    const PromptTab &tab() const;
    std::optional<Text> nextOfTabs(std::size_t end);
    std::optional<Text> nextOfTab();
    std::optional<Text> nextLauncherName();

    const SatchelStore &m_store;
    const LauncherStore &m_launcherStore;
    std::uint64_t m_revision = 0;
    std::array<Cancellable, 3> m_observations;
    // The position of the next text. Numbers, because the library may change between two texts.
    std::size_t m_tab = 0;  // 0 is the active one
    std::size_t m_text = 0; // 0 is the tab's name
    std::size_t m_slot = 0;
};
