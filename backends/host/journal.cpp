// SPDX-License-Identifier: MIT
#include "backends/host/journal.h"

#include "backends/loop/long_call.h"
#include "companion/words.h"
#include "src/link/ports.h"
#include "src/view/input_fields.h"

#include <cstdlib>
#include <ctime>
#include <tuple>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::int64_t LeastJump = 2; // seconds; the two clocks are read one after the other

std::string UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&now, &parts);
    char text[sizeof "2026-11-22T19:30:05Z"];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts));
}

std::string PathWithoutLinks(const std::string& path) {
    std::string found;
    return Canonical(path, found) == NoError ? found : path;
}

const char* NameOf(DeviceSerial::Step step) {
    switch (step) {
    case DeviceSerial::Step::Opened:
        return "opened";
    case DeviceSerial::Step::Failed:
        return "failed";
    case DeviceSerial::Step::Closed:
        return "closed";
    case DeviceSerial::Step::Lost:
        break;
    }
    return "lost";
}

std::string WhyOf(const ProgramOver& over) {
    switch (over.Why) {
    case ProgramOver::Reason::Ended:
        return "ended";
    case ProgramOver::Reason::InputEnded:
        return "the commands ended";
    case ProgramOver::Reason::CommandFailed:
        return "a command failed";
    case ProgramOver::Reason::Failed:
        break;
    }
    return modStringTools::ToBytes(over.Failure);
}

} // namespace

Journal::Journal(const JournalPlan& plan, ProgramName program, HostBackEnd& device, SyncWorker::Sync sync)
    : Device_(device), Program_(std::move(program)), Root_(PathWithoutLinks(plan.Root)),
      File_(plan.Folder, Root_, plan.Limits), Syncs_(std::move(sync)),
      ClockIsOff_(device.clock.Now().WholeSeconds - device.clock.SteadySeconds()) {
    Acts.Begins = [this](const Act& act) { Begins(act); };
    Acts.Asked = [this](const Text& question) { Asked(question); };
    Acts.LeftUnanswered = [this](const Text& question) { LeftUnanswered(question); };
    device.serial.BytesCame = [this](std::string_view bytes) { Write(journal::BytesEvent(bytes)); };
    device.serial.Stepped = [this](DeviceSerial::Step step, const std::string& why) { PortStepped(step, why); };
    device.readings.Add(*this);
    device.loop.Listen(*this);
    OpenDay(TextOfDate(device.clock.Now().Date));
    Append(journal::StartEvent(Run()));
}

Journal::~Journal() {
    Acts = {};
    Device_.serial.BytesCame = nullptr;
    Device_.serial.Stepped = nullptr;
}

int Journal::SyncData(int file) {
    return Repeated([file] { return ::fdatasync(file); });
}

journal::Run Journal::Run() const {
    const Box screen = Device_.system.WorkArea();
    return {
        .Program = Program_.Name,
        .Version = Program_.Version,
        .ProcessId = ::getpid(),
        .Root = Root_,
        .Words = Program_.Words,
        .VirtualClock = Device_.clock.IsVirtual(),
        .Utc = Device_.clock.IsVirtual() ? std::string() : UtcNow(),
        .Device = Device_.system.DeviceType(),
        .OsVersion = journal::Utf8(Device_.system.VersionText()),
        .User = journal::Utf8(Device_.system.UserName()),
        .ScreenWidth = static_cast<std::int32_t>(screen.Width),
        .ScreenHeight = static_cast<std::int32_t>(screen.Height),
    };
}

// --- the file --------------------------------------------------------------------------------------------------------

journal::Stamp Journal::Now() {
    const DateTime now = Device_.clock.Now();
    if (now.WholeSeconds != LastSecond_)
        LastStamp_.Time = TextOfMoment(now);
    LastSecond_ = now.WholeSeconds;
    LastStamp_.Ms = Device_.clock.Milliseconds();
    return LastStamp_;
}

void Journal::Write(const journal::Line& event) {
    if (Stopped_)
        return;
    if (!File_.IsRemoved())
        WriteReadings(); // they are of the day before, if that has ended
    BeginDay();
    WriteReadings();
    Append(event);
}

void Journal::WriteReadings() {
    if (Judged_.empty())
        return;
    std::string lines; // of the day whose file is open
    for (const Judged& judged : Judged_)
        lines += (lines.empty() ? "" : "\n") + Stamped(judged.When, Readings_.EventOf(judged.Verdict, judged.Limit));
    Judged_.clear();
    Put(lines);
}

/// The lines of a day are in a file of their own. One that a person has removed is begun anew.
void Journal::BeginDay() {
    const std::string day = Now().Time.substr(0, File_.Day().size());
    if (day == File_.Day() && !File_.IsRemoved())
        return;
    SyncLines();
    if (Stopped_)
        return;
    OpenDay(day);
    Append(journal::DayEvent(Run()));
}

void Journal::OpenDay(const std::string& day) {
    const LongCall call(Device_);
    if (const Text why = File_.Open(day); !why.empty())
        Stop(why);
}

void Journal::Append(const journal::Line& event) {
    Put(Stamped(Now(), event));
}

void Journal::Put(const std::string& lines) {
    if (Stopped_)
        return;
    const LongCall call(Device_);
    ErrorNumber error = File_.Append(lines);
    for (const std::string& name : File_.RemoveOldest()) {
        if (error == NoError)
            error = File_.Append(Stamped(Now(), journal::RemovedEvent(name)));
    }
    if (error != NoError)
        Stop(ErrorText(error));
    Unsynced_ = true;
}

void Journal::Stop(const Text& why) {
    File_.Close();
    Stopped_ = true;
    Device_.onlooker.notices.Raise(companion::JournalStopped(why));
}

void Journal::SyncLines() {
    WriteReadings();
    if (Stopped_ || !Unsynced_)
        return;
    const LongCall call(Device_);
    Unsynced_ = false;
    if (const int failure = Syncs_.Write(File_.Number()); failure != 0)
        return Stop(ErrorText(FromErrno(failure)));
    const auto took = Syncs_.SlowOne();
    if (!took || Slow_)
        return;
    Slow_ = true;
    Append(journal::SyncEvent(took->count()));
    Device_.onlooker.notices.Raise(companion::JournalIsSlow());
}

/// The file of a delivery is deleted next, so that its text has to be on the medium, however long that takes.
void Journal::SyncDelivery() {
    if (Stopped_)
        return;
    const LongCall call(Device_);
    if (const int failure = Syncs_.WriteNow(File_.Number()); failure != 0)
        Stop(ErrorText(FromErrno(failure)));
}

void Journal::End(const ProgramOver& over, const std::string& by) {
    LookAtField();
    WriteField();
    Write(journal::EndEvent(by.empty() ? WhyOf(over) : "ended by " + by));
    SyncLines();
}

// --- what is recorded ------------------------------------------------------------------------------------------------

/// The bytes of a port have been recorded as they came. A delivery of the mailbox is deleted after this report.
void Journal::TextReceived(platform::TextSource source, TextView characters) {
    if (source == platform::TextSource::Port)
        return;
    Write(journal::TextEvent(source, characters));
    if (source == platform::TextSource::Mailbox)
        SyncDelivery();
}

/// A reading may replace what has been typed into the open field.
void Journal::DecodingBegins() {
    LookAtField();
    WriteField();
    SyncLines();
}

void Journal::TextEmptied(TextView characters) {
    Write(journal::EmptiedEvent(characters));
}

void Journal::ReadingJudged(const platform::Verdict& verdict) {
    constexpr std::size_t Most = 4096; // a batch may have any number of results
    if (Judged_.size() == Most)
        WriteReadings();
    const auto outside = Device_.onlooker.limits.Judge(verdict);
    Judged_.push_back({Now(), verdict, outside ? journal::Utf8(companion::NameOf(outside->Breach)) : std::string()});
    TakeFieldAsItIs(); // what a reading has written into an open field, nobody has typed
}

void Journal::RowChanged(const platform::RowChange& change) {
    LookAtField();
    WriteField();
    Write(journal::RowEvent(change));
}

void Journal::Begins(const Act& act) {
    LookAtField();
    WriteField();
    Write(journal::ActEvent(act.Word, act.Arguments, act.About));
}

void Journal::Asked(const Text& question) {
    Write(journal::QuestionEvent("asked", question));
}

void Journal::LeftUnanswered(const Text& question) {
    Write(journal::QuestionEvent("unanswered", question));
}

/// A port that can't be opened fails twice a second; that is recorded once.
void Journal::PortStepped(DeviceSerial::Step step, const std::string& why) {
    const std::string& address = Device_.serial.Address();
    if (step != DeviceSerial::Step::Failed) {
        LastFailure_.reset();
    } else {
        const std::pair failure(address, why);
        if (LastFailure_ == failure)
            return;
        LastFailure_ = failure;
    }
    Write(journal::PortEvent(NameOf(step), address, why));
}

bool Journal::RaiseWhatIsPending() {
    WriteReadings();
    LookAtField();
    LookAtLink();
    LookAtClock();
    return false;
}

std::pair<Journal::OpenField, Text> Journal::FieldNow() const {
    const Controls& controls = Device_.Seen();
    const OpenField place{nullptr, modPDAUI::Input.EditRow, modPDAUI::Input.EditCol};
    const auto at = [&place](const Control& box) { return OpenField{&box, place.Row, place.Col}; };
    if (controls.txtInputField.Visible())
        return {at(controls.txtInputField), controls.txtInputField.Contents()};
    if (controls.cbotxtInputField.Visible())
        return {at(controls.cbotxtInputField), controls.cbotxtInputField.Contents()};
    if (controls.cboInputField.Visible())
        return {at(controls.cboInputField), controls.cboInputField.Contents()};
    return {};
}

void Journal::TakeFieldAsItIs() {
    std::tie(Field_, FieldText_) = FieldNow();
    FieldWritten_ = FieldText_;
}

/// A field that has closed since the last look is recorded with the text that it had then.
void Journal::LookAtField() {
    const auto [field, text] = FieldNow();
    if (field != Field_) {
        WriteField();
        FieldWritten_ = text;
    }
    Field_ = field;
    FieldText_ = text;
}

void Journal::WriteField() {
    if (FieldText_ == FieldWritten_)
        return;
    FieldWritten_ = FieldText_;
    Write(journal::FieldEvent(FieldText_));
}

void Journal::LookAtLink() {
    if (modBluetooth::Ports.LinkOpen == LinkOpen_)
        return;
    LinkOpen_ = modBluetooth::Ports.LinkOpen;
    Write(journal::LinkEvent(LinkOpen_, modBluetooth::StoredPort()));
}

void Journal::LookAtClock() {
    const std::int64_t off = Device_.clock.Now().WholeSeconds - Device_.clock.SteadySeconds();
    const std::int64_t jump = off - ClockIsOff_;
    if (std::abs(jump) < LeastJump)
        return;
    ClockIsOff_ = off;
    Write(journal::ClockEvent(jump));
}

} // namespace backends
