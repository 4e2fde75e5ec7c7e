#pragma once

#include "platform/speech/listener/PocketSphinxVersion.h"
#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechGate.h"
#include "platform/speech/listener/SpeechModel.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// PocketSphinx with a model as in its packages: the folder of the language TAG contains the
/// acoustic model TAG/, the language model TAG.lm.bin and one dictionary, *.dict or *.dic.
class PocketSphinxEngine final : public RecognitionEngine
{
public:
    static constexpr auto ModelFolder = "pocketsphinx/model";

    static bool isComplete(const SpeechModel &model);
    /// Null if PocketSphinx rejects the model. A damaged model may end the process instead.
    static std::unique_ptr<RecognitionEngine> load(const SpeechModel &model);

    void begin() override;
    Hypothesis process(std::span<const std::int16_t> samples) override;
    std::string finish() override;

private:
    using Decoder = PocketSphinxVersion::Decoder;

    PocketSphinxEngine(Decoder decoder, std::unique_ptr<SpeechGate> gate);

    Hypothesis beforeSpeech();
    Hypothesis afterSpeech();
    Hypothesis cutUtterance();
    void adaptToMicrophone();

    void startUtterance();
    void decode(std::span<const std::int16_t> samples);
    void endUtterance();
    std::string words() const;

    const Decoder m_decoder;
    const std::unique_ptr<SpeechGate> m_gate; // uses the decoder
    std::vector<std::int16_t> m_audio;        // of the utterance, from half a second before speech
    bool m_hasSpeech = false;                 // in the current utterance
    bool m_isDecodedTwice = false;
    bool m_isAdapted = false;
};
