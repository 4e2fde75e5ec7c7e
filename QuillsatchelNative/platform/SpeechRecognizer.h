#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

/// What a task has understood.
struct SpeechRecognitionResult {
    std::string formattedString; ///< UTF-8; all that was said so far, not only the latest
    bool isFinal = false;        ///< the task's last result
};

/// The audio that one task is to understand.
class SpeechRecognitionRequest
{
public:
    virtual ~SpeechRecognitionRequest() = default;

    /// From any thread; what comes after the end, or once the task is cancelled, is dropped.
    virtual void append(std::span<const std::int16_t> samples) = 0;
    /// From any thread: no more audio will come; the final result follows.
    virtual void endAudio() = 0;
    /// From any thread: the audio broke off; the task ends with an error.
    virtual void fail() = 0;
};

/// One recognition under way; letting go of it cancels it.
class SpeechRecognitionTask
{
public:
    virtual ~SpeechRecognitionTask() = default;

    /// Stops at once, in any state, also twice. Results that are on their way may still come.
    virtual void cancel() = 0;
};

/// Turns speech in one language into words.
class SpeechRecognizer
{
public:
    /// Called from any thread, any number of times, with a result or an error or both.
    using ResultHandler =
        std::function<void(const std::optional<SpeechRecognitionResult> &result, bool isError)>;

    virtual ~SpeechRecognizer() = default;

    /// Whether recognition can run now.
    virtual bool isAvailable() const = 0;

    virtual std::shared_ptr<SpeechRecognitionRequest> makeRequest() = 0;

    /// Begins to understand what is put into the request, with partial results on the way.
    /// `request` is one that this recogniser made and that has no task yet.
    virtual std::unique_ptr<SpeechRecognitionTask>
    recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request, ResultHandler handler) = 0;
};
