// SPDX-License-Identifier: MIT
#include "journal/causes.h"

#include "journal/glance.h"
#include "journal/reading_words.h"

namespace journal {

namespace {

constexpr std::size_t Kept = 6;           // the last ones say the most
constexpr const char* Caption = "title "; // of a menu, which opens it, unless it has a single entry
constexpr const char* Entry = "menu ";

/// Returns what an act is called for people; empty for the end of a tap.
std::string WordsOfAct(const Line& act) {
    const std::string word = TextIn(act, "act");
    const std::string about = TextIn(act, "about");
    if (word == "release")
        return {};
    if (word == "set")
        return "set " + Line(TextIn(act, "text")).dump(-1, ' ', false, Line::error_handler_t::replace);
    const std::string named = word == "press" ? "tap" : word;
    const std::string args = TextIn(act, "args");
    if (word == "answer")
        return named + " " + args + (about.empty() ? "" : " to \"" + about + "\"");
    if (!about.empty())
        return named + " " + about;
    return args.empty() ? named : named + " " + args;
}

} // namespace

void Causes::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    if (event == "start")
        *this = {}; // what was done in an earlier run led to nothing in this one
    else if (event == "row")
        IsUsed_ = true;
    else if (event == "act")
        Add(WordsOfAct(line));
    else if (event == "reading")
        Add(ResultOf(line) + " (" + TextIn(line, "verdict") + ")");
}

void Causes::Add(std::string cause) {
    if (IsUsed_) {
        Last_.clear();
        Left_ = 0;
        IsUsed_ = false;
    }
    if (cause.empty())
        return;
    if (cause.starts_with(Entry) && !Last_.empty() && Last_.back().starts_with(Caption))
        Last_.pop_back();
    Last_.push_back(OneLine(std::move(cause)));
    if (Last_.size() > Kept) {
        Last_.erase(Last_.begin());
        ++Left_;
    }
}

std::string Causes::Text() const {
    std::string text = Left_ == 0 ? "" : "… ";
    for (std::size_t i = 0; i < Last_.size(); ++i)
        text += (i == 0 ? "" : ", ") + Last_[i];
    return text;
}

} // namespace journal
