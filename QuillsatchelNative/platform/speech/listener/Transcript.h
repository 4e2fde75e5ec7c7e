#pragma once

#include "platform/speech/listener/RecognitionEngine.h"
#include "platform/speech/listener/SteadyPrefix.h"

#include <string>
#include <string_view>

/// All that was said in one dictation: the utterances that are over, and what is steady of the one
/// under way.
class Transcript
{
public:
    /// `tag` is that of the language.
    explicit Transcript(std::string_view tag);

    void update(const Hypothesis &hypothesis);
    /// The dictation is over; these are the last utterance's words.
    void finish(const std::string &words);

    std::string text() const;

private:
    SteadyPrefix::Words wordsIn(const std::string &text) const;

    bool m_isEnglish;
    SteadyPrefix::Words m_said;
    SteadyPrefix::Words m_underWay;
    SteadyPrefix m_steady;
};
