#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A synthetic voice, by the program flite.
namespace Voice
{

/// The sentence, 16,000 samples a second, in a quiet room, with a pause before and after it. None
/// where flite is not installed.
std::optional<std::vector<std::int16_t>> say(const std::string &sentence,
                                             const std::string &voice = "rms");

/// A quiet room: a soft noise, for so many samples.
std::vector<std::int16_t> silence(std::size_t count);

} // namespace Voice
