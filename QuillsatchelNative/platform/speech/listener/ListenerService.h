#pragma once

#include "platform/speech/ListenerMessage.h"
#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/Spelling.h"
#include "platform/speech/listener/Transcript.h"
#include "platform/speech/listener/VoicePause.h"
#include "platform/speech/listener/WordCounts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The listener's side of the protocol: passes the audio of one task after the other to an engine.
class ListenerService
{
public:
    /// `tag` is the tag of the engine's language.
    ListenerService(RecognitionEngine &engine, std::string_view tag);

    /// Reads messages from the file descriptor `input` until it ends or breaks the protocol, and
    /// writes the answers to the file descriptor `output`.
    void serve(int input, int output);
    /// The answer to a message; none for `begin` and `cancel`.
    std::optional<ListenerMessage> answer(const ListenerMessage &message);

private:
    bool learnsWords() const;
    Transcript newTranscript() const;
    void begin(std::uint32_t task);
    void abandonTask();
    void count(std::string_view texts);
    void learn();
    ListenerMessage process(const ListenerMessage &audio);
    ListenerMessage finish();

    RecognitionEngine &m_engine;
    const bool m_isEnglish;
    Spelling m_spelling;
    WordCounts m_counts; // of the texts since the last `learn`
    std::optional<std::uint32_t> m_task;
    Transcript m_transcript;
    VoicePause m_pause;
    std::string m_lastText;
};
