#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechModels.h"

#include <memory>
#include <optional>
#include <string_view>

/// One kind of engine, as the listener's table has it.
struct RecognitionEngineKind {
    std::string_view modelFolder; ///< below the data folders; has a folder for every language
    SpeechModels::IsComplete isComplete;
    /// Takes as long as the model needs; null for one that cannot be used.
    std::unique_ptr<RecognitionEngine> (*load)(const SpeechModel &model);
};

/// An engine that is not loaded yet, and its model.
struct RecognitionEngineChoice {
    const RecognitionEngineKind &kind;
    SpeechModel model;

    std::unique_ptr<RecognitionEngine> load() const { return kind.load(model); }
};

/// The first engine of the table that has a model for the language `tag`.
std::optional<RecognitionEngineChoice> chooseRecognitionEngine(const SpeechModels &models,
                                                               std::string_view tag);
