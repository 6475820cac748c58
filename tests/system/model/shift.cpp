// SPDX-License-Identifier: MIT
// The frame of a shift: one run of the program after the other, each step of it compared with the model.
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
constexpr std::uint64_t StepsBetweenLooks = 400; // at all files

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
    : KindOfDevice(kind), Wanted(results), Chance(seed), Meter(Chance, Results), Twin(Results, kind.RoadOfLink),
      Folder(kind) {
    if (kind.RoadOfLink == Road::Server)
        Folder.PutMailbox("rfcomm.run", "");
}

std::string Shift::Run() {
    Twin.Start(FirstMorning);
    Began = FirstMorning;
    PlanSetUp();
    while (!Over && Difference.empty())
        RunOnce();
    if (Difference.empty())
        Account();
    if (Difference.empty())
        return {};
    std::string steps;
    for (const std::string& step : LastSteps)
        steps += step + "\n";
    return steps + Difference;
}

void Shift::RunOnce() {
    Hand = std::make_unique<Handheld>(KindOfDevice, Folder, Twin.Now, [this] { Step(); });
    const ProgramOver over = Hand->Run();
    if (over.Why == ProgramOver::Reason::Failed)
        Expect("the program", "stops: " + ToBytes(over.Failure), "goes on");
    if (!Difference.empty())
        return;
    CompareAllFiles(); // nothing is written by ending, whichever way
    Hand.reset();
    const Moment awake = (Twin.Now / Second + 1 + Below(60)) * Second;
    Twin.Start(awake);
    Note("the program starts at " + MomentText(awake));
    ++Counts.Restarts;
    TellProgress();
    if (KindOfDevice.RoadOfLink == Road::Server && Chance.OneIn(4))
        SwitchServer();
    while (!Over && SetUp && Difference.empty() && !Chance.OneIn(2))
        KillInsideASave();
}

/// Who waits for a million results hears something now and then.
void Shift::TellProgress() {
    const auto now = std::chrono::steady_clock::now();
    if (now - LastWord < std::chrono::seconds(20))
        return;
    LastWord = now;
    std::cerr << KindOfDevice.Name << ": " << Results.Sent() << " of " << Wanted << " results, " << MomentText(Twin.Now)
              << ", " << Counts.FilesCompared << " files compared" << std::endl;
}

void Shift::Step() {
    ++Counts.Steps;
    Compare();
    if (!Difference.empty())
        Device().loop.Leave({ProgramOver::Reason::CommandFailed, {}});
    if (Script.empty()) {
        Act();
        return;
    }
    const Doing next = std::move(Script.front());
    Script.pop_front();
    next();
}

void Shift::Note(const std::string& step) {
    LastSteps.push_back(MomentText(Twin.Now) + "  " + step);
    if (LastSteps.size() > StepsToShow)
        LastSteps.pop_front();
}

/// What somebody does, in the model first: the program may open a box in the middle, and go on inside it.
void Shift::Do(const std::string& what, const Doing& model, const std::function<std::string()>& device) {
    Note(what);
    model();
    const std::string refusal = device();
    Expect("\"" + what + "\"", refusal.empty() ? "done" : refusal, "done");
}

void Shift::Choose(const std::string& caption, const Doing& model) {
    Do("choose " + caption, model, [&] { return backends::Choose(Device(), FromBytes(caption)); });
}

void Shift::Tap(std::size_t row, std::size_t col, const Doing& model) {
    const auto r = static_cast<std::int32_t>(row);
    const auto c = static_cast<std::int32_t>(col);
    Do("tap " + std::to_string(row) + " " + std::to_string(col), model, [&] { return backends::Tap(Device(), r, c); });
}

void Shift::Expect(const std::string& what, const std::string& found, const std::string& expected) {
    if (found != expected && Difference.empty())
        Difference = what + "\n  is " + found + "\n  and should be " + expected + "\n";
}

void Shift::Expect(const std::string& what, bool found, bool expected) {
    Expect(what, std::string(found ? "true" : "false"), expected ? "true" : "false");
}

void Shift::Compare() {
    const std::vector<std::string> events = Hand->TakeEvents();
    Expect("what happened", Listed(events), Listed(Twin.Events));
    for (const std::string& event : events) {
        Counts.HighTones += event.rfind("tone 1046", 0) == 0 ? 1 : 0;
        Counts.LowTones += event.rfind("tone 369", 0) == 0 ? 1 : 0;
    }
    Twin.Events.clear();
    if (!SetUp)
        return;
    Expect("the screen", NameOfScreen(), NameOf(Twin.At));
    Expect("the link wanted", modBluetooth::Receive.LinkWanted, Twin.LinkWanted);
    Expect("the link open", modBluetooth::Ports.LinkOpen, Twin.LinkOpen);
    Expect("the port open", Device().serial.PortOpen(), Twin.PortOpen);
    Expect("the instrument", ToBytes(modBLob::Decoder.ConnectedID), Twin.Text.Connected);
    Expect("the field open", Device().txtInputField.Visible(), Twin.FieldOpen);
    if (KindOfDevice.RoadOfLink == Road::Server)
        Expect("the mailbox file there", Folder.HasMailbox("ipcout.txt"), Twin.MailboxThere);
    if (Twin.OnRecord())
        CompareRecord();
    if (Twin.At == Place::Trace)
        Expect("the trace", Listed(Column(0)), Listed(Twin.TraceLines));
    std::set<std::string> names = Twin.Files.TakeWritten();
    if (Twin.Files.Has(Twin.OpenFile))
        names.insert(Twin.OpenFile);
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
    Expect("the names of the fields", Listed(Column(0)), Listed(Twin.OpenTable().Columns));
    Expect("the record", Listed(Column(1)), Listed(Twin.Cells));
    Expect("the title", ToBytes(Device().grdTitle.Cell(0, 0)), Twin.Title);
    Expect("the position", ToBytes(Device().grdTitle.Cell(0, 1)),
           std::to_string(Twin.RecordNumber) + "/" + std::to_string(Twin.OpenTable().Rows.size()));
    Expect("the record changed", modFileSystem::Table.RecordDirty, Twin.Dirty);
    if (Twin.FieldOpen)
        Expect("the field", ToBytes(Device().txtInputField.Contents()), Twin.FieldText);
}

void Shift::CompareFiles(const std::set<std::string>& names) {
    for (const std::string& name : names) {
        const auto bytes = Folder.Read(name);
        Expect(name, bytes.value_or("(missing)"), Twin.Files.Read(name).Bytes());
        ++Counts.FilesCompared;
    }
}

void Shift::CompareAllFiles() {
    if (!SetUp)
        return;
    std::set<std::string> names;
    std::string expected;
    std::string found;
    for (const auto& [name, file] : Twin.Files.All()) {
        names.insert(name);
        expected += name + " ";
    }
    for (const std::string& name : Folder.Names())
        found += name + " ";
    Expect("the data folder", found, expected);
    if (Difference.empty())
        CompareFiles(names);
}

/// Each result that was sent is in a file, was handed over with one, or is lost by a rule.
void Shift::Account() {
    std::vector<bool> kept(Results.Sent() + 1);
    for (const auto& [name, file] : Twin.Files.All()) {
        for (const ResultId id : IdsInFields(Folder.Read(name).value_or("")))
            kept[id] = true;
    }
    const std::vector<ResultId> inMailbox = IdsInRecords(Twin.Mailbox);
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

/// The port is chosen and the drivers are installed as a technician does it.
void Shift::PlanSetUp() {
    const auto choose = [this](const char* caption) { Script.push_back([this, caption] { Choose(caption, [] {}); }); };
    const auto tap = [this](const std::string& text) { Script.push_back([this, text] { TapText(text); }); };
    for (const Outfit& outfit : Outfits()) {
        std::string lines = outfit.Driver + "|" + outfit.InfFile + "\n" + InfHeader + "\n";
        for (const std::string& row : outfit.InfRows)
            lines += row + "\n";
        Folder.PutPackage(outfit.InfFile.substr(0, 4), lines);
    }
    choose("Preferences...");
    tap("Bluetooth Serial Setup...");
    tap(KindOfDevice.Port);
    choose("Back");
    choose("inf editor...");
    choose("Add Driver...");
    for (const Outfit& outfit : Outfits()) {
        tap(outfit.InfFile.substr(0, 4));
        Script.push_back(
            [this] { Choose("Install...", [this] { Twin.Events.push_back("box ok Driver installed"); }); });
        Script.push_back([this] {
            Do(
                "answer ok", [] {}, [this] { return backends::Answer(Device(), platform::BoxAnswer::Ok); });
        });
    }
    choose("Back");
    choose("Back");
    Script.push_back([this] {
        Twin.Files.Write(DriversName).Columns = {"NAME", "INFFILE"};
        Twin.Files.Write(RegisterName).Columns = {"DRIVER", "FILE", "DATE", "ALIAS"};
        for (const Outfit& outfit : Outfits()) {
            Twin.Files.Write(DriversName).Rows.push_back({outfit.Driver, outfit.InfFile});
            DataFile& inf = Twin.Files.Write(outfit.InfFile);
            inf.Columns = SplitFields(InfHeader);
            for (const std::string& row : outfit.InfRows)
                inf.Rows.push_back(SplitFields(row));
        }
        SetUp = true;
        Leave(); // which is a first restart
    });
}

} // namespace shift
