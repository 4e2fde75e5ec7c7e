#include "platform/speech/listener/RecognitionEngines.h"

#include "platform/speech/listener/PocketSphinxEngine.h"

#include <array>
#include <utility>

namespace
{

// The best one first.
constexpr std::array Kinds {
    RecognitionEngineKind { PocketSphinxEngine::ModelFolder, PocketSphinxEngine::isComplete,
                            PocketSphinxEngine::load },
};

} // namespace

std::optional<RecognitionEngineChoice> chooseRecognitionEngine(const SpeechModels &models,
                                                               std::string_view tag)
{
    for (const auto &kind : Kinds) {
        if (auto model = models.find(kind.modelFolder, tag, kind.isComplete))
            return RecognitionEngineChoice { .kind = kind, .model = std::move(*model) };
    }
    return std::nullopt;
}
