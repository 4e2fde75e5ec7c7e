#pragma once

#include "platform/speech/ListenerMessage.h"
#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/Transcript.h"

#include <cstdint>
#include <optional>
#include <string>

/// The listener's side of the conversation: lets an engine hear one task after the other.
class ListenerService
{
public:
    /// `tag` is that of the engine's language.
    ListenerService(RecognitionEngine &engine, std::string tag);

    /// Serves what comes from the file `input` until it ends or holds something else than
    /// messages; the answers go to the file `output`.
    void serve(int input, int output);
    /// The answer to a message, if that has one.
    std::optional<ListenerMessage> answer(const ListenerMessage &message);

private:
    void begin(std::uint32_t task);
    void leaveTask();
    ListenerMessage hear(const ListenerMessage &audio);
    ListenerMessage finish();

    RecognitionEngine &m_engine;
    const std::string m_tag;
    std::optional<std::uint32_t> m_task;
    Transcript m_transcript;
    std::string m_lastText;
};
