// SPDX-License-Identifier: MIT
// Connects the event loop to Qt: the loop sleeps in Qt's event dispatcher, which handles the window's events meanwhile.
#pragma once

#include "backends/host/host_pump.h"

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <functional>
#include <map>
#include <memory>

namespace backends::qt {

class QtPump final : public HostPump {
public:
    /// `over` is called with the reason when the program ends, and returns the exit status.
    explicit QtPump(std::function<int(const ProgramOver&)> over);

    /// Sets the loop that this pump works for. While a nested loop of Qt's own runs (for example while text is
    /// dragged), the pump raises the events of this loop.
    void Serve(EventLoop& loop) { Loop_ = &loop; }

    bool HandlePending() override;
    void SleepOn(const std::vector<int>& descriptors, int milliseconds) override;
    /// Ends the process at once: a handler may be deep inside of Qt, which can't be unwound.
    [[noreturn]] void Leave(const ProgramOver& over) override;

    enum class Input { Waits, Too };
    /// Handles events of the window system in the middle of a handler: the window is painted, and no event of the form
    /// is raised. Input of the user stays in the queue (Waits), or is delivered at once (Too), to an event filter that
    /// checks Breathing.
    void Breathe(Input input = Input::Waits);
    bool Breathing() const { return IsBreathing_; }

    /// Called when Qt begins to handle an event during the loop's sleep: restarts the measured time without response.
    void Awake() { LastAlive_ = std::chrono::steady_clock::now(); }
    /// Called during a long operation, as often as convenient. After a tenth of a second it reports the operation to
    /// the user by WorkShown and calls Breathe.
    void Working();
    std::function<void(bool)> WorkShown;
    /// Waits in the middle of an operation, and calls Working meanwhile.
    void Rest(std::int32_t milliseconds);

private:
    using Moment = std::chrono::steady_clock::time_point;

    void Watch(const std::vector<int>& descriptors);
    void Woken();
    static void LeaveLoopsOfQt();
    void CameBack();

    std::function<int(const ProgramOver&)> Over_;
    EventLoop* Loop_ = nullptr;
    QTimer Alarm_;
    /// By descriptor. A notifier that is not wanted is disabled and kept: a later descriptor may have the same number.
    std::map<int, std::unique_ptr<QSocketNotifier>> Watched_;
    bool IsBreathing_ = false;
    bool IsLeaving_ = false;
    bool WorkIsShown_ = false;
    Moment LastAlive_; ///< when the handling of the latest event began
    Moment LastBreath_;
};

} // namespace backends::qt
