// SPDX-License-Identifier: MIT
#include "tests/system/model/instrument_text.h"

#include "tests/system/model/letters.h"

#include <algorithm>

namespace shift {

namespace {

std::string Lower(std::string text) {
    for (char& character : text)
        character = shift::Lower(character);
    return text;
}

bool Begins(const std::string& text, const std::string& tag) {
    return SameInAnyCase(text.substr(0, tag.size()), tag);
}

/// Returns the text between the first and the last double quote.
std::string Quoted(const std::string& text) {
    const std::size_t first = text.find('"');
    const std::size_t last = text.rfind('"');
    return first == last ? std::string() : text.substr(first + 1, last - first - 1);
}

/// Returns the text inside the last such tag of a record.
std::string TagOf(const std::string& record, const std::string& tag) {
    const std::string inside = record.substr(Lower(record).rfind(Lower(tag)) + tag.size());
    return inside.substr(0, inside.find(']'));
}

bool Holds(const std::string& record, const std::string& tag) {
    return Lower(record).find(Lower(tag)) != std::string::npos;
}

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, start)) {
        parts.push_back(text.substr(start, end - start));
        start = end + separator.size();
    }
    parts.push_back(text.substr(start));
    return parts;
}

std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (&part == parts.data() ? "" : "|") + part;
    return text;
}

/// Returns where the text ends that a new variable replaces from `from` on: at the list's last bar, or at its end.
std::size_t EndOfVariable(const std::string& list, std::size_t from) {
    const std::size_t bar = list.rfind('|');
    for (std::size_t equals = list.find('=', from); equals != std::string::npos; equals = list.find('=', equals + 1)) {
        if (bar != std::string::npos && bar > equals + 1)
            return bar;
        if (equals + 2 == list.size())
            return equals + 1; // a value of one character is not replaced
    }
    return list.size();
}

/// Adds a variable. If the list has one of its name, the new one replaces the first such one and everything after it up
/// to the last bar: of A=1|B=2|C=3, A=9 leaves A=9|C=3. If that is the last variable, it alone is replaced; but an old
/// value of one character stays, after the new text: B=2 and B=5 make B=52.
void PutVariable(std::vector<std::string>& variables, const std::string& variable) {
    const std::string name = variable.substr(0, variable.find('=')) + "=";
    const std::string list = Joined(variables);
    const std::size_t first = Lower(list).find(Lower(name));
    if (first == std::string::npos)
        variables.push_back(variable);
    else
        variables = Split(list.substr(0, first) + variable + list.substr(EndOfVariable(list, first)), "|");
}

} // namespace

bool SameInAnyCase(const std::string& a, const std::string& b) {
    return Lower(a) == Lower(b);
}

bool InstrumentText::MoveLines() {
    const std::size_t end = Begun_.rfind("\r\n");
    if (end == std::string::npos)
        return false;
    Ready_ += Begun_.substr(0, end + 2);
    Begun_.erase(0, end + 2);
    return true;
}

bool InstrumentText::Arrive(const std::string& characters) {
    static const std::string endTag = "[/BLob]\r\n";
    Begun_ += characters;
    return MoveLines() && Ready_.size() >= endTag.size() &&
           Ready_.compare(Ready_.size() - endTag.size(), endTag.size(), endTag) == 0;
}

bool InstrumentText::TakeMailbox(const std::string& bytes) {
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        std::string line = bytes.substr(start, end - start);
        if (end < bytes.size() && !line.empty() && line.back() == '\r')
            line.pop_back();
        Begun_ += line + "\r\n";
        start = end + 1;
    }
    return MoveLines();
}

bool InstrumentText::Decode() {
    Buffer_ += Ready_;
    Decoded_ = Ready_.size();
    // If any line ends in CR LF, a lone line feed is no line end, so a record with line feeds alone is one line. It is
    // decoded when only such lines are left and no new one has come.
    const bool pairs = Buffer_.find("\r\n") != std::string::npos;
    std::string lines;
    for (std::size_t i = 0; i < Buffer_.size(); ++i) {
        if (pairs && Buffer_.compare(i, 2, "\r\n") == 0)
            continue;
        const bool ends = Buffer_[i] == '\n' && (!pairs || (i > 0 && Buffer_[i - 1] == '\r'));
        lines += ends ? '\r' : Buffer_[i];
    }
    Buffer_ = lines;
    return ExtractRecords();
}

/// Returns true if a record was decoded and none was refused. The readings of a good record beside a bad one wait for
/// the next good text.
bool InstrumentText::ExtractRecords() {
    bool any = false;
    bool allGood = true;
    std::size_t start = std::string::npos;
    for (std::size_t line = 0;;) {
        const std::size_t end = Buffer_.find('\r', line);
        if (end == std::string::npos)
            return any && allGood;
        const std::string text = Buffer_.substr(line, end - line);
        if (Begins(text, "[BLob"))
            start = line; // the later of two start tags
        line = end + 1;
        if (start == std::string::npos || !Begins(text, "[/BLob"))
            continue;
        const std::string record = Buffer_.substr(start, line - start);
        Buffer_.erase(start, line - start);
        any = true;
        allGood = DecodeRecord(record) && allGood;
        start = std::string::npos;
        line = 0;
    }
}

bool InstrumentText::DecodeRecord(const std::string& record) {
    const std::vector<ResultId> held = IdsInRecords(record);
    const auto lose = [&](Fate fate) {
        for (const ResultId id : held)
            Results_->Note(id, fate);
        return false;
    };
    if (!Holds(record, "[/BLob]\r"))
        return lose(Fate::Unreadable);
    if (Holds(record, "[CONNECT")) {
        Connected = Quoted(TagOf(record, "[CONNECT"));
        lose(Fate::Unreadable); // a connecting record delivers no results
        return true;
    }
    if (Holds(record, "[ORIGIN") && Quoted(TagOf(record, "[ORIGIN")) != Connected)
        return lose(Connected.empty() ? Fate::NoConnect : Fate::WrongOrigin);
    const std::size_t before = Waiting.size();
    TakeReadings(record);
    for (const ResultId id : held) {
        const auto isIt = [&](const Reading& reading) { return IdOf(reading.Value) == id; };
        if (std::none_of(Waiting.begin() + static_cast<std::ptrdiff_t>(before), Waiting.end(), isIt))
            Results_->Note(id, Fate::Unreadable);
    }
    return true;
}

/// Adds the readings of a record. What a reading does not state, it has from the one before it in its record.
void InstrumentText::TakeReadings(const std::string& record) {
    Reading reading;
    reading.Types = {""};
    reading.Variables = {"ORIGIN=" + Connected};
    for (const std::string& line : Split(record, "\r")) {
        if (Begins(line, "[DESCRIPTIVE_VAR")) {
            PutVariable(reading.Variables, Quoted(line));
        } else if (Begins(line, "[RESULT_TYPE")) {
            reading.Types = Split(Quoted(line), "\" \"");
        } else if (Begins(line, "[RESULT_VALUE")) {
            reading.Value = Quoted(line);
        } else if (Begins(line, "[RESULT_UNIT")) {
            reading.Unit = Quoted(line);
            Waiting.push_back(reading);
        }
    }
}

void InstrumentText::ForgetLines() {
    for (const ResultId id : IdsInRecords(Ready_.substr(Decoded_)))
        Results_->Note(id, Fate::Emptied);
    Ready_.clear();
    Decoded_ = 0;
}

void InstrumentText::Lose() {
    for (const std::string& text : {Begun_, Ready_.substr(Decoded_), Buffer_}) {
        for (const ResultId id : IdsInRecords(text))
            Results_->Note(id, Fate::LeftInBuffers);
    }
    for (const Reading& reading : Waiting)
        Results_->Note(IdOf(reading.Value), Fate::LeftInBuffers);
    Waiting.clear();
    Connected.clear();
    Begun_.clear();
    Ready_.clear();
    Buffer_.clear();
    Decoded_ = 0;
}

} // namespace shift
