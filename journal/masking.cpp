// SPDX-License-Identifier: MIT
#include "journal/masking.h"

#include "journal/glance.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace journal {

namespace {

/// Tags of a record. What follows those that are marked stays: it is the driver's own words.
struct KnownTag {
    std::string_view Name;
    bool Stays = false;
};
constexpr std::array<KnownTag, 8> Tags = {{{"BLOB"},
                                           {"/BLOB"},
                                           {"CONNECT"},
                                           {"ORIGIN"},
                                           {"DESCRIPTIVE_VAR"},
                                           {"RESULT_TYPE", true},
                                           {"RESULT_VALUE"},
                                           {"RESULT_UNIT", true}}};

/// Names whose texts are the program's own.
constexpr std::array<std::string_view, 11> OwnNames = {"time",    "event", "what",   "act", "from",   "clock",
                                                       "program", "utc",   "device", "os",  "version"};

/// Acts whose arguments are numbers of cells and menus, or words of the program. A date that was picked is a value.
constexpr std::array<std::string_view, 11> OwnArguments = {
    "title", "menu", "answer", "close", "press", "release", "heading", "beside", "scroll", "select", "holdmenu"};

template <class List>
bool Has(const List& list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

bool IsDigit(char each) {
    return each >= '0' && each <= '9';
}
bool IsLetter(char each) {
    return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
}
/// All bytes of a character that is not ASCII are an x together.
bool GoesOn(char each) {
    return (each & 0xC0) == 0x80;
}
bool IsAscii(char each) {
    return (each & 0x80) == 0;
}

char Hidden(char each) {
    return IsDigit(each) ? '0' : IsLetter(each) || !IsAscii(each) ? 'x' : each;
}

/// A key that writes a character is part of a text.
std::string KeyArguments(const std::string& text) {
    const long code = std::atol(text.c_str());
    constexpr long FirstWritten = 41;
    constexpr long LastWritten = 126;
    return code >= FirstWritten && code <= LastWritten ? Masked(text) : text;
}

/// An option stays as far as its name.
std::string Word(const std::string& text) {
    const std::size_t end = std::min(text.find('='), text.size());
    return text.substr(0, 1) == "-" ? text.substr(0, end) + Masked(text.substr(end)) : Masked(text);
}

} // namespace

std::string Masked(std::string_view utf8) {
    std::string masked;
    for (const char each : utf8)
        if (IsAscii(each) || !GoesOn(each))
            masked += Hidden(each);
    return masked;
}

std::string RecordMask::Masked(std::string_view part) {
    std::string masked;
    for (const char each : part) {
        if (each == '\r' || each == '\n')
            State_ = State::LineStart;
        else if (State_ == State::LineStart)
            BeginLine(each);
        else if (State_ == State::Tag)
            TakeTag(each);
        if (State_ != State::Hidden)
            masked += each;
        else if (IsAscii(each) || !GoesOn(each))
            masked += Hidden(each);
        if (State_ == State::Kept && each == ']')
            State_ = State::Hidden; // another tag may follow in the line
    }
    return masked;
}

void RecordMask::BeginLine(char each) {
    State_ = each == '[' ? State::Tag : State::Hidden;
    Tag_.clear();
}

/// A tag stays as long as it may become one that is known.
void RecordMask::TakeTag(char each) {
    if (IsLetter(each) || each == '_' || each == '/') {
        Tag_ += each >= 'a' && each <= 'z' ? static_cast<char>(each - 'a' + 'A') : each;
        const bool isPart = std::any_of(
            Tags.begin(), Tags.end(), [this](const KnownTag& tag) { return tag.Name.substr(0, Tag_.size()) == Tag_; });
        if (!isPart)
            State_ = State::Hidden;
        return;
    }
    const bool stays =
        std::any_of(Tags.begin(), Tags.end(), [this](const KnownTag& tag) { return tag.Stays && tag.Name == Tag_; });
    State_ = stays ? State::Kept : State::Hidden;
}

std::string Masking::Part(const Line& line, const std::string& name, const std::string& text) {
    const std::string event = TextIn(line, "event");
    if (Has(OwnNames, name))
        return text;
    if (event == "received" && (name == "bytes" || name == "text"))
        return Records_[TextIn(line, "from")].Masked(text);
    if (event == "act" && name == "args" && TextIn(line, "act") == "key")
        return KeyArguments(text);
    if (event == "act" && name == "args" && Has(OwnArguments, TextIn(line, "act")))
        return text;
    return journal::Masked(text);
}

Line Masking::Masked(const Line& line) {
    Line masked = Line::object();
    for (const auto& [name, value] : line.items()) {
        if (value.is_number() || value.is_boolean() || value.is_null()) {
            masked[name] = value;
        } else if (value.is_string()) {
            masked[name] = Part(line, name, value.get<std::string>());
        } else if (name == "words" && value.is_array()) {
            masked[name] = Line::array();
            for (const Line& word : value)
                masked[name].push_back(word.is_string() ? Word(word.get<std::string>()) : std::string("x"));
        }
    }
    return masked;
}

} // namespace journal
