#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/Spelling.h"
#include "platform/speech/listener/SteadyPrefix.h"

#include <string>

/// The text of one dictation: the finished utterances and the steady words of the current one, or
/// all its words in a pause.
class Transcript
{
public:
    /// `spelling` must outlive the transcript. Null if the engine writes a text.
    explicit Transcript(const Spelling *spelling);

    /// `isPause` says whether the voice pauses after the words of the hypothesis.
    void update(const Hypothesis &hypothesis, bool isPause = false);
    /// Ends the current utterance with its final `words`.
    void finish(const std::string &words);

    std::string text() const;

private:
    void updateCurrent(const SteadyPrefix::Words &words, bool isPause);
    SteadyPrefix::Words wordsIn(const std::string &text) const;

    const Spelling *m_spelling;
    SteadyPrefix::Words m_finished;
    SteadyPrefix::Words m_current;
    SteadyPrefix m_steady;
};
