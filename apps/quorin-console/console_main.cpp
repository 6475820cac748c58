// SPDX-License-Identifier: MIT
#include "apps/quorin-console/console_main.h"

#include "apps/quorin-console/port_objects.h"
#include "backends/descriptor/descriptor.h"
#include "backends/files/host_files.h"
#include "backends/files/left_files.h"
#include "backends/files/root_lock.h"
#include "backends/linux/port_list.h"
#include "src/app/start_up.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace console {

using backends::LockResult;
using start::ExitStatus;

namespace {

bool IsFile(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && !S_ISDIR(found.st_mode);
}

bool IsFolder(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

/// Creates the root folder if it is missing. Returns false, after a message, if there is no root folder that can be
/// written.
bool RootIsUsable(const std::string& root) {
    const auto error = backends::MakeFolders(root);
    std::string why;
    if (IsFile(root))
        why = "it is a file, not a folder";
    else if (error != platform::NoError)
        why = modStringTools::ToBytes(platform::ErrorText(error));
    else if (::access(root.c_str(), W_OK | X_OK) != 0)
        why = std::strerror(errno);
    if (!why.empty())
        std::cerr << "quorin-console: can't use the root folder " << root << ": " << why << "\n";
    return why.empty();
}

ExitStatus ListPorts(const Options& options) {
    backends::PortSurvey survey;
    survey.Pinned = options.Device.Ports.Pinned;
    const std::vector<companion::PortRow> rows = backends::SerialPorts(survey);
    if (options.PlainText)
        std::cout << companion::PortTable(rows);
    else
        for (const companion::PortRow& row : rows)
            std::cout << journal::TextOf(PortObject(row)) << "\n";
    return ExitStatus::Ended;
}

/// Removes what killed programs have left half-written.
void RemoveLeftFiles(const Options& options) {
    backends::RemoveLeftFiles(options.Device.Root, backends::DepthOfRoot);
    if (!options.Device.Settings.empty())
        backends::RemoveLeftFiles(backends::FolderOf(options.Device.Settings), 0);
    if (!options.Drafts.empty())
        backends::RemoveLeftFiles(options.Drafts, 0);
}

} // namespace

ExitStatus ConsoleMain(int count, char** words, ExitStatus (*run)(const Options&, Session&)) {
    Options options;
    switch (ReadOptions(count, words, options)) {
    case Reading::Shown:
        return ExitStatus::Ended;
    case Reading::Wrong:
        return ExitStatus::NotStarted;
    case Reading::Run:
        break;
    }
    if (options.ListPorts)
        return ListPorts(options);
    backends::Descriptor script;
    int input = STDIN_FILENO;
    if (!options.Script.empty()) {
        script = backends::Descriptor(::open(options.Script.c_str(), O_RDONLY | O_CLOEXEC));
        input = script.Number();
    }
    if (input >= 0 && IsFolder(options.Script)) {
        script.Close();
        errno = EISDIR;
        input = -1;
    }
    if (input < 0) {
        std::cerr << "quorin-console: can't read " << options.Script << ": " << std::strerror(errno) << "\n";
        return ExitStatus::NotStarted;
    }
    const bool onlyReads = !options.HandOver.empty() || !options.Export.empty();
    if (onlyReads && !IsFolder(options.Device.Root)) {
        std::cerr << "quorin-console: there is no root folder " << options.Device.Root << "\n";
        return ExitStatus::NotStarted;
    }
    if (!RootIsUsable(options.Device.Root))
        return ExitStatus::NotStarted;
    const OutputFor reader = options.PlainText ? OutputFor::People : OutputFor::Programs;
    Session session(input, std::cout, options.Strict, reader);
    session.Verdicts = options.Verdicts;
    session.JournalToKeep = options.Journal;
    session.StationToRun = options.Station;
    session.Program = options.Program;
    if (onlyReads) // beside a program that has the lock
        return run(options, session);
    backends::RootLock lock;
    switch (lock.Take(options.Device.Root, "quorin-console")) {
    case LockResult::Held:
        break;
    case LockResult::Unguarded:
        session.LockWarning = lock.Warning();
        if (!options.Import.empty()) // there is no session to tell it
            std::cerr << "quorin-console: " << lock.Warning() << "\n";
        break;
    case LockResult::Taken:
    case LockResult::NoFolder:
        std::cerr << "quorin-console: " << lock.Refusal() << "\n";
        return ExitStatus::NotStarted;
    }
    RemoveLeftFiles(options);
    return run(options, session);
}

ExitStatus EndOf(Session& session, const backends::ProgramOver& over) {
    const ExitStatus status = session.Over(over);
    modQuorin::ResetModules();
    return status;
}

} // namespace console
