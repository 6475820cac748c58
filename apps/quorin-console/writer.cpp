// SPDX-License-Identifier: MIT
#include "apps/quorin-console/writer.h"

#include "apps/quorin-console/plain_text.h"
#include "companion/form_state.h"
#include "src/view/sound.h"

#include <iostream>

namespace console {

using platform::BoxButtons;
using platform::BoxIcon;

void Writer::Write(const Json& object) {
    if (Failed())
        return;
    if (Reader_ == OutputFor::People)
        Out_ << PlainText(object) << std::flush;
    else
        Out_ << journal::TextOf(object) << std::endl;
}

void Writer::BoxOpened(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) {
    Write({{"event", "box"},
           {"text", Utf8(text)},
           {"buttons", buttons == BoxButtons::Ok ? "ok" : "yesno"},
           {"icon", icon == BoxIcon::None ? "none" : "question"},
           {"title", Utf8(title)}});
}

void Writer::TonePlayed(std::int32_t hertz, std::int32_t milliseconds) {
    Readings_ += hertz == modAudio::TakenHertz ? 1 : 0;
    Write({{"event", "tone"}, {"frequency", hertz}, {"duration", milliseconds}});
}

void Writer::StatusShown(const Text& text) {
    Write({{"event", "status"}, {"text", Utf8(text)}});
}

void Writer::StatusHidden() {
    Write({{"event", "status"}, {"text", nullptr}});
}

void Writer::KeyGrabbed(std::int32_t keyCode) {
    Write({{"event", "grab"}, {"key", keyCode}});
}

void Writer::KeyReleased(std::int32_t keyCode) {
    Write({{"event", "release"}, {"key", keyCode}});
}

void Writer::CharacterSent(std::int32_t character) {
    Write({{"event", "send"}, {"character", character}});
}

void Writer::Warned(const Text& about, const Text& text) {
    Write({{"event", "warning"}, {"about", Utf8(about)}, {"text", Utf8(text)}});
}

void Writer::NotSaved(const Text& file, const Text& why) {
    Write({{"event", "notsaved"}, {"file", Utf8(file)}, {"error", Utf8(why)}});
    std::cerr << "quorin-console: not saved: " << Utf8(file) << ", " << Utf8(why) << std::endl;
}

void Writer::ReadingJudged(const platform::Verdict& verdict) {
    const auto outside = Limits_ != nullptr ? Limits_->Judge(verdict) : std::nullopt;
    Write(journal::ReadingEvent(verdict, outside ? Utf8(companion::NameOf(outside->Breach)) : std::string()));
}

void Writer::RowChanged(const platform::RowChange& change) {
    if (change.Event == platform::RowEvent::Saved && change.Why.empty() && companion::IsOpenDownload(change.File))
        Write({{"event", "saved"}, {"file", Utf8(change.File)}, {"row", change.Row}});
}

} // namespace console
