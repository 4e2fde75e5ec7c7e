#pragma once

#include "platform/speech/listener/UserVocabulary.h"

#include <cstdint>
#include <span>
#include <string>

/// What an engine understood of the current utterance, which began after the last pause.
struct Hypothesis {
    std::string words;            ///< UTF-8, with single spaces between them, or a text
    bool isUtteranceOver = false; ///< the words are final, and a new utterance follows
};

/// Turns audio into words: 16,000 samples a second, one channel. It may block, and it may end the
/// process on an error that it cannot recover from: the program starts a new listener.
class RecognitionEngine
{
public:
    virtual ~RecognitionEngine() = default;

    /// Whether the engine writes a text, with capitals, punctuation and the space before each
    /// utterance. It then returns only words that it will hardly change, and learns none.
    virtual bool writesText() const { return false; }

    /// Whether the model has the word with this TextWords::Word::key.
    virtual bool knows(const std::string & /*key*/) const { return true; }

    /// Recognises these words too from the next dictation on, and prefers these pairs, instead of
    /// those learnt before. No dictation is running. Only for English models.
    virtual void learn(const UserVocabulary & /*vocabulary*/) {}

    /// Begins a dictation. The one before has been finished or abandoned.
    virtual void begin() = 0;
    virtual Hypothesis process(std::span<const std::int16_t> samples) = 0;
    /// Ends the dictation and returns the words of the current utterance.
    virtual std::string finish() = 0;

    /// Ends the dictation if its words are not needed.
    virtual void abandon() { finish(); }
};
