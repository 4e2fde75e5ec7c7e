#pragma once

#include "platform/Speech.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

/// Speech recognition that the test controls. The test answers authorization requests, captures
/// audio and delivers results, all on other threads. Records the calls it gets.
class FakeSpeech final : public Speech
{
public:
    /// The state of one recognition, shared with the test.
    struct Recognition {
        std::vector<std::int16_t> samples;
        bool hasEnded = false;
        bool hasFailed = false;
        int cancellations = 0;
        SpeechRecognizer::ResultHandler handler;
    };

    void requestAuthorization(std::function<void(AuthorizationStatus)> receive) override
    {
        note("request authorization");
        authorizationRequests.push_back(std::move(receive));
    }

    std::unique_ptr<SpeechRecognizer> makeRecognizer(VocabularySource &source) override
    {
        vocabulary = &source;
        return hasRecognizer ? std::make_unique<Recognizer>(*this) : nullptr;
    }

    std::unique_ptr<AudioEngine> makeAudioEngine() override
    {
        return std::make_unique<Engine>(*this);
    }

    /// Answers an authorization request, on another thread.
    void answer(std::size_t request, AuthorizationStatus status = AuthorizationStatus::authorized)
    {
        onAnotherThread([&] { authorizationRequests.at(request)(status); });
    }

    /// Calls the handler of a recognition, on another thread.
    void deliver(std::size_t recognition, const std::optional<SpeechRecognitionResult> &result,
                 bool isError = false)
    {
        onAnotherThread([&] { recognitions.at(recognition)->handler(result, isError); });
    }

    /// Passes samples to the tap, on another thread.
    void capture(const std::vector<std::int16_t> &samples)
    {
        onAnotherThread([&] { tap->append(samples); });
    }

    void note(const std::string &event) { events.push_back(event); }

    std::string textBefore;                 ///< of the latest request
    VocabularySource *vocabulary = nullptr; ///< of the recogniser
    bool hasRecognizer = true;
    bool isAvailable = true;
    bool startsEngine = true;
    std::vector<std::string> events; ///< the calls, in order
    std::vector<std::function<void(AuthorizationStatus)>> authorizationRequests;
    std::vector<std::shared_ptr<Recognition>> recognitions;
    std::optional<AudioEngine::Tap> tap;
    int tapBufferSize = 0;
    bool isEngineRunning = false;

private:
    class Request final : public SpeechRecognitionRequest
    {
    public:
        Request(FakeSpeech &speech, std::shared_ptr<Recognition> recognition)
            : m_speech(speech)
            , m_recognition(std::move(recognition))
        {
        }

        void append(std::span<const std::int16_t> samples) override
        {
            auto &all = m_recognition->samples;
            all.insert(all.end(), samples.begin(), samples.end());
        }

        void endAudio() override
        {
            m_speech.note("end audio");
            m_recognition->hasEnded = true;
        }

        void fail() override { m_recognition->hasFailed = true; }

        const std::shared_ptr<Recognition> &recognition() const { return m_recognition; }

    private:
        FakeSpeech &m_speech;
        std::shared_ptr<Recognition> m_recognition;
    };

    class Task final : public SpeechRecognitionTask
    {
    public:
        Task(FakeSpeech &speech, std::shared_ptr<Recognition> recognition)
            : m_speech(speech)
            , m_recognition(std::move(recognition))
        {
        }

        ~Task() override
        {
            if (m_recognition->cancellations == 0)
                ++m_recognition->cancellations;
        }

        Task(const Task &) = delete;
        Task &operator=(const Task &) = delete;

        void cancel() override
        {
            m_speech.note("cancel task");
            ++m_recognition->cancellations;
        }

    private:
        FakeSpeech &m_speech;
        std::shared_ptr<Recognition> m_recognition;
    };

    class Recognizer final : public SpeechRecognizer
    {
    public:
        explicit Recognizer(FakeSpeech &speech)
            : m_speech(speech)
        {
        }

        bool isAvailable() const override { return m_speech.isAvailable; }

        std::shared_ptr<SpeechRecognitionRequest> makeRequest(std::string_view text) override
        {
            m_speech.textBefore = text;
            m_speech.note("make request");
            return std::make_shared<Request>(m_speech, std::make_shared<Recognition>());
        }

        std::unique_ptr<SpeechRecognitionTask>
        recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request,
                        ResultHandler handler) override
        {
            m_speech.note("start task");
            const auto recognition = static_cast<const Request &>(*request).recognition();
            recognition->handler = std::move(handler);
            m_speech.recognitions.push_back(recognition);
            return std::make_unique<Task>(m_speech, recognition);
        }

    private:
        FakeSpeech &m_speech;
    };

    class Engine final : public AudioEngine
    {
    public:
        explicit Engine(FakeSpeech &speech)
            : m_speech(speech)
        {
        }

        void installTap(int bufferSize, Tap installed) override
        {
            m_speech.note("install tap");
            m_speech.tapBufferSize = bufferSize;
            m_speech.tap = std::move(installed);
        }

        void removeTap() override
        {
            m_speech.note("remove tap");
            m_speech.tap.reset();
        }

        bool start() override
        {
            m_speech.note("start engine");
            m_speech.isEngineRunning = m_speech.isEngineRunning || m_speech.startsEngine;
            return m_speech.isEngineRunning;
        }

        void stop() override
        {
            m_speech.note("stop engine");
            m_speech.isEngineRunning = false;
        }

        bool isRunning() const override { return m_speech.isEngineRunning; }

    private:
        FakeSpeech &m_speech;
    };

    template <typename Work>
    static void onAnotherThread(Work &&work)
    {
        std::thread(std::forward<Work>(work)).join();
    }
};
