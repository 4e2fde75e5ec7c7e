#include "platform/speech/AudioTap.h"

#include <algorithm>
#include <utility>

void AudioTap::install(std::size_t bufferSize, AudioEngine::Tap tap)
{
    const std::lock_guard lock(m_mutex);
    m_tap = std::move(tap);
    m_bufferSize = bufferSize;
    m_buffer.clear();
    m_buffer.reserve(bufferSize);
}

void AudioTap::remove()
{
    AudioEngine::Tap removed; // destroyed outside the lock
    const std::lock_guard lock(m_mutex);
    std::swap(removed, m_tap);
}

void AudioTap::append(std::span<const std::int16_t> samples)
{
    const std::lock_guard lock(m_mutex);
    while (m_tap.append && !samples.empty()) {
        const auto piece = samples.first(std::min(samples.size(), m_bufferSize - m_buffer.size()));
        samples = samples.subspan(piece.size());
        m_buffer.insert(m_buffer.end(), piece.begin(), piece.end());
        if (m_buffer.size() < m_bufferSize)
            return;
        m_tap.append(m_buffer);
        m_buffer.clear();
    }
}

void AudioTap::appendSilence(std::size_t count)
{
    append(std::vector<std::int16_t>(count));
}

void AudioTap::fail()
{
    const std::lock_guard lock(m_mutex);
    if (const auto report = std::exchange(m_tap.fail, nullptr))
        report();
}
