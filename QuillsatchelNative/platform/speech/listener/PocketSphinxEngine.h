#pragma once

#include "platform/speech/listener/PocketSphinxVersion.h"
#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechGate.h"
#include "platform/speech/listener/SpeechModel.h"
#include "platform/speech/listener/SpeechModels.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// PocketSphinx with a model as in its packages: the folder of the language TAG contains the
/// acoustic model TAG/, the language model TAG.lm.bin and one dictionary, *.dict or *.dic.
class PocketSphinxEngine final : public RecognitionEngine
{
public:
    static constexpr auto ModelFolder = "pocketsphinx/model";

    static std::optional<SpeechModel> find(const SpeechModels &models, std::string_view tag);
    /// Null if PocketSphinx rejects the model. A damaged model may end the process instead.
    static std::unique_ptr<RecognitionEngine> load(const SpeechModel &model);

    bool knows(const std::string &key) const override;
    void learn(const UserVocabulary &vocabulary) override;
    void begin() override;
    Hypothesis process(std::span<const std::int16_t> samples) override;
    std::string finish() override;
    void abandon() override;

private:
    using Decoder = PocketSphinxVersion::Decoder;

    using LanguageModel = CPointer<ngram_model_t, &ngram_model_free>;

    PocketSphinxEngine(Decoder decoder, LanguageModel generalModel,
                       std::unique_ptr<SpeechGate> gate);

    void addWords(const UserVocabulary &vocabulary);
    void useModels();

    Hypothesis beforeSpeech();
    Hypothesis afterSpeech();
    Hypothesis cutUtterance();
    void adaptToMicrophone();
    std::string finalWords();

    void startUtterance();
    void decode(std::span<const std::int16_t> samples);
    void endUtterance();
    std::string words() const;

    const Decoder m_decoder;
    const LanguageModel m_generalModel;
    LanguageModel m_userModel; // null until there is something to learn
    bool m_usesModels = false; // of the decoder: it has the models
    // New words that need no second attempt: they are in the dictionary or cannot be pronounced.
    std::unordered_set<std::string> m_triedWords;
    const std::unique_ptr<SpeechGate> m_gate; // uses the decoder
    std::vector<std::int16_t> m_audio;        // of the utterance, from half a second before speech
    bool m_hasSpeech = false;                 // in the current utterance
    bool m_isDecodedTwice = false;
    bool m_isAdapted = false;
};
