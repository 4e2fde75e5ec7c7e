#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SteadyPrefix.h"

#include <string>
#include <string_view>

/// The text of one dictation: the finished utterances and the steady words of the current one.
class Transcript
{
public:
    /// `tag` is the tag of the language.
    explicit Transcript(std::string_view tag);

    void update(const Hypothesis &hypothesis);
    /// Ends the current utterance with its final `words`.
    void finish(const std::string &words);

    std::string text() const;

private:
    SteadyPrefix::Words wordsIn(const std::string &text) const;

    bool m_isEnglish;
    SteadyPrefix::Words m_finished;
    SteadyPrefix::Words m_current;
    SteadyPrefix m_steady;
};
