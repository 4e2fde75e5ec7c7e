#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SpeechModel.h"
#include "platform/speech/listener/SpeechModels.h"

#include <memory>
#include <optional>
#include <string_view>

/// A row of the table of engines.
struct RecognitionEngineKind {
    /// The model for the language `tag`. None if there is no complete one.
    std::optional<SpeechModel> (*find)(const SpeechModels &models, std::string_view tag);
    /// Loads the model, which takes time. Null if the model cannot be used.
    std::unique_ptr<RecognitionEngine> (*load)(const SpeechModel &model);
};
