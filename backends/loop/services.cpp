// SPDX-License-Identifier: MIT
#include "backends/loop/services.h"

#include "backends/loop/acts.h"

#include <algorithm>

namespace backends {

namespace {

class WatchedTone final : public Tone {
public:
    WatchedTone(Watcher& watcher, std::int32_t hertz, std::int32_t milliseconds)
        : Watcher_(watcher), Hertz_(hertz), Milliseconds_(milliseconds) {}
    void Play(std::int32_t) override { Watcher_.TonePlayed(Hertz_, Milliseconds_); }

private:
    Watcher& Watcher_;
    std::int32_t Hertz_;
    std::int32_t Milliseconds_;
};

const char* WordOf(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Yes:
        return "yes";
    case BoxAnswer::No:
        return "no";
    case BoxAnswer::Ok:
        break;
    }
    return "ok";
}

} // namespace

Box DeviceSystem::WorkArea() const {
    return {0, 0, static_cast<float>(Screen_.Width), static_cast<float>(Screen_.Height)};
}

std::int32_t DeviceSystem::ScreenDimension() const {
    return std::max(Screen_.Width, Screen_.Height);
}

void DeviceKeys::SendCharacter(std::int32_t character) {
    Watcher_.CharacterSent(character);
    Queue_.push_back(character);
}

bool DeviceKeys::RaiseWhatIsPending() {
    if (Queue_.empty())
        return false;
    const std::int32_t character = Queue_.front();
    Queue_.pop_front();
    constexpr std::int32_t CharacterCodes = 256; // higher numbers are keys that write nothing
    FocusTarget* const holder = Focus_.Holder();
    if (holder != nullptr && character > 0 && character < CharacterCodes)
        holder->EnterCharacter(Text(1, static_cast<char16_t>(character)));
    return true;
}

ErrorNumber SimulatedConnections::Open(const Text&, std::unique_ptr<Connection>& connection) {
    if (Result_ == NoError)
        connection = std::make_unique<Connection>();
    return Result_;
}

std::unique_ptr<Tone> WatchedTones::MakeTone(std::int32_t hertz, std::int32_t milliseconds) {
    return std::make_unique<WatchedTone>(Watcher_, hertz, milliseconds);
}

ErrorNumber ReportedSettings::Save(const Text& application, const Text& section, const Text& key, const Text& value) {
    const ErrorNumber error = Inner_.Save(application, section, key, value);
    if (error != NoError)
        Watcher_.NotSaved(u"the setting " + key, ErrorText(error));
    return error;
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
    Standing standing(Open_, {.Message = text, .Buttons = buttons, .Icon = icon, .Title = title});
    Watcher_.BoxOpened(text, buttons, icon, title);
    if (Acts.Asked)
        Acts.Asked(text);
    const bool isShown = !Loop_.Ending();
    if (isShown && Opening)
        Opening();
    if (isShown)
        Opened(standing.Box);
    while (!standing.Box.Answered && !Loop_.Ending())
        Loop_.WaitNested();
    if (standing.Box.Answered)
        ReportAct({.Word = "answer", .Arguments = WordOf(standing.Box.Answer), .About = text});
    if (isShown)
        Closed(standing.Box);
    if (Piled() && PileLeft)
        PileLeft();
    if (standing.Box.Answered)
        return standing.Box.Answer;
    Unanswered_.push_back(text);
    if (Acts.LeftUnanswered)
        Acts.LeftUnanswered(text);
    return buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

} // namespace backends
