// SPDX-License-Identifier: MIT
#include "journal/runs.h"

#include "journal/glance.h"
#include "journal/reading_words.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace journal {

namespace {

constexpr std::string_view Tag = "[RESULT_UNIT"; // each result ends with one

} // namespace

std::string UnreadText::Words() const {
    constexpr std::size_t DayAndBlank = std::string_view("2026-11-22 ").size();
    std::string words =
        "text with " + std::to_string(Results) + (Results == 1 ? " result" : " results") + " arrived " + TimeText(From);
    if (To != From) {
        const bool isSameDay = To.substr(0, DayAndBlank) == From.substr(0, DayAndBlank);
        words += " to " + (isSameDay ? To.substr(DayAndBlank) : TimeText(To));
    }
    return words + " and was not looked at before the program ended";
}

void Runs::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    const std::int64_t ms = NumberIn(line, "ms");
    if (event == "start" || event == "day") {
        Part part;
        part.Program = TextIn(line, "program");
        part.ProcessId = NumberIn(line, "pid");
        part.GoesOn = event == "day";
        part.FirstMs = ms;
        Parts_.push_back(std::move(part));
        IsOpen_ = true;
    }
    if (!IsOpen_)
        return;
    Part& part = Parts_.back();
    part.LastMs = ms;
    part.LastTime = TextIn(line, "time");
    if (event == "end") {
        part.HasEnded = true;
        IsOpen_ = false;
    } else if (event == "reading" || event == "emptied") {
        part.HasVerdict = true;
        part.Text = {};
        part.Tail.clear();
    } else if (event == "received") {
        TakeText(part, line);
    }
}

void Runs::Torn() {
    if (IsOpen_)
        Parts_.back().IsTorn = true;
}

/// Bytes are ASCII where they are a tag, so that a text with a character for each of them can be searched as it is.
void Runs::TakeText(Part& part, const Line& line) {
    const std::string text = part.Tail + TextIn(line, "bytes") + TextIn(line, "text");
    std::size_t end = 0;
    for (std::size_t found = text.find(Tag); found != std::string::npos; found = text.find(Tag, end)) {
        ++part.Text.Results;
        end = found + Tag.size();
    }
    part.Tail = text.substr(std::max(end, text.size() - std::min(text.size(), Tag.size() - 1)));
    const std::string time = TextIn(line, "time");
    if (part.Text.From.empty())
        part.Text.From = time;
    part.Text.To = time;
}

/// Returns the part that goes on with the run of another one, or the number of parts. With a clock that was set, it may
/// be in an earlier file.
std::size_t Runs::Next(std::size_t index) const {
    const Part& part = Parts_[index];
    std::size_t next = Parts_.size();
    for (std::size_t i = 0; i < Parts_.size(); ++i) {
        const Part& other = Parts_[i];
        const bool isOfTheRun =
            other.GoesOn && other.ProcessId == part.ProcessId && other.Program == part.Program && i != index;
        const bool isLater =
            other.FirstMs >= part.LastMs && std::pair(other.FirstMs, i) > std::pair(part.FirstMs, index);
        if (isOfTheRun && isLater && (next == Parts_.size() || other.FirstMs < Parts_[next].FirstMs))
            next = i;
    }
    return part.HasEnded ? Parts_.size() : next;
}

/// The last one of all may be running.
bool Runs::BreaksOff(std::size_t index) const {
    const Part& part = Parts_[index];
    const bool isFollowed = index + 1 < Parts_.size();
    return !part.HasEnded && Next(index) == Parts_.size() && (isFollowed || part.IsTorn);
}

std::vector<std::string> Runs::Breaks() const {
    std::vector<std::string> breaks;
    for (std::size_t i = 0; i < Parts_.size(); ++i) {
        if (BreaksOff(i))
            breaks.push_back("the journal breaks off at " + TimeText(Parts_[i].LastTime) +
                             ": a kill, a loss of power, or a journal that could not be written");
    }
    return breaks;
}

std::vector<UnreadText> Runs::Unread() const {
    std::vector<UnreadText> unread;
    for (std::size_t i = 0; i < Parts_.size(); ++i) {
        std::size_t last = i;
        bool hasVerdict = false;
        for (std::size_t next = Next(i); next != Parts_.size(); next = Next(next)) {
            hasVerdict = hasVerdict || Parts_[next].HasVerdict;
            last = next;
        }
        if (Parts_[i].Text.Results != 0 && !hasVerdict && (Parts_[last].HasEnded || BreaksOff(last)))
            unread.push_back(Parts_[i].Text);
    }
    return unread;
}

} // namespace journal
