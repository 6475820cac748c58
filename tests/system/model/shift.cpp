// SPDX-License-Identifier: MIT
// The main loop of a shift: it runs the program again and again, and compares each step with the model.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "src/blob/decoding.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/text/text.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <iostream>

namespace shift {

namespace {

using backends::ProgramOver;
using modStringTools::FromBytes;
using modStringTools::ToBytes;

constexpr std::size_t StepsToShow = 60;
constexpr std::uint64_t StepsBetweenLooks = 400; // between comparisons of all files

/// A Monday morning.
constexpr Moment FirstMorning = 13577 * Day + 7 * Hour;

std::string Listed(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts)
        list += "[" + text + "]";
    return list;
}

std::string NameOfScreen() {
    return modQuorin::ScreenRow(modQuorin::Screens.CurrentScreen).Name;
}

} // namespace

Shift::Shift(const Kind& kind, std::uint64_t seed, std::uint32_t results)
    : KindOfDevice_(kind), Wanted_(results), Chance_(seed), Meter_(Chance_, Results), Model_(Results, kind.KindOfLink),
      Folder_(kind) {
    if (kind.KindOfLink == LinkKind::Server)
        Folder_.PutMailbox("rfcomm.run", "");
}

std::string Shift::Run() {
    Model_.Start(FirstMorning);
    Began_ = FirstMorning;
    PlanSetUp();
    while (!Over_ && Difference_.empty())
        RunOnce();
    if (Difference_.empty())
        Account();
    if (Difference_.empty())
        return {};
    std::string steps;
    for (const std::string& step : LastSteps_)
        steps += step + "\n";
    return steps + Difference_;
}

void Shift::RunOnce() {
    Hand_ = std::make_unique<Handheld>(KindOfDevice_, Folder_, Model_.Now, [this] { Step(); });
    const ProgramOver over = Hand_->Run();
    if (over.Why == ProgramOver::Reason::Failed)
        Expect("the program", "stops: " + ToBytes(over.Failure), "goes on");
    if (!Difference_.empty())
        return;
    CompareAllFiles(); // the end of the program writes nothing
    Hand_.reset();
    const Moment awake = (Model_.Now / Second + 1 + Below(60)) * Second;
    Model_.Start(awake);
    Note("the program starts at " + MomentText(awake));
    ++Counts.Restarts;
    TellProgress();
    if (KindOfDevice_.KindOfLink == LinkKind::Server && Chance_.OneIn(4))
        SwitchServer();
    while (!Over_ && SetUp_ && Difference_.empty() && !Chance_.OneIn(2))
        KillInsideASave();
}

/// Prints the progress every 20 seconds: a run of a million results is long.
void Shift::TellProgress() {
    const auto now = std::chrono::steady_clock::now();
    if (now - LastWord_ < std::chrono::seconds(20))
        return;
    LastWord_ = now;
    std::cerr << KindOfDevice_.Name << ": " << Results.Sent() << " of " << Wanted_ << " results, "
              << MomentText(Model_.Now) << ", " << Counts.FilesCompared << " files compared" << std::endl;
}

void Shift::Step() {
    ++Counts.Steps;
    Compare();
    if (!Difference_.empty())
        Device().loop.Leave({ProgramOver::Reason::CommandFailed, {}});
    if (Script_.empty()) {
        Act();
        return;
    }
    const Doing next = std::move(Script_.front());
    Script_.pop_front();
    next();
}

void Shift::Note(const std::string& step) {
    LastSteps_.push_back(MomentText(Model_.Now) + "  " + step);
    if (LastSteps_.size() > StepsToShow)
        LastSteps_.pop_front();
}

/// Performs an action, in the model first: the program may open a box in the middle of it and run further steps inside.
void Shift::Do(const std::string& what, const Doing& model, const std::function<std::string()>& device) {
    Note(what);
    model();
    const std::string refusal = device();
    Expect("\"" + what + "\"", refusal.empty() ? "done" : refusal, "done");
}

void Shift::Choose(const std::string& caption, const Doing& model) {
    Do("choose " + caption, model, [&] { return backends::Choose(User(), FromBytes(caption)); });
}

void Shift::Tap(std::size_t row, std::size_t col, const Doing& model) {
    const auto r = static_cast<std::int32_t>(row);
    const auto c = static_cast<std::int32_t>(col);
    Do("tap " + std::to_string(row) + " " + std::to_string(col), model, [&] { return backends::Tap(User(), r, c); });
}

void Shift::Expect(const std::string& what, const std::string& found, const std::string& expected) {
    if (found != expected && Difference_.empty())
        Difference_ = what + "\n  is " + found + "\n  and should be " + expected + "\n";
}

void Shift::Expect(const std::string& what, bool found, bool expected) {
    Expect(what, std::string(found ? "true" : "false"), expected ? "true" : "false");
}

void Shift::Compare() {
    const std::vector<std::string> events = Hand_->TakeEvents();
    Expect("what happened", Listed(events), Listed(Model_.Events));
    for (const std::string& event : events) {
        Counts.HighTones += event.rfind("tone 1046", 0) == 0 ? 1 : 0;
        Counts.LowTones += event.rfind("tone 369", 0) == 0 ? 1 : 0;
    }
    Model_.Events.clear();
    if (!SetUp_)
        return;
    Expect("the screen", NameOfScreen(), NameOf(Model_.At));
    Expect("the link wanted", modBluetooth::Receive.LinkWanted, Model_.LinkWanted);
    Expect("the link open", modBluetooth::Ports.LinkOpen, Model_.LinkOpen);
    Expect("the port open", Device().serial.PortOpen(), Model_.PortOpen);
    Expect("the instrument", ToBytes(modBLob::Decoder.ConnectedID), Model_.Text.Connected);
    Expect("the field open", Device().txtInputField.Visible(), Model_.FieldOpen);
    if (KindOfDevice_.KindOfLink == LinkKind::Server)
        Expect("the mailbox file there", Folder_.HasMailbox("ipcout.txt"), Model_.MailboxThere);
    if (Model_.OnRecord())
        CompareRecord();
    if (Model_.At == Place::Trace)
        Expect("the trace", Listed(Column(0)), Listed(Model_.TraceLines));
    std::set<std::string> names = Model_.Files.TakeWritten();
    if (Model_.Files.Has(Model_.OpenFile))
        names.insert(Model_.OpenFile);
    CompareFiles(names);
    if (Counts.Steps % StepsBetweenLooks == 0)
        CompareAllFiles();
}

std::vector<std::string> Shift::Column(std::int32_t col) {
    std::vector<std::string> texts;
    for (std::int32_t row = 0; row < Device().grdMain.Rows(); ++row)
        texts.push_back(ToBytes(Device().grdMain.Cell(row, col)));
    return texts;
}

void Shift::CompareRecord() {
    Expect("the names of the fields", Listed(Column(0)), Listed(Model_.OpenTable().Columns));
    Expect("the record", Listed(Column(1)), Listed(Model_.Cells));
    Expect("the title", ToBytes(Device().grdTitle.Cell(0, 0)), Model_.Title);
    Expect("the position", ToBytes(Device().grdTitle.Cell(0, 1)),
           std::to_string(Model_.RecordNumber) + "/" + std::to_string(Model_.OpenTable().Rows.size()));
    Expect("the record changed", modFileSystem::Table.RecordDirty, Model_.Dirty);
    if (Model_.FieldOpen)
        Expect("the field", ToBytes(Device().txtInputField.Contents()), Model_.FieldText);
}

void Shift::CompareFiles(const std::set<std::string>& names) {
    for (const std::string& name : names) {
        const auto bytes = Folder_.Read(name);
        Expect(name, bytes.value_or("(missing)"), Model_.Files.Read(name).Bytes());
        ++Counts.FilesCompared;
    }
}

void Shift::CompareAllFiles() {
    if (!SetUp_)
        return;
    std::set<std::string> names;
    std::string expected;
    std::string found;
    for (const auto& [name, file] : Model_.Files.All()) {
        names.insert(name);
        expected += name + " ";
    }
    for (const std::string& name : Folder_.Names())
        found += name + " ";
    Expect("the data folder", found, expected);
    if (Difference_.empty())
        CompareFiles(names);
}

/// Counts the results: each that was sent is in a file, was copied with one, or is lost by a rule.
void Shift::Account() {
    std::vector<bool> kept(Results.Sent() + 1);
    for (const auto& [name, file] : Model_.Files.All()) {
        for (const ResultId id : IdsInFields(Folder_.Read(name).value_or("")))
            kept[id] = true;
    }
    const std::vector<ResultId> inMailbox = IdsInRecords(Model_.Mailbox);
    for (ResultId id = 1; id <= Results.Sent(); ++id) {
        const Fate fate = Results.Of(id);
        const bool waits = std::find(inMailbox.begin(), inMailbox.end(), id) != inMailbox.end();
        if (kept[id] || Results.HandedOver(id))
            ++Kept;
        else if (fate == Fate::OnScreen || (fate == Fate::OnTheWay && !waits))
            LostWithoutARule.push_back(id);
        else
            ++LostBy[static_cast<std::size_t>(fate)];
    }
}

// --- setting the device up

void Shift::TapText(const std::string& text) {
    std::int32_t row = 0;
    while (row < Device().grdMain.Rows() && Device().grdMain.Cell(row, 0).find(FromBytes(text)) == Text::npos)
        ++row;
    Tap(static_cast<std::size_t>(row), 0, [] {});
}

/// Plans the steps by which a technician chooses the port and installs the drivers.
void Shift::PlanSetUp() {
    const auto choose = [this](const char* caption) { Script_.push_back([this, caption] { Choose(caption, [] {}); }); };
    const auto tap = [this](const std::string& text) { Script_.push_back([this, text] { TapText(text); }); };
    for (const Outfit& outfit : Outfits()) {
        std::string lines = outfit.Driver + "|" + outfit.InfFile + "\n" + InfHeader + "\n";
        for (const std::string& row : outfit.InfRows)
            lines += row + "\n";
        Folder_.PutPackage(outfit.InfFile.substr(0, 4), lines);
    }
    choose("Preferences...");
    tap("Bluetooth Serial Setup...");
    tap(KindOfDevice_.Port);
    choose("Back");
    choose("inf editor...");
    choose("Add Driver...");
    for (const Outfit& outfit : Outfits()) {
        tap(outfit.InfFile.substr(0, 4));
        Script_.push_back(
            [this] { Choose("Install...", [this] { Model_.Events.push_back("box ok Driver installed"); }); });
        Script_.push_back([this] {
            Do(
                "answer ok", [] {}, [this] { return backends::Answer(User(), platform::BoxAnswer::Ok); });
        });
    }
    choose("Back");
    choose("Back");
    Script_.push_back([this] {
        Model_.Files.Write(DriversName).Columns = {"NAME", "INFFILE"};
        Model_.Files.Write(RegisterName).Columns = {"DRIVER", "FILE", "DATE", "ALIAS"};
        for (const Outfit& outfit : Outfits()) {
            Model_.Files.Write(DriversName).Rows.push_back({outfit.Driver, outfit.InfFile});
            DataFile& inf = Model_.Files.Write(outfit.InfFile);
            inf.Columns = SplitFields(InfHeader);
            for (const std::string& row : outfit.InfRows)
                inf.Rows.push_back(SplitFields(row));
        }
        SetUp_ = true;
        Leave(); // the first restart
    });
}

} // namespace shift
