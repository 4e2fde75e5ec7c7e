#pragma once

#include <QString>

#include <string>
#include <string_view>

/// A text that the desktop's search offers.
struct SearchResult {
    std::string id;        ///< chosen by the program
    QString name;          ///< one line, never empty
    QString description;   ///< one line, never empty
    std::string_view text; ///< what choosing the result copies (UTF-8). Valid until it changes.
};
