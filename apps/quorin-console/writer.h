// SPDX-License-Identifier: MIT
// The output of quorin-console in the order of events: one JSON object a line, or text for a person.
#pragma once

#include "backends/loop/services.h"
#include "companion/value_limits.h"
#include "journal/journal_lines.h"
#include "src/view/platform/reading_log.h"

#include <ostream>

namespace console {

using Json = journal::Line;
using journal::Utf8;

enum class OutputFor { Programs, People };

class Writer final : public backends::Watcher, public platform::ReadingLog {
public:
    explicit Writer(std::ostream& out, OutputFor reader = OutputFor::Programs) : Out_(out), Reader_(reader) {}

    /// Writes an object, for people as text; does nothing after a write has failed.
    void Write(const Json& object);
    /// True if a write has failed.
    bool Failed() const { return !Out_; }
    /// Compares the values of readings with these limits from now on. They must exist as long as the writer is used.
    void Use(const companion::ValueLimits& limits) { Limits_ = &limits; }
    /// Returns the number of readings that were taken in this run: each sounds the high tone.
    std::int64_t Readings() const { return Readings_; }

    void BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon icon, const Text& title) override;
    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override;
    void StatusShown(const Text& text) override;
    void StatusHidden() override;
    void KeyGrabbed(std::int32_t keyCode) override;
    void KeyReleased(std::int32_t keyCode) override;
    void CharacterSent(std::int32_t character) override;
    void Warned(const Text& about, const Text& text) override;
    void NotSaved(const Text& file, const Text& why) override;

    // Readings, and the records of the open download. A record that was not saved is reported by NotSaved.
    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

private:
    std::ostream& Out_;
    OutputFor Reader_;
    const companion::ValueLimits* Limits_ = nullptr;
    std::int64_t Readings_ = 0;
};

} // namespace console
