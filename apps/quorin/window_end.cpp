// SPDX-License-Identifier: MIT
#include "apps/quorin/window_end.h"

#include "src/text/text.h"

#include <QMessageBox>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace quorin {

using backends::ProgramOver;
using start::ExitStatus;

namespace {

WindowEnd* Only = nullptr;

} // namespace

void EndWithoutDisplay() {
    if (Only != nullptr)
        Only->WithoutDisplay();
}

WindowEnd::WindowEnd(backends::qt::QtPlatform& device, WindowWatch& watch, backends::EndSignals& signals)
    : Device_(device), Watch_(watch), Last_(device) {
    device.Listen(signals);
    signals.Raised = [this](const std::string& name) { Begin(name); };
    device.SessionEnds = [this] { Begin("the end of the session"); };
    Only = this;
    std::atexit(EndWithoutDisplay);
}

void WindowEnd::Begin(const std::string& why) {
    Watch_.CloseBox();
    Last_.Begin(why);
}

/// Used when the person is gone or leaving, so no box is shown.
ExitStatus WindowEnd::TellEnding(const ProgramOver& over) const {
    if (over.Why == ProgramOver::Reason::Failed)
        std::cerr << "quorin: " << modStringTools::ToBytes(over.Failure) << "\n";
    std::cerr << "quorin: " << Last_.Words() << std::endl;
    return over.Why == ProgramOver::Reason::Failed || Last_.IsLost() ? ExitStatus::Failure : ExitStatus::Ended;
}

ExitStatus WindowEnd::Over(const ProgramOver& over) {
    Ends(over, Last_.Reason());
    if (Last_.Begun())
        return TellEnding(over);
    if (over.Why != ProgramOver::Reason::Failed)
        return ExitStatus::Ended;
    const std::string text = modStringTools::ToBytes(over.Failure);
    std::cerr << "quorin: " << text << std::endl;
    const std::string unsaved = backends::UnsavedRecordWords();
    if (!unsaved.empty())
        std::cerr << "quorin: " << unsaved << std::endl;
    QMessageBox message(QMessageBox::Critical, QStringLiteral("Quorin has stopped"), QString::fromStdString(text),
                        QMessageBox::Ok, &Device_.window);
    message.setTextFormat(Qt::PlainText);
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_UNBLOCK, &all, nullptr); // nothing is left to be saved
    message.setInformativeText(QString::fromStdString(backends::StateWords(RecordIsKept())));
    Only = nullptr; // also if the display is lost while this box is open
    message.exec();
    return ExitStatus::Failure;
}

void WindowEnd::WithoutDisplay() {
    Only = nullptr;
    Device_.host.faults.Working = nullptr; // these two would handle window events
    Device_.runTime.Rest = [](std::int32_t milliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    };
    Last_.SaveAtOnce("a display that is gone");
    Ends({}, Last_.Reason());
    std::cerr << "quorin: " << Last_.Words() << std::endl;
    std::fflush(nullptr);
    std::_Exit(NumberOf(ExitStatus::Failure));
}

} // namespace quorin
