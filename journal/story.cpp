// SPDX-License-Identifier: MIT
#include "journal/story.h"

#include "journal/glance.h"
#include "src/text/windows_1252.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace journal {

namespace {

constexpr std::int64_t LongPress = 1500;  // milliseconds of the console's `hold`
constexpr std::int64_t LongestStep = 100; // all timers of the program have multiples of this
constexpr std::int64_t MostSteps = 2000;  // by then a message box that a reading opens is open

/// Commands that the form refuses while a message box is open.
constexpr std::array FormActs = {"title", "menu", "key", "set", "pick", "close", "command", "again"};
/// Commands that it does not refuse.
constexpr std::array OtherActs = {"serial", "disk", "named", "keyboard", "background", "maximise", "minimise"};

template <std::size_t Count>
bool IsOneOf(const std::array<const char*, Count>& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string Quoted(const std::string& text) {
    return Line(text).dump(-1, ' ', false, Line::error_handler_t::replace);
}

std::string Tick(std::int64_t milliseconds) {
    return "tick " + std::to_string(milliseconds) + "\n";
}

} // namespace

void Story::Take(const Line& line) {
    const std::int64_t before = std::exchange(Now_, NumberIn(line, "ms"));
    Divisor_ = std::gcd(Divisor_, Now_);
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
    } else if (event == "end") {
        Add("");
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
    } else if (word == "answer") {
        Add(whole);
        BoxWasOpen();
    } else if (IsOneOf(FormActs, word) || IsOneOf(OtherActs, word)) {
        Add(whole);
    } else {
        Add("# " + whole + ": the console has no such command");
        Miss("it has acts that the console has no command for");
    }
    if (word == "answer" || IsOneOf(FormActs, word))
        FormAct_ = Commands_.size();
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
    FormAct_ = Pressed_ = Commands_.size();
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

/// The journal does not say when a message box opens. A `tick` that opens one ends with the answer, and takes less time
/// than it says; so the time since the last act on the form is told in steps that end wherever anything can have
/// happened.
void Story::BoxWasOpen() {
    for (std::size_t i = FormAct_; i < Commands_.size(); ++i)
        Commands_[i].MayWait = true;
}

std::int64_t Story::Step() const {
    return std::gcd(Divisor_, LongestStep);
}

std::string Story::WhyNot() const {
    return WhyNot_.empty() && !IsVirtual_ ? "its beginning is missing" : WhyNot_;
}

std::string Story::Commands() const {
    std::string script;
    for (const Command& command : Commands_) {
        std::int64_t left = command.Wait;
        for (std::int64_t i = 0; command.MayWait && left > Step() && i < MostSteps; ++i) {
            script += Tick(Step());
            left -= Step();
        }
        if (left > 0)
            script += Tick(left);
        if (!command.Text.empty())
            script += command.Text + "\n";
    }
    return script;
}

} // namespace journal
