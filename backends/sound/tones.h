// SPDX-License-Identifier: MIT
// Tones through the machine's audio. Calls to the audio may be slow or hang, so they are made on a separate thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace backends {

inline constexpr std::int32_t SamplesPerSecond = 44100;

/// Returns a sine of exactly this length, one channel. It fades in and out over a few milliseconds, inside the length,
/// so that it does not click. Returns nothing for a length below 1, and for a frequency below 1 or from 22050 Hz on,
/// which samples at this rate can't represent. A longer tone is cut at 10 seconds.
std::vector<std::int16_t> ToneSamples(std::int32_t hertz, std::int32_t milliseconds);

/// Plays samples on an audio device and returns when they have been heard. Returns false if the device can't be opened
/// or fails.
using AudioOutput = std::function<bool(const std::string& device, const std::vector<std::int16_t>& samples)>;

bool PlayOnAlsa(const std::string& device, const std::vector<std::int16_t>& samples);

/// Plays tones one after the other, and opens the device for each. No call waits for the audio, nor does the
/// destructor; a tone that is playing when the program ends is cut. If the audio hangs, only the newest of the tones
/// that came meanwhile is played afterwards: late ones would belong to readings long past.
class TonePlayer {
public:
    explicit TonePlayer(std::string device = "default", AudioOutput output = PlayOnAlsa);
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;
    ~TonePlayer(); ///< drops the tones that are waiting

    void Play(std::int32_t hertz, std::int32_t milliseconds);

    /// True if everything has been played.
    bool Idle() const;

    /// Returns true if a tone could not be played since the last call.
    bool TakeUnheard();

private:
    struct Work;
    std::shared_ptr<Work> Shared_; ///< shared with the worker, which may outlive the player
};

} // namespace backends
