// SPDX-License-Identifier: MIT
#include "apps/quorin-console/script_commands.h"

#include "apps/quorin-console/arguments.h"
#include "apps/quorin-console/reports.h"
#include "apps/start/exit_status.h"
#include "apps/start/process.h"
#include "backends/input/gestures.h"
#include "backends/input/keyboard.h"
#include "backends/loop/acts.h"
#include "backends/loop/form_events.h"
#include "companion/taking_again.h"
#include "src/app/commands.h"
#include "src/app/form.h"
#include "src/drivers/record_editor.h"
#include "src/link/receive.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace console {

using platform::BoxAnswer;

namespace {

using Error = std::string;
using Arguments = std::vector<std::string>;

const Error Done;

constexpr std::int64_t LongestTime = std::int64_t{1000} * 86400 * 365 * 100; // a century of milliseconds

// --- what a person does ----------------------------------------------------------------------------------------------

struct GridPlace {
    std::int32_t Row = 0;
    std::int32_t Col = 0;
};

std::optional<std::int32_t> SmallNumber(const std::string& word) {
    const auto number = NumberFrom(word);
    if (!number || *number < std::numeric_limits<std::int32_t>::min() ||
        *number > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

Error ReadPlace(const std::string& rest, GridPlace& place) {
    const Arguments words = WordsOf(rest);
    if (words.empty() || words.size() > 2)
        return "needs ROW [COL]";
    const auto row = SmallNumber(words[0]);
    const auto col = words.size() == 2 ? SmallNumber(words[1]) : std::optional<std::int32_t>(0);
    if (!row || !col)
        return "row and column are whole numbers";
    place = {*row, *col};
    return Done;
}

Error RunTap(const Target& target, const std::string& rest) {
    GridPlace place;
    const Error error = ReadPlace(rest, place);
    return error.empty() ? Tap(target.User, place.Row, place.Col) : error;
}

Error RunHold(const Target& target, const std::string& rest) {
    GridPlace place;
    const Error error = ReadPlace(rest, place);
    return error.empty() ? Hold(target.User, place.Row, place.Col) : error;
}

Error RunMenu(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto menu = words.size() == 2 ? SmallNumber(words[0]) : std::nullopt;
    const auto item = words.size() == 2 ? SmallNumber(words[1]) : std::nullopt;
    return menu && item ? ClickItem(target.User, *menu, *item) : "needs M I";
}

Error RunTitle(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto menu = words.size() == 1 ? SmallNumber(words[0]) : std::nullopt;
    return menu ? ClickTitle(target.User, *menu) : "needs M";
}

Error RunChoose(const Target& target, const std::string& rest) {
    const auto caption = TextFrom(rest);
    return caption ? Choose(target.User, *caption) : "is not a valid JSON string";
}

/// Also runs a command that is in no menu, for a person who maintains a device.
Error RunCommand(const Target& target, const std::string& rest) {
    const auto text = TextFrom(rest);
    if (!text)
        return "is not a valid JSON string";
    Error error = FormRefusal(target.Device);
    if (error.empty())
        error = modStringTools::ToBytes(modQuorin::CommandRefusal(*text));
    if (error.empty())
        modQuorin::MenuEvent(*text);
    return error;
}

Error RunRecord(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto number = words.size() == 1 ? SmallNumber(words[0]) : std::nullopt;
    if (!number)
        return "needs N, the number of a record";
    Error error = FormRefusal(target.Device);
    return error.empty() ? modStringTools::ToBytes(modQuorin::GoToRecord(*number)) : error;
}

Error RunSet(const Target& target, const std::string& rest) {
    const auto text = TextFrom(rest);
    return text ? SetInput(target.User, *text) : "is not a valid JSON string";
}

Error RunAnswer(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    if (words == Arguments{"yes"})
        return Answer(target.User, BoxAnswer::Yes);
    if (words == Arguments{"no"})
        return Answer(target.User, BoxAnswer::No);
    if (words == Arguments{"ok"})
        return Answer(target.User, BoxAnswer::Ok);
    return "needs yes, no or ok";
}

Error RunClose(const Target& target, const std::string&) {
    return CloseForm(target.User);
}

// --- keys ------------------------------------------------------------------------------------------------------------

Error RunKey(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto code = words.size() == 1 ? SmallNumber(words[0]) : std::nullopt;
    if (!code || *code < 1)
        return "needs CODE, the number of a key";
    return PressKey(target.User, *code);
}

Error RunType(const Target& target, const std::string& rest) {
    const auto text = TextFrom(rest);
    return text ? TypeText(target.User, *text) : "is not a valid JSON string";
}

Error RunPick(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto date = words.size() == 1 ? backends::DateFromText(words[0]) : std::nullopt;
    return date ? PickDate(target.User, *date) : "needs a date of the calendar, YYYY-MM-DD";
}

/// The keyboard appears over whatever is shown, a message box included.
Error RunKeyboard(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    std::vector<std::int32_t> numbers;
    for (const std::string& word : words) {
        if (const auto number = SmallNumber(word))
            numbers.push_back(*number);
    }
    constexpr std::int32_t Largest = std::numeric_limits<std::int16_t>::max();
    if (words.size() != 5 || numbers.size() != 5 || numbers[0] < -1 || numbers[0] > Largest)
        return "needs STATE LEFT TOP WIDTH HEIGHT, five whole numbers, STATE not below -1";
    backends::RaiseKeyboard(target.Device.system, {.State = static_cast<std::int16_t>(numbers[0]),
                                                   .Left = numbers[1],
                                                   .Top = numbers[2],
                                                   .Width = numbers[3],
                                                   .Height = numbers[4]});
    return Done;
}

// --- time ------------------------------------------------------------------------------------------------------------

Error ReadTime(const std::string& rest, std::int64_t& milliseconds) {
    const Arguments words = WordsOf(rest);
    const auto number = words.size() == 1 ? NumberFrom(words[0]) : std::nullopt;
    if (!number || *number < 0 || *number > LongestTime)
        return "needs a number of milliseconds";
    milliseconds = *number;
    return Done;
}

Error RunTick(const Target& target, const std::string& rest) {
    std::int64_t milliseconds = 0;
    Error error = ReadTime(rest, milliseconds);
    if (error.empty())
        target.Device.loop.PassTime(milliseconds);
    return error;
}

/// Ends with the reading after which that many were taken in this run. A reading is taken half a second after it has
/// arrived, so more than one may come with the last step.
Error RunCollect(const Target& target, const std::string& rest) {
    constexpr std::int64_t Step = 100;
    constexpr std::int64_t Patience = 5000;
    const Arguments words = WordsOf(rest);
    const auto wanted = words.size() == 1 ? NumberFrom(words[0]) : std::nullopt;
    if (!wanted || *wanted < 1)
        return "needs N, a number of readings";
    for (std::int64_t idle = 0; target.Out.Readings() < *wanted; idle += Step) {
        if (idle >= Patience)
            return "no reading was taken for 5 seconds";
        const std::int64_t before = target.Out.Readings();
        target.Device.loop.PassTime(Step);
        if (target.Out.Readings() == before)
            continue;
        idle = 0;
        target.Out.Write({{"say", "Reading " + std::to_string(target.Out.Readings()) + " taken"}});
        target.Out.Write({{"show", Picture(target.Device)}});
    }
    return Done;
}

Error RunJump(const Target& target, const std::string& rest) {
    std::int64_t milliseconds = 0;
    Error error = ReadTime(rest, milliseconds);
    if (error.empty() && !target.Device.clock.IsVirtual())
        error = "the machine's clock can't be moved";
    if (error.empty())
        target.Device.loop.Jump(milliseconds);
    return error;
}

// --- the outside world -----------------------------------------------------------------------------------------------

Error RunReceive(const Target& target, const std::string& rest) {
    const auto text = TextFrom(rest);
    if (!text)
        return "is not a valid JSON string";
    if (!target.Device.serial.SimulatedPortOpen())
        return "no simulated port is open";
    target.Device.serial.Arrive(*text);
    return Done;
}

Error RunAgain(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto number = words.size() == 1 ? NumberFrom(words[0]) : std::nullopt;
    const companion::KeptReadings::Row* const reading =
        number && *number > 0 ? target.Readings.Number(static_cast<std::size_t>(*number)) : nullptr;
    if (reading == nullptr)
        return "wants the number of one of the last readings of this run, which count from 1";
    const bool isAsked = target.Device.Seen().boxes.Current() != nullptr;
    Error error = modStringTools::ToBytes(companion::AgainRefusal(reading->Fate, isAsked));
    if (error.empty())
        modBluetooth::TakeAgain(*reading->Blob);
    return error;
}

Error RunSerial(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto count = words.size() == 2 && words[0] == "fail" ? SmallNumber(words[1]) : std::nullopt;
    if (count && *count >= -1) {
        target.Device.serial.FailOpenings(*count);
        return Done;
    }
    if (words != Arguments{"drop"})
        return "needs fail N or drop";
    if (!target.Device.serial.SimulatedPortOpen())
        return "no simulated port is open";
    target.Device.serial.Drop();
    return Done;
}

Error RunNamed(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto number = words.size() == 2 && words[0] == "fail" ? SmallNumber(words[1]) : std::nullopt;
    if (!number && words != Arguments{"ok"})
        return "needs fail NUMBER or ok";
    target.Device.host.connections.SetOutcome(platform::ErrorNumber{number.value_or(0)});
    return Done;
}

Error RunDisk(const Target& target, const std::string& rest) {
    const Arguments words = WordsOf(rest);
    const auto count = words.size() == 2 && words[0] == "fail" ? SmallNumber(words[1]) : std::nullopt;
    if ((!count || *count < -1) && words != Arguments{"ok"})
        return "needs fail N or ok";
    target.Device.host.faults.FailNext(count.value_or(0));
    return Done;
}

// --- reports ---------------------------------------------------------------------------------------------------------

Error RunSay(const Target& target, const std::string& rest) {
    const auto text = TextFrom(rest);
    if (!text)
        return "is not a valid JSON string";
    target.Out.Write({{"say", Utf8(*text)}});
    return Done;
}

Error RunScreen(const Target& target, const std::string&) {
    target.Out.Write(ScreenReport(target.Device));
    return Done;
}

Error RunShow(const Target& target, const std::string&) {
    target.Out.Write({{"show", Picture(target.Device)}});
    return Done;
}

Error RunState(const Target& target, const std::string&) {
    target.Out.Write(StateReport(target.Device));
    return Done;
}

/// Ends like a power cut: nothing is closed or saved.
Error RunQuit(const Target& target, const std::string&) {
    target.Out.Write({{"done", "quit"}});
    std::_Exit(NumberOf(start::StatusAfterOutput("quorin-console", start::ExitStatus::Ended)));
}

struct CommandRow {
    const char* Word;
    const char* Form; ///< its arguments
    const char* Help;
    Error (*Run)(const Target&, const std::string& rest);
    bool IsAct = false; ///< it acts on the device, and no event of the form reports it
};

constexpr bool Act = true;

// clang-format off: a row a command
constexpr CommandRow Commands[] = {
    {"tap", "ROW [COL]", "taps a cell of the main grid", RunTap},
    {"hold", "ROW [COL]", "presses a cell for 1500 ms", RunHold},
    {"menu", "M I", "clicks item I (1 to 5) of soft menu M (1 or 2)", RunMenu},
    {"title", "M", "clicks the caption of soft menu M", RunTitle},
    {"choose", "TEXT", "clicks the soft menu entry with that caption", RunChoose},
    {"command", "TEXT", "runs a command of the application, even one that no menu offers", RunCommand, Act},
    {"record", "N", "shows the N-th record of the download on the screen; the one that is shown is saved first",
     RunRecord, Act},
    {"key", "CODE", "presses and releases a key; the control in focus gets what the form does not consume", RunKey},
    {"type", "TEXT", "writes characters one by one into the input control in focus", RunType},
    {"set", "TEXT", "replaces the text of the input control in focus", RunSet},
    {"pick", "YYYY-MM-DD", "chooses a date in the open date picker", RunPick},
    {"answer", "yes|no|ok", "answers the open message box", RunAnswer},
    {"tick", "MS", "lets MS milliseconds pass; timers fire in time order", RunTick},
    {"jump", "MS", "moves the virtual clock forward at once, like a device that has slept", RunJump, Act},
    {"collect", "N", "lets time pass until N readings were taken in this run; draws the screen after each", RunCollect},
    {"receive", "TEXT", "lets these characters arrive at the simulated serial port", RunReceive},
    {"again", "N", "passes the BLob of the N-th reading of this run to the receive path once more", RunAgain, Act},
    {"serial", "fail N | drop",
     "lets the next N openings of the simulated port fail (-1: all), or closes the open port", RunSerial, Act},
    {"named", "fail NUMBER | ok", "sets the result of opening a named connection", RunNamed, Act},
    {"keyboard", "STATE A B C D", "shows or hides (0) the soft keyboard; A to D are its left, top, width, height",
     RunKeyboard, Act},
    {"close", "", "clicks the close button of the title bar", RunClose},
    {"background", "", "moves the application to the background",
     [](const Target&, const std::string&) {
         frmQuorin::myCsys_AppBackground();
         return Done;
     },
     Act},
    {"maximise", "", "moves it back to the foreground",
     [](const Target&, const std::string&) {
         frmQuorin::myCsys_AppMaximized();
         return Done;
     },
     Act},
    {"minimise", "", "minimises it",
     [](const Target&, const std::string&) {
         frmQuorin::myCsys_AppMinimized();
         return Done;
     },
     Act},
    {"disk", "fail N | ok", "lets the next N write operations fail like a full disk (-1: all)", RunDisk, Act},
    {"say", "TEXT", "writes a headline", RunSay},
    {"screen", "", "writes the screen as an object", RunScreen},
    {"show", "", "draws the screen as text for people", RunShow},
    {"state", "", "writes the state of the program as an object", RunState},
    {"quit", "", "ends at once, like a power cut", RunQuit},
};
// clang-format on

} // namespace

CommandLine Parse(const std::string& line) {
    const std::size_t start = line.find_first_not_of(" \t");
    const std::size_t end = std::min(line.find_first_of(" \t", start), line.size());
    const std::size_t rest = std::min(line.find_first_not_of(" \t", end), line.size());
    return {line.substr(start, end - start), line.substr(rest)};
}

std::string Execute(const Target& target, const CommandLine& line) {
    for (const CommandRow& command : Commands) {
        if (line.Word != command.Word)
            continue;
        if (command.IsAct)
            backends::ReportAct({.Word = line.Word, .Arguments = line.Rest});
        const bool takesNone = *command.Form == '\0';
        return takesNone && !WordsOf(line.Rest).empty() ? "takes no arguments" : command.Run(target, line.Rest);
    }
    return "there is no such command";
}

std::string CommandHelp() {
    std::string help;
    for (const CommandRow& command : Commands) {
        std::string head = std::string("  ") + command.Word + " " + command.Form;
        head.resize(std::max<std::size_t>(head.size() + 1, 26), ' ');
        help += head + command.Help + "\n";
    }
    return help;
}

} // namespace console
