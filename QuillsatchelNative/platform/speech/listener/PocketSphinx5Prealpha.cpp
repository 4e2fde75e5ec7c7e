#include "platform/speech/listener/PocketSphinxVersion.h"

#include <sphinxbase/err.h>

namespace
{

constexpr auto SearchName = "dictation";

using Config = CPointer<cmd_ln_t, &cmd_ln_free_r>;

/// Passes everything, because the decoder detects speech itself.
class DecoderSpeechGate final : public SpeechGate
{
public:
    explicit DecoderSpeechGate(ps_decoder_t *decoder)
        : m_decoder(decoder)
    {
    }

    void reset() override {}

    std::vector<std::int16_t> pass(std::span<const std::int16_t> samples) override
    {
        return { samples.begin(), samples.end() };
    }

    bool isOpen() const override { return ps_get_in_speech(m_decoder) != 0; }

private:
    ps_decoder_t *const m_decoder;
};

} // namespace

PocketSphinxVersion::Decoder
PocketSphinxVersion::makeDecoder(const std::filesystem::path &acousticModel,
                                 const std::filesystem::path &dictionary)
{
    err_set_logfp(nullptr);
    // Wider beams and a shorter final pause than the defaults reduce the word error rate.
    const Config config(cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", acousticModel.c_str(),
                                    "-dict", dictionary.c_str(), "-beam", "1e-60", "-wbeam",
                                    "1e-40", "-pbeam", "1e-60", "-vad_postspeech", "30", nullptr));
    return Decoder(config ? ps_init(config.get()) : nullptr);
}

bool PocketSphinxVersion::setLanguageModel(ps_decoder_t *decoder, ngram_model_t *model)
{
    return ps_set_lm(decoder, SearchName, model) == 0 && ps_set_search(decoder, SearchName) == 0;
}

void PocketSphinxVersion::removeLanguageModel(ps_decoder_t *decoder)
{
    ps_unset_search(decoder, SearchName);
}

std::unique_ptr<SpeechGate> PocketSphinxVersion::makeSpeechGate(ps_decoder_t *decoder)
{
    return std::make_unique<DecoderSpeechGate>(decoder);
}
