#pragma once

#include <filesystem>
#include <string>

/// A model of one language.
struct SpeechModel {
    std::filesystem::path folder; ///< named by the tag
    std::string tag;              ///< such as "en-us"

    bool operator==(const SpeechModel &) const = default;
};
