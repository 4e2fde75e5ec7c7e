#pragma once

#include "platform/AudioEngine.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

/// Where an engine's audio thread leaves what it captures: cuts it into buffers of one size and
/// hands them to the tap of the moment, if there is one.
class AudioTap
{
public:
    /// `bufferSize` is in samples.
    void install(std::size_t bufferSize, AudioEngine::Tap tap);
    /// Waits for a call that is under way.
    void remove();

    void append(std::span<const std::int16_t> samples);
    /// What the server lost on the way keeps its place in time.
    void appendSilence(std::size_t count);
    /// Tells the tap once, however often it is called.
    void fail();

private:
    std::mutex m_mutex; // held while the tap is called, so that a removed one is quiet
    AudioEngine::Tap m_tap;
    std::size_t m_bufferSize = 0;
    std::vector<std::int16_t> m_buffer; // less than one buffer
};
