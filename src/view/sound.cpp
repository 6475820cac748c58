// SPDX-License-Identifier: MIT
#include "src/view/sound.h"

#include "src/view/platform/platform.h"

namespace modAudio {

namespace {

struct ToneRow {
    SoundCode Code;
    std::int32_t Hertz;
    std::int32_t Milliseconds;
};

constexpr ToneRow Tones[] = {
    {.Code = SoundCode::Taken, .Hertz = TakenHertz, .Milliseconds = 250},
    {.Code = SoundCode::Refused, .Hertz = 369, .Milliseconds = 300},
};

} // namespace

void PlaySound(SoundCode code) {
    for (const ToneRow& tone : Tones) {
        if (tone.Code == code)
            Sound.CurrentTone = platform::Device().toneMaker.MakeTone(tone.Hertz, tone.Milliseconds);
    }
    if (Sound.CurrentTone)
        Sound.CurrentTone->Play(0);
}

} // namespace modAudio
