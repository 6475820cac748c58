// SPDX-License-Identifier: MIT
// The program from the moment on that its window may open: the device, and what is around the form.
#pragma once

#include "apps/quorin/arriving.h"
#include "apps/quorin/data_folder.h"
#include "apps/quorin/demo_terminal.h"
#include "apps/quorin/demonstration.h"
#include "apps/quorin/package_watch.h"
#include "apps/quorin/window_end.h"
#include "apps/quorin/window_export.h"
#include "apps/quorin/window_hand_over.h"
#include "apps/quorin/window_help.h"
#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_options.h"
#include "apps/quorin/window_pause.h"
#include "apps/quorin/window_place.h"
#include "apps/quorin/window_ports.h"
#include "apps/quorin/window_settings.h"
#include "apps/quorin/window_watch.h"
#include "apps/quorin/window_zoom.h"
#include "backends/host/drafts.h"
#include "backends/host/free_space.h"
#include "backends/host/journal.h"
#include "backends/host/second_start.h"
#include "backends/linux/connections.h"
#include "backends/loop/no_commands.h"

#include <QApplication>

#include <optional>
#include <string>
#include <vector>

namespace quorin {

inline constexpr const char* NoDisplay = "there is no display to open a window on; quorin-console runs on a terminal";

/// Qt's application object, with the program's name and icon.
class QuorinApplication final {
public:
    QuorinApplication();

private:
    int Count_ = 1;
    char Name_[7] = "quorin";
    char* Words_[2] = {Name_, nullptr};
    std::optional<QApplication> Application_;
};

/// What the program was started with.
struct WindowStart {
    Options Chosen; ///< with root and settings
    /// That of the demonstration's instrument; none if this is no demonstration.
    std::optional<DemoTerminal> Line;
    std::string OwnFolder; ///< see Demonstration
    std::string Warning;   ///< shown as a notice, like the warnings of a run; empty for none
    /// None if the root is not locked. It listens since before the window is opened, as a second start may be waiting.
    std::optional<backends::StartListener> Starts;
};

class WindowProgram final {
public:
    /// `start` must exist as long as the program.
    explicit WindowProgram(WindowStart& start);

    /// Shows the window and goes on until the program ends.
    [[noreturn]] void Run();

private:
    void ConnectOffers();
    void TellWrongPins();
    void ListenForStarts();
    void KeepJournal();
    void KeepDrafts();
    void StartForm();
    void Raise(const companion::Notice& notice) { Device_.onlooker.notices.Raise(notice); }

    WindowStart& Start_;
    Options& Options_;
    backends::EndSignals Signals_; // before any thread of Qt, which takes over the blocked signals
    QuorinApplication Application_;
    backends::HostConnections Connections_;
    backends::NoCommands Commands_;
    WindowWatch Watch_;
    backends::qt::QtPump Pump_;
    WindowSettings Remembered_;
    std::vector<std::string> WrongPins_;
    backends::HostDevice Host_;
    double FirstScale_;
    backends::qt::QtPlatform Device_;
    WindowZoom Zoom_;
    WindowPlace Place_;
    WindowPorts Ports_;
    WindowPause Pause_;
    WindowHints Hints_;
    WindowExport Export_;
    WindowHandOver HandOver_;
    DataFolder Data_;
    WindowHelp Help_;
    backends::FreeSpace Space_;
    Arriving Arriving_;
    PackageWatch Packages_;
    WindowEnd End_;
    std::optional<backends::Journal> Journal_;
    std::optional<backends::Drafts> Drafts_;
    std::optional<Demonstration> Demonstration_;
};

} // namespace quorin
