#include "platform/speech/listener/PocketSphinxEngine.h"

#include "platform/speech/listener/EnglishVocabulary.h"
#include "platform/speech/listener/MemoryFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sphinxbase/err.h>
#include <sphinxbase/ngram_model.h>
#include <string_view>
#include <system_error>
#include <utility>

namespace
{

using Path = std::filesystem::path;

constexpr int SampleRate = 16'000;
constexpr int FrameSize = SampleRate / 100; // samples; PocketSphinx counts in frames

constexpr std::size_t BeforeSpeech = SampleRate / 2; // more than it takes to notice speech
constexpr std::size_t EnoughToKnowMicrophone = BeforeSpeech + 2 * SampleRate; // less does harm
// The last step of an utterance takes a time that grows with it, and cannot be interrupted.
constexpr std::size_t LongestUtterance = BeforeSpeech + 15 * SampleRate;
constexpr int MostAfterCut = 500;  // frames, where the speaker pauses
constexpr int LeastAfterCut = 100; // frames: the latest words may yet change
constexpr int ShortestPause = 5;   // frames

/// For what cannot go on: the program begins anew with another process.
void require(bool isDone)
{
    if (!isDone)
        std::_Exit(EXIT_FAILURE);
}

bool isFile(const Path &path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) &&
           std::filesystem::file_size(path, error) > 0;
}

std::optional<Path> dictionaryIn(const Path &folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto extension = entry->path().extension();
        if ((extension == ".dict" || extension == ".dic") && isFile(entry->path()))
            return entry->path();
    }
    return std::nullopt;
}

bool isEnglish(const SpeechModel &model)
{
    return model.tag == "en" || model.tag.starts_with("en-");
}

/// The word of a line "WORD PHONES" or, for its further pronunciations, "WORD(2) PHONES".
std::string_view wordOf(std::string_view line)
{
    return line.substr(0, line.find_first_of("( \t"));
}

bool isAdded(std::string_view word)
{
    const auto added = EnglishVocabulary::addedWords();
    return std::any_of(added.begin(), added.end(), [word](const EnglishVocabulary::Word &other) {
        return other.spelling == word;
    });
}

/// The dictionary without the words that are left out, and with those that are added: a few of them
/// are in it, but not in the language model, and could never be recognised.
std::string ownDictionary(const Path &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string text { std::istreambuf_iterator(file), {} };
    std::string own;
    own.reserve(text.size());
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const auto line = std::string_view(text).substr(begin, end - begin);
        const auto word = wordOf(line);
        if (!EnglishVocabulary::isLeftOut(word) && !isAdded(word))
            own += line;
        begin = end;
    }
    for (const auto &word : EnglishVocabulary::addedWords())
        (((own += '\n') += word.spelling) += ' ') += word.phones;
    return own;
}

/// Each added word gets a class of its own, which stands where the word it is like stands. To add
/// it as a word is no way: the library then reads past the end of the model.
void addWords(ngram_model_t *model)
{
    for (const auto &word : EnglishVocabulary::addedWords()) {
        if (ngram_wid(model, word.like) == ngram_unknown_wid(model))
            continue;
        std::string spelling = word.spelling;
        auto *spellings = spelling.data();
        constexpr float Weight = 0.99F; // of one, the library thinks that it is none
        ngram_model_add_class(model, word.like, Weight, &spellings, &Weight, 1);
    }
}

bool loadLanguageModel(ps_decoder_t *decoder, cmd_ln_t *config, const SpeechModel &model)
{
    const auto path = model.folder / (model.tag + ".lm.bin");
    auto *const language =
        ngram_model_read(config, path.c_str(), NGRAM_AUTO, ps_get_logmath(decoder));
    if (!language)
        return false;
    if (isEnglish(model))
        addWords(language);
    const bool isSet = ps_set_lm(decoder, "dictation", language) == 0;
    ngram_model_free(language);
    return isSet && ps_set_search(decoder, "dictation") == 0;
}

bool isWord(std::string_view segment)
{
    return !segment.empty() &&
           std::string_view("<[+").find(segment.front()) == std::string_view::npos;
}

/// What precedes a place in an utterance where it can be cut in two.
struct Cut {
    std::string words;
    int frame = 0;
    bool isPause = false;
};

/// In the latest pause, if there is one not long ago, or else between two words.
Cut findCut(ps_decoder_t *decoder, int frameCount)
{
    Cut best;
    std::string words;
    for (auto *segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
        int begin = 0;
        int end = 0;
        ps_seg_frames(segment, &begin, &end);
        const std::string_view text = ps_seg_word(segment);
        const bool isPause = !isWord(text) && end - begin >= ShortestPause;
        if (isWord(text))
            (words += words.empty() ? "" : " ") += wordOf(text);
        const int frame = isPause ? (begin + end) / 2 : end + 1;
        if (frame > frameCount - LeastAfterCut) {
            ps_seg_free(segment);
            break;
        }
        if (isPause ? frame >= frameCount - MostAfterCut : !best.isPause)
            best = { .words = words, .frame = frame, .isPause = isPause };
    }
    return best;
}

} // namespace

bool PocketSphinxEngine::isComplete(const SpeechModel &model)
{
    const auto acoustic = model.folder / model.tag;
    const auto hasPart = [&acoustic](const char *name) { return isFile(acoustic / name); };
    return hasPart("mdef") && hasPart("means") && hasPart("variances") &&
           hasPart("transition_matrices") && hasPart("feat.params") &&
           (hasPart("sendump") || hasPart("mixture_weights")) &&
           isFile(model.folder / (model.tag + ".lm.bin")) && dictionaryIn(model.folder);
}

std::unique_ptr<RecognitionEngine> PocketSphinxEngine::load(const SpeechModel &model)
{
    err_set_logfp(nullptr);
    const auto acoustic = model.folder / model.tag;
    auto dictionary = dictionaryIn(model.folder).value_or(Path());
    std::optional<MemoryFile> own;
    if (isEnglish(model))
        own.emplace(ownDictionary(dictionary));
    if (own && own->isWhole())
        dictionary = own->path();
    // The beams are wider than usual and the pause that ends an utterance is shorter: with both,
    // fewer words are misunderstood.
    const Config config(cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", acoustic.c_str(), "-dict",
                                    dictionary.c_str(), "-beam", "1e-60", "-wbeam", "1e-40",
                                    "-pbeam", "1e-60", "-vad_postspeech", "30", nullptr));
    Decoder decoder(config ? ps_init(config.get()) : nullptr);
    if (!decoder || !loadLanguageModel(decoder.get(), config.get(), model))
        return nullptr;
    return std::unique_ptr<RecognitionEngine>(new PocketSphinxEngine(std::move(decoder)));
}

PocketSphinxEngine::PocketSphinxEngine(Decoder decoder)
    : m_decoder(std::move(decoder))
{
}

void PocketSphinxEngine::begin()
{
    require(ps_start_stream(m_decoder.get()) == 0);
    startUtterance();
}

Hypothesis PocketSphinxEngine::hear(std::span<const std::int16_t> samples)
{
    m_audio.insert(m_audio.end(), samples.begin(), samples.end());
    decode(samples);
    if (!ps_get_in_speech(m_decoder.get()))
        return m_hasSpeech ? afterSpeech() : beforeSpeech();
    m_hasSpeech = true;
    if (m_audio.size() >= LongestUtterance)
        return cutUtterance();
    if (!m_knowsMicrophone && m_audio.size() >= EnoughToKnowMicrophone)
        getToKnowMicrophone();
    return { .words = words() };
}

Hypothesis PocketSphinxEngine::beforeSpeech()
{
    if (m_audio.size() > BeforeSpeech)
        m_audio.erase(m_audio.begin(), m_audio.end() - BeforeSpeech);
    return {};
}

Hypothesis PocketSphinxEngine::afterSpeech()
{
    Hypothesis hypothesis { .words = finish(), .isUtteranceOver = true };
    startUtterance();
    return hypothesis;
}

std::string PocketSphinxEngine::finish()
{
    if (m_hasSpeech && !m_knowsMicrophone)
        getToKnowMicrophone();
    endUtterance();
    return m_hasSpeech ? words() : std::string();
}

/// How a microphone sounds is learnt at the end of an utterance, so the very first one is heard
/// twice: one word in three that would be misunderstood in it is not.
void PocketSphinxEngine::getToKnowMicrophone()
{
    m_knowsMicrophone = true;
    endUtterance();
    require(ps_start_utt(m_decoder.get()) == 0);
    decode(m_audio);
}

Hypothesis PocketSphinxEngine::cutUtterance()
{
    endUtterance();
    const int frameCount = ps_get_n_frames(m_decoder.get());
    const auto cut = findCut(m_decoder.get(), frameCount);
    const int rest = std::min(frameCount - cut.frame, MostAfterCut) * FrameSize;
    std::vector<std::int16_t> audio(std::prev(m_audio.end(), rest), m_audio.end());
    startUtterance();
    decode(audio);
    m_audio = std::move(audio);
    m_hasSpeech = true;
    return { .words = cut.words, .isUtteranceOver = true };
}

void PocketSphinxEngine::startUtterance()
{
    require(ps_start_utt(m_decoder.get()) == 0);
    m_audio.clear();
    m_hasSpeech = false;
}

void PocketSphinxEngine::decode(std::span<const std::int16_t> samples)
{
    require(ps_process_raw(m_decoder.get(), samples.data(), samples.size(), FALSE, FALSE) >= 0);
}

void PocketSphinxEngine::endUtterance()
{
    require(ps_end_utt(m_decoder.get()) == 0);
}

std::string PocketSphinxEngine::words() const
{
    const auto *const words = ps_get_hyp(m_decoder.get(), nullptr);
    return words ? words : "";
}
