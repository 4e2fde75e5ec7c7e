#pragma once

#include "platform/SpeechRecognizer.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// One task under way, and what it has told so far.
class Recognition
{
public:
    using Samples = std::vector<std::int16_t>;

    explicit Recognition(SpeechRecognizer &recognizer)
        : Recognition(recognizer, recognizer.makeRequest())
    {
    }

    Recognition(SpeechRecognizer &recognizer,
                const std::shared_ptr<SpeechRecognitionRequest> &audio)
        : request(audio)
        , task(recognizer.recognitionTask(
              request, [news = m_news](const std::optional<SpeechRecognitionResult> &result,
                                       bool isError) { news->add(result, isError); }))
    {
    }

    void append(std::size_t count) { request->append(Samples(count)); }

    /// False if the task has not ended after a long time.
    bool waitForEnd() const
    {
        return m_news->waitFor([](const News &news) { return news.ends > 0; });
    }

    bool waitForText(const std::string &text) const
    {
        return m_news->waitFor(
            [&text](const News &news) { return !news.texts.empty() && news.texts.back() == text; });
    }

    std::vector<std::string> texts() const { return m_news->get(&News::texts); }

    int ends() const { return m_news->get(&News::ends); }

    int errors() const { return m_news->get(&News::errors); }

    int calls() const { return m_news->get(&News::calls); }

    /// The last result's; empty if there is none.
    std::optional<std::string> finalText() const { return m_news->get(&News::finalText); }

private:
    struct News {
        void add(const std::optional<SpeechRecognitionResult> &result, bool isError)
        {
            const std::lock_guard lock(mutex);
            ++calls;
            errors += isError;
            if (result)
                texts.push_back(result->formattedString);
            if (result && result->isFinal)
                finalText = result->formattedString;
            ends += isError || (result && result->isFinal);
            changed.notify_all();
        }

        template <typename Condition>
        bool waitFor(Condition condition)
        {
            std::unique_lock lock(mutex);
            return changed.wait_for(lock, std::chrono::minutes(10),
                                    [this, &condition] { return condition(*this); });
        }

        template <typename Value>
        Value get(Value News::*member)
        {
            const std::lock_guard lock(mutex);
            return this->*member;
        }

        std::mutex mutex;
        std::condition_variable changed;
        std::vector<std::string> texts;
        std::optional<std::string> finalText;
        int calls = 0;
        int ends = 0;
        int errors = 0;
    };

    const std::shared_ptr<News> m_news = std::make_shared<News>();

public:
    std::shared_ptr<SpeechRecognitionRequest> request;
    std::unique_ptr<SpeechRecognitionTask> task;
};
