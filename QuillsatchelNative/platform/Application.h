#pragma once

#include <optional>
#include <string>

/// The names that an application gives itself (UTF-8).
struct ApplicationNames {
    std::optional<std::string> displayName; ///< in the user's language, where it has one
    std::optional<std::string> name;        ///< in no language
};

/// An application that is installed on this machine. All texts are UTF-8.
struct Application {
    std::string path; ///< of its desktop entry
    std::string name;
    std::string comment;  ///< one line about it, perhaps empty
    std::string keywords; ///< other words to find it by, perhaps empty

    bool operator==(const Application &) const = default;
};
