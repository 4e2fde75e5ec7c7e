#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechModels.h"

#include <memory>
#include <optional>
#include <string_view>

/// One kind of engine.
struct RecognitionEngineKind {
    std::string_view modelFolder; ///< below the data folders, with a folder for each language
    SpeechModels::IsComplete isComplete;
    /// Loads the model, which takes time. Null if the model cannot be used.
    std::unique_ptr<RecognitionEngine> (*load)(const SpeechModel &model);
};

/// An engine and its model, not loaded yet.
struct RecognitionEngineChoice {
    const RecognitionEngineKind &kind;
    SpeechModel model;

    std::unique_ptr<RecognitionEngine> load() const { return kind.load(model); }
};

/// The best engine that has a model for the language `tag`.
std::optional<RecognitionEngineChoice> chooseRecognitionEngine(const SpeechModels &models,
                                                               std::string_view tag);
