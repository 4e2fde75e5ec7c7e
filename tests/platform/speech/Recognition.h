#pragma once

#include "platform/SpeechRecognizer.h"

#include <QTest>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// One task and the results it has reported.
class Recognition
{
public:
    using Samples = std::vector<std::int16_t>;

    /// Not the end of a sentence, so the words keep their case.
    static constexpr auto TextBefore = "text";

    explicit Recognition(SpeechRecognizer &recognizer)
        : Recognition(recognizer, recognizer.makeRequest(TextBefore))
    {
    }

    Recognition(SpeechRecognizer &recognizer,
                const std::shared_ptr<SpeechRecognitionRequest> &audio)
        : request(audio)
        , task(recognizer.recognitionTask(
              request, [results = m_results](const std::optional<SpeechRecognitionResult> &result,
                                             bool isError) { results->add(result, isError); }))
    {
    }

    void append(std::size_t count) { request->append(Samples(count)); }

    /// False if the task has not ended after ten minutes.
    bool waitForEnd() const
    {
        return waitFor([this] { return ends() > 0; });
    }

    bool waitForText(const std::string &text) const
    {
        return waitFor([this, &text] { return !texts().empty() && texts().back() == text; });
    }

    const std::vector<std::string> &texts() const { return m_results->texts; }

    int ends() const { return m_results->ends; }

    int errors() const { return m_results->errors; }

    int calls() const { return m_results->calls; }

    /// The text of the final result.
    const std::optional<std::string> &finalText() const { return m_results->finalText; }

private:
    struct Results {
        void add(const std::optional<SpeechRecognitionResult> &result, bool isError)
        {
            ++calls;
            errors += isError;
            if (result)
                texts.push_back(result->formattedString);
            if (result && result->isFinal)
                finalText = result->formattedString;
            ends += isError || (result && result->isFinal);
        }

        std::vector<std::string> texts;
        std::optional<std::string> finalText;
        int calls = 0;
        int ends = 0;
        int errors = 0;
    };

    template <typename Condition>
    static bool waitFor(Condition isMet)
    {
        return QTest::qWaitFor(
            isMet, static_cast<int>(std::chrono::milliseconds(std::chrono::minutes(10)).count()));
    }

    const std::shared_ptr<Results> m_results = std::make_shared<Results>();

public:
    std::shared_ptr<SpeechRecognitionRequest> request;
    std::unique_ptr<SpeechRecognitionTask> task;
};
