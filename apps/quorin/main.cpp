// SPDX-License-Identifier: MIT
#include "apps/options/folders.h"
#include "apps/quorin/data_folder.h"
#include "apps/quorin/demo.h"
#include "apps/quorin/demo_instrument.h"
#include "apps/quorin/demonstration.h"
#include "apps/quorin/free_space.h"
#include "apps/quorin/package_watch.h"
#include "apps/quorin/start_refusal.h"
#include "apps/quorin/window_end.h"
#include "apps/quorin/window_entries.h"
#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_options.h"
#include "apps/quorin/window_place.h"
#include "apps/quorin/window_ports.h"
#include "apps/quorin/window_recovery.h"
#include "apps/quorin/window_settings.h"
#include "apps/quorin/window_watch.h"
#include "apps/start/exit_status.h"
#include "apps/start/process.h"
#include "backends/files/host_files.h"
#include "backends/files/left_files.h"
#include "backends/files/root_lock.h"
#include "backends/host/drafts.h"
#include "backends/host/journal.h"
#include "backends/host/second_start.h"
#include "backends/linux/connections.h"
#include "backends/linux/port_list.h"
#include "backends/linux/port_names.h"
#include "backends/loop/no_commands.h"
#include "backends/qt/accessible_grid.h"
#include "backends/qt/keyboard_map.h"
#include "backends/qt/qt_platform.h"
#include "backends/qt/window_icon.h"
#include "companion/offers.h"
#include "companion/ports/port_table.h"
#include "companion/words.h"

#include <QApplication>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

using backends::LockResult;
using backends::ProgramOver;

using start::ExitStatus;

int NotStarted(const std::string& why) {
    quorin::TellRefusal("quorin: " + why + "\n");
    return NumberOf(ExitStatus::NotStarted);
}

constexpr const char* NoDisplay = "there is no display to open a window on; quorin-console runs on a terminal";

bool WindowIsOpen = false;

/// Handles messages of Qt. A fatal one before the window is open means that the display is named but does not answer.
void TakeQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) {
        std::cerr << "quorin: " << (WindowIsOpen ? text.toStdString() : NoDisplay) << std::endl;
        quorin::EndWithoutDisplay();
        std::_Exit(NumberOf(WindowIsOpen ? ExitStatus::Failure : ExitStatus::NotStarted));
    }
    if (type != QtDebugMsg && type != QtInfoMsg && qEnvironmentVariableIsSet("QUORIN_VERBOSE"))
        std::cerr << "quorin: " << text.toStdString() << "\n";
}

/// Sets root and settings if they were not given. Returns an empty text, or a message about what is missing.
std::string FindPlaces(quorin::Options& options) {
    const bool ownRoot = !options.Device.Root.empty();
    if (!ownRoot) {
        const auto data = apps::DataFolder();
        if (!data)
            return "--root is needed: neither XDG_DATA_HOME nor HOME is set";
        options.Device.Root = options.Demo ? *data + "-demo" : *data;
    }
    if (!options.Device.Settings.empty() || ownRoot || options.Demo)
        return {}; // settings.ini in the root folder
    const auto settings = apps::SettingsPlace();
    if (!settings)
        return "--settings is needed: neither XDG_CONFIG_HOME nor HOME is set";
    options.Device.Settings = *settings;
    return {};
}

/// Returns the file of the form's settings, once the places are known.
std::string SettingsOf(const quorin::Options& options) {
    return options.Device.Settings.empty() ? options.Device.Root + "/settings.ini" : options.Device.Settings;
}

/// Removes what killed programs have left half-written.
void RemoveLeftFiles(const quorin::Options& options) {
    backends::RemoveLeftFiles(options.Device.Root, backends::DepthOfRoot);
    backends::RemoveLeftFiles(backends::FolderOf(SettingsOf(options)), 0);
    if (const auto state = apps::StateFolder())
        backends::RemoveLeftFiles(*state + "/drafts", 0);
}

/// Prints the ports as the window would use them. Where there is no place for settings, nothing is remembered.
int ListPorts(quorin::Options& options) {
    backends::PortSurvey survey;
    survey.Pinned = options.Device.Ports.Pinned;
    if (FindPlaces(options).empty())
        survey.Pinned = quorin::PinsWith(quorin::WindowSettings(SettingsOf(options)), survey.Pinned);
    std::cout << companion::PortTable(backends::SerialPorts(survey));
    return NumberOf(start::StatusAfterOutput("quorin", ExitStatus::Ended));
}

/// Returns the folder from which relative paths start; empty if it was deleted.
std::string HereNow() {
    std::error_code gone;
    return std::filesystem::current_path(gone).string();
}

/// Without an instrument this is no demonstration. `ownFolder`: see Demonstration.
struct DemoParts {
    std::optional<quorin::DemoInstrument> Instrument;
    std::string OwnFolder;
};

/// Returns where second starts on a root folder reach the window that is open.
backends::StartPlace PlaceOfStarts(const std::string& root) {
    const char* const ofSession = std::getenv("XDG_RUNTIME_DIR");
    const auto state = apps::StateFolder();
    return backends::StartPlaceOf(
        root, {ofSession == nullptr || *ofSession != '/' ? std::string() : std::string(ofSession) + "/quorin",
               state ? *state + "/start" : std::string()});
}

/// Passes the files to the window that has the lock. Returns false if no window answers in time.
bool IsPassedOn(const quorin::Options& options, const std::string& holder) {
    constexpr std::chrono::seconds Patience{2};
    if (holder.rfind("quorin-console ", 0) == 0)
        return false;
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    if (!backends::PassOn(PlaceOfStarts(options.Device.Root), {HereNow(), token.toStdString(), options.Files},
                          Patience))
        return false;
    std::cerr << "quorin: the window of " << options.Device.Root << " is open already" << std::endl;
    return true;
}

/// `token`: the desktop's permission; Qt reads it when the window is activated. May be empty.
void BringToFront(QWidget& window, const std::string& token) {
    if (!token.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
    window.setWindowState((window.windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    window.show();
    window.raise();
    window.activateWindow();
}

/// `warning` is shown as a notice, like the warnings of a run; empty for none. `starts`: null if the root is not
/// locked.
[[noreturn]] void RunWindow(quorin::Options& options, DemoParts& demo, const std::string& warning,
                            backends::StartListener* starts) {
    const double ofPerson = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
    qputenv("QT_SCALE_FACTOR", QByteArray::number(options.Scale * (ofPerson > 0 ? ofPerson : 1)));
    qInstallMessageHandler(TakeQtMessage);
    backends::EndSignals signals;
    int count = 1;
    char name[] = "quorin";
    char* words[] = {name, nullptr};
    QApplication application(count, words);
    QApplication::setApplicationDisplayName(QStringLiteral("Quorin"));
    QApplication::setDesktopFileName(QStringLiteral("quorin"));
    QApplication::setWindowIcon(backends::qt::WindowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    backends::qt::InstallAccessibleGrids();
    // Menus and boxes are not part of the device: they have their usual size.
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() / options.Scale);
    QApplication::setFont(font);

    backends::HostConnections connections;
    options.Device.Connections = &connections;
    options.Device.Ports.Find = [](std::int32_t number) { return backends::PortPath(number); };
    backends::NoCommands commands;
    quorin::WindowWatch watch;
    std::optional<backends::HostDevice> host;
    std::optional<backends::qt::QtPlatform> device;
    quorin::WindowSettings remembered(SettingsOf(options));
    std::optional<quorin::WindowHints> hints;
    std::optional<quorin::WindowPorts> ports;
    std::optional<quorin::WindowEnd> end;
    std::optional<backends::Journal> journal;
    backends::qt::QtPump pump([&end](const ProgramOver& over) { return NumberOf(end->Over(over)); });
    backends::qt::WindowOptions looks;
    looks.Scale = options.Scale;
    looks.Profile = backends::ProfileOfType(options.Device.DeviceType);
    options.Device.Ports.Pinned = quorin::PinsWith(remembered, options.Device.Ports.Pinned);
    host.emplace(options.Device);
    device.emplace(*host, looks, pump, commands, watch);
    watch.Attach(*device);
    quorin::WindowPlace place(device->window, remembered);
    remembered.Failed = [&device](const std::string& file, const std::string& why) {
        device->onlooker.notices.Raise(
            companion::NothingRemembered(modStringTools::FromBytes(file), modStringTools::FromBytes(why)));
    };
    ports.emplace(*device, remembered, [&watch] { return watch.IsSilent(); });
    watch.Does(companion::OfferPorts, [&ports] { ports->OpenDialog(); });
    device->window.PortsWanted = [&ports] { ports->OpenDialog(); };
    watch.Does(companion::OfferUsePort, [&ports] { ports->UseOffered(); });
    watch.Does(companion::OfferNotNow, [&ports] { ports->DropOffer(); });
    hints.emplace(*device, remembered, [&watch] { return watch.PortTrouble(); });
    watch.Does(companion::OfferNoHints, [&hints] { hints->SetOn(false); });
    quorin::DataFolder data(*device, quorin::FullPath(options.Device.Root));
    quorin::FreeSpace space(*device, [&data] { return data.Path(); });
    quorin::Arriving arriving(*device, data);
    quorin::PackageWatch packages(*device, options.Device.Root);
    watch.FolderWanted = [&data] { data.Open(); };
    watch.Does(companion::OfferInstall, [&arriving] { arriving.ChooseFiles(); });
    watch.Does(companion::OfferSample, [&arriving] { arriving.ArriveSample(); });
    quorin::FillWindowMenu(*device, data, arriving, *ports, *hints);
    if (starts != nullptr) {
        starts->Started = [&](const backends::StartRequest& request) {
            arriving.Arrive(request.Files, request.Folder);
            BringToFront(device->window, request.ActivationToken);
        };
        device->Listen(*starts);
    }
    if (options.Journal)
        device->onlooker.notices.Raise(companion::JournalKept(modStringTools::FromBytes(options.Journal->Folder)));
    if (!warning.empty())
        device->onlooker.notices.Raise(companion::NobodyKeepsAway(modStringTools::FromBytes(warning)));
    if (options.Journal) {
        options.Journal->Root = options.Device.Root;
        journal.emplace(*options.Journal, options.Program, *device);
    } else if (!options.WhyNoJournal.empty()) {
        device->onlooker.notices.Raise(companion::JournalStopped(modStringTools::FromBytes(options.WhyNoJournal)));
    }
    end.emplace(*device, watch, signals);
    end->Ends = [&journal, &place](const ProgramOver& over, const std::string& by) {
        place.Remember();
        if (journal)
            journal->End(over, by);
    };
    WindowIsOpen = true;
    std::optional<backends::Drafts> drafts;
    if (const auto state = apps::StateFolder()) {
        drafts.emplace(*state + "/drafts", options.Device.Root);
        if (!quorin::RecoverRecords(*drafts, *device, signals)) {
            std::cerr << "quorin: ended before the form; a record that was not saved is kept as a draft" << std::endl;
            device->loop.Leave({ProgramOver::Reason::Ended, {}});
        }
        drafts->Attach(*device);
        end->RecordIsKept = [&drafts] { return drafts->KeepsRecord(); };
    } else {
        device->onlooker.notices.Raise(companion::DraftNotKept(u"neither XDG_STATE_HOME nor HOME is set"));
    }
    device->StartProgram();
    std::optional<quorin::Demonstration> demonstration;
    if (demo.Instrument) {
        demonstration.emplace(*device, *demo.Instrument, data, demo.OwnFolder);
        quorin::PrepareDemo();
        hints->LookForDriver();
    }
    place.Restore();
    data.RaiseWhatIsPending();
    arriving.Arrive(options.Files, HereNow());
    for (;;) {
        device->loop.WaitOnce();
        watch.ShowLosses();
        arriving.Step();
        if (demonstration)
            demonstration->Step();
        if (arriving.IsFree())
            packages.Look();
    }
}

} // namespace

int main(int count, char** words) {
    start::PrepareProcess("quorin");
    quorin::Options options;
    std::ostringstream wrong;
    std::streambuf* const errors = std::cerr.rdbuf(wrong.rdbuf());
    const quorin::Reading reading = quorin::ReadOptions(count, words, backends::qt::KeyboardHelp(), options);
    std::cerr.rdbuf(errors);
    switch (reading) {
    case quorin::Reading::Shown:
        return NumberOf(start::StatusAfterOutput("quorin", ExitStatus::Ended));
    case quorin::Reading::Wrong:
        quorin::TellRefusal(wrong.str());
        return NumberOf(ExitStatus::NotStarted);
    case quorin::Reading::Run:
        break;
    }
    if (options.ListPorts)
        return ListPorts(options);
    if (!quorin::HasDisplay())
        return NotStarted(NoDisplay);
    DemoParts demo;
    const bool isNamed = !options.Device.Root.empty(); // by a person
    if (const std::string missing = FindPlaces(options); !missing.empty())
        return NotStarted(missing);
    const std::string settings = SettingsOf(options);
    backends::MakeFolders(settings.substr(0, settings.rfind('/')));
    const std::string& root = options.Device.Root;
    if (const auto error = backends::MakeFolders(root); error != platform::NoError)
        return NotStarted("can't use the root folder " + root + ": " +
                          modStringTools::ToBytes(platform::ErrorText(error)));
    std::error_code failed;
    if (!isNamed && !std::filesystem::is_symlink(root, failed)) // a link may lead to other data
        demo.OwnFolder = quorin::FullPath(root);
    if (options.Demo) {
        demo.Instrument.emplace();
        if (demo.Instrument->Port().empty())
            return NotStarted("the simulated instrument could not be started: " + demo.Instrument->Problem());
        options.Device.Ports.Pinned.emplace(quorin::DemoPort,
                                            backends::PathAddress(demo.Instrument->Port())); // a user's pin comes first
    }
    backends::RootLock lock;
    const LockResult locked = lock.Take(root, "quorin");
    if (locked == LockResult::Taken && IsPassedOn(options, lock.Holder()))
        return NumberOf(ExitStatus::Ended);
    if (locked == LockResult::Taken || locked == LockResult::NoFolder)
        return NotStarted(lock.Refusal());
    RemoveLeftFiles(options);
    std::optional<backends::StartListener> starts; // at once: a second start may be waiting for it
    if (locked == LockResult::Held)
        starts.emplace(PlaceOfStarts(root));
    RunWindow(options, demo, locked == LockResult::Unguarded ? lock.Warning() : std::string(),
              starts ? &*starts : nullptr);
}
