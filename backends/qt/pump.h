// SPDX-License-Identifier: MIT
// The event loop's way to Qt's: it sleeps in Qt's event dispatcher, which handles the window's events meanwhile.
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
    /// `over` is told why the program is over and gives the exit status.
    explicit QtPump(std::function<int(const ProgramOver&)> over);

    /// The loop that this pump is for. A loop of Qt's own (a text that is dragged) knows nothing of it, and has its
    /// events raised from here.
    void Serve(EventLoop& loop) { Loop_ = &loop; }

    bool HandlePending() override;
    void SleepOn(const std::vector<int>& descriptors, int milliseconds) override;
    /// Ends the process at once: a handler may be deep inside of Qt, which can't be unwound.
    [[noreturn]] void Leave(const ProgramOver& over) override;

    enum class Input { Waits, Too };
    /// Lets the window system have its way while a handler keeps the loop waiting: what is to be painted is painted,
    /// but nothing is raised. What a person does meanwhile waits, or comes at once for who filters it and looks at
    /// Breathing.
    void Breathe(Input input = Input::Waits);
    bool Breathing() const { return IsBreathing_; }

    /// What comes next is handled by the window itself, in the middle of the loop's sleep: no time is lost so far.
    void Awake() { LastAlive_ = std::chrono::steady_clock::now(); }
    /// A long operation goes on: to be called as often as one likes. From a tenth of a second on a person is told, by
    /// WorkShown, and the window breathes.
    void Working();
    std::function<void(bool)> WorkShown;
    /// Lets this much time pass in the middle of an operation.
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
    /// By descriptor. One that is not wanted is off: the next one that bears its number may be.
    std::map<int, std::unique_ptr<QSocketNotifier>> Watched_;
    bool IsBreathing_ = false;
    bool IsLeaving_ = false;
    bool WorkIsShown_ = false;
    Moment LastAlive_; ///< when something began to be handled
    Moment LastBreath_;
};

} // namespace backends::qt
