// SPDX-License-Identifier: MIT
#include "apps/quorin-console/station.h"

#include "backends/loop/acts.h"
#include "src/app/commands.h"
#include "src/blob/decoding.h"
#include "src/blob/targets.h"
#include "src/drivers/downloads.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/text/text.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <utility>

namespace console {

using modFileSystem::Table;
using modStringTools::FromBytes;
using modStringTools::NumberText;
using modStringTools::ToBytes;
using platform::Fate;
using platform::Verdict;
using start::ExitStatus;
using namespace modQuorin;

namespace {

constexpr std::int64_t BetweenLooks = 10'000; // milliseconds
constexpr std::int64_t LinkPatience = 5'000;
constexpr std::int64_t BetweenSaves = 10'000; // of a record that another program keeps locked

/// True if a result of the instrument fills this field, and not a variable that comes with one.
bool TakesResults(const InfField& field) {
    const Text item = modStringTools::LowerCase(field.Blob);
    return !item.empty() && item.compare(0, modBLob::VariableMark.size(), modBLob::VariableMark) != 0;
}

bool HoldsValue(const platform::OwnerDrawGrid& grid, std::size_t row) {
    return !grid.Cell(static_cast<std::int32_t>(row), ValueColumn).empty();
}

bool RecordHasReading(const platform::OwnerDrawGrid& grid) {
    for (std::size_t row = 0; row < Inf.InfFields.size(); ++row) {
        if (TakesResults(Inf.InfFields[row]) && HoldsValue(grid, row))
            return true;
    }
    return false;
}

/// The header of a download is of the day on which it was made. A field that its driver has got since has no column.
bool HasColumnsOfTheDriver() {
    const auto& fields = Inf.InfFields;
    return std::equal(fields.begin(), fields.end(), Table.TableColumns.begin(), Table.TableColumns.end(),
                      [](const InfField& field, const Text& column) { return field.FieldName == column; });
}

Text DayOf(const Text& driver, const Text& file) {
    for (const RegisteredDownload& download : RegisteredDownloads()) {
        if (download.Driver == driver && download.File == file)
            return download.Date;
    }
    return {};
}

/// Returns "Moisture 14.1 %".
Text WordsOf(const Verdict& verdict) {
    const platform::Reading& reading = verdict.Reading;
    const Text type = reading.Types.empty() ? Text() : reading.Types.front();
    const Text name = verdict.Field.empty() ? type : verdict.Field;
    return name + (name.empty() ? u"" : u" ") + reading.Value + (reading.Unit.empty() ? u"" : u" ") + reading.Unit;
}

} // namespace

Station::Station(StationPlan plan, backends::HostBackEnd& device, backends::Ending& ending, Writer& out)
    : Space(device, [this] { return Plan_.Root; }), Plan_(std::move(plan)), Device_(device), Ending_(ending), Out_(out),
      Guide_(device) {
    device.readings.Add(*this);
    device.loop.Listen(*this);
}

// --- the download ----------------------------------------------------------------------------------------------------

void Station::Begin() {
    Text why = ChoosePort();
    if (why.empty())
        why = OpenNewest();
    if (!why.empty()) {
        Stop(ExitStatus::NotStarted, why);
        Device_.loop.FinishEnding();
    }
    HasBegun_ = true;
    LinkDownSince_ = Device_.clock.Milliseconds();
    LookWhereItIs();
    Manager_.Tell("READY=1");
}

/// A port of the command line becomes the port of the settings, as if a person had chosen it in the preferences.
Text Station::ChoosePort() const {
    const Text key = u"ComPort";
    const Text wanted = Plan_.Port ? u"Com" + NumberText(*Plan_.Port) : Text();
    if (!wanted.empty() && GetSetting(key, u"OFF") != wanted)
        SaveSetting(key, wanted);
    const Text chosen = GetSetting(key, u"OFF");
    if (chosen.empty() || chosen == u"OFF")
        return u"no port is chosen; --port N=ADDRESS says which one";
    if (!wanted.empty() && chosen != wanted)
        return u"the port can't be stored in the settings";
    const auto number = modBluetooth::PortNumber(chosen);
    const bool isSimulated = modBluetooth::KindOf(chosen) == modBluetooth::LinkKind::Serial && number &&
                             !Device_.host.ports.AddressOf(*number);
    return isSimulated && !Device_.clock.IsVirtual()
               ? chosen + u" has no address; --port " + NumberText(*number) + u"=ADDRESS gives it one"
               : Text();
}

Text Station::OpenNewest() {
    if (!Guide_.GoTo(ScrDrivers) || !Guide_.TapRow(Plan_.Driver) || Screens.CurrentScreen != ScrDownloads)
        return u"the driver " + Plan_.Driver + u" is not installed";
    if (Downloads.DownloadFiles.empty())
        Guide_.Run(u"New");
    if (Downloads.DownloadFiles.empty())
        return u"no download of " + Plan_.Driver + u" can be made";
    const Text file = Downloads.DownloadFiles.back();
    Day_ = DayOf(Plan_.Driver, file);
    Guide_.TapRow(static_cast<std::int32_t>(Downloads.DownloadFiles.size()) - 1);
    if (Screens.CurrentScreen != ScrInfRecord)
        return file + u" can't be opened with the driver " + Plan_.Driver;
    Text why = WhyNotThisDriver();
    if (why.empty() && !HasColumnsOfTheDriver())
        why = OpenAnother();
    if (why.empty() && modFileSystem::TableRowCount() == 0)
        why = file + u" can't be written";
    if (why.empty())
        RunCommand(u"Last Record");
    File_ = Table.TableName;
    return why;
}

Text Station::WhyNotThisDriver() const {
    const auto& fields = Inf.InfFields;
    if (std::none_of(fields.begin(), fields.end(), TakesResults))
        return u"the driver " + Plan_.Driver + u" has no field that takes a reading";
    for (const InfField& field : fields) {
        if (TakesResults(field) && field.Copy)
            return u"the driver " + Plan_.Driver + u" copies " + field.FieldName +
                   u" into each new record (COPY), so that each reading would have to ask whether it may replace it";
    }
    return {};
}

/// The list of downloads selects its first row when it is shown, and reports no other one before it was painted: the
/// new download is selected as that report would.
Text Station::OpenAnother() {
    const std::size_t before = Downloads.DownloadFiles.size();
    RunCommand(u"Back");
    if (!Failure_.empty())
        return Failure_;
    RunCommand(u"New");
    if (Downloads.DownloadFiles.size() <= before)
        return u"no further download of " + Plan_.Driver + u" can be made";
    Selection.SelectedDownload = Downloads.DownloadFiles.back();
    RunCommand(u"Open");
    File_ = Table.TableName;
    Day_ = Today();
    WasCollecting_ = false; // so that the new file is told
    return Screens.CurrentScreen == ScrInfRecord && modFileSystem::TableRowCount() > 0
               ? Text()
               : Selection.SelectedDownload + u" can't be made";
}

Text Station::NewRecord() {
    RunCommand(u"New Record");
    return Failure_;
}

void Station::RunCommand(const Text& command) {
    backends::ReportAct({.Word = "command", .Arguments = '"' + ToBytes(command) + '"', .About = command});
    MenuEvent(command);
}

bool Station::IsCollecting() const {
    return Screens.CurrentScreen == ScrInfRecord && Selection.SelectedDriver == Plan_.Driver && !Inf.InfFields.empty();
}

// --- the readings ----------------------------------------------------------------------------------------------------

void Station::ResultComes(const platform::Reading& result) {
    const bool isAsked = Device_.Seen().boxes.Current() != nullptr; // about the record that is on the screen
    if (!HasBegun_ || !IsCollecting() || isAsked || modPDAUI::AnyInputFieldVisible())
        return;
    const auto& grid = Device_.Seen().grdMain;
    const std::int32_t row = modBLob::FindTarget(Inf.InfFields, result.Types).Row;
    if (row < 0)
        return;
    const auto target = static_cast<std::size_t>(row);
    const bool isFirst = std::exchange(IsFirst_, false);
    Text why;
    if (isFirst && Plan_.Daily && Day_ != Today())
        why = OpenAnother();
    else if ((isFirst && RecordHasReading(grid)) || HoldsValue(grid, target))
        why = NewRecord();
    if (why.empty() && HoldsValue(grid, target))
        why = Inf.InfFields[target].FieldName + u" of a new record is not empty";
    if (why.empty())
        return;
    RefuseWithRest(result);
    Stop(ExitStatus::CantStore, why);
    Device_.loop.FinishEnding();
}

/// No record takes the rest of the batch. Each of its results is reported as what it is.
void Station::RefuseWithRest(const platform::Reading& result) {
    const Verdict refused{.Fate = Fate::NoRecord, .Reading = result, .File = File_};
    Device_.readings.ReadingJudged(refused);
    while (modBLob::NextResult())
        Device_.readings.ReadingJudged(
            {.Fate = Fate::NoRecord, .Reading = modBLob::CurrentResult(modBLob::Decoder), .File = File_});
}

void Station::ReadingJudged(const platform::Verdict& verdict) {
    switch (verdict.Fate) {
    case Fate::Taken:
    case Fate::Replaced:
    case Fate::NoType:
    case Fate::OpenField:
        Unsaved_.push_back(WordsOf(verdict));
        break;
    case Fate::NoColumn:
    case Fate::NoRecord:
        Unsaved_.push_back(WordsOf(verdict));
        if (NoPlace_.empty())
            NoPlace_ = verdict.File + u" has no place for " + verdict.Field;
        break;
    case Fate::Origin:
        Foreign(verdict);
        break;
    default:
        break;
    }
}

void Station::Foreign(const platform::Verdict& verdict) {
    if (std::exchange(Foreigner_, verdict.Reading.Origin) == verdict.Reading.Origin)
        return;
    const Text refused = u"A reading of " + verdict.Reading.Origin + u" was refused: ";
    Tell("foreign",
         verdict.Expected.empty() ? refused + u"it has not said that it is connected. Switch it off and on again."
                                  : refused + u"the station collects from " + verdict.Expected +
                                        u". To collect from the other instrument, end the station and start it again.",
         {{"origin", Utf8(verdict.Reading.Origin)}, {"expected", Utf8(verdict.Expected)}});
}

void Station::RowChanged(const platform::RowChange& change) {
    if (change.Event == platform::RowEvent::Deleted)
        return;
    if (!change.Why.empty()) {
        Failure_ = change.File + u" can't be written: " + change.Why;
    } else if (change.Event == platform::RowEvent::Saved) {
        Unsaved_.clear();
        Failure_.clear();
        NextSave_ = 0;
    }
}

// --- each round ------------------------------------------------------------------------------------------------------

bool Station::RaiseWhatIsPending() {
    if (!HasBegun_ || Status_ || Device_.loop.Ending())
        return false;
    Manager_.SignOfLife();
    LookWhereItIs();
    LookAtLink();
    LookWhoIsConnected();
    LookAtDisk();
    GoOnBehindMidnight();
    if (!Status_ && MaySave())
        SaveRecord();
    if (!Table.RecordDirty && !Failure_.empty())
        Stop(ExitStatus::CantStore, Failure_);
    if (!NoPlace_.empty())
        Stop(ExitStatus::CantStore, NoPlace_);
    return false;
}

void Station::LookWhereItIs() {
    const bool isCollecting = IsCollecting();
    if (isCollecting && File_ != Table.TableName) {
        File_ = Table.TableName;
        Day_ = Today(); // a person has chosen it: it is today's
        WasCollecting_ = false;
    }
    if (std::exchange(WasCollecting_, isCollecting) == isCollecting)
        return;
    if (isCollecting)
        Tell("collecting", u"Collects " + Plan_.Driver + u" into " + File_ + u".",
             {{"driver", Utf8(Plan_.Driver)}, {"file", Utf8(File_)}});
    else
        Tell("left", u"A command has left the record. Readings are dropped until a record of " + Plan_.Driver +
                         u" is on the screen again.");
}

/// A link that is open again soon is no news.
void Station::LookAtLink() {
    const std::int64_t now = Device_.clock.Milliseconds();
    if (modBluetooth::Ports.LinkOpen || !IsCollecting()) {
        LinkDownSince_ = now;
        if (std::exchange(LinkIsTold_, false) && modBluetooth::Ports.LinkOpen)
            Tell("linkup", modBluetooth::StoredPort() + u" is open.");
        return;
    }
    if (LinkIsTold_ || now - LinkDownSince_ < LinkPatience)
        return;
    LinkIsTold_ = true;
    const auto& serial = Device_.serial;
    const std::string address = serial.Address().empty() ? "" : " (" + serial.Address() + ")";
    const Text why = serial.Trouble().empty() ? platform::ErrorText(serial.LastOpening()) : FromBytes(serial.Trouble());
    Tell("linkdown",
         modBluetooth::StoredPort() + FromBytes(address) + u" is not open: " + why + u". It is tried again and again.");
}

/// The form takes readings of whichever instrument has said last that it is connected.
void Station::LookWhoIsConnected() {
    const Text& instrument = modBLob::Decoder.ConnectedID;
    if (instrument == Instrument_)
        return;
    Instrument_ = instrument;
    Foreigner_.clear();
    Tell("connected", instrument + u" has connected.", {{"origin", Utf8(instrument)}});
}

void Station::LookAtDisk() {
    const std::int64_t now = Device_.clock.Milliseconds();
    if (now < NextLook_)
        return;
    NextLook_ = now + BetweenLooks;
    const auto free = Space.Find(Plan_.Root);
    if (free && *free < LeastSpace)
        Stop(ExitStatus::CantStore, u"the disk of " + FromBytes(Plan_.Root) + u" is full: less than 5 MB are free");
}

/// The form waits half a second by the time of day before it decodes a burst. One that has come right before midnight
/// would wait for a whole day, and all others behind it: the wait begins again instead.
void Station::GoOnBehindMidnight() {
    auto& receive = modBluetooth::Receive;
    if (receive.BlobEndSeen && Device_.clock.TimeOfDay() < receive.LastPollTime)
        receive.LastPollTime = 0;
}

/// A field that is open is somebody's work in progress.
bool Station::MaySave() const {
    return !Unsaved_.empty() && Table.RecordDirty && IsCollecting() && !modPDAUI::AnyInputFieldVisible() &&
           Device_.Seen().boxes.Current() == nullptr && Device_.clock.Milliseconds() >= NextSave_;
}

/// "Last Record" saves the record, which is the last one unless a command has led elsewhere, and shows the last one.
/// What another program keeps locked stays marked as changed, and is tried again.
void Station::SaveRecord() {
    RunCommand(u"Last Record");
    if (Table.RecordDirty)
        NextSave_ = Device_.clock.Milliseconds() + BetweenSaves;
}

// --- what is told ----------------------------------------------------------------------------------------------------

void Station::Stop(ExitStatus status, const Text& why) {
    if (Status_)
        return;
    Status_ = status;
    Json unsaved = Json::array();
    for (const Text& reading : Unsaved_)
        unsaved.push_back(Utf8(reading));
    Tell("stopped", why, {{"notsaved", unsaved}});
    Manager_.Tell("STOPPING=1");
    Ending_.Begin("the station: " + ToBytes(why));
}

void Station::Tell(const char* state, const Text& words, Json more) {
    Json event = {{"event", "station"}, {"state", state}, {"text", Utf8(words)}};
    event.update(more);
    Out_.Write(event);
    Manager_.Tell("STATUS=" + Utf8(words));
}

} // namespace console
