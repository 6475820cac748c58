// SPDX-License-Identifier: MIT
// How the program ends: as it should, as a power cut ends it between two steps, and killed inside a save.
#include "tests/shift/shift.h"

#include "platform/device/gestures.h"
#include "text/text.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace shift {

namespace {

using platform::device::ProgramOver;

void SpinFor(unsigned microseconds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
    while (std::chrono::steady_clock::now() < until) {
    }
}

} // namespace

void Shift::Leave() {
    if (SetUp && Chance.OneIn(4))
        Do(
            "close", [this] { Twin.End(); }, [this] { return platform::device::CloseForm(Device()); });
    else
        Choose("Exit", [this] { Twin.End(); });
}

/// As cutting the power would, also while a question stands: nothing is closed, nothing is saved.
void Shift::Kill() {
    Note("the program is killed");
    ++Counts.Kills;
    if (!Air.empty())
        LoseAir();
    Twin.End();
    Device().loop.Leave({ProgramOver::Reason::InputEnded, {}});
}

/// A child runs the program on the same folder, types into a record and gives a command that saves it. It is killed at
/// any moment of that; the file is then as it was before one of the command's writes, and whole.
void Shift::KillInsideASave() {
    Model twin = Twin;
    std::vector<std::pair<std::size_t, std::size_t>> choices; // rows of the two lists
    for (std::size_t row = 0; row < Outfits().size(); ++row) {
        twin.OpenDriver(row);
        const std::vector<std::size_t> downloads = twin.Files.DownloadsOf(twin.Driver);
        for (std::size_t i = 0; i < downloads.size(); ++i) {
            if (twin.Files.Has(twin.Files.Read(RegisterName).At(downloads[i], "FILE")))
                choices.emplace_back(row, i);
        }
    }
    if (choices.empty())
        return;
    const std::size_t choice = Below(choices.size());
    const std::size_t driver = choices[choice].first;
    const std::size_t download = choices[choice].second;
    twin.OpenDriver(driver);
    twin.SelectDownload(download);
    twin.OpenDownload();
    std::size_t row = 0;
    while (row < twin.Fields().size() && (!twin.Fields()[row].Visible || twin.Fields()[row].IsDate))
        ++row;
    if (row == twin.Fields().size())
        return;
    static const char* const commands[] = {"Next Record", "New Record", "Insert Record"};
    const std::string command = Chance.Of(commands);
    const std::string text = "before the kill " + std::to_string(Counts.RealKills);
    std::vector<DataFolder> states = {twin.Files};
    twin.TapCell(row, true);
    twin.Type(text);
    Model walked = twin;
    walked.Command("First Record");
    states.push_back(walked.Files);
    twin.Command(command);
    states.push_back(twin.Files);

    std::deque<Doing> plan;
    int pipe[2] = {-1, -1};
    if (::pipe(pipe) != 0)
        return;
    const auto say = [&pipe] {
        if (::write(pipe[1], "s", 1) != 1)
            ::_exit(1);
    };
    const auto settle = [&plan, this] { plan.push_back([this] { Device().loop.PassTime(200); }); };
    const auto tap = [&plan, &settle, this](std::size_t r, std::size_t c) {
        plan.push_back([this, r, c] {
            platform::device::Tap(Device(), static_cast<std::int32_t>(r), static_cast<std::int32_t>(c));
        });
        settle();
    };
    settle();
    plan.push_back([this] { platform::device::Choose(Device(), u"Start..."); });
    settle();
    tap(driver, 0);
    tap(download, 0);
    tap(row, 1);
    plan.push_back([this, &text] { platform::device::SetInput(Device(), modStringTools::FromBytes(text)); });
    plan.push_back([&, this] {
        say();
        platform::device::Choose(Device(), modStringTools::FromBytes(command));
        say();
        ::_exit(0);
    });

    if (Twin.MailboxThere) // the child must not fetch it
        Folder.PutMailbox("ipcout.lock", "");
    const unsigned delay = Below(KillDelay);
    const pid_t child = ::fork();
    if (child == 0) {
        Hand = std::make_unique<Handheld>(KindOfDevice, Folder, Twin.Now, [&plan] {
            const Doing next = std::move(plan.front());
            plan.pop_front();
            next();
        });
        Hand->Run();
        ::_exit(1);
    }
    ::close(pipe[1]);
    char said = 0;
    const bool began = ::read(pipe[0], &said, 1) == 1;
    SpinFor(delay);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    const bool finished = ::read(pipe[0], &said, 1) == 1;
    ::close(pipe[0]);
    if (Twin.MailboxThere && !Twin.MailboxLocked)
        Folder.RemoveMailbox("ipcout.lock");
    Expect("the child that was to be killed", began, true);
    ++Counts.RealKills;
    Counts.InsideASave += finished ? 0 : 1;
    KillDelay = finished ? std::max(KillDelay * 3 / 4, 40U) : std::min(KillDelay * 5 / 4, 100000U);

    Note("a child is killed " + std::to_string(delay) + " us into \"" + command + "\" of " + twin.OpenFile);
    const std::string found = Folder.Read(twin.OpenFile).value_or("(missing)");
    std::size_t state = 0;
    while (state < states.size() && states[state].Read(twin.OpenFile).Bytes() != found)
        ++state;
    if (state == states.size()) {
        Expect(twin.OpenFile + " after a kill", found,
               states.front().Read(twin.OpenFile).Bytes() + "  or\n" + states.back().Read(twin.OpenFile).Bytes());
        return;
    }
    Counts.TornToNew += state > 0 ? 1 : 0;
    Twin.Files = states[state];
}

} // namespace shift
