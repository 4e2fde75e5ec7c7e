#pragma once

#include "library/PromptTab.h"
#include "support/ByteSink.h"

#include <QByteArray>
#include <QUuid>

#include <optional>
#include <string>
#include <vector>

/// The whole library as `prompts.json` holds it.
struct SatchelDocument {
    std::optional<QUuid> activeTabID; ///< may name no tab, or be absent
    std::vector<PromptTab> tabs;      ///< left to right

    /// The document in `json`, or none: a single fault anywhere fails the whole. Members that we
    /// do not know are ignored; a number in them that no 64 bits hold is a fault.
    static std::optional<SatchelDocument> decode(const QByteArray &json);

    /// UTF-8 JSON; the same library gives the same bytes. All texts must be valid UTF-8.
    std::string encode() const;

    /// The same for a library that lives elsewhere, piece by piece, so that saving copies neither
    /// the library nor its text.
    static void encode(const std::optional<QUuid> &activeTabID, const std::vector<PromptTab> &tabs,
                       ByteSink sink);

    bool operator==(const SatchelDocument &) const = default;
};
