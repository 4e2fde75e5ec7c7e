#pragma once

#include "platform/speech/listener/SpeechGate.h"
#include "support/CPointer.h"

#include <filesystem>
#include <memory>
#include <pocketsphinx.h>

/// What differs between versions of PocketSphinx. The build has one of two sources, PocketSphinx5
/// or PocketSphinx5Prealpha.
namespace PocketSphinxVersion
{

using Decoder = CPointer<ps_decoder_t, &ps_free>;

/// A decoder without a language model, which logs nothing. Null if PocketSphinx rejects the files.
Decoder makeDecoder(const std::filesystem::path &acousticModel,
                    const std::filesystem::path &dictionary);

/// Makes the decoder use the model, which it retains. False if it rejects the model.
bool setLanguageModel(ps_decoder_t *decoder, ngram_model_t *model);

/// Frees the model, if the decoder has one. Until the decoder gets another, words may only be added
/// and looked up.
void removeLanguageModel(ps_decoder_t *decoder);

/// The gate for the audio of the decoder, which must outlive it. Null without memory.
std::unique_ptr<SpeechGate> makeSpeechGate(ps_decoder_t *decoder);

} // namespace PocketSphinxVersion
