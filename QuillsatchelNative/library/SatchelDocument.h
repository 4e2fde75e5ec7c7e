#pragma once

#include "library/PromptTab.h"
#include "support/ByteSink.h"

#include <QByteArray>
#include <QUuid>

#include <optional>
#include <string>
#include <vector>

/// The library as stored in `prompts.json`.
struct SatchelDocument {
    std::optional<QUuid> activeTabID; ///< may be absent or match no tab
    std::vector<PromptTab> tabs;      ///< left to right

    /// None if there is any error in `json`. Unknown members are ignored, but a number in them
    /// that does not fit into 64 bits is an error.
    static std::optional<SatchelDocument> decode(const QByteArray &json);

    /// UTF-8 JSON. Equal documents give equal bytes. All texts must be valid UTF-8.
    std::string encode() const;

    /// The same for a library stored elsewhere. Passes the JSON to `sink` in pieces, so that saving
    /// copies neither the library nor its JSON.
    static void encode(const std::optional<QUuid> &activeTabID, const std::vector<PromptTab> &tabs,
                       ByteSink sink);

    bool operator==(const SatchelDocument &) const = default;
};
