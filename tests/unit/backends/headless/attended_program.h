// SPDX-License-Identifier: MIT
// The whole program on a headless device, and a person who acts whenever it waits, also in boxes and prompts.
#pragma once

#include "backends/headless_input/headless_hand.h"
#include "backends/input/gestures.h"
#include "backends/loop/no_commands.h"
#include "src/app/start_up.h"
#include "tests/support/test_device.h"

#include <deque>
#include <functional>
#include <string>

namespace support {

class AttendedProgram final : backends::NoCommands {
public:
    explicit AttendedProgram(const std::string& port = "Com1") : Host(At(Folder, port)), Platform(Host, *this, Did) {
        platform::Install(&Platform.record);
        modQuorin::ResetModules();
    }
    ~AttendedProgram() override { modQuorin::ResetModules(); }

    const TemporaryFolder Folder;
    Record Did;
    backends::HostDevice Host;
    backends::headless::HeadlessPlatform Platform;
    backends::headless::HeadlessHand Hand{Platform};

    /// The next actions, each at a moment at which the program waits for a person.
    std::deque<std::function<void()>> Steps;

    /// Runs the steps. The program ends when there is none left.
    ProgramOver Run() {
        try {
            Platform.StartProgram();
            for (;;)
                Platform.loop.WaitOnce();
        } catch (const ProgramOver& over) {
            return over;
        }
    }

    void WillChoose(const Text& caption) {
        Steps.push_back([this, caption] { Done(backends::Choose(Hand, caption)); });
    }
    void WillTap(std::int32_t row, std::int32_t col) {
        Steps.push_back([this, row, col] { Done(backends::Tap(Hand, row, col)); });
    }
    void WillAnswer(platform::BoxAnswer answer) {
        Steps.push_back([this, answer] { Done(backends::Answer(Hand, answer)); });
    }
    void WillType(const Text& text) {
        Steps.push_back([this, text] { Done(backends::SetInput(Hand, text)); });
    }
    void WillWait(std::int64_t milliseconds) {
        Steps.push_back([this, milliseconds] { Platform.loop.PassTime(milliseconds); });
    }
    /// Receives text over the line and waits until it is decoded, unless something delays that.
    void WillReceive(const Text& text) {
        Steps.push_back([this, text] { Platform.serial.Arrive(text); });
        WillWait(1100);
    }
    void WillOpenTheRecord() {
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
            WillChoose(caption);
        WillWait(600);
        WillReceive(u"[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n");
    }
    static Text Reading(const Text& value) {
        return u"[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + value +
               u"\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
    }

    std::string Refused; ///< of the first step that could not be done

private:
    static backends::DeviceOptions At(const TemporaryFolder& folder, const std::string& port) {
        folder.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        folder.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                       "Moisture|1||Moisture||||\nSite|1||||||\nDay|1|||||DATE|\n");
        folder.Put("settings.ini", "[Settings]\nComPort=" + port + "\n");
        backends::DeviceOptions options;
        options.Root = folder.Path().string();
        options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
        return options;
    }
    void Done(const std::string& refusal) {
        if (Refused.empty())
            Refused = refusal;
    }
    bool HasCommand() override { return !Steps.empty(); }
    bool Ended() override { return true; }
    void RunCommand() override {
        const auto step = std::move(Steps.front());
        Steps.pop_front();
        step();
        Platform.loop.HandleDue();
    }
};

} // namespace support
