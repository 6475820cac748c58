// SPDX-License-Identifier: MIT
#include "journal/story.h"

#include "journal/glance.h"
#include "src/text/windows_1252.h"

#include <algorithm>
#include <array>
#include <utility>

namespace journal {

namespace {

constexpr std::int64_t LongPress = 1500; // milliseconds of the console's `hold`

/// Acts that the console has a command for, with the same arguments.
constexpr std::array SameCommands = {"title",    "menu",       "key",      "pick",    "answer", "close",
                                     "command",  "record",     "again",    "serial",  "disk",   "named",
                                     "keyboard", "background", "maximise", "minimise"};

bool IsCommand(const std::string& word) {
    return std::find(SameCommands.begin(), SameCommands.end(), word) != SameCommands.end();
}

std::string Quoted(const std::string& text) {
    return Line(text).dump(-1, ' ', false, Line::error_handler_t::replace);
}

} // namespace

void Story::Take(const Line& line) {
    const std::int64_t before = std::exchange(Now_, NumberIn(line, "ms"));
    const std::string event = TextIn(line, "event");
    if (event == "start") {
        IsVirtual_ = TextIn(line, "clock") == "virtual";
        Told_ = Now_;
        if (!IsVirtual_)
            Miss("the time passed by the machine's clock");
    } else if (event == "act") {
        if (TextIn(line, "act") == "set")
            Now_ = before; // the journal has the text when the field has closed, which may be too late for the command
        TakeAct(line);
        Now_ = NumberIn(line, "ms");
    } else if (event == "received") {
        TakeReceived(line);
    } else if (event == "port" && !TextIn(line, "address").empty()) {
        Miss("the port was a real one");
    } else if (event == "question" || event == "end") {
        Add(""); // a `tick` that opens a message box ends with the answer: it must not be longer than that
    }
}

void Story::TakeAct(const Line& line) {
    const std::string word = TextIn(line, "act");
    const std::string args = TextIn(line, "args");
    const std::string whole = args.empty() ? word : word + " " + args;
    if (word == "press")
        return Press(args);
    if (word == "release")
        return Release();
    if (word == "jump")
        return Jump(args);
    if (word == "set") {
        Add("set " + Quoted(TextIn(line, "text")));
    } else if (IsCommand(word)) {
        Add(whole);
    } else {
        Add("# " + whole + ": the console has no such command");
        Miss("it has acts that the console has no command for");
    }
}

void Story::TakeReceived(const Line& line) {
    const std::string from = TextIn(line, "from");
    if (from == "mailbox") {
        Add("# the mailbox brought " + Quoted(TextIn(line, "text")));
        Miss("text came by the mailbox");
    }
    if (from != "port")
        return;
    Text text = modStringTools::FromBytes(BytesOfText(TextIn(line, "bytes")).value_or(""));
    modStringTools::ReadRawBytesAsWindows1252(text);
    Add("receive " + Quoted(modStringTools::ToBytes(text)));
}

/// What a tap does comes with its release.
void Story::Press(const std::string& cell) {
    Add("tap " + cell);
    Pressed_ = Commands_.size();
    PressedAt_ = Now_;
}

void Story::Release() {
    const std::size_t pressed = std::exchange(Pressed_, 0);
    if (pressed == 0 || Now_ - PressedAt_ < LongPress)
        return;
    Commands_[pressed - 1].Text.replace(0, 3, "hold");
    std::int64_t left = LongPress; // the command takes that time, also before what happened meanwhile
    for (std::size_t i = pressed; i < Commands_.size(); ++i) {
        const std::int64_t part = std::min(left, Commands_[i].Wait);
        Commands_[i].Wait -= part;
        left -= part;
    }
    Told_ += left;
}

void Story::Jump(const std::string& milliseconds) {
    if (!IsVirtual_ || milliseconds.empty() || milliseconds.size() > 15 ||
        milliseconds.find_first_not_of("0123456789") != std::string::npos)
        return; // the console has refused it
    Add("jump " + milliseconds);
    Told_ += std::stoll(milliseconds);
}

void Story::Add(const std::string& text) {
    Commands_.push_back({std::max<std::int64_t>(Now_ - Told_, 0), text});
    Told_ = std::max(Told_, Now_);
}

void Story::Miss(const std::string& what) {
    if (WhyNot_.find(what) == std::string::npos)
        WhyNot_ += (WhyNot_.empty() ? "" : ", ") + what;
}

std::string Story::WhyNot() const {
    return WhyNot_.empty() && !IsVirtual_ ? "its beginning is missing" : WhyNot_;
}

std::string Story::Commands() const {
    std::string script;
    for (const Command& command : Commands_) {
        if (command.Wait > 0)
            script += "tick " + std::to_string(command.Wait) + "\n";
        if (!command.Text.empty())
            script += command.Text + "\n";
    }
    return script;
}

} // namespace journal
