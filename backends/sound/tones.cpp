// SPDX-License-Identifier: MIT
#include "backends/sound/tones.h"

#include <algorithm>
#include <alsa/asoundlib.h>
#include <chrono>
#include <cmath>
#include <csignal>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace backends {

namespace {

constexpr std::int32_t LongestTone = 10000;           // milliseconds
constexpr std::int32_t Fade = SamplesPerSecond / 200; // 5 ms
constexpr double Loudness = 0.5 * 32767;
constexpr double Pi = 3.14159265358979323846;

/// The latency requested from the device, in microseconds.
constexpr unsigned Latency = 100000;

/// A tone that takes this much longer than its length was delayed by the audio.
constexpr std::chrono::seconds Patience{2};

/// At most this many tones wait, about five seconds of them. Beyond that the newest tone replaces the last one waiting.
constexpr std::size_t MostWaiting = 16;

struct ToneOrder {
    std::int32_t Hertz;
    std::int32_t Milliseconds;
};

void SayNothing(const char*, int, const char*, int, const char*, ...) {
}

bool WriteSamples(snd_pcm_t* device, const std::vector<std::int16_t>& samples) {
    for (std::size_t done = 0; done < samples.size();) {
        snd_pcm_sframes_t count = snd_pcm_writei(device, samples.data() + done, samples.size() - done);
        if (count < 0)
            count = snd_pcm_recover(device, static_cast<int>(count), 1);
        if (count < 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    snd_pcm_drain(device);
    return true;
}

/// Blocks all signals in threads started meanwhile: the event loop handles them.
class SignalsHeldBack {
public:
    SignalsHeldBack() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &Before_);
    }
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &Before_, nullptr); }

private:
    sigset_t Before_{};
};

} // namespace

struct TonePlayer::Work {
    std::string Device;
    AudioOutput Output;
    std::mutex Guard; // for all members below
    std::deque<ToneOrder> Waiting;
    bool Running = false; // a worker thread runs; it ends when no tone waits
    bool Unheard = false; // a tone could not be played

    static void Run(const std::shared_ptr<Work>& work);
    bool TakeNext(ToneOrder& order);
    void ForgetTheLate();
    void NoteUnheard();
};

bool TonePlayer::Work::TakeNext(ToneOrder& order) {
    const std::lock_guard<std::mutex> guarded(Guard);
    Running = !Waiting.empty();
    if (!Running)
        return false;
    order = Waiting.front();
    Waiting.pop_front();
    return true;
}

void TonePlayer::Work::ForgetTheLate() {
    const std::lock_guard<std::mutex> guarded(Guard);
    while (Waiting.size() > 1)
        Waiting.pop_front();
}

void TonePlayer::Work::NoteUnheard() {
    const std::lock_guard<std::mutex> guarded(Guard);
    Unheard = true;
}

void TonePlayer::Work::Run(const std::shared_ptr<Work>& work) {
    for (ToneOrder order{}; work->TakeNext(order);) {
        const auto start = std::chrono::steady_clock::now();
        if (!work->Output(work->Device, ToneSamples(order.Hertz, order.Milliseconds)))
            work->NoteUnheard();
        if (std::chrono::steady_clock::now() - start > std::chrono::milliseconds(order.Milliseconds) + Patience)
            work->ForgetTheLate();
    }
}

std::vector<std::int16_t> ToneSamples(std::int32_t hertz, std::int32_t milliseconds) {
    if (hertz < 1 || hertz >= SamplesPerSecond / 2 || milliseconds < 1)
        return {};
    const std::int32_t count = std::min(milliseconds, LongestTone) * (SamplesPerSecond / 100) / 10;
    const std::int32_t fade = std::min(Fade, count / 2);
    std::vector<std::int16_t> samples;
    samples.reserve(static_cast<std::size_t>(count));
    for (std::int32_t at = 0; at < count; ++at) {
        const std::int32_t fromEnd = std::min(at, count - 1 - at);
        const double rise = fromEnd < fade ? static_cast<double>(fromEnd) / fade : 1.0;
        const double turns = static_cast<double>(hertz) * at / SamplesPerSecond;
        samples.push_back(static_cast<std::int16_t>(std::lround(Loudness * rise * std::sin(2 * Pi * turns))));
    }
    return samples;
}

bool PlayOnAlsa(const std::string& device, const std::vector<std::int16_t>& samples) {
    // Missing audio must not cause messages on the terminal.
    static std::once_flag silenced;
    std::call_once(silenced, [] { snd_lib_error_set_handler(SayNothing); });
    snd_pcm_t* opened = nullptr;
    if (samples.empty())
        return true;
    if (snd_pcm_open(&opened, device.c_str(), SND_PCM_STREAM_PLAYBACK, 0) < 0)
        return false;
    const bool isHeard = snd_pcm_set_params(opened, SND_PCM_FORMAT_S16, SND_PCM_ACCESS_RW_INTERLEAVED, 1,
                                            SamplesPerSecond, 1, Latency) == 0 &&
                         WriteSamples(opened, samples);
    snd_pcm_close(opened);
    return isHeard;
}

TonePlayer::TonePlayer(std::string device, AudioOutput output) : Shared_(std::make_shared<Work>()) {
    Shared_->Device = std::move(device);
    Shared_->Output = std::move(output);
}

TonePlayer::~TonePlayer() {
    const std::lock_guard<std::mutex> guarded(Shared_->Guard);
    Shared_->Waiting.clear();
}

void TonePlayer::Play(std::int32_t hertz, std::int32_t milliseconds) {
    const std::lock_guard<std::mutex> guarded(Shared_->Guard);
    if (Shared_->Waiting.size() == MostWaiting)
        Shared_->Waiting.pop_back();
    Shared_->Waiting.push_back({hertz, milliseconds});
    if (Shared_->Running)
        return;
    const SignalsHeldBack heldBack;
    try {
        std::thread(Work::Run, Shared_).detach();
        Shared_->Running = true;
    } catch (const std::system_error&) {
        Shared_->Waiting.clear(); // no thread could be started: the tones are dropped
        Shared_->Unheard = true;
    }
}

bool TonePlayer::Idle() const {
    const std::lock_guard<std::mutex> guarded(Shared_->Guard);
    return !Shared_->Running;
}

bool TonePlayer::TakeUnheard() {
    const std::lock_guard<std::mutex> guarded(Shared_->Guard);
    return std::exchange(Shared_->Unheard, false);
}

} // namespace backends
