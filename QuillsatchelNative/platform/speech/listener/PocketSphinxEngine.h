#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechModel.h"
#include "support/CPointer.h"

#include <cstdint>
#include <memory>
#include <pocketsphinx.h>
#include <span>
#include <string>
#include <vector>

/// PocketSphinx with a model as its own packages have it: below the folder of the language TAG
/// the acoustic model TAG/, the language model TAG.lm.bin and one dictionary, *.dict or *.dic.
class PocketSphinxEngine final : public RecognitionEngine
{
public:
    static constexpr auto ModelFolder = "pocketsphinx/model";

    static bool isComplete(const SpeechModel &model);
    /// Null for a model that is damaged in a way that PocketSphinx notices; others end the process.
    static std::unique_ptr<RecognitionEngine> load(const SpeechModel &model);

    void begin() override;
    Hypothesis hear(std::span<const std::int16_t> samples) override;
    std::string finish() override;

private:
    using Config = CPointer<cmd_ln_t, &cmd_ln_free_r>;
    using Decoder = CPointer<ps_decoder_t, &ps_free>;

    explicit PocketSphinxEngine(Decoder decoder);

    Hypothesis beforeSpeech();
    Hypothesis afterSpeech();
    Hypothesis cutUtterance();
    void getToKnowMicrophone();

    void startUtterance();
    void decode(std::span<const std::int16_t> samples);
    void endUtterance();
    std::string words() const;

    const Decoder m_decoder;
    std::vector<std::int16_t> m_audio; // of the utterance, from a little before it began
    bool m_hasSpeech = false;          // the utterance, by now
    bool m_isHeardAgain = false;
    bool m_knowsMicrophone = false;
};
