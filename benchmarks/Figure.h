#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// A measured figure. Ratios are comparable between machines; times are not.
struct Figure {
    std::string what;                           ///< such as "save a library"
    std::string size;                           ///< the case, such as "1,000 nodes"
    double value = 0;                           ///< usually a median
    std::string unit;                           ///< of `value`
    std::string reference;                      ///< what `value` is compared with; may be empty
    std::optional<double> ratio = std::nullopt; ///< of `value` to the reference

    /// Prints one line of tab-separated columns, which `figure.py` parses.
    void print() const;
};

/// The number of nodes as text, such as "100,000 nodes".
std::string nodesText(std::size_t nodes);
