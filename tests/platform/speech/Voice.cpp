#include "platform/speech/Voice.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>
#include <random>

namespace
{

constexpr std::size_t HeaderBytes = 44;    // of a WAV file
constexpr std::size_t BeforeVoice = 8'000; // samples
constexpr std::size_t AfterVoice = 16'000; // samples
constexpr int Attenuation = 2;             // divides the amplitude

} // namespace

std::optional<std::vector<std::int16_t>> Voice::say(const std::string &sentence,
                                                    const std::string &voice)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("voice.wav")).toStdString();
    const auto command = "flite -voice " + voice + " -t '" + sentence + "' -o " + path;
    if (std::system((command + " 2>/dev/null").c_str()) != 0)
        return std::nullopt;
    const auto sound = TestFiles::read(path);
    if (sound.size() <= HeaderBytes)
        return std::nullopt;
    std::vector<std::int16_t> spoken((sound.size() - HeaderBytes) / sizeof(std::int16_t));
    std::memcpy(spoken.data(), sound.data() + HeaderBytes, spoken.size() * sizeof(std::int16_t));
    auto samples = silence(BeforeVoice + spoken.size() + AfterVoice);
    for (std::size_t index = 0; index < spoken.size(); ++index) {
        auto &sample = samples[BeforeVoice + index];
        sample = static_cast<std::int16_t>(sample + spoken[index] / Attenuation);
    }
    return samples;
}

std::vector<std::int16_t> Voice::silence(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<std::int16_t> samples(count);
    for (auto &sample : samples)
        sample = static_cast<std::int16_t>(static_cast<int>(random() % 37) - 18);
    return samples;
}
