#pragma once

#include <cstdint>
#include <functional>
#include <span>

/// Captures what the microphone hears: 16,000 samples a second, one channel. Main thread only.
class AudioEngine
{
public:
    virtual ~AudioEngine() = default;

    /// Where captured audio goes, on the audio thread.
    struct Tap {
        /// Gets every buffer of `bufferSize` samples.
        std::function<void(std::span<const std::int16_t>)> append;
        /// The microphone has gone, or what serves it; nothing more will come.
        std::function<void()> fail;
    };

    /// One tap at a time: another takes the place of the first.
    virtual void installTap(int bufferSize, Tap tap) = 0;
    /// The tap is not called any more once this has returned.
    virtual void removeTap() = 0;

    /// Opens the microphone, if it is not open already; false if there is none or it cannot be had.
    /// Never waits long.
    virtual bool start() = 0;
    /// Closes the microphone; nothing happens where it is not open.
    virtual void stop() = 0;
    virtual bool isRunning() const = 0;
};
