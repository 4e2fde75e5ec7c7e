#include "platform/speech/PulseMicrophone.h"

#include "platform/speech/AudioTap.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <span>

namespace
{

constexpr pa_sample_spec SampleSpec { .format = PA_SAMPLE_S16NE, .rate = 16'000, .channels = 1 };
constexpr std::uint32_t FragmentBytes = 1024 * sizeof(std::int16_t); // of 64 ms
constexpr auto Unset = static_cast<std::uint32_t>(-1);

using Operation = CPointer<pa_operation, &pa_operation_unref>;

/// Holds the lock of the main loop, as callbacks on the audio thread do.
class LoopLock
{
public:
    explicit LoopLock(pa_threaded_mainloop *loop)
        : m_loop(loop)
    {
        pa_threaded_mainloop_lock(m_loop);
    }

    LoopLock(const LoopLock &) = delete;
    LoopLock &operator=(const LoopLock &) = delete;

    ~LoopLock() { pa_threaded_mainloop_unlock(m_loop); }

private:
    pa_threaded_mainloop *m_loop;
};

} // namespace

std::unique_ptr<PulseMicrophone> PulseMicrophone::open(AudioTap &tap,
                                                       std::chrono::milliseconds limit)
{
    std::unique_ptr<PulseMicrophone> microphone(new PulseMicrophone(tap));
    return microphone->connect(limit) ? std::move(microphone) : nullptr;
}

PulseMicrophone::PulseMicrophone(AudioTap &tap)
    : m_tap(tap)
    , m_loop(pa_threaded_mainloop_new())
{
    if (m_loop)
        m_context.reset(pa_context_new(pa_threaded_mainloop_get_api(m_loop.get()), "Quillsatchel"));
}

PulseMicrophone::~PulseMicrophone()
{
    if (!m_loop)
        return;
    {
        const LoopLock lock(m_loop.get());
        if (m_stream) {
            pa_stream_set_state_callback(m_stream.get(), nullptr, nullptr);
            pa_stream_set_read_callback(m_stream.get(), nullptr, nullptr);
            pa_stream_disconnect(m_stream.get());
            m_stream.reset();
        }
        if (m_context) {
            pa_context_set_state_callback(m_context.get(), nullptr, nullptr);
            pa_context_set_subscribe_callback(m_context.get(), nullptr, nullptr);
            pa_context_disconnect(m_context.get());
            m_context.reset();
        }
    }
    pa_threaded_mainloop_stop(m_loop.get());
}

bool PulseMicrophone::connect(std::chrono::milliseconds limit)
{
    if (!m_context || pa_threaded_mainloop_start(m_loop.get()) < 0)
        return false;
    const LoopLock lock(m_loop.get());
    const auto timeOut = [](pa_mainloop_api *, pa_time_event *, const timeval *, void *self) {
        static_cast<PulseMicrophone *>(self)->m_hasTimedOut = true;
        static_cast<PulseMicrophone *>(self)->signal();
    };
    const pa_usec_t end =
        pa_rtclock_now() + static_cast<pa_usec_t>(limit.count()) * PA_USEC_PER_MSEC;
    auto *const alarm = pa_context_rttime_new(m_context.get(), end, timeOut, this);
    if (!alarm)
        return false;
    m_isOpen = connectToServer() && isDefaultSourceMicrophone() && watchSources() && record();
    pa_threaded_mainloop_get_api(m_loop.get())->time_free(alarm);
    return m_isOpen;
}

bool PulseMicrophone::connectToServer()
{
    const auto changed = [](pa_context *, void *self) {
        static_cast<PulseMicrophone *>(self)->signal();
    };
    pa_context_set_state_callback(m_context.get(), changed, this);
    // Do not start a server: the user may have stopped it.
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        return false;
    return waitFor([this] { return pa_context_get_state(m_context.get()) == PA_CONTEXT_READY; });
}

/// Without a microphone the default source is the monitor of the loudspeaker, or missing.
bool PulseMicrophone::isDefaultSourceMicrophone()
{
    const auto receive = [](pa_context *, const pa_source_info *source, int, void *self) {
        auto *const microphone = static_cast<PulseMicrophone *>(self);
        if (source)
            microphone->m_hasMicrophone = source->monitor_of_sink == PA_INVALID_INDEX;
        microphone->signal();
    };
    const Operation question(
        pa_context_get_source_info_by_name(m_context.get(), "@DEFAULT_SOURCE@", receive, this));
    if (!question)
        return false;
    const bool isAnswered = waitFor(
        [&question] { return pa_operation_get_state(question.get()) != PA_OPERATION_RUNNING; });
    pa_operation_cancel(question.get());
    return isAnswered && m_hasMicrophone;
}

// Some servers keep the stream of an unplugged source, which is silent then.
bool PulseMicrophone::watchSources()
{
    const auto changed = [](pa_context *, pa_subscription_event_type_t event, std::uint32_t source,
                            void *self) {
        if ((event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_REMOVE)
            static_cast<PulseMicrophone *>(self)->sourceRemoved(source);
    };
    pa_context_set_subscribe_callback(m_context.get(), changed, this);
    return Operation(pa_context_subscribe(m_context.get(), PA_SUBSCRIPTION_MASK_SOURCE, nullptr,
                                          nullptr)) != nullptr;
}

bool PulseMicrophone::record()
{
    // Mixers show this name.
    const auto name = QCoreApplication::translate("PulseMicrophone", "Dictation").toUtf8();
    m_stream.reset(pa_stream_new(m_context.get(), name.constData(), &SampleSpec, nullptr));
    if (!m_stream)
        return false;
    const auto changed = [](pa_stream *, void *self) {
        static_cast<PulseMicrophone *>(self)->streamChanged();
    };
    const auto read = [](pa_stream *, std::size_t, void *self) {
        static_cast<PulseMicrophone *>(self)->read();
    };
    pa_stream_set_state_callback(m_stream.get(), changed, this);
    pa_stream_set_read_callback(m_stream.get(), read, this);
    const pa_buffer_attr buffers { .maxlength = Unset,
                                   .tlength = Unset,
                                   .prebuf = Unset,
                                   .minreq = Unset,
                                   .fragsize = FragmentBytes };
    // Ends the stream if the source is unplugged. Otherwise it would move to the loudspeaker's
    // monitor.
    constexpr auto Flags =
        static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
    if (pa_stream_connect_record(m_stream.get(), nullptr, &buffers, Flags) < 0)
        return false;
    if (!waitFor([this] { return pa_stream_get_state(m_stream.get()) == PA_STREAM_READY; }))
        return false;
    m_source = pa_stream_get_device_index(m_stream.get());
    return true;
}

/// False after the timeout, and once the stream or the connection is lost.
template <typename Condition>
bool PulseMicrophone::waitFor(Condition isMet)
{
    while (!isMet()) {
        const bool isStreamLost =
            m_stream && !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get()));
        if (m_hasTimedOut || isStreamLost ||
            !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context.get())))
            return false;
        pa_threaded_mainloop_wait(m_loop.get());
    }
    return true;
}

void PulseMicrophone::streamChanged()
{
    if (m_isOpen && !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get())))
        fail();
    signal();
}

void PulseMicrophone::sourceRemoved(std::uint32_t source)
{
    if (m_isOpen && source == m_source)
        fail();
}

/// Reports once, although the stream may end a moment after its source.
void PulseMicrophone::fail()
{
    m_isOpen = false;
    pa_stream_set_read_callback(m_stream.get(), nullptr, nullptr);
    m_tap.fail();
}

void PulseMicrophone::read()
{
    while (pa_stream_readable_size(m_stream.get()) > 0) {
        const void *data = nullptr;
        std::size_t bytes = 0;
        if (pa_stream_peek(m_stream.get(), &data, &bytes) < 0 || bytes == 0)
            return;
        const auto count = bytes / sizeof(std::int16_t);
        if (data)
            m_tap.append(std::span(static_cast<const std::int16_t *>(data), count));
        else
            m_tap.appendSilence(count);
        pa_stream_drop(m_stream.get());
    }
}

void PulseMicrophone::signal()
{
    pa_threaded_mainloop_signal(m_loop.get(), 0);
}
