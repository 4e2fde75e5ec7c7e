#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A synthetic voice of the program flite.
namespace Voice
{

/// The sentence with soft noise and a pause before and after it, 16,000 samples a second. None if
/// flite is not installed.
std::optional<std::vector<std::int16_t>> say(const std::string &sentence,
                                             const std::string &voice = "rms");

/// Soft noise as in a quiet room; `count` samples.
std::vector<std::int16_t> silence(std::size_t count);

} // namespace Voice
