#pragma once

#include "platform/AudioEngine.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

/// Cuts the audio that an engine captures into buffers of one size and passes them to the installed
/// tap. Thread-safe.
class AudioTap
{
public:
    /// `bufferSize` is in samples.
    void install(std::size_t bufferSize, AudioEngine::Tap tap);
    /// Waits until a running call of the tap has returned.
    void remove();

    void append(std::span<const std::int16_t> samples);
    /// For samples that the server lost.
    void appendSilence(std::size_t count);
    /// Calls the tap's `fail` once, even if called repeatedly.
    void fail();

private:
    std::mutex m_mutex; // held while the tap is called: a removed tap is never called
    AudioEngine::Tap m_tap;
    std::size_t m_bufferSize = 0;
    std::vector<std::int16_t> m_buffer; // less than one buffer
};
