#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechGate.h"
#include "platform/speech/listener/SpeechModel.h"
#include "platform/speech/listener/SpeechModels.h"
#include "support/CPointer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>
#include <whisper.h>

/// whisper.cpp with a model file ggml-*.bin of the user, on the processor. It decodes an utterance
/// as a whole, so partial results come from decoding its beginning again and again. A pass may take
/// seconds and cannot be interrupted.
class WhisperEngine final : public RecognitionEngine
{
public:
    static constexpr auto ModelFolder = "whisper.cpp/models";

    static std::optional<SpeechModel> find(const SpeechModels &models, std::string_view tag);
    /// Null if the library rejects the model. A damaged model may end the process instead.
    static std::unique_ptr<RecognitionEngine> load(const SpeechModel &model);

    bool writesText() const override { return true; }

    void begin() override;
    Hypothesis process(std::span<const std::int16_t> samples) override;
    std::string finish() override;
    void abandon() override;

private:
    using Context = CPointer<whisper_context, &whisper_free>;

    WhisperEngine(Context context, std::string language, std::unique_ptr<SpeechGate> gate);

    Hypothesis duringSpeech();
    Hypothesis duringPause(std::size_t sampleCount);
    Hypothesis cutUtterance();

    void decodeUtterance();
    void startUtterance();
    std::string decode(std::span<const float> audio) const;

    const Context m_context;
    const std::string m_language;
    const std::unique_ptr<SpeechGate> m_gate;
    std::vector<float> m_audio;    // of the utterance, without its pauses
    std::size_t m_decodedSize = 0; // of the audio, in the latest pass
    std::size_t m_interval = 0;    // how much audio must follow the latest pass before the next one
    std::string m_text;            // of the latest pass
    std::string m_steadyText;      // what the latest two passes agree on; in a pause, everything
    std::size_t m_pauseLength = 0; // samples; 0 while the voice goes on
};
