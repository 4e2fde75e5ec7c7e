// The check of vocabulary and tensors ends for every file, and rejects files that are too short.

#include "Expect.h"
#include "platform/speech/listener/WhisperModelFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace
{

/// A correct beginning, which a fuzzer would not find: the header of the smallest possible model
/// and the bands.
std::string beginning()
{
    constexpr std::int32_t Vocabulary = 51'864;
    constexpr std::int32_t Bands = 80;
    constexpr std::int32_t Bins = 201;
    constexpr std::array<std::int32_t, 14> Header {
        0x67676D6C, Vocabulary, 1, 1, 1, 1, 1, 1, 1, 1, Bands, 1, Bands, Bins,
    };
    return std::string(reinterpret_cast<const char *>(Header.data()), sizeof(Header)) +
           std::string(sizeof(float) * Bands * Bins, '\0');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const auto begin = beginning();
    std::istringstream file(begin + std::string(reinterpret_cast<const char *>(data), size));
    constexpr std::size_t MinSize = 51'864 / 4; // with less than four bits for a weight
    expect(!WhisperModelFile::read(file) || size > MinSize, "too short files are rejected");
    return 0;
}
