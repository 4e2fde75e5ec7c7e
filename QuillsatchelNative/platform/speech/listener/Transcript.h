#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/Spelling.h"
#include "platform/speech/listener/SteadyPrefix.h"

#include <string>

/// The text of one dictation: the finished utterances and the steady words of the current one.
class Transcript
{
public:
    /// `spelling` must outlive the transcript.
    explicit Transcript(const Spelling &spelling);

    void update(const Hypothesis &hypothesis);
    /// Ends the current utterance with its final `words`.
    void finish(const std::string &words);

    std::string text() const;

private:
    SteadyPrefix::Words wordsIn(const std::string &text) const;

    const Spelling *m_spelling;
    SteadyPrefix::Words m_finished;
    SteadyPrefix::Words m_current;
    SteadyPrefix m_steady;
};
