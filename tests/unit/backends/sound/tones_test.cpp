// SPDX-License-Identifier: MIT
#include "backends/sound/tones.h"

#include "tests/support/printed_rows.h"
#include "tests/unit/backends/sound/crossings.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <mutex>
#include <thread>

using namespace backends;
using testing::ElementsAre;
using namespace std::chrono_literals;

namespace {

using support::PrintTo;

struct ToneRow {
    std::int32_t Hertz;
    std::int32_t Milliseconds;
    std::size_t Samples;
};

class Tones : public testing::TestWithParam<ToneRow> {};

TEST_P(Tones, HaveTheirLengthAndFrequency) {
    const auto& [hertz, milliseconds, count] = GetParam();
    const auto samples = ToneSamples(hertz, milliseconds);
    EXPECT_EQ(samples.size(), count) << hertz << " Hz, " << milliseconds << " ms";
    EXPECT_NEAR(MeasuredHertz(samples), hertz, hertz / 100.0) << hertz << " Hz, " << milliseconds << " ms";
}

INSTANTIATE_TEST_SUITE_P(Table, Tones,
                         testing::Values(ToneRow{1046, 250, 11025}, ToneRow{369, 300, 13230}, ToneRow{440, 1000, 44100},
                                         ToneRow{100, 10000, 441000}, ToneRow{100, 10001, 441000},
                                         ToneRow{100, std::numeric_limits<std::int32_t>::max(), 441000}));

TEST(ToneSamples, BeginAndEndWithoutAClick) {
    const auto samples = ToneSamples(1046, 250);
    const auto loudest = [&samples](std::size_t from, std::size_t count) {
        int most = 0;
        for (std::size_t at = from; at < from + count; ++at)
            most = std::max(most, std::abs(static_cast<int>(samples[at])));
        return most;
    };
    EXPECT_GT(loudest(5000, 100), 15000);
    EXPECT_LT(loudest(0, 44), 5000);                   // the first millisecond
    EXPECT_LT(loudest(samples.size() - 44, 44), 5000); // and the last
    EXPECT_GT(loudest(441, 100), 15000);               // full after 10
    EXPECT_EQ(samples.front(), 0);
}

TEST(ToneSamples, ThereAreNoneForWhatIsNoTone) {
    for (const auto& [hertz, milliseconds] : std::vector<std::pair<std::int32_t, std::int32_t>>{
             {0, 250}, {-1, 250}, {1046, 0}, {1046, -250}, {22050, 250}, {std::numeric_limits<std::int32_t>::max(), 1}})
        EXPECT_TRUE(ToneSamples(hertz, milliseconds).empty()) << hertz << " Hz, " << milliseconds << " ms";
}

/// An audio device that records what it plays, and can hang. The worker shares it and may outlive the test.
struct Loudspeaker {
    std::mutex Guard;
    std::condition_variable Changed;
    bool Hangs = false;
    std::size_t Begun = 0;
    std::vector<std::size_t> Lengths;
    std::string Device;

    bool IsSilent = false; ///< as on a machine without audio

    bool Play(const std::string& device, const std::vector<std::int16_t>& samples) {
        std::unique_lock<std::mutex> lock(Guard);
        ++Begun;
        Changed.notify_all();
        Changed.wait(lock, [this] { return !Hangs; });
        Device = device;
        Lengths.push_back(samples.size());
        return !IsSilent;
    }
    void Hang(bool hangs) {
        const std::lock_guard<std::mutex> lock(Guard);
        Hangs = hangs;
        Changed.notify_all();
    }
    bool HasBegun() {
        std::unique_lock<std::mutex> lock(Guard);
        return Changed.wait_for(lock, 60s, [this] { return Begun > 0; });
    }
};

class Player : public testing::Test {
protected:
    ~Player() override { Audio->Hang(false); }

    void Play(std::int32_t milliseconds) { Tones->Play(1000, milliseconds); }
    /// Returns the lengths of the tones that were played, in milliseconds.
    std::vector<std::size_t> Heard() {
        for (int round = 0; round < 6000 && !Tones->Idle(); ++round)
            std::this_thread::sleep_for(10ms);
        const std::lock_guard<std::mutex> lock(Audio->Guard);
        std::vector<std::size_t> lengths;
        for (const std::size_t length : Audio->Lengths)
            lengths.push_back(length * 10 / 441);
        return lengths;
    }

    std::shared_ptr<Loudspeaker> Audio = std::make_shared<Loudspeaker>();
    std::unique_ptr<TonePlayer> Tones = std::make_unique<TonePlayer>(
        "speaker", [audio = Audio](const std::string& device, const std::vector<std::int16_t>& samples) {
            return audio->Play(device, samples);
        });
};

TEST_F(Player, IsIdleUntilSomethingIsPlayed) {
    EXPECT_TRUE(Tones->Idle());
}

TEST_F(Player, PlaysEveryToneInOrder) {
    for (const std::int32_t milliseconds : {250, 300, 250, 100})
        Play(milliseconds);
    EXPECT_THAT(Heard(), ElementsAre(250, 300, 250, 100));
    EXPECT_EQ(Audio->Device, "speaker");
}

TEST_F(Player, TellsOnceThatAToneWasNotHeard) {
    Play(100);
    Heard();
    EXPECT_FALSE(Tones->TakeUnheard());
    Audio->IsSilent = true;
    Play(100);
    Play(100);
    Heard();
    EXPECT_TRUE(Tones->TakeUnheard());
    EXPECT_FALSE(Tones->TakeUnheard());
}

TEST(AlsaOutput, TellsThatThereIsNoSuchDevice) {
    EXPECT_FALSE(PlayOnAlsa("no such device", ToneSamples(1046, 50)));
}

TEST_F(Player, PlaysAgainAfterAPause) {
    Play(100);
    EXPECT_THAT(Heard(), ElementsAre(100));
    Play(200);
    EXPECT_THAT(Heard(), ElementsAre(100, 200));
}

/// The audio device hangs until the test ends: a program that waited for it would not return.
TEST_F(Player, NeverWaitsForAudioThatHangs) {
    Audio->Hang(true);
    Play(100);
    ASSERT_TRUE(Audio->HasBegun());
    for (int count = 0; count < 1000; ++count)
        Play(100);
    Tones.reset();
}

TEST_F(Player, PlaysOnlyTheNewestAfterAudioHasHung) {
    Audio->Hang(true);
    Play(100);
    ASSERT_TRUE(Audio->HasBegun());
    for (const std::int32_t milliseconds : {200, 300, 400})
        Play(milliseconds);
    std::this_thread::sleep_for(2500ms);
    Audio->Hang(false);
    EXPECT_THAT(Heard(), ElementsAre(100, 400));
}

TEST_F(Player, OfALongBurstTheFirstTonesAreHeardAndTheNewest) {
    Audio->Hang(true);
    Play(50);
    ASSERT_TRUE(Audio->HasBegun());
    for (std::int32_t count = 1; count <= 40; ++count)
        Play(100 + 10 * count);
    Audio->Hang(false);
    const auto heard = Heard();
    ASSERT_EQ(heard.size(), 17U);
    EXPECT_EQ(heard[1], 110U);
    EXPECT_EQ(heard[15], 250U);
    EXPECT_EQ(heard[16], 500U);
}

TEST_F(Player, DropsWhatWaitsAtItsEnd) {
    Audio->Hang(true);
    Play(100);
    ASSERT_TRUE(Audio->HasBegun());
    Play(200);
    Tones.reset();
    Audio->Hang(false);
    std::this_thread::sleep_for(200ms);
    const std::lock_guard<std::mutex> lock(Audio->Guard);
    EXPECT_EQ(Audio->Lengths.size(), 1U);
}

} // namespace
