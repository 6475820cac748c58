// SPDX-License-Identifier: MIT
// Puts what happens into lines of the journal.
#pragma once

#include "journal/journal_format.h"
#include "src/view/platform/reading_log.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace journal {

/// Returns a text as UTF-8. Bytes of the host that are not UTF-8 stay as they are; TextOf(Line) replaces them.
std::string Utf8(const Text& text);

/// Returns an object as one line, without its line end.
std::string TextOf(const Line& line);

/// When a line is written.
struct Stamp {
    std::string Time;    ///< of the form's clock, "2026-11-22T20:30:05"
    std::int64_t Ms = 0; ///< since the start of the program
};

/// The program that writes, and its device.
struct Run {
    std::string Program;
    std::string Version;
    int ProcessId = 0;
    std::string Root;               ///< path without links
    std::vector<std::string> Words; ///< of its command line
    bool VirtualClock = false;
    std::string Utc; ///< "2026-11-22T19:30:05Z"; empty with a virtual clock
    std::int32_t Device = 0;
    std::string OsVersion;
    std::string User;
    std::int32_t ScreenWidth = 0; ///< pixels
    std::int32_t ScreenHeight = 0;
};

// Each returns the names of one event, without its stamp.
Line StartEvent(const Run& run);
Line DayEvent(const Run& run); ///< the first of a next day's file
Line EndEvent(const std::string& why);
Line BytesEvent(std::string_view bytes);
Line TextEvent(platform::TextSource source, TextView text); ///< of the mailbox, or taken again
Line EmptiedEvent(TextView text);
/// As quorin-console reports it. `limit`: the limit that the value is outside of, empty for none.
Line ReadingEvent(const platform::Verdict& verdict, const std::string& limit);
Line RowEvent(const platform::RowChange& change);
Line PortEvent(const std::string& what, const std::string& address, const std::string& why);
Line LinkEvent(bool open, const Text& port);
Line QuestionEvent(const std::string& what, const Text& question);
Line ActEvent(const std::string& act, const std::string& arguments, const Text& about);
Line FieldEvent(const Text& text); ///< the act of typing
Line ClockEvent(std::int64_t seconds);
Line SyncEvent(std::int64_t milliseconds);
Line RemovedEvent(const std::string& file);

/// Returns an event with its stamp before its own names, as one line.
std::string Stamped(const Stamp& stamp, const Line& event);

/// The readings as the journal has them: with what the console's event leaves out.
class ReadingLines {
public:
    Line EventOf(const platform::Verdict& verdict, const std::string& limit);

private:
    std::shared_ptr<const Text> LastBlob_; ///< written already: a BLob may have many readings
};

} // namespace journal
