// SPDX-License-Identifier: MIT
// The ends of the program: normal, as by a power cut between two steps, and by a kill during a save.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "src/text/text.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <tuple>

namespace shift {

namespace {

using backends::ProgramOver;

void SpinFor(unsigned microseconds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
    while (std::chrono::steady_clock::now() < until) {
    }
}

} // namespace

void Shift::Leave() {
    if (SetUp_ && Chance_.OneIn(4))
        Do(
            "close", [this] { Model_.End(); }, [this] { return backends::CloseForm(User()); });
    else
        Choose("Exit", [this] { Model_.End(); });
}

/// Ends the program as a power cut does, also while a question is open: nothing is closed, nothing is saved.
void Shift::Kill() {
    Note("the program is killed");
    ++Counts.Kills;
    if (!InFlight_.empty())
        LoseWhatIsInFlight();
    Model_.End();
    Device().loop.Leave({ProgramOver::Reason::InputEnded, {}});
}

/// Chooses a download that has a file, a row of its first record that accepts text, and a command that saves it.
std::optional<Shift::SavingPlan> Shift::PlanASave() {
    SavingPlan plan{Model_};
    std::vector<std::pair<std::size_t, std::size_t>> choices; // rows of the two lists
    for (std::size_t row = 0; row < Outfits().size(); ++row) {
        plan.Before.OpenDriver(row);
        const std::vector<std::size_t> downloads = Model_.Files.DownloadsOf(plan.Before.Driver);
        for (std::size_t i = 0; i < downloads.size(); ++i) {
            if (Model_.Files.Has(Model_.Files.Read(RegisterName).At(downloads[i], "FILE")))
                choices.emplace_back(row, i);
        }
    }
    if (choices.empty())
        return std::nullopt;
    std::tie(plan.Driver, plan.Download) = choices[Below(choices.size())];
    plan.Before.OpenDriver(plan.Driver);
    plan.Before.SelectDownload(plan.Download);
    plan.Before.OpenDownload();
    const std::vector<Field>& fields = plan.Before.Fields();
    const auto typed = [](const Field& field) { return field.Visible && !field.IsDate; };
    plan.Row = static_cast<std::size_t>(std::find_if(fields.begin(), fields.end(), typed) - fields.begin());
    static const char* const commands[] = {"Next Record", "New Record", "Insert Record"};
    plan.Command = Chance_.Of(commands);
    plan.Text = "before the kill " + std::to_string(Counts.RealKills);
    return plan.Row < fields.size() ? std::optional(plan) : std::nullopt;
}

/// Returns the contents that the file may have when the command is interrupted: before its first write, and after each.
std::vector<std::string> Shift::StatesOf(const SavingPlan& plan) {
    Model typed = plan.Before;
    typed.TapCell(plan.Row, true);
    typed.Type(plan.Text);
    Model saved = typed;
    saved.Command("First Record");
    typed.Command(plan.Command);
    Model_.Files = typed.Files; // the state after the command
    const std::string& file = plan.Before.OpenFile;
    return {plan.Before.OpenTable().Bytes(), saved.Files.Read(file).Bytes(), typed.Files.Read(file).Bytes()};
}

/// Runs the program in the child. It writes a character into the pipe before the command, and one after it.
void Shift::SaveInAChild(const SavingPlan& plan, int pipe) {
    using namespace backends;
    const auto say = [pipe] {
        if (::write(pipe, "s", 1) != 1)
            ::_exit(1);
    };
    const auto row = [](std::size_t number) { return static_cast<std::int32_t>(number); };
    std::deque<Doing> steps = {
        [this] { backends::Choose(User(), u"Start..."); }, [&] { backends::Tap(User(), row(plan.Driver), 0); },
        [&] { backends::Tap(User(), row(plan.Download), 0); }, [&] { backends::Tap(User(), row(plan.Row), 1); },
        [&] {
            SetInput(User(), modStringTools::FromBytes(plan.Text));
            say();
            backends::Choose(User(), modStringTools::FromBytes(plan.Command));
            say();
            ::_exit(0);
        }};
    Hand_ = std::make_unique<Handheld>(KindOfDevice_, Folder_, Model_.Now, [&] {
        if (Device().boxes.Current() != nullptr) { // the server does not run
            Answer(User(), platform::BoxAnswer::Ok);
            return;
        }
        Device().loop.PassTime(200); // until the screen is painted
        const Doing next = std::move(steps.front());
        steps.pop_front();
        next();
    });
    Hand_->Run();
    ::_exit(1);
}

/// Runs a child, and kills it `delay` microseconds after the start of its command, or not at all without one. Returns
/// true if the child has completed its command.
bool Shift::RunChild(const SavingPlan& plan, std::optional<unsigned> delay) {
    int pipe[2] = {-1, -1};
    if (::pipe(pipe) != 0)
        return false;
    const pid_t child = ::fork();
    if (child == 0)
        SaveInAChild(plan, pipe[1]);
    ::close(pipe[1]);
    char said = 0;
    const bool began = ::read(pipe[0], &said, 1) == 1;
    if (delay) {
        SpinFor(*delay);
        ::kill(child, SIGKILL);
    }
    const bool finished = ::read(pipe[0], &said, 1) == 1;
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(pipe[0]);
    Expect("the child that was to save", began, true);
    return finished;
}

/// A child runs the program on the same folder, types into a record and chooses a command that saves it. It is killed
/// at any moment of the command; the file is then whole, and as it was before one of the command's writes or after the
/// last. Unless it is in the last state, a second child starts on these files and completes the command, so that the
/// shift continues in the same way whenever the first was killed.
void Shift::KillInsideASave() {
    const std::optional<SavingPlan> plan = PlanASave();
    if (!plan)
        return;
    if (Model_.MailboxThere) // the child must not fetch it
        Folder_.PutMailbox("ipcout.lock", "");
    const unsigned delay = Below(KillDelay_);
    const std::string& file = plan->Before.OpenFile;
    Note("a child is killed inside \"" + plan->Command + "\" of " + file);
    const bool finished = RunChild(*plan, delay);
    const std::vector<std::string> states = StatesOf(*plan);
    const std::string found = Folder_.Read(file).value_or("(missing)");
    if (std::find(states.begin(), states.end(), found) == states.end())
        Expect(file + " after " + std::to_string(delay) + " microseconds", found,
               states.front() + "  or\n" + states.back());
    if (found != states.back())
        Expect("the child that goes on", RunChild(*plan, std::nullopt), true);
    CompareFiles({file});
    if (Model_.MailboxThere && !Model_.MailboxLocked)
        Folder_.RemoveMailbox("ipcout.lock");
    ++Counts.RealKills;
    Counts.InsideASave += finished ? 0 : 1;
    Counts.NewState += found != states.front() ? 1 : 0;
    KillDelay_ = finished ? std::max(KillDelay_ * 3 / 4, 40U) : std::min(KillDelay_ * 5 / 4, 100000U);
}

} // namespace shift
