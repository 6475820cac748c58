// SPDX-License-Identifier: MIT
#include "apps/demo/demo_data.h"
#include "apps/hand_over/hand_over_main.h"
#include "apps/quorin-export/export_main.h"
#include "apps/quorin/own_process.h"
#include "apps/quorin/start_refusal.h"
#include "apps/quorin/window_places.h"
#include "apps/quorin/window_program.h"
#include "apps/start/exit_status.h"
#include "apps/start/process.h"
#include "backends/files/host_files.h"
#include "backends/files/root_lock.h"
#include "backends/linux/port_list.h"
#include "backends/qt/keyboard_map.h"
#include "companion/ports/port_table.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using backends::LockResult;
using quorin::WindowStart;
using start::ExitStatus;

int NotStarted(const std::string& why) {
    quorin::TellRefusal("quorin: " + why + "\n");
    return NumberOf(ExitStatus::NotStarted);
}

quorin::Reading ReadOptions(int count, char** words, quorin::Options& options, std::string& wrong) {
    std::ostringstream lines;
    std::streambuf* const errors = std::cerr.rdbuf(lines.rdbuf());
    const quorin::Reading reading = quorin::ReadOptions(count, words, backends::qt::KeyboardHelp(), options);
    std::cerr.rdbuf(errors);
    wrong = lines.str();
    return reading;
}

/// Prints the ports as the window would use them. Where there is no place for settings, nothing is remembered.
int ListPorts(quorin::Options& options) {
    backends::PortSurvey survey;
    survey.Pinned = options.Device.Ports.Pinned;
    std::vector<std::string> wrongPins;
    if (quorin::FindPlaces(options).empty())
        survey.Pinned = quorin::PinsWith(quorin::WindowSettings(quorin::SettingsOf(options)), survey.Pinned, wrongPins);
    for (const std::string& pin : wrongPins)
        std::cerr << "quorin: a port that was chosen before is not used: " << pin << "\n";
    std::cout << companion::PortTable(backends::SerialPorts(survey));
    return NumberOf(start::StatusAfterOutput("quorin", ExitStatus::Ended));
}

/// Creates the folders of the run. Returns an empty text, or what is missing.
std::string MakePlaces(WindowStart& run) {
    const bool isNamed = !run.Chosen.Device.Root.empty(); // by a person
    if (const std::string missing = quorin::FindPlaces(run.Chosen); !missing.empty())
        return missing;
    backends::MakeFolders(backends::FolderOf(quorin::SettingsOf(run.Chosen)));
    const std::string& root = run.Chosen.Device.Root;
    if (const auto error = backends::MakeFolders(root); error != platform::NoError)
        return "can't use the root folder " + root + ": " + modStringTools::ToBytes(platform::ErrorText(error));
    std::error_code failed;
    if (!isNamed && !std::filesystem::is_symlink(root, failed)) // a link may lead to other data
        run.OwnFolder = quorin::FullPath(root);
    return {};
}

/// Plugs the demonstration's instrument in. Returns an empty text, or why that is not possible.
std::string PlugInstrument(WindowStart& run) {
    run.Line.emplace();
    if (run.Line->Port().empty())
        return "the simulated instrument could not be started: " + run.Line->Problem();
    // A port that a person has pinned comes first.
    run.Chosen.Device.Ports.Pinned.emplace(apps::DemoPort, backends::PathAddress(run.Line->Port()));
    return {};
}

/// Passes the files to the window that has the lock. Returns false if no window answers in time.
bool IsPassedOn(const quorin::Options& options, const std::string& holder) {
    constexpr std::chrono::seconds Patience{2};
    if (holder.rfind("quorin-console ", 0) == 0)
        return false;
    const char* const token = std::getenv("XDG_ACTIVATION_TOKEN");
    const backends::StartRequest request{quorin::CurrentFolder(), token == nullptr ? "" : token, options.Files};
    if (!backends::PassOn(quorin::PlaceOfStarts(options.Device.Root), request, Patience))
        return false;
    std::cerr << "quorin: the window of " << options.Device.Root << " is open already" << std::endl;
    return true;
}

/// Opens the window, unless another program has the root folder.
int OpenWindow(WindowStart& run) {
    const std::string& root = run.Chosen.Device.Root;
    backends::RootLock lock;
    const LockResult locked = lock.Take(root, "quorin");
    if (locked == LockResult::Taken && IsPassedOn(run.Chosen, lock.Holder()))
        return NumberOf(ExitStatus::Ended);
    if (locked == LockResult::Taken || locked == LockResult::NoFolder)
        return NotStarted(lock.Refusal());
    quorin::RemoveLeftFiles(run.Chosen);
    if (locked == LockResult::Held)
        run.Starts.emplace(quorin::PlaceOfStarts(root));
    else
        run.Warning = lock.Warning();
    quorin::WindowProgram(run).Run();
}

/// Runs what the window starts as a process of its own. Returns its exit status; nothing if this is the window.
std::optional<int> AsAnotherProgram(int count, char** words) {
    const std::string name = count > 1 ? words[1] : "";
    const char* const program = name == quorin::AsExporter ? "quorin-export" : "quorin";
    if (name != quorin::AsExporter && name != quorin::AsHandOver)
        return std::nullopt;
    start::PrepareProcess(program);
    const ExitStatus status = name == quorin::AsExporter ? exporter::ExportMain(count - 1, words + 1)
                                                         : apps::HandOverMain(count - 1, words + 1);
    return NumberOf(start::StatusAfterOutput(program, status));
}

} // namespace

int main(int count, char** words) {
    if (const auto status = AsAnotherProgram(count, words))
        return *status;
    start::PrepareProcess("quorin");
    WindowStart run;
    std::string wrong;
    switch (ReadOptions(count, words, run.Chosen, wrong)) {
    case quorin::Reading::Shown:
        return NumberOf(start::StatusAfterOutput("quorin", ExitStatus::Ended));
    case quorin::Reading::Wrong:
        quorin::TellRefusal(wrong);
        return NumberOf(ExitStatus::NotStarted);
    case quorin::Reading::Run:
        break;
    }
    if (run.Chosen.ListPorts)
        return ListPorts(run.Chosen);
    if (!quorin::HasDisplay())
        return NotStarted(quorin::NoDisplay);
    if (const std::string missing = MakePlaces(run); !missing.empty())
        return NotStarted(missing);
    if (run.Chosen.Demo)
        if (const std::string why = PlugInstrument(run); !why.empty())
            return NotStarted(why);
    return OpenWindow(run);
}
