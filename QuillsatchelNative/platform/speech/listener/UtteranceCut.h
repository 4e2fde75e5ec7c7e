#pragma once

#include <pocketsphinx.h>
#include <string>

/// Where to split an utterance that is too long. Its decoder has ended it already.
struct UtteranceCut {
    std::string words; ///< the words before the cut
    int frame = 0;     ///< where the rest begins, in hundredths of a second
    bool isPause = false;

    /// In the latest pause of the last five seconds, otherwise between two words.
    static UtteranceCut find(ps_decoder_t *decoder, int frameCount);
};
