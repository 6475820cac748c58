// SPDX-License-Identifier: MIT
#include "apps/quorin/window_program.h"

#include "apps/demo/demo_data.h"
#include "apps/options/folders.h"
#include "apps/quorin/window_entries.h"
#include "apps/quorin/window_places.h"
#include "apps/quorin/window_recovery.h"
#include "apps/start/exit_status.h"
#include "backends/linux/port_names.h"
#include "backends/qt/accessible_grid.h"
#include "backends/qt/window_icon.h"
#include "companion/offers.h"
#include "companion/words.h"

#include <cstdlib>
#include <iostream>

namespace quorin {

using backends::ProgramOver;
using start::ExitStatus;

namespace {

bool WindowIsOpen = false;

/// Handles messages of Qt. A fatal one before the window is open means that the display is named but does not answer.
void TakeQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) {
        std::cerr << "quorin: " << (WindowIsOpen ? text.toStdString() : NoDisplay) << std::endl;
        EndWithoutDisplay();
        std::_Exit(NumberOf(WindowIsOpen ? ExitStatus::Failure : ExitStatus::NotStarted));
    }
    if (type != QtDebugMsg && type != QtInfoMsg && qEnvironmentVariableIsSet("QUORIN_VERBOSE"))
        std::cerr << "quorin: " << text.toStdString() << "\n";
}

/// Completes the options by what the window knows of the machine's ports.
const backends::DeviceOptions& WithPorts(backends::DeviceOptions& device, backends::HostConnections& connections,
                                         const WindowSettings& remembered, std::vector<std::string>& wrongPins) {
    device.Connections = &connections;
    device.Ports.Find = [](std::int32_t number) { return backends::PortPath(number); };
    device.Ports.Pinned = PinsWith(remembered, device.Ports.Pinned, wrongPins);
    return device;
}

backends::qt::WindowOptions LooksOf(const Options& options, double scale) {
    backends::qt::WindowOptions looks;
    looks.Scale = scale;
    looks.UsualScale = UsualScale(options);
    looks.Profile = backends::ProfileOfType(options.Device.DeviceType);
    return looks;
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

} // namespace

QuorinApplication::QuorinApplication() {
    qInstallMessageHandler(TakeQtMessage);
    Application_.emplace(Count_, Words_);
    QApplication::setApplicationDisplayName(QStringLiteral("Quorin"));
    QApplication::setDesktopFileName(QStringLiteral("quorin"));
    QApplication::setWindowIcon(backends::qt::WindowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    backends::qt::InstallAccessibleGrids();
}

WindowProgram::WindowProgram(WindowStart& start)
    : Start_(start), Options_(start.Chosen),
      Pump_([this](const ProgramOver& over) { return NumberOf(End_.Over(over)); }), Remembered_(SettingsOf(Options_)),
      Host_(WithPorts(Options_.Device, Connections_, Remembered_, WrongPins_)),
      FirstScale_(FirstScale(Options_, Remembered_)),
      Device_(Host_, LooksOf(Options_, FirstScale_), Pump_, Commands_, Watch_),
      Zoom_(Device_, Remembered_, UsualScale(Options_)), Place_(Device_.window, Remembered_),
      Ports_(Device_, Remembered_, [this] { return Watch_.IsSilent(); }), Pause_(Device_),
      Hints_(Device_, Remembered_, [this] { return Watch_.PortTrouble(); }),
      Export_(Device_, Remembered_, Options_.Device),
      HandOver_(Device_, Remembered_, Options_.Device, Options_.Journal ? Options_.Journal->Folder : std::string()),
      Data_(Device_, FullPath(Options_.Device.Root)), Help_(Device_, Data_, PlacesOf(Options_, Remembered_.Path())),
      Space_(Device_, [this] { return Data_.Path(); }), Arriving_(Device_, Data_),
      Packages_(Device_, Options_.Device.Root), End_(Device_, Watch_, Signals_) {
    Watch_.Attach(Device_);
    Remembered_.Failed = [this](const std::string& file, const std::string& why) {
        Raise(companion::NothingRemembered(modStringTools::FromBytes(file), modStringTools::FromBytes(why)));
    };
    TellWrongPins();
    ConnectOffers();
    FillWindowMenu(Device_, Data_, Arriving_, Ports_, Hints_, Export_, HandOver_, Help_, Zoom_);
    ListenForStarts();
    KeepJournal();
}

/// What is done when a person takes up what a notice, or a button of the frame, offers.
void WindowProgram::ConnectOffers() {
    Device_.window.PortsWanted = [this] { Ports_.OpenDialog(); };
    Watch_.FolderWanted = [this] { Data_.Open(); };
    Watch_.Does(companion::OfferPorts, [this] { Ports_.OpenDialog(); });
    Watch_.Does(companion::OfferUsePort, [this] { Ports_.UseOffered(); });
    Watch_.Does(companion::OfferNamedPort, [this] { Ports_.UseGiven(); });
    Watch_.Does(companion::OfferHandOver, [this] { HandOver_.Open(); });
    Hints_.GivenPort = [this] { return Ports_.Given(); };
    Watch_.Does(companion::OfferGoOn, [this] { Pause_.GoOn(); });
    Watch_.Does(companion::OfferNotNow, [this] { Ports_.DropOffer(); });
    Watch_.Does(companion::OfferNoHints, [this] { Hints_.SetOn(false); });
    Watch_.Does(companion::OfferInstall, [this] { Arriving_.ChooseFiles(); });
    Watch_.Does(companion::OfferSample, [this] { Arriving_.ArriveSample(); });
}

void WindowProgram::TellWrongPins() {
    std::string all;
    for (const std::string& pin : WrongPins_)
        all += (all.empty() ? "" : "; ") + pin;
    if (!all.empty())
        Raise(companion::PinNotUsed(modStringTools::FromBytes(all)));
}

void WindowProgram::ListenForStarts() {
    if (!Start_.Starts)
        return;
    Start_.Starts->Started = [this](const backends::StartRequest& request) {
        Arriving_.Arrive(request.Files, request.Folder);
        BringToFront(Device_.window, request.ActivationToken);
    };
    Device_.Listen(*Start_.Starts);
}

void WindowProgram::KeepJournal() {
    if (Options_.Journal)
        Raise(companion::JournalKept(modStringTools::FromBytes(Options_.Journal->Folder)));
    if (!Start_.Warning.empty())
        Raise(companion::NobodyKeepsAway(modStringTools::FromBytes(Start_.Warning)));
    if (Options_.Journal) {
        Options_.Journal->Root = Options_.Device.Root;
        Journal_.emplace(*Options_.Journal, Options_.Program, Device_);
    } else if (!Options_.WhyNoJournal.empty()) {
        Raise(companion::JournalStopped(modStringTools::FromBytes(Options_.WhyNoJournal)));
    }
    End_.Ends = [this](const ProgramOver& over, const std::string& by) {
        Place_.Remember();
        if (Journal_)
            Journal_->End(over, by);
    };
}

/// First offers the records that earlier runs could not save.
void WindowProgram::KeepDrafts() {
    const auto state = apps::StateFolder();
    if (!state) {
        Raise(companion::DraftNotKept(u"neither XDG_STATE_HOME nor HOME is set"));
        return;
    }
    Drafts_.emplace(*state + "/drafts", Options_.Device.Root);
    if (!RecoverRecords(*Drafts_, Device_, Signals_)) {
        std::cerr << "quorin: ended before the form; a record that was not saved is kept as a draft" << std::endl;
        Device_.loop.Leave({ProgramOver::Reason::Ended, {}});
    }
    Drafts_->Attach(Device_);
    End_.RecordIsKept = [this] { return Drafts_->KeepsRecord(); };
}

void WindowProgram::StartForm() {
    Device_.StartProgram();
    if (Start_.Line) {
        Demonstration_.emplace(Device_, *Start_.Line, Data_, Start_.OwnFolder);
        apps::PrepareDemo();
        Hints_.LookForDriver();
    }
    Place_.Restore();
    Watch_.RestoreReadings(Remembered_);
    Zoom_.TellLimit(FirstScale_);
    Data_.RaiseWhatIsPending();
    Arriving_.Arrive(Options_.Files, CurrentFolder());
}

void WindowProgram::Run() {
    WindowIsOpen = true;
    KeepDrafts();
    StartForm();
    HandOver_.Count();
    for (;;) {
        Device_.loop.WaitOnce();
        Watch_.ShowLosses();
        Arriving_.Step();
        if (Demonstration_)
            Demonstration_->Step();
        if (Device_.IsAtRest())
            Packages_.Look();
    }
}

} // namespace quorin
