#pragma once

#include <chrono>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

/// A state of a document that was kept when it was replaced. Its file name contains everything:
/// `prompts 2026-11-21 23.17.05.json`, or `prompts 2026-11-21 23.17.05 by another program.json`.
/// Names of one document sort by time.
struct EarlierVersion {
    /// The local time at which the state was replaced. A change of the time zone or of the clock
    /// may give a newer version an earlier time.
    std::chrono::local_seconds time;

    /// Whether another program wrote it.
    bool isForeign = false;

    // NOLINTNEXTLINE(modernize-use-nullptr): a false positive
    auto operator<=>(const EarlierVersion &) const = default;

    /// The name for a version of `document`, a file name such as "prompts.json".
    std::string fileName(std::string_view document) const;

    /// None unless `name` is exactly what `fileName` returns for a version of `document`.
    static std::optional<EarlierVersion> fromFileName(std::string_view name,
                                                      std::string_view document);
};
