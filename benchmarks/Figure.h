#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// One thing that was measured. What is compared is a ratio, which holds from machine to machine;
/// a time does not.
struct Figure {
    std::string what;                           ///< "save"
    std::string size;                           ///< of what: "1,000 nodes"
    double value = 0;                           ///< median
    std::string unit;                           ///< of `value`
    std::string reference;                      ///< what it is compared with; empty if with nothing
    std::optional<double> ratio = std::nullopt; ///< to the reference, in the median

    /// Puts it on standard output: one line, a tab between two columns, as `figure.py` reads it.
    void print() const;
};

/// "100,000 nodes".
std::string nodesText(std::size_t nodes);
