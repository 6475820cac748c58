// SPDX-License-Identifier: MIT
// Plays tones for the tests of sound: tone_program wait|leave|hang DEVICE [HERTZ MILLISECONDS]... "wait" ends when
// everything has been played, "leave" at once; "hang" has an audio device that never returns, and ends at once. Prints
// a line on standard output when all tones have been ordered.
#include "backends/sound/tones.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

namespace {

constexpr int MostRounds = 6000;

bool NeverReturn(const std::string&, const std::vector<std::int16_t>&) {
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

bool WaitUntilIdle(const backends::TonePlayer& player) {
    for (int round = 0; round < MostRounds; ++round) {
        if (player.Idle())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace

int main(int count, char** words) {
    if (count < 3)
        return EXIT_FAILURE;
    const std::string mode = words[1];
    backends::TonePlayer player(words[2], mode == "hang" ? backends::AudioOutput(NeverReturn) : backends::PlayOnAlsa);
    for (int at = 3; at + 1 < count; at += 2)
        player.Play(std::atoi(words[at]), std::atoi(words[at + 1]));
    std::cout << "ordered" << std::endl;
    if (mode == "wait")
        return WaitUntilIdle(player) ? EXIT_SUCCESS : EXIT_FAILURE;
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // the audio is being opened by now
    return EXIT_SUCCESS;
}
