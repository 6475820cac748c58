// SPDX-License-Identifier: MIT
// The two tones that answer a captured result.
#pragma once

#include "src/view/platform/device.h"

#include <memory>

namespace modAudio {

enum class SoundCode : std::int32_t {
    Taken = 2,   ///< the result was taken
    Refused = 3, ///< no row was found by a type of the result, or the old value was kept
};

inline constexpr std::int32_t TakenHertz = 1046; ///< no other tone has this frequency

struct SoundState {
    std::unique_ptr<platform::Tone> CurrentTone; ///< the tone made last
};
inline SoundState Sound;

/// Plays the tone of a code; any other code repeats the last one.
void PlaySound(SoundCode code);

} // namespace modAudio
