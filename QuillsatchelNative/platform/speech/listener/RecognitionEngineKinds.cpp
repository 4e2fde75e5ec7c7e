#include "platform/speech/listener/PocketSphinxEngine.h"
#include "platform/speech/listener/RecognitionEngines.h"

#include <array>

std::span<const RecognitionEngineKind> recognitionEngineKinds()
{
    static constexpr std::array Kinds {
        RecognitionEngineKind { PocketSphinxEngine::find, PocketSphinxEngine::load },
    };
    return Kinds;
}
