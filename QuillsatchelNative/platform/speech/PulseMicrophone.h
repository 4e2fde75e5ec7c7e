#pragma once

#include "support/CPointer.h"

#include <pulse/pulseaudio.h>

#include <chrono>
#include <cstdint>
#include <memory>

class AudioTap;

/// A recording of the default source of the PulseAudio or PipeWire server, which lasts as long as
/// this object.
class PulseMicrophone
{
public:
    /// Null without a server or a microphone, or if opening takes longer than `limit`. `tap`
    /// outlives the microphone and is called on the audio thread.
    static std::unique_ptr<PulseMicrophone> open(AudioTap &tap, std::chrono::milliseconds limit);

    PulseMicrophone(const PulseMicrophone &) = delete;
    PulseMicrophone &operator=(const PulseMicrophone &) = delete;
    ~PulseMicrophone();

private:
    explicit PulseMicrophone(AudioTap &tap);

    bool connect(std::chrono::milliseconds limit);
    bool connectToServer();
    bool isDefaultSourceMicrophone();
    bool watchSources();
    bool record();
    template <typename Condition>
    bool waitFor(Condition isMet);

    // Called on the audio thread, which holds the lock of the main loop.
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
    bool m_hasTimedOut = false;
    bool m_hasMicrophone = false;
};
