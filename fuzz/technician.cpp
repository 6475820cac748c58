// SPDX-License-Identifier: MIT
#include "fuzz/technician.h"

#include "backends/input/gestures.h"
#include "backends/input/keyboard.h"
#include "src/app/start_up.h"

#include <algorithm>

namespace fuzz {

using backends::ProgramOver;

const char* const DriversTable = "NAME|INFFILE\nMeter|meter.txt\n";
const char* const ControlTable = "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n";
const char* const InfTable = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                             "Moisture|1||Moisture|255||||\nPlace|1|1|dv: Site||||\nDay|1||||||DATE|startdate\n";
const char* const Download = "Moisture|Place|Day\n23.4 %|North wall|05/03/2007\n|Cellar|\n";
const char* const Settings = "[Settings]\nComPort=Com1\n";

namespace {

/// The limit of boxes and prompts in a run. A program that opens more is in an endless loop.
constexpr int MostWaits = 1000;

backends::DeviceOptions OnPlace(const Place& place, std::int32_t deviceType) {
    backends::DeviceOptions options;
    options.DeviceType = deviceType;
    options.Root = place.Root().string();
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    return options;
}

} // namespace

Technician::Technician(const Place& place, std::int32_t deviceType)
    : Host(OnPlace(place, deviceType)), Device(Host, *this, *this) {
    Device.runTime.Rest = [](std::int32_t) {}; // there is nothing to wait for
    platform::Install(&Device.record);
    modQuorin::ResetModules();
}

Technician::~Technician() {
    modQuorin::ResetModules();
}

void Technician::Choose(const Text& caption) {
    backends::Choose(Hand, caption);
    Device.loop.HandleDue();
}

void Technician::Tap(std::int32_t row, std::int32_t col) {
    backends::Tap(Hand, row, col);
    Device.loop.HandleDue();
}

void Technician::Enter(std::int32_t row, const Text& value) {
    Tap(row, 1);
    backends::SetInput(Hand, value);
    Device.loop.HandleDue();
}

void Technician::Receive(const Text& text) {
    Device.serial.Arrive(text);
    Device.loop.HandleDue();
}

void Technician::RunCommand() {
    Must(++Waited_ < MostWaits, "boxes and prompts without end");
    if (const auto* box = Device.boxes.Current()) {
        Hand.PressBoxButton(box->Buttons == platform::BoxButtons::Ok ? platform::BoxAnswer::Ok
                                                                     : platform::BoxAnswer::Yes);
        return;
    }
    if (backends::PickDate(Hand, {2007, 3, 6}).empty())
        return;
    backends::SetInput(Hand, Answer);
    Choose(u"Ok");
}

void Technician::BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) {
    Boxes += modStringTools::ToBytes(text) + '\n';
}

std::string WorkOn(const Place& place, std::int32_t deviceType, const Work& work) {
    Technician technician(place, deviceType);
    try {
        technician.Device.StartProgram();
        work(technician);
    } catch (const ProgramOver& over) {
        if (over.Why == ProgramOver::Reason::Failed)
            return modStringTools::ToBytes(over.Failure);
    }
    return {};
}

void Run(const Place& place, std::int32_t deviceType, const std::function<void()>& putFiles, const Work& work,
         std::initializer_list<const char*> reasons) {
    place.Empty();
    putFiles();
    const std::string stopped = WorkOn(place, deviceType, work);
    const bool allowed = stopped.empty() || std::any_of(reasons.begin(), reasons.end(), [&](const char* reason) {
                             return stopped.find(reason) != std::string::npos;
                         });
    Must(allowed, "the program was stopped: " + stopped);
    const std::string again = WorkOn(place, deviceType, [](Technician&) {});
    Must(again.empty(), "the program can't be started again: " + again);
    place.MustHaveKeptWithinRoot();
}

void PutMeter(const Place& place) {
    place.Put("settings.ini", Settings);
    place.Put("Quorin/drivers.txt", DriversTable);
    place.Put("Quorin/qrnctrl.txt", ControlTable);
    place.Put("Quorin/meter.txt", InfTable);
    place.Put("Quorin/qrn0001.txt", Download);
}

} // namespace fuzz
