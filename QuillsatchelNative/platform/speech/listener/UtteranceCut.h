#pragma once

#include <pocketsphinx.h>
#include <string>

/// A place where an utterance that has ended, but was not over, can be cut in two.
struct UtteranceCut {
    std::string words; ///< what was said before it
    int frame = 0;     ///< where what follows begins, in hundredths of a second
    bool isPause = false;

    /// In the latest pause, if there is one not long ago, or else between two words.
    static UtteranceCut find(ps_decoder_t *decoder, int frameCount);
};
