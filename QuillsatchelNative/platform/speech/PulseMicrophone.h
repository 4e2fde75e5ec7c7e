#pragma once

#include "support/CPointer.h"

#include <pulse/pulseaudio.h>

#include <chrono>
#include <cstdint>
#include <memory>

class AudioTap;

/// The user's microphone, open as long as this object: a recording of the PulseAudio server's
/// default source, which PipeWire offers too.
class PulseMicrophone
{
public:
    /// Null if there is no server or no microphone, or if that takes longer than `limit`. `tap`
    /// outlives the microphone and is called on the audio thread.
    static std::unique_ptr<PulseMicrophone> open(AudioTap &tap, std::chrono::milliseconds limit);

    PulseMicrophone(const PulseMicrophone &) = delete;
    PulseMicrophone &operator=(const PulseMicrophone &) = delete;
    ~PulseMicrophone();

private:
    explicit PulseMicrophone(AudioTap &tap);

    bool connect(std::chrono::milliseconds limit);
    bool connectToServer();
    bool findsMicrophone();
    bool watchSources();
    bool record();
    template <typename Condition>
    bool waitFor(Condition isMet);

    // These are called on the audio thread, which then holds the main loop's lock.
    void streamChanged();
    void sourceRemoved(std::uint32_t source);
    void fail();
    void read();
    void signal();

    AudioTap &m_tap;
    CPointer<pa_threaded_mainloop, &pa_threaded_mainloop_free> m_loop;
    CPointer<pa_context, &pa_context_unref> m_context;
    CPointer<pa_stream, &pa_stream_unref> m_stream;
    std::uint32_t m_source = PA_INVALID_INDEX;
    bool m_isOpen = false;
    bool m_isTooLate = false;
    bool m_hasMicrophone = false;
};
