// SPDX-License-Identifier: MIT
#include "backends/loop/services.h"

#include <algorithm>

namespace backends {

namespace {

class WatchedTone final : public Tone {
public:
    WatchedTone(Watcher& watcher, std::int32_t hertz, std::int32_t milliseconds)
        : Told(watcher), Hertz(hertz), Milliseconds(milliseconds) {}
    void Play(std::int32_t) override { Told.TonePlayed(Hertz, Milliseconds); }

private:
    Watcher& Told;
    std::int32_t Hertz;
    std::int32_t Milliseconds;
};

} // namespace

Box DeviceSystem::WorkArea() const {
    return {0, 0, static_cast<float>(Screen.Width), static_cast<float>(Screen.Height)};
}

std::int32_t DeviceSystem::ScreenDimension() const {
    return std::max(Screen.Width, Screen.Height);
}

void DeviceKeys::SendCharacter(std::int32_t character) {
    Told.CharacterSent(character);
    Queue.push_back(character);
}

bool DeviceKeys::RaiseWhatIsPending() {
    if (Queue.empty())
        return false;
    const std::int32_t character = Queue.front();
    Queue.pop_front();
    constexpr std::int32_t CharacterCodes = 256; // higher numbers are keys that write nothing
    FocusTarget* const holder = FocusOfForm.Holder();
    if (holder != nullptr && character > 0 && character < CharacterCodes)
        holder->EnterCharacter(Text(1, static_cast<char16_t>(character)));
    return true;
}

ErrorNumber SimulatedConnections::Open(const Text&, std::unique_ptr<Connection>& connection) {
    if (Outcome == NoError)
        connection = std::make_unique<Connection>();
    return Outcome;
}

std::unique_ptr<Tone> WatchedTones::MakeTone(std::int32_t hertz, std::int32_t milliseconds) {
    return std::make_unique<WatchedTone>(Told, hertz, milliseconds);
}

BoxAnswer DeviceBoxes::Show(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) {
    struct Standing {
        std::vector<OpenBox*>& Boxes;
        OpenBox Box;
        Standing(std::vector<OpenBox*>& boxes, OpenBox box) : Boxes(boxes), Box(std::move(box)) {
            Boxes.push_back(&Box);
        }
        ~Standing() { Boxes.pop_back(); }
    };
    Standing standing(Open, {text, buttons, icon, title, false, BoxAnswer::Ok});
    Told.BoxOpened(text, buttons, icon, title);
    const bool isShown = !Loop.Ending();
    if (isShown && Opening)
        Opening();
    if (isShown)
        Opened(standing.Box);
    while (!standing.Box.Answered && !Loop.Ending())
        Loop.WaitNested();
    if (isShown)
        Closed(standing.Box);
    if (Piled() && PileLeft)
        PileLeft();
    if (standing.Box.Answered)
        return standing.Box.Answer;
    Unanswered.push_back(text);
    return buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

} // namespace backends
