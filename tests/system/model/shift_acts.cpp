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
    if (Twin_.FieldOpen && Twin_.RepaintAt) { // the screen was filled while it was open, which will close it
        WaitALittle();
        return;
    }
    if (!Twin_.Questions.empty()) {
        ActOnQuestion();
        return;
    }
    const bool over = Results.Sent() >= Wanted_ && Air_.empty();
    if (!over && (Trouble() || ActOnLine()))
        return;
    if (!Settled() && !Chance_.OneIn(4)) {
        WaitALittle();
        return;
    }
    if (!Settled() && Twin_.At != Place::Record && Twin_.At != Place::Main) {
        WaitALittle();
        return;
    }
    if (over) {
        GoHome();
        return;
    }
    switch (Twin_.At) {
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
    const Question& question = Twin_.Questions.back();
    if (question.Why == Question::Kind::Notice) {
        ++Counts.Notices;
        Do(
            "answer ok", [this] { Twin_.Answer(true); },
            [this] { return backends::Answer(User(), platform::BoxAnswer::Ok); });
        return;
    }
    if (Twin_.LinkIsHeld() && Counts.Hours == 0 && Results.Sent() > Wanted_ / 10) {
        LetQuestionsStand();
        return;
    }
    if (Twin_.Questions.size() < DeepestQuestion && Results.Sent() < Wanted_ && !Chance_.OneIn(2)) {
        Counts.Nested += Twin_.Questions.size() > 1 ? 1 : 0;
        if (Trouble() || ActOnLine())
            return;
        WaitForTick();
        return;
    }
    const bool yes = !Chance_.OneIn(3);
    const bool download = question.Why == Question::Kind::DeleteDownload;
    if (download && question.Sure && yes) { // its results have been copied from the device before
        const std::size_t row = Twin_.Files.DownloadsOf(Twin_.Driver)[Twin_.SelectedDownload()];
        const std::string file = Twin_.Files.Read(RegisterName).At(row, "FILE");
        for (const ResultId id : IdsInFields(Folder_.Read(file).value_or("")))
            Results.HandOver(id);
        ++Counts.DeletedDownloads;
    }
    Counts.DeletedRecords += question.Why == Question::Kind::DeleteRecord && question.Sure && yes ? 1 : 0;
    ++Counts.Questions;
    ++(yes ? Counts.Yes : Counts.No);
    Do(
        yes ? "answer yes" : "answer no", [&] { Twin_.Answer(yes); },
        [&] { return backends::Answer(User(), yes ? platform::BoxAnswer::Yes : platform::BoxAnswer::No); });
}

void Shift::GoHome() {
    if (Twin_.At != Place::Main) {
        GoBack();
        return;
    }
    Over_ = true;
    Leave();
}

/// By the menu, the title bar or the Esc key.
void Shift::GoBack() {
    const std::uint32_t how = Below(6);
    const bool prompt = Twin_.At == Place::DatePrompt || Twin_.At == Place::RenamePrompt;
    if (how == 0) {
        Do(
            "close", [this] { Twin_.Back(); }, [this] { return backends::CloseForm(User()); });
    } else if (how == 1 && !Twin_.FieldOpen && !prompt) {
        Do(
            "key Esc", [this] { Twin_.Back(); }, [this] { return backends::PressKey(User(), KeyEsc); });
    } else {
        Choose(Twin_.OnRecord() ? "Close" : "Back", [this] { Twin_.Back(); });
    }
}

void Shift::ActOnMain() {
    if (Chance_.OneIn(5))
        Leave();
    else if (Chance_.OneIn(3))
        Choose("inf editor...", [this] { Twin_.OpenInstalledDrivers(); });
    else if (Chance_.OneIn(5))
        Choose("Bluetooth Debug...", [this] { Twin_.OpenTrace(); });
    else
        Choose("Start...", [this] { Twin_.OpenDrivers(); });
}

void Shift::ActOnDrivers() {
    if (Chance_.OneIn(3)) {
        GoBack();
        return;
    }
    const std::size_t row = Below(Outfits().size());
    Tap(row, 0, [&] { Twin_.OpenDriver(row); });
}

void Shift::ActOnDownloads() {
    const std::size_t count = Twin_.Downloads().size();
    const std::uint32_t what = Below(20);
    if (count == 0 || (what < 2 && count < MostDownloads)) {
        ++Counts.NewDownloads;
        Choose("New", [this] { Twin_.NewDownload(); });
    } else if (what < 5 && Twin_.SelectedDownload() + 1 < count) {
        Do(
            "key down", [this] { Twin_.SelectDownload(Twin_.SelectedDownload() + 1); },
            [this] { return backends::PressKey(User(), KeyDown); });
    } else if (what < 6 || (what < 12 && count == MostDownloads)) {
        Choose("Delete", [this] { Twin_.DeleteDownload(); });
    } else if (what < 8) {
        ++Counts.Prompts;
        Choose("Rename", [this] { Twin_.Rename(); });
    } else if (what < 10) {
        GoBack();
    } else if (what < 14) {
        Choose("Open", [this] { Twin_.OpenDownload(); });
    } else {
        const std::size_t row = count - 1 - Below(std::min<std::size_t>(count, 2)); // the latest ones
        Tap(row, 0, [&] {
            Twin_.SelectDownload(row);
            Twin_.OpenDownload();
        });
    }
}

void Shift::ActOnRecord() {
    if (Twin_.FieldOpen) {
        ActInField();
        return;
    }
    const std::uint32_t what = Below(20);
    if (what < 9)
        ActOnRecordCommand();
    else if (what < 13 && Settled())
        ActOnCell();
    else if (what < 14 || (what < 16 && Twin_.OpenTable().Rows.size() > MostRecords))
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
    else if (what < 6 || Twin_.OpenTable().Rows.size() > MostRecords)
        command = Chance_.Of(walks);
    Counts.NewRecords += command == "New Record" ? 1 : 0;
    Counts.Inserted += command == "Insert Record" ? 1 : 0;
    const bool next = command == "Next Record";
    if ((next || command == "Previous Record") && !Twin_.FieldOpen && Chance_.OneIn(2)) {
        Do(
            next ? "key right" : "key left", [&] { Twin_.Command(command); },
            [&] { return backends::PressKey(User(), next ? KeyRight : KeyLeft); });
    } else {
        Choose(command, [&] { Twin_.Command(command); });
    }
}

void Shift::ActOnCell() {
    const std::size_t row = Below(Twin_.Fields().size());
    if (!Twin_.Fields()[row].Visible)
        return;
    Counts.Dates += Twin_.Fields()[row].IsDate ? 1 : 0;
    Tap(row, 1, [&] { Twin_.TapCell(row, true); });
}

/// A field is closed by a tap on another cell, and by a command, which changes the screen.
void Shift::ActInField() {
    static const char* const texts[] = {"typed", "by hand 3",
                                        ("gr\xC3\xBC"
                                         "n"),
                                        "", "x"};
    const std::uint32_t what = Below(8);
    const std::size_t row = Below(Twin_.Fields().size());
    const std::string text = Chance_.Of(texts);
    if (what == 0 && Twin_.CaretBehind) {
        ++Counts.Edits;
        Do(
            "type " + text, [&] { Twin_.TypeBehind(text); },
            [&] { return backends::TypeText(User(), FromBytes(text)); });
    } else if (what < 3) {
        ++Counts.Edits;
        Do(
            "set " + text, [&] { Twin_.Type(text); }, [&] { return backends::SetInput(User(), FromBytes(text)); });
    } else if (what < 5 && Settled() && Twin_.Fields()[row].Visible) {
        Tap(row, 0, [&] { Twin_.TapCell(row, false); });
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
        Choose("Ok", [this] { Twin_.AcceptDate(); });
    } else {
        using namespace std::chrono;
        const year_month_day date = sys_days(DateOf(Twin_.Now)) + days(Below(60)) - days(30);
        const platform::CalendarDate picked{int(date.year()), static_cast<std::int32_t>(unsigned(date.month())),
                                            static_cast<std::int32_t>(unsigned(date.day()))};
        Do(
            "pick " + DateText(date), [&] { Twin_.PickDate(date); },
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
        Choose("Ok", [this] { Twin_.AcceptName(); });
    } else {
        const std::string name = Chance_.Of(names);
        Do(
            "set " + name, [&] { Twin_.Type(name); }, [&] { return backends::SetInput(User(), FromBytes(name)); });
    }
}

void Shift::ActOnInstalledDrivers() {
    const std::uint32_t what = Below(3);
    const std::size_t row = Below(Outfits().size());
    if (what == 0)
        GoBack();
    else if (what == 1)
        Tap(row, 0, [&] { Twin_.SelectDriver(row); });
    else
        Choose("Show/Hide Columns...", [this] { Twin_.ShowColumns(); });
}

void Shift::ActOnColumns() {
    if (Chance_.OneIn(3)) {
        ++Counts.ColumnChanges;
        GoBack();
        return;
    }
    const std::size_t row = Below(Twin_.ColumnChoices.size());
    Tap(row, 0, [&] { Twin_.ToggleColumn(row); });
}

void Shift::ActOnTrace() {
    if (Chance_.OneIn(6))
        GoBack();
    else
        WaitForTick();
}

const Outfit& Shift::OutfitInHand() const {
    for (const Outfit& outfit : Outfits()) {
        if (outfit.Driver == Twin_.Driver)
            return outfit;
    }
    return Outfits().front();
}

} // namespace shift
