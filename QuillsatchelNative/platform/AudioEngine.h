#pragma once

#include <cstdint>
#include <functional>
#include <span>

/// Captures the microphone: 16,000 samples per second, one channel. Call its
/// functions on the main thread only.
class AudioEngine
{
public:
    virtual ~AudioEngine() = default;

    /// Called on the audio thread.
    struct Tap {
        /// With each buffer, which has exactly `bufferSize` samples.
        std::function<void(std::span<const std::int16_t>)> append;
        /// When the microphone or the sound server disappears; no audio follows.
        std::function<void()> fail;
    };

    /// Installs a tap in place of any previous one.
    virtual void installTap(int bufferSize, Tap tap) = 0;
    /// Waits for a running call; afterwards the tap is not called again.
    virtual void removeTap() = 0;

    /// Opens the microphone if it is not open yet. Returns false if it is missing or cannot be
    /// opened.
    virtual bool start() = 0;
    /// Closes the microphone if it is open.
    virtual void stop() = 0;
    virtual bool isRunning() const = 0;
};
