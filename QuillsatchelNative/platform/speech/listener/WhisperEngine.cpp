#include "platform/speech/listener/WhisperEngine.h"

#include "platform/speech/listener/LanguageTag.h"
#include "platform/speech/listener/Require.h"
#include "platform/speech/listener/VoiceActivityGate.h"
#include "platform/speech/listener/WhisperModelFile.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <ggml-backend.h>
#include <numeric>
#include <system_error>
#include <thread>
#include <utility>

namespace
{

using Path = std::filesystem::path;
using Clock = std::chrono::steady_clock;

constexpr std::size_t Second = WHISPER_SAMPLE_RATE; // in samples

constexpr std::size_t MinAudio = Second * 11 / 10; // the library ignores less than a second
constexpr std::size_t MaxAudio = 25 * Second;      // the library decodes 30 seconds at a time
constexpr std::size_t CutRange = 5 * Second;       // at the end of an utterance that is too long
constexpr std::size_t MaxPause = Second * 6 / 10;  // within an utterance
constexpr std::size_t MinInterval = Second;        // of passes while the voice goes on

// More tokens than anybody says in that time. The decoder may repeat words without end.
constexpr std::size_t MinTokens = 16;
constexpr std::size_t SamplesPerToken = Second / 10;

/// As whisper.cpp names it.
std::string languageName(std::string_view tag)
{
    const auto language = languageOf(tag);
    return std::string(language == "nb" ? "no" : language);
}

bool isModelFor(std::string_view tag, const Path &path)
{
    const auto name = path.filename().string();
    std::error_code error;
    if (!name.starts_with("ggml-") || !name.ends_with(".bin") ||
        !std::filesystem::is_regular_file(path, error))
        return false;
    std::ifstream file(path, std::ios::binary);
    const auto model = WhisperModelFile::read(file);
    const auto language = whisper_lang_id(languageName(tag).c_str());
    return model && language >= 0 && language < model->languageCount;
}

/// Loads the variant of the library for this processor.
void loadBackEnds()
{
    std::error_code error;
    std::filesystem::current_path("/", error); // the library also loads those in the working folder
    ggml_backend_load_all();
}

/// Half of the processor's threads: often two share a core, and waiting for a thread that another
/// program delays is slower than doing without it.
int threadCount()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency() / 2, 1U, 4U));
}

/// The words that both texts begin with.
std::string commonBeginning(std::string text, std::string other)
{
    text += ' ';
    other += ' ';
    const auto difference = std::mismatch(text.begin(), text.end(), other.begin(), other.end());
    text.erase(difference.first, text.end());
    const auto end = text.rfind(' ');
    return end == std::string::npos ? std::string() : text.substr(0, end);
}

/// Where the audio is quietest in its last seconds; an index.
std::size_t quietestPlace(std::span<const float> audio)
{
    constexpr std::size_t Window = Second * 3 / 100;
    const auto loudness = [audio](std::size_t begin) {
        const auto window = audio.subspan(begin, Window);
        return std::inner_product(window.begin(), window.end(), window.begin(), 0.0F);
    };
    auto quietest = audio.size() - CutRange;
    for (auto begin = quietest; begin + Window <= audio.size(); begin += Window) {
        if (loudness(begin) < loudness(quietest))
            quietest = begin;
    }
    return quietest + Window / 2;
}

whisper_full_params parameters(std::size_t sampleCount)
{
    auto parameters = whisper_full_default_params(WHISPER_SAMPLING_GREEDY);
    parameters.n_threads = threadCount();
    parameters.no_context = true;
    parameters.no_timestamps = true;
    parameters.single_segment = true;
    parameters.suppress_nst = true; // such as "(music)"
    parameters.temperature_inc = 0; // decodes once: repeating a doubtful pass takes too long
    parameters.max_tokens = static_cast<int>(MinTokens + sampleCount / SamplesPerToken);
    parameters.print_progress = false;
    return parameters;
}

} // namespace

std::optional<SpeechModel> WhisperEngine::find(const SpeechModels &models, std::string_view tag)
{
    auto path =
        models.findFile(ModelFolder, [tag](const Path &file) { return isModelFor(tag, file); });
    if (!path)
        return std::nullopt;
    return SpeechModel { .path = std::move(*path), .tag = std::string(tag) };
}

std::unique_ptr<RecognitionEngine> WhisperEngine::load(const SpeechModel &model)
{
    whisper_log_set([](ggml_log_level, const char *, void *) {}, nullptr);
    loadBackEnds();
    auto contextParameters = whisper_context_default_params();
    contextParameters.use_gpu = false;
    Context context(whisper_init_from_file_with_params(model.path.c_str(), contextParameters));
    auto gate = VoiceActivityGate::make();
    if (!context || !gate)
        return nullptr;
    return std::unique_ptr<RecognitionEngine>(
        new WhisperEngine(std::move(context), languageName(model.tag), std::move(gate)));
}

WhisperEngine::WhisperEngine(Context context, std::string language,
                             std::unique_ptr<SpeechGate> gate)
    : m_context(std::move(context))
    , m_language(std::move(language))
    , m_gate(std::move(gate))
{
}

void WhisperEngine::begin()
{
    m_gate->reset();
    startUtterance();
}

Hypothesis WhisperEngine::process(std::span<const std::int16_t> samples)
{
    constexpr float Scale = 1.0F / 32'768;
    for (const auto sample : m_gate->pass(samples))
        m_audio.push_back(Scale * static_cast<float>(sample));
    if (m_gate->isOpen())
        return duringSpeech();
    return m_audio.empty() ? Hypothesis() : duringPause(samples.size());
}

Hypothesis WhisperEngine::duringSpeech()
{
    m_pauseLength = 0;
    if (m_audio.size() >= MaxAudio)
        return cutUtterance();
    if (m_audio.size() - m_decodedSize >= std::max(MinInterval, m_interval)) {
        const auto before = m_text;
        decodeUtterance();
        m_steadyText = commonBeginning(before, m_text);
    }
    return { .words = m_steadyText };
}

/// A pass at the beginning of a pause shows the last words, even if the utterance goes on.
Hypothesis WhisperEngine::duringPause(std::size_t sampleCount)
{
    m_pauseLength += sampleCount;
    const bool isOver = m_pauseLength >= MaxPause;
    const auto rest = m_audio.size() - m_decodedSize;
    if (rest > 0 && (isOver || rest >= m_interval)) {
        decodeUtterance();
        m_steadyText = m_text;
    }
    Hypothesis hypothesis { .words = m_steadyText, .isUtteranceOver = isOver };
    if (isOver)
        startUtterance();
    return hypothesis;
}

void WhisperEngine::decodeUtterance()
{
    const auto begin = Clock::now();
    m_text = decode(m_audio);
    m_decodedSize = m_audio.size();
    const std::chrono::duration<double> duration = Clock::now() - begin;
    // At most half of the time, so that a slow machine does not fall behind.
    m_interval = static_cast<std::size_t>(2 * duration.count() * Second);
}

Hypothesis WhisperEngine::cutUtterance()
{
    const auto size = quietestPlace(m_audio);
    const auto audio = std::exchange(m_audio, {});
    startUtterance();
    m_audio.assign(audio.begin() + static_cast<std::ptrdiff_t>(size), audio.end());
    return { .words = decode(std::span(audio).first(size)), .isUtteranceOver = true };
}

std::string WhisperEngine::finish()
{
    if (m_decodedSize < m_audio.size())
        decodeUtterance();
    auto text = std::move(m_text);
    startUtterance();
    return text;
}

void WhisperEngine::abandon()
{
    startUtterance();
}

void WhisperEngine::startUtterance()
{
    m_audio.clear();
    m_text.clear();
    m_steadyText.clear();
    m_decodedSize = 0;
    m_pauseLength = 0;
}

std::string WhisperEngine::decode(std::span<const float> audio) const
{
    std::vector<float> padded(audio.begin(), audio.end());
    padded.resize(std::max(audio.size(), MinAudio));
    auto settings = parameters(audio.size());
    settings.language = m_language.c_str();
    require(whisper_full(m_context.get(), settings, padded.data(),
                         static_cast<int>(padded.size())) == 0);
    std::string text;
    for (int index = 0; index < whisper_full_n_segments(m_context.get()); ++index)
        text += whisper_full_get_segment_text(m_context.get(), index);
    return text;
}
