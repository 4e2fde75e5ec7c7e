#include "platform/speech/listener/UtteranceCut.h"

#include "support/CPointer.h"

#include <optional>
#include <string_view>

namespace
{

using Segment = CPointer<ps_seg_t, &ps_seg_free>;

constexpr int MaxAfterPause = 500; // frames
constexpr int MinAfterCut = 100;   // frames; the latest words may still change
constexpr int MinPause = 5;        // frames

/// False for silence and noises.
bool isWord(std::string_view segment)
{
    return segment.find_first_of("<[+") != 0;
}

/// Removes the number of another pronunciation, as in "read(2)".
std::string_view spelling(std::string_view segment)
{
    return segment.substr(0, segment.find('('));
}

} // namespace

UtteranceCut UtteranceCut::find(ps_decoder_t *decoder, int frameCount)
{
    UtteranceCut best;
    std::string words;
    std::optional<int> first; // frame numbers start with the dictation
    for (Segment segment(ps_seg_iter(decoder)); segment;
         segment.reset(ps_seg_next(segment.release()))) {
        int begin = 0;
        int end = 0;
        ps_seg_frames(segment.get(), &begin, &end);
        first = first.value_or(begin);
        const std::string_view text = ps_seg_word(segment.get());
        const bool isPause = !isWord(text) && end - begin >= MinPause;
        if (isWord(text))
            (words += words.empty() ? "" : " ") += spelling(text);
        const int frame = (isPause ? (begin + end) / 2 : end + 1) - *first;
        if (frame > frameCount - MinAfterCut)
            break;
        if (isPause ? frame >= frameCount - MaxAfterPause : !best.isPause)
            best = { .words = words, .frame = frame, .isPause = isPause };
    }
    return best;
}
