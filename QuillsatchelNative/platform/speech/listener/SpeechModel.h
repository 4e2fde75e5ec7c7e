#pragma once

#include <filesystem>
#include <string>

/// A model of one language.
struct SpeechModel {
    std::filesystem::path path; ///< a file, or a folder that is named by the tag
    std::string tag;            ///< such as "en-us"

    bool operator==(const SpeechModel &) const = default;
};
