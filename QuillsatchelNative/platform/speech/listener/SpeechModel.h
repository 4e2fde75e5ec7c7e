#pragma once

#include <filesystem>
#include <string>

/// What an engine needs to know to understand one language.
struct SpeechModel {
    std::filesystem::path folder; ///< that of the language, named by its tag
    std::string tag;              ///< such as "en-us"

    bool operator==(const SpeechModel &) const = default;
};
