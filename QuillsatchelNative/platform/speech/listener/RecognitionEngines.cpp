#include "platform/speech/listener/RecognitionEngines.h"

#include <utility>

std::vector<RecognitionEngineChoice>
chooseRecognitionEngines(std::span<const RecognitionEngineKind> kinds, const SpeechModels &models,
                         std::string_view tag)
{
    std::vector<RecognitionEngineChoice> choices;
    for (const auto &kind : kinds) {
        if (auto model = kind.find(models, tag))
            choices.push_back({ .kind = kind, .model = std::move(*model) });
    }
    return choices;
}
