#pragma once

#include "platform/AudioEngine.h"
#include "platform/speech/AudioTap.h"
#include "platform/speech/PulseMicrophone.h"

#include <chrono>
#include <memory>

/// Captures audio from a PulseAudio or PipeWire server. Has a connection and a thread only between
/// `start` and `stop`.
class PulseAudioEngine final : public AudioEngine
{
public:
    /// `start` fails if the server does not answer within `limit`.
    explicit PulseAudioEngine(std::chrono::milliseconds limit = std::chrono::seconds(2));

    void installTap(int bufferSize, Tap tap) override;
    void removeTap() override;
    bool start() override;
    void stop() override;
    bool isRunning() const override;

private:
    const std::chrono::milliseconds m_limit;
    AudioTap m_tap;
    std::unique_ptr<PulseMicrophone> m_microphone;
};
