#include "platform/speech/listener/ListenerService.h"

#include "platform/speech/ListenerMessageReader.h"
#include "platform/speech/listener/LanguageTag.h"
#include "support/WriteAll.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <malloc.h>
#include <span>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;

// SteadyPrefix counts hypotheses, one for each piece.
constexpr std::size_t PieceSize = 1024; // samples: 64 ms

ListenerMessage unchanged(const ListenerMessage &question)
{
    return { .kind = Kind::unchanged, .task = question.task, .payload = {} };
}

} // namespace

ListenerService::ListenerService(RecognitionEngine &engine, std::string_view tag)
    : m_engine(engine)
    , m_isEnglish(isEnglish(tag))
    , m_spelling(tag)
    , m_transcript(newTranscript())
{
}

void ListenerService::serve(int input, int output)
{
    ListenerMessageReader reader;
    std::array<char, 65'536> bytes;
    while (!reader.isBroken()) {
        const auto count = read(input, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        reader.feed(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
        while (const auto message = reader.next()) {
            std::string stream;
            if (const auto reply = answer(*message))
                reply->appendTo(stream);
            if (!writeAll(output, stream))
                return;
        }
    }
}

std::optional<ListenerMessage> ListenerService::answer(const ListenerMessage &message)
{
    switch (message.kind) {
    case Kind::begin:
        begin(message.task);
        break;
    case Kind::audio:
        return message.task == m_task ? process(message) : unchanged(message);
    case Kind::end:
        return message.task == m_task
                   ? finish()
                   : ListenerMessage { .kind = Kind::final, .task = message.task, .payload = {} };
    case Kind::cancel:
        if (message.task == m_task)
            abandonTask();
        break;
    case Kind::texts:
        count(message.payload);
        return unchanged(message);
    case Kind::learn:
        learn();
        return unchanged(message);
    case Kind::unchanged:
    case Kind::partial:
    case Kind::final:
        break;
    }
    return std::nullopt;
}

/// Keys have no accents. Other languages have words that differ only by them, such as "a" and "à".
bool ListenerService::learnsWords() const
{
    return m_isEnglish && !m_engine.writesText();
}

Transcript ListenerService::newTranscript() const
{
    return Transcript(m_engine.writesText() ? nullptr : &m_spelling);
}

void ListenerService::begin(std::uint32_t task)
{
    abandonTask();
    m_task = task;
    m_transcript = newTranscript();
    m_pause = {};
    m_lastText.clear();
    m_engine.begin();
}

void ListenerService::abandonTask()
{
    if (std::exchange(m_task, std::nullopt))
        m_engine.abandon();
}

/// Of a message `texts`. An end that is missing follows the last text.
void ListenerService::count(std::string_view texts)
{
    using TextEnd = ListenerMessage::TextEnd;
    constexpr std::array Ends { TextEnd::Ordinary, TextEnd::Prominent, TextEnd::Title,
                                TextEnd::ProminentTitle };
    if (!learnsWords())
        return;
    while (!texts.empty()) {
        const auto size =
            std::min(texts.find_first_of(std::string_view(Ends.data(), Ends.size())), texts.size());
        const int end = size < texts.size() ? texts[size] : TextEnd::Ordinary;
        m_counts.add(texts.substr(0, size), (end & TextEnd::Prominent) != 0,
                     (end & TextEnd::Title) != 0);
        texts.remove_prefix(std::min(size + 1, texts.size()));
    }
}

void ListenerService::learn()
{
    abandonTask();
    if (!learnsWords())
        return;
    const auto isKnown = [this](const std::string &key) { return m_engine.knows(key); };
    const auto vocabulary = UserVocabulary::choose(std::exchange(m_counts, WordCounts()), isKnown);
    m_engine.learn(vocabulary);
    m_spelling.learn(vocabulary);
    malloc_trim(0); // learning needs more memory than what was learnt
}

ListenerMessage ListenerService::process(const ListenerMessage &audio)
{
    const auto samples = audio.samples();
    for (auto rest = std::span(samples); !rest.empty();) {
        const auto piece = rest.first(std::min(rest.size(), PieceSize));
        m_pause.update(piece);
        m_transcript.update(m_engine.process(piece), m_pause.isPause());
        rest = rest.subspan(piece.size());
    }
    auto text = m_transcript.text();
    if (text == m_lastText)
        return unchanged(audio);
    m_lastText = text;
    return { .kind = Kind::partial, .task = audio.task, .payload = std::move(text) };
}

ListenerMessage ListenerService::finish()
{
    m_transcript.finish(m_engine.finish());
    return { .kind = Kind::final,
             .task = *std::exchange(m_task, std::nullopt),
             .payload = m_transcript.text() };
}
