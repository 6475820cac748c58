// SPDX-License-Identifier: MIT
#include "journal/journal_lines.h"

#include "companion/readings.h"

namespace journal {

namespace {

Line OrNull(bool known, const Line& value) {
    return known ? value : Line();
}

Line ListOf(const std::vector<Text>& texts) {
    Line list = Line::array();
    for (const Text& text : texts)
        list.push_back(Utf8(text));
    return list;
}

const char* NameOf(platform::RowEvent event) {
    switch (event) {
    case platform::RowEvent::Saved:
        return "saved";
    case platform::RowEvent::Added:
        return "added";
    case platform::RowEvent::Deleted:
        break;
    }
    return "deleted";
}

Line RunEvent(const char* name, const Run& run) {
    Line event = {{"event", name},          {"journal", Version},
                  {"program", run.Program}, {"version", run.Version},
                  {"pid", run.ProcessId},   {"root", run.Root},
                  {"words", run.Words},     {"clock", run.VirtualClock ? "virtual" : "real"}};
    if (!run.Utc.empty())
        event["utc"] = run.Utc;
    event["device"] = run.Device;
    event["os"] = run.OsVersion;
    event["user"] = run.User;
    event["screen"] = {run.ScreenWidth, run.ScreenHeight};
    return event;
}

/// Adds a text if it is not empty.
void Add(Line& event, const char* name, const std::string& text) {
    if (!text.empty())
        event[name] = text;
}

} // namespace

std::string Utf8(const Text& text) {
    return modStringTools::ToBytes(text);
}

std::string TextOf(const Line& line) {
    return line.dump(-1, ' ', false, Line::error_handler_t::replace);
}

std::string Stamped(const Stamp& stamp, const Line& event) {
    Line line = {{"time", stamp.Time}, {"ms", stamp.Ms}};
    line.update(event);
    return TextOf(line);
}

Line StartEvent(const Run& run) {
    return RunEvent("start", run);
}

Line DayEvent(const Run& run) {
    return RunEvent("day", run);
}

Line EndEvent(const std::string& why) {
    return {{"event", "end"}, {"why", why}};
}

Line BytesEvent(std::string_view bytes) {
    return {{"event", "received"}, {"from", "port"}, {"bytes", TextOfBytes(bytes)}};
}

Line TextEvent(platform::TextSource source, TextView text) {
    return {{"event", "received"},
            {"from", source == platform::TextSource::Mailbox ? "mailbox" : "again"},
            {"text", Utf8(Text(text))}};
}

Line EmptiedEvent(TextView text) {
    return {{"event", "emptied"}, {"text", Utf8(Text(text))}};
}

Line ReadingEvent(const platform::Verdict& verdict, const std::string& limit) {
    const bool hasRow = verdict.Row >= 0;
    Line event = {{"event", "reading"},
                  {"verdict", Utf8(companion::NameOf(verdict.Fate))},
                  {"types", ListOf(verdict.Reading.Types)},
                  {"value", Utf8(verdict.Reading.Value)},
                  {"unit", Utf8(verdict.Reading.Unit)},
                  {"origin", Utf8(verdict.Reading.Origin)},
                  {"row", OrNull(hasRow, verdict.Row)},
                  {"field", OrNull(hasRow, Utf8(verdict.Field))},
                  {"file", OrNull(!verdict.File.empty(), Utf8(verdict.File))}};
    if (verdict.Fate == platform::Fate::Origin)
        event["expected"] = Utf8(verdict.Expected);
    Add(event, "limit", limit);
    return event;
}

Line ReadingLines::EventOf(const platform::Verdict& verdict, const std::string& limit) {
    Line event = ReadingEvent(verdict, limit);
    if (!verdict.Reading.Variables.empty())
        event["variables"] = ListOf(verdict.Reading.Variables);
    Add(event, "old", Utf8(verdict.Old));
    if (verdict.Reading.Blob && verdict.Reading.Blob != LastBlob_)
        event["blob"] = Utf8(*verdict.Reading.Blob);
    LastBlob_ = verdict.Reading.Blob;
    return event;
}

Line RowEvent(const platform::RowChange& change) {
    Line event = {{"event", "row"},    {"what", NameOf(change.Event)}, {"file", Utf8(change.File)},
                  {"row", change.Row}, {"old", Utf8(change.OldLine)},  {"new", Utf8(change.NewLine)}};
    Add(event, "why", Utf8(change.Why));
    return event;
}

Line PortEvent(const std::string& what, const std::string& address, const std::string& why) {
    Line event = {{"event", "port"}, {"what", what}, {"address", address}};
    Add(event, "why", why);
    return event;
}

Line LinkEvent(bool open, const Text& port) {
    return {{"event", "link"}, {"open", open}, {"port", Utf8(port)}};
}

Line QuestionEvent(const std::string& what, const Text& question) {
    return {{"event", "question"}, {"what", what}, {"text", Utf8(question)}};
}

Line ActEvent(const std::string& act, const std::string& arguments, const Text& about) {
    Line event = {{"event", "act"}, {"act", act}};
    Add(event, "args", arguments);
    Add(event, "about", Utf8(about));
    return event;
}

Line FieldEvent(const Text& text) {
    return {{"event", "act"}, {"act", "set"}, {"text", Utf8(text)}};
}

Line ClockEvent(std::int64_t seconds) {
    return {{"event", "clock"}, {"seconds", seconds}};
}

Line SyncEvent(std::int64_t milliseconds) {
    return {{"event", "sync"}, {"took", milliseconds}};
}

Line RemovedEvent(const std::string& file) {
    return {{"event", "removed"}, {"file", file}};
}

} // namespace journal
