#pragma once

#include <optional>
#include <string>

/// The names in an application's desktop entry (UTF-8).
struct ApplicationNames {
    std::optional<std::string> displayName; ///< in the user's language, if there is one
    std::optional<std::string> name;        ///< untranslated
};

/// An installed application. All texts are UTF-8.
struct Application {
    std::string path; ///< of its desktop entry
    std::string name;
    std::string comment;  ///< one line of description, may be empty
    std::string keywords; ///< further search words, may be empty

    bool operator==(const Application &) const = default;
};
