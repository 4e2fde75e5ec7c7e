#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// A measured figure. Ratios are comparable between machines; times are not.
struct Figure {
    std::string what;                           ///< "save a library"
    std::string size;                           ///< the case: "1,000 nodes"
    double value = 0;                           ///< median
    std::string unit;                           ///< of `value`
    std::string reference;                      ///< compared with this; may be empty
    std::optional<double> ratio = std::nullopt; ///< to the reference; median

    /// Prints one line of tab-separated columns, which `figure.py` parses.
    void print() const;
};

/// "100,000 nodes".
std::string nodesText(std::size_t nodes);
