// SPDX-License-Identifier: MIT
// What the technician does next.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "backends/input/keyboard.h"
#include "src/text/text.h"

namespace shift {

namespace {

using modStringTools::FromBytes;

constexpr std::size_t MostDownloads = 6; // of a driver; then the oldest is deleted
constexpr std::size_t MostRecords = 40;
constexpr std::size_t DeepestQuestion = 3;
constexpr std::int32_t KeyEsc = 27;
constexpr std::int32_t KeyLeft = 37;
constexpr std::int32_t KeyRight = 39;
constexpr std::int32_t KeyDown = 40;

} // namespace

void Shift::Act() {
    if (Model_.FieldOpen && Model_.RepaintAt) { // the screen was filled while it was open, which will close it
        WaitALittle();
        return;
    }
    if (!Model_.Questions.empty()) {
        ActOnQuestion();
        return;
    }
    const bool over = Results.Sent() >= Wanted_ && InFlight_.empty();
    if (!over && (Trouble() || ActOnLine()))
        return;
    if (!Settled() && !Chance_.OneIn(4)) {
        WaitALittle();
        return;
    }
    if (!Settled() && Model_.At != Place::Record && Model_.At != Place::Main) {
        WaitALittle();
        return;
    }
    if (over) {
        GoHome();
        return;
    }
    switch (Model_.At) {
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
    const Question& question = Model_.Questions.back();
    if (question.Why == Question::Kind::Notice) {
        ++Counts.Notices;
        Do(
            "answer ok", [this] { Model_.Answer(true); },
            [this] { return backends::Answer(User(), platform::BoxAnswer::Ok); });
        return;
    }
    if (Model_.LinkIsHeld() && Counts.Hours == 0 && Results.Sent() > Wanted_ / 10) {
        LetQuestionsStand();
        return;
    }
    if (Model_.Questions.size() < DeepestQuestion && Results.Sent() < Wanted_ && !Chance_.OneIn(2)) {
        Counts.Nested += Model_.Questions.size() > 1 ? 1 : 0;
        if (Trouble() || ActOnLine())
            return;
        WaitForTick();
        return;
    }
    const bool yes = !Chance_.OneIn(3);
    const bool download = question.Why == Question::Kind::DeleteDownload;
    if (download && question.Sure && yes) { // its results have been copied from the device before
        const std::size_t row = Model_.Files.DownloadsOf(Model_.Driver)[Model_.SelectedDownload()];
        const std::string file = Model_.Files.Read(RegisterName).At(row, "FILE");
        for (const ResultId id : IdsInFields(Folder_.Read(file).value_or("")))
            Results.HandOver(id);
        ++Counts.DeletedDownloads;
    }
    Counts.DeletedRecords += question.Why == Question::Kind::DeleteRecord && question.Sure && yes ? 1 : 0;
    ++Counts.Questions;
    ++(yes ? Counts.Yes : Counts.No);
    Do(
        yes ? "answer yes" : "answer no", [&] { Model_.Answer(yes); },
        [&] { return backends::Answer(User(), yes ? platform::BoxAnswer::Yes : platform::BoxAnswer::No); });
}

void Shift::GoHome() {
    if (Model_.At != Place::Main) {
        GoBack();
        return;
    }
    Over_ = true;
    Leave();
}

/// By the menu, the title bar or the Esc key.
void Shift::GoBack() {
    const std::uint32_t how = Below(6);
    const bool prompt = Model_.At == Place::DatePrompt || Model_.At == Place::RenamePrompt;
    if (how == 0) {
        Do(
            "close", [this] { Model_.Back(); }, [this] { return backends::CloseForm(User()); });
    } else if (how == 1 && !Model_.FieldOpen && !prompt) {
        Do(
            "key Esc", [this] { Model_.Back(); }, [this] { return backends::PressKey(User(), KeyEsc); });
    } else {
        Choose(Model_.OnRecord() ? "Close" : "Back", [this] { Model_.Back(); });
    }
}

void Shift::ActOnMain() {
    if (Chance_.OneIn(5))
        Leave();
    else if (Chance_.OneIn(3))
        Choose("inf editor...", [this] { Model_.OpenInstalledDrivers(); });
    else if (Chance_.OneIn(5))
        Choose("Bluetooth Debug...", [this] { Model_.OpenTrace(); });
    else
        Choose("Start...", [this] { Model_.OpenDrivers(); });
}

void Shift::ActOnDrivers() {
    if (Chance_.OneIn(3)) {
        GoBack();
        return;
    }
    const std::size_t row = Below(Outfits().size());
    Tap(row, 0, [&] { Model_.OpenDriver(row); });
}

void Shift::ActOnDownloads() {
    const std::size_t count = Model_.Downloads().size();
    const std::uint32_t what = Below(20);
    if (count == 0 || (what < 2 && count < MostDownloads)) {
        ++Counts.NewDownloads;
        Choose("New", [this] { Model_.NewDownload(); });
    } else if (what < 5 && Model_.SelectedDownload() + 1 < count) {
        Do(
            "key down", [this] { Model_.SelectDownload(Model_.SelectedDownload() + 1); },
            [this] { return backends::PressKey(User(), KeyDown); });
    } else if (what < 6 || (what < 12 && count == MostDownloads)) {
        Choose("Delete", [this] { Model_.DeleteDownload(); });
    } else if (what < 8) {
        ++Counts.Prompts;
        Choose("Rename", [this] { Model_.Rename(); });
    } else if (what < 10) {
        GoBack();
    } else if (what < 14) {
        Choose("Open", [this] { Model_.OpenDownload(); });
    } else {
        const std::size_t row = count - 1 - Below(std::min<std::size_t>(count, 2)); // the latest ones
        Tap(row, 0, [&] {
            Model_.SelectDownload(row);
            Model_.OpenDownload();
        });
    }
}

void Shift::ActOnRecord() {
    if (Model_.FieldOpen) {
        ActInField();
        return;
    }
    const std::uint32_t what = Below(20);
    if (what < 9)
        ActOnRecordCommand();
    else if (what < 13 && Settled())
        ActOnCell();
    else if (what < 14 || (what < 16 && Model_.OpenTable().Rows.size() > MostRecords))
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
    else if (what < 6 || Model_.OpenTable().Rows.size() > MostRecords)
        command = Chance_.Of(walks);
    Counts.NewRecords += command == "New Record" ? 1 : 0;
    Counts.Inserted += command == "Insert Record" ? 1 : 0;
    const bool next = command == "Next Record";
    if ((next || command == "Previous Record") && !Model_.FieldOpen && Chance_.OneIn(2)) {
        Do(
            next ? "key right" : "key left", [&] { Model_.Command(command); },
            [&] { return backends::PressKey(User(), next ? KeyRight : KeyLeft); });
    } else {
        Choose(command, [&] { Model_.Command(command); });
    }
}

void Shift::ActOnCell() {
    const std::size_t row = Below(Model_.Fields().size());
    if (!Model_.Fields()[row].Visible)
        return;
    Counts.Dates += Model_.Fields()[row].IsDate ? 1 : 0;
    Tap(row, 1, [&] { Model_.TapCell(row, true); });
}

/// A field is closed by a tap on another cell, and by a command, which changes the screen.
void Shift::ActInField() {
    static const char* const texts[] = {"typed", "by hand 3",
                                        ("gr\xC3\xBC"
                                         "n"),
                                        "", "x"};
    const std::uint32_t what = Below(8);
    const std::size_t row = Below(Model_.Fields().size());
    const std::string text = Chance_.Of(texts);
    if (what == 0 && Model_.CaretBehind) {
        ++Counts.Edits;
        Do(
            "type " + text, [&] { Model_.TypeBehind(text); },
            [&] { return backends::TypeText(User(), FromBytes(text)); });
    } else if (what < 3) {
        ++Counts.Edits;
        Do(
            "set " + text, [&] { Model_.Type(text); }, [&] { return backends::SetInput(User(), FromBytes(text)); });
    } else if (what < 5 && Settled() && Model_.Fields()[row].Visible) {
        Tap(row, 0, [&] { Model_.TapCell(row, false); });
    } else if (what == 5) {
        ActOnRecordCommand();
    } else if (what == 6 && Chance_.OneIn(4)) {
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
        Choose("Ok", [this] { Model_.AcceptDate(); });
    } else {
        using namespace std::chrono;
        const year_month_day date = sys_days(DateOf(Model_.Now)) + days(Below(60)) - days(30);
        const platform::CalendarDate picked{int(date.year()), static_cast<std::int32_t>(unsigned(date.month())),
                                            static_cast<std::int32_t>(unsigned(date.day()))};
        Do(
            "pick " + DateText(date), [&] { Model_.PickDate(date); },
            [&] { return backends::PickDate(User(), picked); });
    }
}

void Shift::ActInRenamePrompt() {
    static const char* const names[] = {"North field", "Monday", "",
                                        ("Keller \xC3\xBC"
                                         "ber Tage")};
    const std::uint32_t what = Below(4);
    if (what == 0) {
        GoBack();
    } else if (what < 3) {
        ++Counts.Renamed;
        Choose("Ok", [this] { Model_.AcceptName(); });
    } else {
        const std::string name = Chance_.Of(names);
        Do(
            "set " + name, [&] { Model_.Type(name); }, [&] { return backends::SetInput(User(), FromBytes(name)); });
    }
}

void Shift::ActOnInstalledDrivers() {
    const std::uint32_t what = Below(3);
    const std::size_t row = Below(Outfits().size());
    if (what == 0)
        GoBack();
    else if (what == 1)
        Tap(row, 0, [&] { Model_.SelectDriver(row); });
    else
        Choose("Show/Hide Columns...", [this] { Model_.ShowColumns(); });
}

void Shift::ActOnColumns() {
    if (Chance_.OneIn(3)) {
        ++Counts.ColumnChanges;
        GoBack();
        return;
    }
    const std::size_t row = Below(Model_.ColumnChoices.size());
    Tap(row, 0, [&] { Model_.ToggleColumn(row); });
}

void Shift::ActOnTrace() {
    if (Chance_.OneIn(6))
        GoBack();
    else
        WaitForTick();
}

const Outfit& Shift::OutfitInHand() const {
    for (const Outfit& outfit : Outfits()) {
        if (outfit.Driver == Model_.Driver)
            return outfit;
    }
    return Outfits().front();
}

} // namespace shift
