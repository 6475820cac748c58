// SPDX-License-Identifier: MIT
// What has nothing to do with pixels: a system object, keys, a connection service, tones, message boxes. What they do
// is told to whoever watches.
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

/// Who watches the device is told what happens on it, in order.
class Watcher : public SaveWatcher {
public:
    virtual void BoxOpened(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) = 0;
    virtual void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) = 0;
    virtual void StatusShown(const Text& text) = 0;
    virtual void StatusHidden() = 0;
    virtual void KeyGrabbed(std::int32_t keyCode) = 0;
    virtual void KeyReleased(std::int32_t keyCode) = 0;
    virtual void CharacterSent(std::int32_t character) = 0;
    /// Something that a person should know, and that is no loss; `about` is its short name.
    virtual void Warned(const Text& about, const Text& text) = 0;
};

class DeviceSystem final : public SystemObject {
public:
    DeviceSystem(std::int32_t type, Text version, Text user, ScreenSize screen)
        : Type(type), Version(std::move(version)), User(std::move(user)), Screen(screen) {}

    std::int32_t DeviceType() const override { return Type; }
    Text VersionText() const override { return Version; }
    Text UserName() const override { return User; }
    Box WorkArea() const override;
    std::int32_t ScreenDimension() const override;

    /// The device was turned. Nobody is told: the next layout finds the new working area.
    void SetScreen(ScreenSize screen) { Screen = screen; }

private:
    std::int32_t Type;
    Text Version;
    Text User;
    ScreenSize Screen;
};

/// A character that is sent waits in the key queue until events are handled; a letter or a control character then goes
/// to the control that has the focus, any other is for the platform alone.
class DeviceKeys final : public HardwareKeys, public EventSource {
public:
    DeviceKeys(Watcher& watcher, Focus& focus) : Told(watcher), FocusOfForm(focus) {}
    void Grab(std::int32_t keyCode) override { Told.KeyGrabbed(keyCode); }
    void Release(std::int32_t keyCode) override { Told.KeyReleased(keyCode); }
    void SendCharacter(std::int32_t character) override;

    int Descriptor() override { return -1; }
    bool RaiseWhatIsPending() override;

private:
    Watcher& Told;
    Focus& FocusOfForm;
    std::deque<std::int32_t> Queue;
};

class SimulatedConnections final : public ConnectionService {
public:
    ErrorNumber Open(const Text& name, std::unique_ptr<Connection>& connection) override;
    /// What opening gives from now on; NoError opens.
    void SetOutcome(ErrorNumber outcome) { Outcome = outcome; }

private:
    ErrorNumber Outcome = NoError;
};

class WatchedTones final : public ToneMaker {
public:
    explicit WatchedTones(Watcher& watcher) : Told(watcher) {}
    std::unique_ptr<Tone> MakeTone(std::int32_t hertz, std::int32_t milliseconds) override;

private:
    Watcher& Told;
};

/// Message boxes, which wait in the loop. What is seen of one is for the back-end to add.
class DeviceBoxes : public MessageBox {
public:
    DeviceBoxes(EventLoop& loop, Watcher& watcher) : Loop(loop), Told(watcher) {}

    struct OpenBox {
        Text Message;
        BoxButtons Buttons = BoxButtons::Ok;
        BoxIcon Icon = BoxIcon::None;
        Text Title;
        bool Answered = false;
        BoxAnswer Answer = BoxAnswer::Ok;
    };

    BoxAnswer Show(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) override;

    /// The box that is open, the innermost one; nothing when none is.
    OpenBox* Current() const { return Open.empty() ? nullptr : Open.back(); }
    /// Two boxes stand, one upon the other. The link is held meanwhile, so that no third one comes by it.
    bool Piled() const { return Depth() > 1; }
    std::size_t Depth() const { return Open.size(); } ///< of those that stand
    /// The texts of those that an ending of the program has answered, on their safe side.
    const std::vector<Text>& LeftUnanswered() const { return Unanswered; }
    /// Called when one of two boxes is left.
    std::function<void()> PileLeft;

    std::function<void()> Opening; ///< a box is about to be seen: what is pressed at this moment was not meant for it

protected:
    virtual void Opened(OpenBox&) {}
    virtual void Closed(OpenBox&) {} ///< answered

private:
    EventLoop& Loop;
    Watcher& Told;
    std::vector<OpenBox*> Open;
    std::vector<Text> Unanswered;
};

} // namespace backends
