#pragma once

#include "platform/AudioEngine.h"
#include "platform/SpeechAuthorizationStatus.h"
#include "platform/SpeechRecognizer.h"

#include <functional>
#include <memory>

/// What the machine offers for dictation. Main thread only.
class Speech
{
public:
    virtual ~Speech() = default;

    /// Asks the user where that is the custom; `receive` is called from any thread.
    virtual void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> receive) = 0;

    /// A recogniser for the language of the user's locale; null if there is none.
    virtual std::unique_ptr<SpeechRecognizer> makeRecognizer() = 0;

    /// Never null; a machine without a microphone has an engine that does not start.
    virtual std::unique_ptr<AudioEngine> makeAudioEngine() = 0;
};
