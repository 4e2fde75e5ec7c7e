#pragma once

#include <cstdint>
#include <functional>
#include <span>

/// Captures the microphone: 16,000 samples per second, one channel. Main thread only.
class AudioEngine
{
public:
    virtual ~AudioEngine() = default;

    /// Receives captured audio on the audio thread.
    struct Tap {
        /// Gets every buffer of `bufferSize` samples.
        std::function<void(std::span<const std::int16_t>)> append;
        /// The microphone or the sound server is gone; no more audio will come.
        std::function<void()> fail;
    };

    /// Replaces the tap, if there is one.
    virtual void installTap(int bufferSize, Tap tap) = 0;
    /// On return the tap is no longer called.
    virtual void removeTap() = 0;

    /// Opens the microphone unless it is open. False if it is missing or cannot be opened. Does
    /// not block for long.
    virtual bool start() = 0;
    /// Closes the microphone if it is open.
    virtual void stop() = 0;
    virtual bool isRunning() const = 0;
};
