// SPDX-License-Identifier: MIT
// Time, the link, and what becomes of a reading.
#include "tests/system/model/model.h"

#include <algorithm>

namespace shift {

void Model::Start(Moment now) {
    Now = now;
    NextTick = now + 500;
}

void Model::End() {
    for (std::size_t i = 0; i < Cells.size(); ++i) {
        if (Cells[i] != Saved_[i])
            Results_->Note(IdOf(Cells[i]), Fate::Unsaved);
    }
    for (const Question& question : Questions)
        Results_->Note(IdOf(question.Result.Value), Fate::LeftInBuffers);
    LoseHeld(Fate::LeftInBuffers);
    Text.Lose();
    Model fresh(*Results_, KindOfLink_);
    fresh.Events.swap(Events);
    fresh.Files = std::move(Files);
    fresh.MailboxThere = MailboxThere; // the mailbox outlives the program
    fresh.MailboxLocked = MailboxLocked;
    fresh.Mailbox = Mailbox;
    fresh.ServerRuns = ServerRuns;
    fresh.Now = Now;
    *this = std::move(fresh);
}

void Model::Pass(Moment milliseconds) {
    const Moment until = Now + milliseconds;
    if (RepaintAt && *RepaintAt <= until)
        EndRepaint();
    Now = until;
    if (NextTick > until)
        return;
    NextTick += 500;
    if (!LinkIsHeld())
        Tick();
}

/// After a sleep all missed ticks are raised as one.
void Model::Sleep(Moment milliseconds) {
    Now += milliseconds;
    if (RepaintAt && *RepaintAt <= Now)
        EndRepaint();
    if (NextTick > Now)
        return;
    NextTick = NextTick + 500 > Now ? NextTick + 500 : Now + 500;
    if (!LinkIsHeld())
        Tick();
}

/// The grid gets the focus, which closes a field that was open when the screen was filled.
void Model::EndRepaint() {
    RepaintAt.reset();
    FieldOpen = false;
}

bool Model::WaitsForTomorrow() const {
    return EndSeen_ && LastPoll_ > TimeOfDay(Now) + 3600;
}

Moment Model::TimeUntilTomorrow() const {
    const auto moment = static_cast<Moment>(LastPoll_ * 1000) + 500;
    return moment < Day ? moment - Now % Day : 0;
}

void Model::Tick() {
    const Moment seconds = Now / Second;
    const bool slept = LinkOpen && seconds - LastTick_ > 2;
    LastTick_ = seconds;
    if (slept) {
        LinkState_ = 1; // the port is closed at the next tick and opened again two ticks later
        return;
    }
    if (!LinkWanted) {
        PortOpen = PortOpen && !LinkOpen;
        LinkOpen = false;
        return;
    }
    if (EndSeen_)
        DecodeAfterPause();
    else
        KeepLink();
}

/// The wait is measured in times of day: a record that came right before midnight waits for the same time of the
/// next day.
void Model::DecodeAfterPause() {
    const float now = TimeOfDay(Now);
    if (LastPoll_ == 0) { // no tick yet, or one at midnight itself
        LastPoll_ = now;
        return;
    }
    if (LastPoll_ + 0.5F > now)
        return;
    EndSeen_ = false;
    if (Text.Decode())
        Deliver();
    else
        Text.ForgetLines();
}

void Model::KeepLink() {
    const bool was = LinkOpen;
    LinkOpen = false;
    if (LinkState_ == 1 && PortOpen)
        PortOpen = false;
    else if (LinkState_ == 1)
        LinkState_ = 2;
    else if (LinkState_ == 2)
        LinkOpen = KindOfLink_ == LinkKind::Serial ? OpenPort() : FindServer();
    if (LinkOpen != was && OnRecord())
        Title = LinkOpen ? "Bluetooth :-)" : "Bluetooth :-(";
    if (ServerMode)
        PollMailbox();
    LastPoll_ = TimeOfDay(Now);
}

bool Model::OpenPort() {
    if (!PortOpen && FailuresLeft_ != 0) {
        FailuresLeft_ -= FailuresLeft_ > 0 ? 1 : 0;
        return false;
    }
    return PortOpen = true;
}

/// Once found, the server counts as running until the program ends. A missing one is reported once.
bool Model::FindServer() {
    if (!ServerFound_ && !ServerRuns && !ServerMissed_) {
        ServerMissed_ = true;
        Ask({}, "RFCOMM Server not running");
    }
    ServerFound_ = ServerFound_ || ServerRuns;
    ServerMode = ServerFound_;
    return ServerFound_;
}

void Model::PollMailbox() {
    if (!MailboxThere || MailboxLocked)
        return;
    EndSeen_ = Text.TakeMailbox(Mailbox) || EndSeen_;
    MailboxThere = false;
    Mailbox.clear();
}

void Model::Receive(const std::string& characters) {
    if (LinkIsHeld()) {
        Held_ += characters;
        return;
    }
    LinkWanted = true; // received text keeps the link open, even if Back has just released it
    EndSeen_ = Text.Arrive(characters) || EndSeen_;
}

void Model::Deliver() {
    while (!Text.Waiting.empty()) {
        const Reading reading = Text.Waiting.front();
        Text.Waiting.pop_front();
        if (!Capture(reading))
            return; // the rest waits for the answer, or is delivered with the next text
    }
    Text.ForgetLines();
}

/// Returns false if it has opened a question.
bool Model::Capture(const Reading& reading) {
    const ResultId id = IdOf(reading.Value);
    if (At == Place::Trace)
        ListOnTrace(reading);
    if (!OnRecord()) {
        Results_->Note(id, At == Place::Trace ? Fate::Traced : Fate::OtherScreen);
        return true;
    }
    std::string type;
    std::optional<std::size_t> row = FindRow(reading, type);
    if (FieldOpen && row != EditRow_) { // an open field gets every reading, also one without a row
        row = EditRow_;
        type.clear();
    }
    if (!row) {
        Results_->Note(id, Fate::NoRow);
        Tone(false);
        return true;
    }
    if (!FieldOpen && !Cells[*row].empty()) {
        Ask({Question::Kind::Replace, false, reading, *row, type},
            "Replace: \r\n" + Cells[*row] + "\r\nWith:\r\n" + reading.Shown() + "?");
        return false;
    }
    if (!FieldOpen || FieldText != reading.Shown())
        PutCell(*row, reading.Shown(), Fate::FieldTaken);
    FieldText = FieldOpen ? reading.Shown() : FieldText;
    CaretBehind = false;
    Finish(reading, type);
    return true;
}

void Model::ListOnTrace(const Reading& reading) {
    if (TraceLines.front().empty())
        TraceLines.clear();
    for (const std::string& type : reading.Types)
        TraceLines.push_back("RT: " + type);
    for (const std::string& variable : reading.Variables)
        TraceLines.push_back("DV: " + variable);
    TraceLines.push_back(reading.Shown());
    TraceLines.emplace_back("---");
    Tone(true);
}

/// Returns the row of a reading: of several types the last that has a row, of several rows the first. A result without
/// a type has the empty type, whose row is the first that no instrument fills.
std::optional<std::size_t> Model::FindRow(const Reading& reading, std::string& type) const {
    std::optional<std::size_t> found;
    for (const std::string& each : reading.Types) {
        std::size_t row = 0;
        while (row < Infs_.size() && !SameInAnyCase(Infs_[row].Blob, each))
            ++row;
        if (row == Infs_.size())
            continue;
        found = row;
        type = each;
    }
    return found;
}

/// Without a type, as after the answer No, only the tone sounds; but the record counts as changed.
void Model::Finish(const Reading& reading, const std::string& type) {
    Dirty = true;
    if (!type.empty())
        Spread(reading, type);
    Tone(!type.empty());
    if (!type.empty())
        FillDates();
}

void Model::Spread(const Reading& reading, const std::string& type) {
    for (const std::string& variable : reading.Variables) {
        const std::string name = variable.substr(0, variable.find('='));
        std::optional<std::size_t> row;
        for (std::size_t i = 0; i < Infs_.size(); ++i) {
            if (SameInAnyCase(Infs_[i].Blob, "dv: " + name))
                row = i;
            if (SameInAnyCase(Infs_[i].Blob, "dv: {" + type + "}" + name)) {
                row = i; // a later row without the type is not used
                break;
            }
        }
        if (row)
            PutCell(*row, variable.substr(std::min(name.size() + 1, variable.size())), Fate::WrittenOver);
    }
}

void Model::FillDates() {
    for (std::size_t row = 0; row < Infs_.size(); ++row) {
        const std::string& formula = Infs_[row].Formula;
        if (formula.empty())
            continue;
        const bool keeps = formula.compare(0, 5, "start") == 0 && !Cells[row].empty();
        std::string text; // an unknown formula clears its cell
        if (formula == "startdate" || formula == "enddate")
            text = keeps ? Cells[row] : DateText(DateOf(Now));
        else if (formula == "starttime" || formula == "endtime")
            text = keeps ? Cells[row] : TimeText(Now);
        PutCell(row, text, Fate::WrittenOver);
    }
}

void Model::Ask(const Question& question, const std::string& text) {
    Events.push_back((question.Why == Question::Kind::Notice ? "box ok " : "box yesno ") + text);
    Questions.push_back(question);
}

void Model::Drop() {
    LoseHeld(Fate::CutOff);
    PortOpen = false;
}

/// Notes the fate of the results in the held text. A record may have begun before the questions were opened.
void Model::LoseHeld(Fate fate) {
    const std::vector<ResultId> before = IdsInRecords(Text.Unfinished());
    for (const ResultId id : IdsInRecords(Text.Unfinished() + Held_)) {
        if (std::find(before.begin(), before.end(), id) == before.end())
            Results_->Note(id, fate);
    }
    Held_.clear();
}

/// While two questions are open, one above the other, received text is held. It is read as one text when one of them is
/// closed.
void Model::Answer(bool yes) {
    const bool wasHeld = LinkIsHeld();
    TakeAnswer(yes);
    if (!wasHeld || LinkIsHeld())
        return;
    LastTick_ = Now / Second;
    std::string held;
    held.swap(Held_);
    if (!held.empty())
        Receive(held);
}

void Model::TakeAnswer(bool yes) {
    const Question question = Questions.back();
    Questions.pop_back();
    switch (question.Why) {
    case Question::Kind::Replace:
        LastTick_ = Now / Second; // the time that the question was open is no sleep
        if (yes)
            PutCell(question.Row, question.Result.Shown(), Fate::Replaced);
        else
            Results_->Note(IdOf(question.Result.Value), Fate::Refused);
        Finish(question.Result, yes ? question.Type : "");
        Deliver();
        break;
    case Question::Kind::DeleteRecord:
    case Question::Kind::DeleteDownload:
        if (yes && !question.Sure)
            Ask({question.Why, true, {}, 0, ""}, "Are you sure?");
        else if (yes && question.Why == Question::Kind::DeleteRecord)
            RemoveRecord();
        else if (yes)
            RemoveDownload();
        break;
    case Question::Kind::Notice:
        break;
    }
}

} // namespace shift
