#pragma once

#include "platform/AudioEngine.h"
#include "platform/SpeechRecognizer.h"
#include "platform/VocabularySource.h"

#include <functional>
#include <memory>

/// Microphone and speech recognition. Main thread only.
class Speech
{
public:
    /// Whether the user allows the program to recognise speech.
    enum class AuthorizationStatus {
        notDetermined,
        denied,
        restricted,
        authorized
    };

    virtual ~Speech() = default;

    /// Asks the user where the desktop requires it, and finds out whether there is a recogniser.
    /// `receive` is called on any thread, within this call or later.
    virtual void requestAuthorization(std::function<void(AuthorizationStatus)> receive) = 0;

    /// A recogniser for the language of the user's locale; null if the latest authorization found
    /// none. Each task first learns the words of `vocabulary`, if it has changed, which must
    /// outlive the recogniser.
    virtual std::unique_ptr<SpeechRecognizer> makeRecognizer(VocabularySource &vocabulary) = 0;

    /// Never null; without a microphone `AudioEngine::start` fails.
    virtual std::unique_ptr<AudioEngine> makeAudioEngine() = 0;
};
