// SPDX-License-Identifier: MIT
// What the technician does next.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "backends/input/keyboard.h"
#include "src/text/text.h"

namespace shift {

namespace {

using modStringTools::FromBytes;

constexpr std::size_t MostDownloads = 6; // of a driver; then the oldest is taken off
constexpr std::size_t MostRecords = 40;
constexpr std::size_t DeepestQuestion = 3;
constexpr std::int32_t KeyEsc = 27;
constexpr std::int32_t KeyLeft = 37;
constexpr std::int32_t KeyRight = 39;
constexpr std::int32_t KeyDown = 40;

} // namespace

void Shift::Act() {
    if (Twin.FieldOpen && Twin.RepaintAt) { // the screen was filled under it, which closes it
        WaitALittle();
        return;
    }
    if (!Twin.Questions.empty()) {
        ActOnQuestion();
        return;
    }
    const bool over = Results.Sent() >= Wanted && Air.empty();
    if (!over && (Trouble() || ActOnLine()))
        return;
    if (!Settled() && !Chance.OneIn(4)) {
        WaitALittle();
        return;
    }
    if (!Settled() && Twin.At != Place::Record && Twin.At != Place::Main) {
        WaitALittle();
        return;
    }
    if (over) {
        GoHome();
        return;
    }
    switch (Twin.At) {
    case Place::Main:
        ActOnMain();
        break;
    case Place::Drivers:
        ActOnDrivers();
        break;
    case Place::Downloads:
        ActOnDownloads();
        break;
    case Place::Record:
        ActOnRecord();
        break;
    case Place::DatePrompt:
        ActInDatePrompt();
        break;
    case Place::RenamePrompt:
        ActInRenamePrompt();
        break;
    case Place::InstalledDrivers:
        ActOnInstalledDrivers();
        break;
    case Place::Columns:
        ActOnColumns();
        break;
    case Place::Trace:
        ActOnTrace();
        break;
    }
}

void Shift::ActOnQuestion() {
    const Question& question = Twin.Questions.back();
    if (question.Why == Question::Kind::Notice) {
        ++Counts.Notices;
        Do(
            "answer ok", [this] { Twin.Answer(true); },
            [this] { return backends::Answer(Device(), platform::BoxAnswer::Ok); });
        return;
    }
    if (Twin.LinkIsHeld() && Counts.Hours == 0 && Results.Sent() > Wanted / 10) {
        LetQuestionsStand();
        return;
    }
    if (Twin.Questions.size() < DeepestQuestion && Results.Sent() < Wanted && !Chance.OneIn(2)) {
        Counts.Nested += Twin.Questions.size() > 1 ? 1 : 0;
        if (Trouble() || ActOnLine())
            return;
        WaitForTick();
        return;
    }
    const bool yes = !Chance.OneIn(3);
    const bool download = question.Why == Question::Kind::DeleteDownload;
    if (download && question.Sure && yes) { // what it holds has been taken off the device by then
        const std::size_t row = Twin.Files.DownloadsOf(Twin.Driver)[Twin.SelectedDownload()];
        const std::string file = Twin.Files.Read(RegisterName).At(row, "FILE");
        for (const ResultId id : IdsInFields(Folder.Read(file).value_or("")))
            Results.HandOver(id);
        ++Counts.DeletedDownloads;
    }
    Counts.DeletedRecords += question.Why == Question::Kind::DeleteRecord && question.Sure && yes ? 1 : 0;
    ++Counts.Questions;
    ++(yes ? Counts.Yes : Counts.No);
    Do(
        yes ? "answer yes" : "answer no", [&] { Twin.Answer(yes); },
        [&] { return backends::Answer(Device(), yes ? platform::BoxAnswer::Yes : platform::BoxAnswer::No); });
}

void Shift::GoHome() {
    if (Twin.At != Place::Main) {
        GoBack();
        return;
    }
    Over = true;
    Leave();
}

/// By the menu, the title bar or the Esc key.
void Shift::GoBack() {
    const std::uint32_t how = Below(6);
    const bool prompt = Twin.At == Place::DatePrompt || Twin.At == Place::RenamePrompt;
    if (how == 0) {
        Do(
            "close", [this] { Twin.Back(); }, [this] { return backends::CloseForm(Device()); });
    } else if (how == 1 && !Twin.FieldOpen && !prompt) {
        Do(
            "key Esc", [this] { Twin.Back(); }, [this] { return backends::PressKey(Device(), KeyEsc); });
    } else {
        Choose(Twin.OnRecord() ? "Close" : "Back", [this] { Twin.Back(); });
    }
}

void Shift::ActOnMain() {
    if (Chance.OneIn(5))
        Leave();
    else if (Chance.OneIn(3))
        Choose("inf editor...", [this] { Twin.OpenInstalledDrivers(); });
    else if (Chance.OneIn(5))
        Choose("Bluetooth Debug...", [this] { Twin.OpenTrace(); });
    else
        Choose("Start...", [this] { Twin.OpenDrivers(); });
}

void Shift::ActOnDrivers() {
    if (Chance.OneIn(3)) {
        GoBack();
        return;
    }
    const std::size_t row = Below(Outfits().size());
    Tap(row, 0, [&] { Twin.OpenDriver(row); });
}

void Shift::ActOnDownloads() {
    const std::size_t count = Twin.Downloads().size();
    const std::uint32_t what = Below(20);
    if (count == 0 || (what < 2 && count < MostDownloads)) {
        ++Counts.NewDownloads;
        Choose("New", [this] { Twin.NewDownload(); });
    } else if (what < 5 && Twin.SelectedDownload() + 1 < count) {
        Do(
            "key down", [this] { Twin.SelectDownload(Twin.SelectedDownload() + 1); },
            [this] { return backends::PressKey(Device(), KeyDown); });
    } else if (what < 6 || (what < 12 && count == MostDownloads)) {
        Choose("Delete", [this] { Twin.DeleteDownload(); });
    } else if (what < 8) {
        ++Counts.Prompts;
        Choose("Rename", [this] { Twin.Rename(); });
    } else if (what < 10) {
        GoBack();
    } else if (what < 14) {
        Choose("Open", [this] { Twin.OpenDownload(); });
    } else {
        const std::size_t row = count - 1 - Below(std::min<std::size_t>(count, 2)); // the latest ones
        Tap(row, 0, [&] {
            Twin.SelectDownload(row);
            Twin.OpenDownload();
        });
    }
}

void Shift::ActOnRecord() {
    if (Twin.FieldOpen) {
        ActInField();
        return;
    }
    const std::uint32_t what = Below(20);
    if (what < 9)
        ActOnRecordCommand();
    else if (what < 13 && Settled())
        ActOnCell();
    else if (what < 14 || (what < 16 && Twin.OpenTable().Rows.size() > MostRecords))
        GoBack();
    else
        WaitForTick();
}

void Shift::ActOnRecordCommand() {
    static const char* const walks[] = {"Next Record", "Previous Record", "First Record", "Last Record"};
    const std::uint32_t what = Below(24);
    std::string command = "New Record";
    if (what == 0)
        command = "Delete Record";
    else if (what < 3)
        command = "Insert Record";
    else if (what < 6 || Twin.OpenTable().Rows.size() > MostRecords)
        command = Chance.Of(walks);
    Counts.NewRecords += command == "New Record" ? 1 : 0;
    Counts.Inserted += command == "Insert Record" ? 1 : 0;
    const bool next = command == "Next Record";
    if ((next || command == "Previous Record") && !Twin.FieldOpen && Chance.OneIn(2)) {
        Do(
            next ? "key right" : "key left", [&] { Twin.Command(command); },
            [&] { return backends::PressKey(Device(), next ? KeyRight : KeyLeft); });
    } else {
        Choose(command, [&] { Twin.Command(command); });
    }
}

void Shift::ActOnCell() {
    const std::size_t row = Below(Twin.Fields().size());
    if (!Twin.Fields()[row].Visible)
        return;
    Counts.Dates += Twin.Fields()[row].IsDate ? 1 : 0;
    Tap(row, 1, [&] { Twin.TapCell(row, true); });
}

/// A field closes when another cell is tapped, and goes with the screen under a command.
void Shift::ActInField() {
    static const char* const texts[] = {"typed", "by hand 3",
                                        "gr\xC3\xBC"
                                        "n",
                                        "", "x"};
    const std::uint32_t what = Below(8);
    const std::size_t row = Below(Twin.Fields().size());
    const std::string text = Chance.Of(texts);
    if (what == 0 && Twin.CaretBehind) {
        ++Counts.Edits;
        Do(
            "type " + text, [&] { Twin.TypeBehind(text); },
            [&] { return backends::TypeText(Device(), FromBytes(text)); });
    } else if (what < 3) {
        ++Counts.Edits;
        Do(
            "set " + text, [&] { Twin.Type(text); }, [&] { return backends::SetInput(Device(), FromBytes(text)); });
    } else if (what < 5 && Settled() && Twin.Fields()[row].Visible) {
        Tap(row, 0, [&] { Twin.TapCell(row, false); });
    } else if (what == 5) {
        ActOnRecordCommand();
    } else if (what == 6 && Chance.OneIn(4)) {
        GoBack();
    } else {
        WaitForTick();
    }
}

void Shift::ActInDatePrompt() {
    const std::uint32_t what = Below(4);
    if (what == 0) {
        GoBack();
    } else if (what == 1) {
        Choose("Ok", [this] { Twin.AcceptDate(); });
    } else {
        using namespace std::chrono;
        const year_month_day date = sys_days(DateOf(Twin.Now)) + days(Below(60)) - days(30);
        const platform::CalendarDate picked{int(date.year()), static_cast<std::int32_t>(unsigned(date.month())),
                                            static_cast<std::int32_t>(unsigned(date.day()))};
        Do(
            "pick " + DateText(date), [&] { Twin.PickDate(date); },
            [&] { return backends::PickDate(Device(), picked); });
    }
}

void Shift::ActInRenamePrompt() {
    static const char* const names[] = {"North field", "Monday", "",
                                        "Keller \xC3\xBC"
                                        "ber Tage"};
    const std::uint32_t what = Below(4);
    if (what == 0) {
        GoBack();
    } else if (what < 3) {
        ++Counts.Renamed;
        Choose("Ok", [this] { Twin.AcceptName(); });
    } else {
        const std::string name = Chance.Of(names);
        Do(
            "set " + name, [&] { Twin.Type(name); }, [&] { return backends::SetInput(Device(), FromBytes(name)); });
    }
}

void Shift::ActOnInstalledDrivers() {
    const std::uint32_t what = Below(3);
    const std::size_t row = Below(Outfits().size());
    if (what == 0)
        GoBack();
    else if (what == 1)
        Tap(row, 0, [&] { Twin.SelectDriver(row); });
    else
        Choose("Show/Hide Columns...", [this] { Twin.ShowColumns(); });
}

void Shift::ActOnColumns() {
    if (Chance.OneIn(3)) {
        ++Counts.ColumnChanges;
        GoBack();
        return;
    }
    const std::size_t row = Below(Twin.ColumnChoices.size());
    Tap(row, 0, [&] { Twin.ToggleColumn(row); });
}

void Shift::ActOnTrace() {
    if (Chance.OneIn(6))
        GoBack();
    else
        WaitForTick();
}

const Outfit& Shift::OutfitInHand() const {
    for (const Outfit& outfit : Outfits()) {
        if (outfit.Driver == Twin.Driver)
            return outfit;
    }
    return Outfits().front();
}

} // namespace shift
