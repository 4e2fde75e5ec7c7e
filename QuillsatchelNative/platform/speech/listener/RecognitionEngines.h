#pragma once

#include "platform/speech/listener/RecognitionEngineKind.h"
#include "platform/speech/listener/SpeechModel.h"
#include "platform/speech/listener/SpeechModels.h"

#include <memory>
#include <span>
#include <string_view>
#include <vector>

/// An engine and its model, not loaded yet.
struct RecognitionEngineChoice {
    RecognitionEngineKind kind;
    SpeechModel model;

    std::unique_ptr<RecognitionEngine> load() const { return kind.load(model); }
};

/// The table of engines, the preferred one first. The build has one of two sources,
/// RecognitionEngineKinds or RecognitionEngineKindsWithWhisper.
std::span<const RecognitionEngineKind> recognitionEngineKinds();

/// The engines that have a model for the language `tag`, in the order of `kinds`.
std::vector<RecognitionEngineChoice>
chooseRecognitionEngines(std::span<const RecognitionEngineKind> kinds, const SpeechModels &models,
                         std::string_view tag);
