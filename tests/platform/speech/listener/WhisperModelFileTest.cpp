#include "platform/speech/listener/WhisperModelFile.h"

#include "fakes/TestFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>

namespace
{

std::optional<WhisperModelFile> read(const std::string &bytes)
{
    std::istringstream file(bytes);
    return WhisperModelFile::read(file);
}

class WhisperModelFileTest : public testing::Test
{
protected:
    static constexpr std::size_t HeaderSize = 48;
    static constexpr std::size_t BandsEnd = HeaderSize + 8 + std::size_t(80) * 201 * 4;

    /// Whether the model is accepted with another number at an offset.
    bool isAccepted(std::size_t offset, std::int32_t number) const
    {
        auto bytes = model;
        std::memcpy(bytes.data() + offset, &number, sizeof(number));
        return read(bytes).has_value();
    }

    const std::string model = TestFiles::read(WHISPER_MODELS "/whisper-english.bin");
};

TEST_F(WhisperModelFileTest, AcceptsCompleteModels)
{
    const auto english = read(model);
    ASSERT_TRUE(english);
    EXPECT_EQ(english->languageCount, 1);
    const auto multilingual = read(TestFiles::read(WHISPER_MODELS "/whisper-multilingual.bin"));
    ASSERT_TRUE(multilingual);
    EXPECT_EQ(multilingual->languageCount, 99);
}

TEST_F(WhisperModelFileTest, RejectsFilesOfAnotherKind)
{
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("This is not a model.\n"));
    EXPECT_FALSE(read("GGUF" + model.substr(4)));
    EXPECT_FALSE(read(std::string(model.size(), '\0')));
    EXPECT_FALSE(read(std::string(model.size(), '\xFF')));
}

TEST_F(WhisperModelFileTest, RejectsTruncatedFiles)
{
    for (std::size_t size = 0; size < 100'000; size += 997)
        EXPECT_FALSE(read(model.substr(0, size))) << size;
    for (const std::size_t missing : { 1, 4, 100, 10'000, 1'000'000 })
        EXPECT_FALSE(read(model.substr(0, model.size() - missing))) << missing;
}

TEST_F(WhisperModelFileTest, RejectsLongerFiles)
{
    EXPECT_FALSE(read(model + '\0'));
    EXPECT_FALSE(read(model + model.substr(HeaderSize)));
}

TEST_F(WhisperModelFileTest, RejectsWrongNumbersInTheHeader)
{
    for (std::size_t offset = 0; offset < HeaderSize + 8; offset += 4) {
        for (const auto number : { std::numeric_limits<std::int32_t>::min(), -1, 2'000'000'000,
                                   std::numeric_limits<std::int32_t>::max() })
            EXPECT_FALSE(isAccepted(offset, number)) << offset << ' ' << number;
    }
    constexpr std::size_t Layers = 20;
    EXPECT_FALSE(isAccepted(Layers, 0));
    EXPECT_FALSE(isAccepted(Layers, 2)) << "the file lacks these weights";
}

TEST_F(WhisperModelFileTest, RejectsAWrongVocabulary)
{
    for (const auto number : { -1, 0, 1'000, 60'000, 2'000'000'000 }) {
        EXPECT_FALSE(isAccepted(BandsEnd, number)) << "count " << number;
        EXPECT_FALSE(isAccepted(BandsEnd + 4, number)) << "size " << number;
    }
}

TEST_F(WhisperModelFileTest, RejectsWrongTensors)
{
    const auto firstTensor = model.find("encoder.positional_embedding") - 5 * 4;
    for (std::size_t field = 0; field < 5; ++field) {
        for (const auto number : { -1, 0, 5, 100'000, 2'000'000'000 }) {
            if (field == 2 && number == 0)
                continue; // the right type
            EXPECT_FALSE(isAccepted(firstTensor + 4 * field, number)) << field << ' ' << number;
        }
    }
}

TEST_F(WhisperModelFileTest, AcceptsNoFileThatCannotBeRead)
{
    std::istringstream file(model);
    file.setstate(std::ios::badbit);
    EXPECT_FALSE(WhisperModelFile::read(file));
}

} // namespace
