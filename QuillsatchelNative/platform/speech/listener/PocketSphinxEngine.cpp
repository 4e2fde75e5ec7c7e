#include "platform/speech/listener/PocketSphinxEngine.h"

#include "platform/speech/listener/AdaptedDictionary.h"
#include "platform/speech/listener/EnglishVocabulary.h"
#include "platform/speech/listener/EspeakVoice.h"
#include "platform/speech/listener/LanguageTag.h"
#include "platform/speech/listener/MemoryFile.h"
#include "platform/speech/listener/PairModel.h"
#include "platform/speech/listener/Require.h"
#include "platform/speech/listener/UtteranceCut.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace
{

using Path = std::filesystem::path;

constexpr int SampleRate = 16'000;
constexpr int FrameSize = SampleRate / 100; // samples; PocketSphinx counts in frames

constexpr std::size_t PreRoll = SampleRate / 2; // longer than it takes to detect speech
constexpr std::size_t AdaptationAudio = PreRoll + 2 * SampleRate; // less makes recognition worse
// Ending an utterance takes longer the longer it is, and cannot be interrupted.
constexpr std::size_t MaxUtterance = PreRoll + 15 * SampleRate;
constexpr int MaxDecodedAgain = 500; // frames

constexpr float UserModelWeight = 0.1F; // of 1, for all models

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

bool isComplete(const SpeechModel &model)
{
    const auto acoustic = model.path / model.tag;
    const auto hasPart = [&acoustic](const char *name) { return isFile(acoustic / name); };
    return hasPart("mdef") && hasPart("means") && hasPart("variances") &&
           hasPart("transition_matrices") && hasPart("feat.params") &&
           (hasPart("sendump") || hasPart("mixture_weights")) &&
           isFile(model.path / (model.tag + ".lm.bin")) && dictionaryIn(model.path);
}

/// Puts each added word into a class that may replace the similar word. Adding plain words instead
/// makes the library read past the end of the model.
void addClasses(ngram_model_t *model)
{
    for (const auto &word : EnglishVocabulary::addedWords()) {
        if (ngram_wid(model, word.like) == ngram_unknown_wid(model))
            continue;
        std::string spelling = word.spelling;
        auto *spellings = spelling.data();
        constexpr float Weight = 0.99F; // the library takes 1 for "no weight"
        ngram_model_add_class(model, word.like, Weight, &spellings, &Weight, 1);
    }
}

CPointer<ngram_model_t, &ngram_model_free> readModel(ps_decoder_t *decoder, const std::string &path,
                                                     ngram_file_type_t type)
{
    return CPointer<ngram_model_t, &ngram_model_free>(
        ngram_model_read(ps_get_config(decoder), path.c_str(), type, ps_get_logmath(decoder)));
}

} // namespace

std::optional<SpeechModel> PocketSphinxEngine::find(const SpeechModels &models,
                                                    std::string_view tag)
{
    return models.find(ModelFolder, tag, isComplete);
}

std::unique_ptr<RecognitionEngine> PocketSphinxEngine::load(const SpeechModel &model)
{
    auto dictionary = dictionaryIn(model.path).value_or(Path());
    std::optional<MemoryFile> adapted;
    if (isEnglish(model.tag))
        adapted.emplace(adaptedDictionary(dictionary));
    if (adapted && adapted->isComplete())
        dictionary = adapted->path();
    auto decoder = PocketSphinxVersion::makeDecoder(model.path / model.tag, dictionary);
    if (!decoder)
        return nullptr;
    auto generalModel = readModel(decoder.get(), model.path / (model.tag + ".lm.bin"), NGRAM_AUTO);
    if (!generalModel)
        return nullptr;
    if (isEnglish(model.tag))
        addClasses(generalModel.get());
    auto gate = PocketSphinxVersion::makeSpeechGate(decoder.get());
    if (!gate)
        return nullptr;
    return std::unique_ptr<RecognitionEngine>(
        new PocketSphinxEngine(std::move(decoder), std::move(generalModel), std::move(gate)));
}

PocketSphinxEngine::PocketSphinxEngine(Decoder decoder, LanguageModel generalModel,
                                       std::unique_ptr<SpeechGate> gate)
    : m_decoder(std::move(decoder))
    , m_generalModel(std::move(generalModel))
    , m_gate(std::move(gate))
{
}

bool PocketSphinxEngine::knows(const std::string &key) const
{
    const CPointer<char, &std::free> phones(ps_lookup_word(m_decoder.get(), key.c_str()));
    return phones && !m_triedWords.contains(key);
}

void PocketSphinxEngine::learn(const UserVocabulary &vocabulary)
{
    // PocketSphinx adds words to its language model too, but incorrectly.
    PocketSphinxVersion::removeLanguageModel(m_decoder.get());
    m_usesModels = false;
    m_userModel.reset();
    addWords(vocabulary);
    const auto text = pairModel(vocabulary);
    const MemoryFile file(text);
    if (!text.empty() && file.isComplete())
        m_userModel = readModel(m_decoder.get(), file.path(), NGRAM_ARPA);
}

/// Words stay in the dictionary, but only those in a language model are recognised.
void PocketSphinxEngine::addWords(const UserVocabulary &vocabulary)
{
    std::optional<EspeakVoice> voice;
    for (const auto &word : vocabulary.words) {
        if (!word.isNew || EnglishVocabulary::isExcluded(word.key) ||
            !m_triedWords.insert(word.key).second)
            continue;
        if (!voice && !(voice = EspeakVoice::open()))
            return;
        if (const auto phones = voice->pronounce(word.spelling))
            ps_add_word(m_decoder.get(), word.key.c_str(), phones->c_str(), FALSE);
    }
}

void PocketSphinxEngine::useModels()
{
    if (std::exchange(m_usesModels, true))
        return;
    if (!m_userModel) {
        require(PocketSphinxVersion::setLanguageModel(m_decoder.get(), m_generalModel.get()));
        return;
    }
    std::array models { m_generalModel.get(), m_userModel.get() };
    std::string general = "general";
    std::string user = "user";
    std::array names { general.data(), user.data() };
    constexpr std::array Weights { 1 - UserModelWeight, UserModelWeight };
    const LanguageModel both(ngram_model_set_init(ps_get_config(m_decoder.get()), models.data(),
                                                  names.data(), Weights.data(), models.size()));
    require(both && PocketSphinxVersion::setLanguageModel(m_decoder.get(), both.get()));
}

void PocketSphinxEngine::begin()
{
    useModels();
    require(ps_start_stream(m_decoder.get()) == 0);
    m_gate->reset();
    startUtterance();
}

Hypothesis PocketSphinxEngine::process(std::span<const std::int16_t> samples)
{
    const auto passed = m_gate->pass(samples);
    m_audio.insert(m_audio.end(), passed.begin(), passed.end());
    decode(passed);
    if (!m_gate->isOpen())
        return m_hasSpeech ? afterSpeech() : beforeSpeech();
    m_hasSpeech = true;
    if (m_audio.size() >= MaxUtterance)
        return cutUtterance();
    if (m_audio.size() >= AdaptationAudio)
        adaptToMicrophone();
    return { .words = words() };
}

Hypothesis PocketSphinxEngine::beforeSpeech()
{
    if (m_audio.size() > PreRoll)
        m_audio.erase(m_audio.begin(), m_audio.end() - PreRoll);
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
    if (m_hasSpeech)
        adaptToMicrophone();
    return finalWords();
}

void PocketSphinxEngine::abandon()
{
    finalWords();
}

std::string PocketSphinxEngine::finalWords()
{
    endUtterance();
    auto hypothesis = m_hasSpeech ? words() : std::string();
    m_isAdapted = m_isAdapted || !hypothesis.empty(); // noise does not count
    return hypothesis;
}

/// PocketSphinx adapts to the microphone at the end of an utterance. Decoding the first one twice
/// avoids about a third of its word errors.
void PocketSphinxEngine::adaptToMicrophone()
{
    if (m_isAdapted || std::exchange(m_isDecodedTwice, true))
        return;
    endUtterance();
    require(ps_start_utt(m_decoder.get()) == 0);
    decode(m_audio);
}

Hypothesis PocketSphinxEngine::cutUtterance()
{
    endUtterance();
    const int frameCount = ps_get_n_frames(m_decoder.get());
    const auto cut = UtteranceCut::find(m_decoder.get(), frameCount);
    const int rest = std::min(frameCount - cut.frame, MaxDecodedAgain) * FrameSize;
    m_audio.erase(m_audio.begin(), std::prev(m_audio.end(), rest));
    auto audio = std::exchange(m_audio, {});
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
    m_isDecodedTwice = false;
}

void PocketSphinxEngine::decode(std::span<const std::int16_t> samples)
{
    if (!samples.empty())
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
