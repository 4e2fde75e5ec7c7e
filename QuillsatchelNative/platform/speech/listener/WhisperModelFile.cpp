#include "platform/speech/listener/WhisperModelFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace
{

constexpr std::int32_t Magic = 0x67676D6C;
constexpr std::int32_t EnglishVocabulary = 51'864;
constexpr std::int32_t MaxVocabulary = 51'866;
constexpr std::int32_t Bins = 201; // of the spectrum, from which the bands are made
constexpr std::int32_t MaxTextSize = 1'000;

struct Header {
    std::int32_t magic = 0;
    std::int32_t vocabulary = 0;
    std::int32_t audioContext = 0;
    std::int32_t audioChannels = 0;
    std::int32_t audioHeads = 0;
    std::int32_t audioLayers = 0;
    std::int32_t textContext = 0;
    std::int32_t textChannels = 0;
    std::int32_t textHeads = 0;
    std::int32_t textLayers = 0;
    std::int32_t bands = 0;
    std::int32_t weightType = 0;
};

struct TensorHeader {
    std::int32_t dimensionCount = 0;
    std::int32_t nameSize = 0;
    std::int32_t type = 0;
};

/// How a type of tensor stores its weights.
struct TensorType {
    std::int32_t number = 0;
    std::uint64_t blockWeights = 0;
    std::uint64_t blockBytes = 0;
};

// 32 and 16 bits; from 4 to 8 bits in two generations.
constexpr std::array<TensorType, 12> TensorTypes { {
    { 0, 1, 4 },
    { 1, 1, 2 },
    { 2, 32, 18 },
    { 3, 32, 20 },
    { 6, 32, 22 },
    { 7, 32, 24 },
    { 8, 32, 34 },
    { 10, 256, 84 },
    { 11, 256, 110 },
    { 12, 256, 144 },
    { 13, 256, 176 },
    { 14, 256, 210 },
} };

bool isBetween(std::int32_t value, std::int32_t low, std::int32_t high)
{
    return value >= low && value <= high;
}

/// The numbers of the types that matrices have in such files, which differ from those of tensors.
bool isWeightType(std::int32_t type)
{
    constexpr std::int32_t VersionFactor = 1'000; // the thousands are the version of the format
    const auto number = type % VersionFactor;
    return isBetween(type / VersionFactor, 0, 9) &&
           (isBetween(number, 0, 3) || isBetween(number, 7, 14));
}

/// Whether the numbers are at most those of the largest models.
bool isPlausible(const Header &header)
{
    return header.magic == Magic &&
           isBetween(header.vocabulary, EnglishVocabulary, MaxVocabulary) &&
           isBetween(header.audioContext, 1, 1'500) && isBetween(header.audioChannels, 1, 1'280) &&
           isBetween(header.audioHeads, 1, 20) && isBetween(header.audioLayers, 1, 32) &&
           header.audioChannels % header.audioHeads == 0 && isBetween(header.textContext, 1, 448) &&
           header.textChannels == header.audioChannels && header.textHeads == header.audioHeads &&
           isBetween(header.textLayers, 1, 32) && (header.bands == 80 || header.bands == 128) &&
           isWeightType(header.weightType);
}

int countLanguages(const Header &header)
{
    constexpr std::int32_t OtherTokens = 51'766; // of models for many languages
    return header.vocabulary == EnglishVocabulary ? 1 : header.vocabulary - OtherTokens;
}

/// How many weights the tensors of a model with this header have in total.
std::uint64_t weightCount(const Header &header)
{
    const auto channels = static_cast<std::uint64_t>(header.audioChannels);
    const auto square = channels * channels;
    const auto count = [](std::int32_t number) { return static_cast<std::uint64_t>(number); };
    const auto encoder = (3 * count(header.bands) + count(header.audioContext) + 4) * channels +
                         3 * square + count(header.audioLayers) * 12 * (square + channels);
    const auto decoder = (count(header.textContext) + count(header.vocabulary) + 2) * channels +
                         count(header.textLayers) * (16 * square + 17 * channels);
    return encoder + decoder;
}

/// Reads the file from its beginning to its end.
class Reader
{
public:
    explicit Reader(std::istream &file)
        : m_file(file)
    {
        m_file.seekg(0, std::ios::end);
        m_rest = static_cast<std::uint64_t>(std::max<std::streamoff>(m_file.tellg(), 0));
        m_file.seekg(0);
    }

    template <typename Value>
    std::optional<Value> read()
    {
        std::array<char, sizeof(Value)> bytes {};
        if (!take(bytes.size()) || !m_file.read(bytes.data(), bytes.size()))
            return std::nullopt;
        return std::bit_cast<Value>(bytes);
    }

    /// False if the file is shorter.
    bool skip(std::uint64_t size)
    {
        constexpr std::uint64_t BufferSize = 4'096; // seeking would empty the buffer
        if (!take(size))
            return false;
        if (size < BufferSize)
            return bool(m_file.ignore(static_cast<std::streamsize>(size)));
        return bool(m_file.seekg(static_cast<std::streamoff>(size), std::ios::cur));
    }

    bool isAtEnd() const { return m_rest == 0; }

private:
    bool take(std::uint64_t size)
    {
        if (size > m_rest)
            return false;
        m_rest -= size;
        return true;
    }

    std::istream &m_file;
    std::uint64_t m_rest = 0;
};

bool skipBands(Reader &reader, const Header &header)
{
    const auto bands = reader.read<std::int32_t>();
    const auto bins = reader.read<std::int32_t>();
    return bands == header.bands && bins == Bins &&
           reader.skip(sizeof(float) * static_cast<std::uint64_t>(*bands) * Bins);
}

bool skipVocabulary(Reader &reader, const Header &header)
{
    const auto count = reader.read<std::int32_t>();
    if (!count || !isBetween(*count, 1, header.vocabulary))
        return false;
    for (std::int32_t index = 0; index < *count; ++index) {
        const auto size = reader.read<std::int32_t>();
        if (!size || !isBetween(*size, 0, MaxTextSize) ||
            !reader.skip(static_cast<std::uint64_t>(*size)))
            return false;
    }
    return true;
}

/// The product of the lengths of a tensor's dimensions.
std::optional<std::uint64_t> readShape(Reader &reader, std::int32_t dimensionCount)
{
    constexpr std::int32_t MaxDimensions = 3;
    constexpr std::int32_t MaxLength = 1'000'000; // the product does not overflow
    if (!isBetween(dimensionCount, 1, MaxDimensions))
        return std::nullopt;
    std::uint64_t weights = 1;
    for (std::int32_t dimension = 0; dimension < dimensionCount; ++dimension) {
        const auto length = reader.read<std::int32_t>();
        if (!length || !isBetween(*length, 1, MaxLength))
            return std::nullopt;
        weights *= static_cast<std::uint64_t>(*length);
    }
    return weights;
}

/// Returns how many weights the tensor has.
std::optional<std::uint64_t> skipTensor(Reader &reader)
{
    const auto header = reader.read<TensorHeader>();
    if (!header || !isBetween(header->nameSize, 1, MaxTextSize))
        return std::nullopt;
    const auto weights = readShape(reader, header->dimensionCount);
    const auto *const type =
        std::find_if(TensorTypes.begin(), TensorTypes.end(),
                     [&header](const auto &known) { return known.number == header->type; });
    if (!weights || type == TensorTypes.end() || *weights % type->blockWeights != 0 ||
        !reader.skip(static_cast<std::uint64_t>(header->nameSize)) ||
        !reader.skip(*weights / type->blockWeights * type->blockBytes))
        return std::nullopt;
    return weights;
}

} // namespace

std::optional<WhisperModelFile> WhisperModelFile::read(std::istream &file)
{
    Reader reader(file);
    const auto header = reader.read<Header>();
    if (!header || !isPlausible(*header) || !skipBands(reader, *header) ||
        !skipVocabulary(reader, *header))
        return std::nullopt;
    std::uint64_t weights = 0;
    while (!reader.isAtEnd()) {
        const auto more = skipTensor(reader);
        if (!more || (weights += *more) > weightCount(*header))
            return std::nullopt;
    }
    if (weights != weightCount(*header))
        return std::nullopt;
    return WhisperModelFile { .languageCount = countLanguages(*header) };
}
