#pragma once

#include <cstdint>
#include <span>
#include <string>

/// What an engine understood of the utterance under way: of what was said since the last pause.
struct Hypothesis {
    std::string words;            ///< UTF-8, with single spaces between them
    bool isUtteranceOver = false; ///< they will not change, and what follows is another utterance
};

/// Turns audio into words: 16,000 samples a second, one channel. What goes wrong for good may end
/// the process: the program survives its listener.
class RecognitionEngine
{
public:
    virtual ~RecognitionEngine() = default;

    /// Begins a dictation; an earlier one has been finished.
    virtual void begin() = 0;
    virtual Hypothesis hear(std::span<const std::int16_t> samples) = 0;
    /// Ends the dictation; gives the words of the utterance under way, if there is one.
    virtual std::string finish() = 0;
};
