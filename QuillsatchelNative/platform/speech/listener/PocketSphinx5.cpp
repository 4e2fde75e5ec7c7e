#include "platform/speech/listener/PocketSphinxVersion.h"
#include "platform/speech/listener/VoiceActivityGate.h"

namespace
{

constexpr auto SearchName = "dictation";

using Config = CPointer<ps_config_t, &ps_config_free>;

} // namespace

PocketSphinxVersion::Decoder
PocketSphinxVersion::makeDecoder(const std::filesystem::path &acousticModel,
                                 const std::filesystem::path &dictionary)
{
    err_set_logfp(nullptr);
    const Config config(ps_config_init(nullptr));
    if (!config)
        return nullptr;
    ps_config_set_str(config.get(), "hmm", acousticModel.c_str());
    ps_config_set_str(config.get(), "dict", dictionary.c_str());
    // Wider beams than the defaults reduce the word error rate.
    ps_config_set_float(config.get(), "beam", 1e-60);
    ps_config_set_float(config.get(), "wbeam", 1e-40);
    ps_config_set_float(config.get(), "pbeam", 1e-60);
    return Decoder(ps_init(config.get()));
}

bool PocketSphinxVersion::setLanguageModel(ps_decoder_t *decoder, ngram_model_t *model)
{
    return ps_add_lm(decoder, SearchName, model) == 0 &&
           ps_activate_search(decoder, SearchName) == 0;
}

void PocketSphinxVersion::removeLanguageModel(ps_decoder_t *decoder)
{
    ps_remove_search(decoder, SearchName);
}

std::unique_ptr<SpeechGate> PocketSphinxVersion::makeSpeechGate(ps_decoder_t * /*decoder*/)
{
    return VoiceActivityGate::make();
}
