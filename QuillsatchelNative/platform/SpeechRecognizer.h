#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

struct SpeechRecognitionResult {
    std::string formattedString; ///< everything said since the task began (UTF-8)
    bool isFinal = false;        ///< the task's last result
};

/// The audio for one task. May be used from any thread.
class SpeechRecognitionRequest
{
public:
    virtual ~SpeechRecognitionRequest() = default;

    /// Samples after the end of the audio or after cancellation are dropped.
    virtual void append(std::span<const std::int16_t> samples) = 0;
    /// No more audio will come; the final result follows.
    virtual void endAudio() = 0;
    /// The audio broke off; the task ends with an error.
    virtual void fail() = 0;
};

/// A recognition in progress. Destroying it cancels it.
class SpeechRecognitionTask
{
public:
    virtual ~SpeechRecognitionTask() = default;

    /// Stops immediately, in any state, and may be called again. Results in flight may still
    /// arrive.
    virtual void cancel() = 0;
};

/// Recognises speech in one language.
class SpeechRecognizer
{
public:
    /// Called on any thread, any number of times, with a result or an error or both.
    using ResultHandler =
        std::function<void(const std::optional<SpeechRecognitionResult> &result, bool isError)>;

    virtual ~SpeechRecognizer() = default;

    /// Whether recognition can run now.
    virtual bool isAvailable() const = 0;

    /// The recognised words will follow `textBefore` (UTF-8), so they may begin a sentence.
    virtual std::shared_ptr<SpeechRecognitionRequest> makeRequest(std::string_view textBefore) = 0;

    /// Starts recognising the audio of `request` and delivers partial results. `request` must come
    /// from this recogniser and have no task yet.
    virtual std::unique_ptr<SpeechRecognitionTask>
    recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request, ResultHandler handler) = 0;
};
