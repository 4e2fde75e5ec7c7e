#include "platform/speech/listener/PocketSphinxEngine.h"
#include "platform/speech/listener/RecognitionEngines.h"
#include "platform/speech/listener/WhisperEngine.h"

#include <array>

std::span<const RecognitionEngineKind> recognitionEngineKinds()
{
    // A model of whisper.cpp is there only if the user wants it.
    static constexpr std::array Kinds {
        RecognitionEngineKind { WhisperEngine::find, WhisperEngine::load },
        RecognitionEngineKind { PocketSphinxEngine::find, PocketSphinxEngine::load },
    };
    return Kinds;
}
