// SPDX-License-Identifier: MIT
// Tones through the machine's audio. What is slow about audio, and what may hang, happens on a thread of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace backends {

inline constexpr std::int32_t SamplesPerSecond = 44100;

/// A sine of exactly that length, one channel, with a fade of a few milliseconds at both ends, inside the length, so
/// that it does not click. Empty for a length below 1 and for a frequency below 1 or from 22050 Hz on, which no samples
/// can hold; cut at 10 seconds.
std::vector<std::int16_t> ToneSamples(std::int32_t hertz, std::int32_t milliseconds);

/// Plays samples on an audio device and returns when they have been heard. A device that can't be had is no error.
using AudioOutput = std::function<void(const std::string& device, const std::vector<std::int16_t>& samples)>;

void PlayOnAlsa(const std::string& device, const std::vector<std::int16_t>& samples);

/// Plays tones one after the other, each on a device that is opened for it. No call waits for the audio, and neither
/// does the end of the player or of the program: a tone that is under way then is cut. When the audio has hung, of the
/// tones that came meanwhile only the newest is played: late ones would tell of results long past.
class TonePlayer {
public:
    explicit TonePlayer(std::string device = "default", AudioOutput output = PlayOnAlsa);
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;
    ~TonePlayer(); ///< tones that wait are dropped

    void Play(std::int32_t hertz, std::int32_t milliseconds);

    /// True if everything has been played.
    bool Idle() const;

private:
    struct Work;
    std::shared_ptr<Work> Shared_; ///< shared with the worker, which may outlive the player
};

} // namespace backends
