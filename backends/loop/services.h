// SPDX-License-Identifier: MIT
// Services without graphics: system object, keys, connection service, tones, settings, message boxes. What they do is
// reported to a Watcher.
#pragma once

#include "backends/loop/event_loop.h"
#include "backends/loop/focus.h"
#include "backends/simulated/device_profiles.h"
#include "src/view/platform/device.h"
#include "src/view/platform/run_time.h"
#include "src/view/platform/storage.h"

#include <deque>
#include <functional>
#include <vector>

namespace backends {

using namespace platform;

/// Observer of a device: called with what happens on it, in order.
class Watcher : public SaveWatcher {
public:
    virtual void BoxOpened(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) = 0;
    virtual void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) = 0;
    virtual void StatusShown(const Text& text) = 0;
    virtual void StatusHidden() = 0;
    virtual void KeyGrabbed(std::int32_t keyCode) = 0;
    virtual void KeyReleased(std::int32_t keyCode) = 0;
    virtual void CharacterSent(std::int32_t character) = 0;
    /// A warning: something that the user should know, without any loss of data. `about` is its short name.
    virtual void Warned(const Text& about, const Text& text) = 0;
};

class DeviceSystem final : public SystemObject {
public:
    DeviceSystem(std::int32_t type, Text version, Text user, ScreenSize screen)
        : Type_(type), Version_(std::move(version)), User_(std::move(user)), Screen_(screen) {}

    std::int32_t DeviceType() const override { return Type_; }
    Text VersionText() const override { return Version_; }
    Text UserName() const override { return User_; }
    Box WorkArea() const override;
    std::int32_t ScreenDimension() const override;

    /// The device was turned. No event is raised: the next layout reads the new working area.
    void SetScreen(ScreenSize screen) { Screen_ = screen; }

private:
    std::int32_t Type_;
    Text Version_;
    Text User_;
    ScreenSize Screen_;
};

/// A character that is sent waits in the key queue until events are handled. A letter or a control character then goes
/// to the control that has the focus; any other is for the platform alone.
class DeviceKeys final : public HardwareKeys, public EventSource {
public:
    DeviceKeys(Watcher& watcher, Focus& focus) : Watcher_(watcher), Focus_(focus) {}
    void Grab(std::int32_t keyCode) override { Watcher_.KeyGrabbed(keyCode); }
    void Release(std::int32_t keyCode) override { Watcher_.KeyReleased(keyCode); }
    void SendCharacter(std::int32_t character) override;

    bool RaiseWhatIsPending() override;

private:
    Watcher& Watcher_;
    Focus& Focus_;
    std::deque<std::int32_t> Queue_;
};

class SimulatedConnections final : public ConnectionService {
public:
    ErrorNumber Open(const Text& name, std::unique_ptr<Connection>& connection) override;
    /// Sets the result of opening from now on; NoError succeeds.
    void SetOutcome(ErrorNumber outcome) { Result_ = outcome; }

private:
    ErrorNumber Result_ = NoError;
};

class WatchedTones final : public ToneMaker {
public:
    explicit WatchedTones(Watcher& watcher) : Watcher_(watcher) {}
    std::unique_ptr<Tone> MakeTone(std::int32_t hertz, std::int32_t milliseconds) override;

private:
    Watcher& Watcher_;
};

/// Reports a setting that could not be saved, because the form goes on without a message.
class ReportedSettings final : public Settings {
public:
    ReportedSettings(Settings& inner, SaveWatcher& watcher) : Inner_(inner), Watcher_(watcher) {}

    Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const override {
        return Inner_.Get(application, section, key, byDefault);
    }
    ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) override;

private:
    Settings& Inner_;
    SaveWatcher& Watcher_;
};

/// Message boxes, which wait in a nested loop. The back-end adds their appearance.
class DeviceBoxes : public MessageBox {
public:
    DeviceBoxes(EventLoop& loop, Watcher& watcher) : Loop_(loop), Watcher_(watcher) {}

    struct OpenBox {
        Text Message;
        BoxButtons Buttons = BoxButtons::Ok;
        BoxIcon Icon = BoxIcon::None;
        Text Title;
        bool Answered = false;
        BoxAnswer Answer = BoxAnswer::Ok;
    };

    BoxAnswer Show(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) override;

    /// Returns the innermost open box; null if none is open.
    OpenBox* Current() const { return Open_.empty() ? nullptr : Open_.back(); }
    /// True if one box is open on top of another. The link is held meanwhile, so that it does not open a third one.
    bool Piled() const { return Depth() > 1; }
    std::size_t Depth() const { return Open_.size(); } ///< number of open boxes
    /// The texts of the boxes that the ending of the program has answered, with their safe answer.
    const std::vector<Text>& LeftUnanswered() const { return Unanswered_; }
    /// Called when one box closes while several were open.
    std::function<void()> PileLeft;

    std::function<void()> Opening; ///< called before a box appears: input at this moment was not meant for it

protected:
    virtual void Opened(OpenBox&) {}
    virtual void Closed(OpenBox&) {} ///< after the answer

private:
    EventLoop& Loop_;
    Watcher& Watcher_;
    std::vector<OpenBox*> Open_;
    std::vector<Text> Unanswered_;
};

} // namespace backends
