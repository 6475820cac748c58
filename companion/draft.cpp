// SPDX-License-Identifier: MIT
#include "companion/draft.h"

#include "companion/words.h"
#include "src/drivers/downloads.h"
#include "src/drivers/record_editor.h"
#include "src/drivers/unsaved_record.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/row_line.h"
#include "src/storage/settings.h"
#include "src/text/digits.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <charconv>
#include <memory>

namespace companion {

using modFileSystem::Table;
using modStringTools::FromBytes;
using modStringTools::ToBytes;

namespace {

const std::string FirstWord = "quorin-draft ";
const std::string FirstLine = FirstWord + "1\n"; // another number only if older programs would misread the rest
const std::string LastLine = "end\n";            // a file that was cut has none

std::vector<Text> Fields(const Text& line) {
    std::vector<Text> fields;
    modFileSystem::Split(line, fields);
    return fields;
}

Text FieldAt(const std::vector<Text>& fields, std::size_t i) {
    return i < fields.size() ? fields[i] : Text();
}

// The file of a draft.

void Add(std::string& bytes, const char* name, const std::string& value) {
    constexpr const char* Digits = "0123456789abcdef";
    bytes += name;
    bytes += ' ';
    for (const char character : value) {
        const auto code = static_cast<unsigned char>(character);
        if (code >= ' ' && code != '%' && code != 0x7f)
            bytes += character;
        else
            bytes += {'%', Digits[code >> 4], Digits[code & 15]};
    }
    bytes += '\n';
}

void Add(std::string& bytes, const char* name, const Text& value) {
    Add(bytes, name, ToBytes(value));
}

std::optional<std::string> Unescaped(std::string_view written) {
    std::string value;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] != '%') {
            value += written[i];
            continue;
        }
        unsigned code = 0;
        const char* const digits = written.data() + i + 1;
        if (i + 2 >= written.size() || std::from_chars(digits, digits + 2, code, 16).ptr != digits + 2)
            return std::nullopt;
        value += static_cast<char>(code);
        i += 2;
    }
    return value;
}

template <class Number>
bool ReadNumber(const std::string& value, Number& number) {
    const char* const end = value.data() + value.size();
    return std::from_chars(value.data(), end, number).ptr == end;
}

/// Takes up one line; false if it is none of a draft's.
bool TakeLine(Draft& draft, std::string_view name, const std::string& value) {
    const Text text = FromBytes(value);
    if (name == "device")
        return ReadNumber(value, draft.Root.Device);
    if (name == "inode")
        return ReadNumber(value, draft.Root.Inode);
    if (name == "row")
        return ReadNumber(value, draft.Row);
    if (name == "root")
        draft.Root.Path = value;
    else if (name == "time")
        draft.Time = text;
    else if (name == "file")
        draft.File = text;
    else if (name == "path")
        draft.FullName = text;
    else if (name == "header")
        draft.Header = text;
    else if (name == "register")
        draft.Register = text;
    else if (name == "line")
        draft.Line = text;
    else if (name == "text")
        draft.Texts.push_back(text);
    else
        return false;
    return true;
}

/// Returns how many fields the record in the file, the table and the screen have in common.
std::size_t SharedFields(const Draft& draft) {
    return std::min({Fields(draft.Line).size(), Fields(draft.Header).size(), draft.Texts.size()});
}

/// Returns the names of the fields with a text for which the record in the file has no field, a blank before each.
Text FieldsBeyond(const Draft& draft) {
    const std::vector<Text> columns = Fields(draft.Header);
    Text names;
    for (std::size_t i = SharedFields(draft); i < draft.Texts.size(); ++i) {
        if (!draft.Texts[i].empty())
            names += u" " + FieldAt(columns, i);
    }
    return names;
}

/// Returns why a file can't be read; empty if it can. The table routines stop the program in some of these cases.
Text WhyNotReadable(const Text& fullName) {
    std::unique_ptr<platform::TextStream> stream;
    const auto error = platform::Device().fileSystem.OpenStream(fullName, platform::StreamMode::Existing, stream);
    return error == platform::NoError || error == platform::FileNotFound ? Text() : platform::ErrorText(error);
}

/// Opens the draft's table at its row. Returns why the draft does not belong there; empty if it does.
Text OpenRow(const Draft& draft) {
    modQuorin::SetFilePaths();
    if (draft.Row < 1)
        return u"it has no record in the file";
    for (const Text& file : {modQuorin::Paths.ControlFile, draft.FullName}) {
        const TextView memory = platform::Traits().Memory; // has line databases
        const bool isDatabase = !memory.empty() && file.starts_with(memory);
        const Text why = isDatabase ? Text() : WhyNotReadable(file);
        if (!why.empty())
            return modFileSystem::BareName(file) + u": " + why;
    }
    if (modQuorin::RegisterLineOf(draft.File) != draft.Register)
        return u"the list of downloads has changed";
    modFileSystem::OpenTable(draft.FullName, u"r", modQuorin::DataType, modQuorin::DataCreator);
    if (!Table.TableFile.valid)
        return draft.File + u" is not there";
    if (modFileSystem::Join(Table.TableColumns) != draft.Header)
        return draft.File + u" has other columns";
    modFileSystem::GotoRow(draft.Row);
    if (modFileSystem::HeldFields() == 0 || Table.RowLine != draft.Line)
        return u"the record has changed";
    const Text beyond = FieldsBeyond(draft);
    return beyond.empty() ? beyond : u"the record has no field" + beyond;
}

} // namespace

bool IsOf(const Draft& draft, const RootId& root) {
    const bool isThere = !root.Path.empty() && draft.Root.Path == root.Path;
    return isThere || (draft.Root.Inode == root.Inode && draft.Root.Device == root.Device);
}

std::optional<Draft> DraftOfScreen() {
    if (!modQuorin::RecordIsUnsaved())
        return std::nullopt;
    Draft draft;
    draft.Texts = modQuorin::TextsOfRecord();
    draft.File = Table.TableName;
    draft.FullName = Table.TableFile.path + Table.TableName;
    draft.Header = modFileSystem::Join(Table.TableFile.valid ? Table.TableColumns : modQuorin::NamesOfGrid());
    draft.Register = modQuorin::ListedLineOf(draft.File);
    if (modFileSystem::HeldFields() > 0) {
        draft.Row = Table.TableRowIndex;
        draft.Line = Table.RowLine;
    }
    return draft;
}

Text LineOf(const Draft& draft) {
    std::vector<Text> fields = Fields(draft.Line);
    std::copy_n(draft.Texts.begin(), SharedFields(draft), fields.begin());
    return modFileSystem::Join(fields);
}

bool IsNeeded(const Draft& draft) {
    return LineOf(draft) != draft.Line || !FieldsBeyond(draft).empty();
}

std::string BytesOf(const Draft& draft) {
    std::string bytes = FirstLine;
    Add(bytes, "device", std::to_string(draft.Root.Device));
    Add(bytes, "inode", std::to_string(draft.Root.Inode));
    Add(bytes, "root", draft.Root.Path);
    Add(bytes, "time", draft.Time);
    Add(bytes, "file", draft.File);
    Add(bytes, "path", draft.FullName);
    Add(bytes, "header", draft.Header);
    Add(bytes, "register", draft.Register);
    Add(bytes, "row", std::to_string(draft.Row));
    Add(bytes, "line", draft.Line);
    for (const Text& text : draft.Texts)
        Add(bytes, "text", text);
    return bytes + LastLine;
}

std::optional<Draft> DraftFrom(std::string_view bytes) {
    if (!bytes.starts_with(FirstLine) || !bytes.ends_with("\n" + LastLine))
        return std::nullopt;
    bytes.remove_prefix(FirstLine.size());
    bytes.remove_suffix(LastLine.size());
    Draft draft;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        const std::size_t blank = bytes.find(' ');
        if (end == std::string_view::npos || blank >= end)
            return std::nullopt;
        const auto value = Unescaped(bytes.substr(blank + 1, end - blank - 1));
        if (!value || !TakeLine(draft, bytes.substr(0, blank), *value))
            return std::nullopt;
        bytes.remove_prefix(end + 1);
    }
    return draft;
}

Text WhyNoDraft(std::string_view bytes) {
    const bool isOfAnother = bytes.starts_with(FirstWord) && !bytes.starts_with(FirstLine);
    return isOfAnother ? u"a newer program has written it, and only that can read it" : u"it is damaged";
}

DraftState StateOf(const Draft& draft) {
    DraftState state;
    state.WhyNot = OpenRow(draft);
    const bool isThere =
        Table.TableFile.valid && modFileSystem::Join(Table.TableColumns) == draft.Header && draft.Row > 0;
    state.IsSaved =
        isThere && Table.TableRowIndex == draft.Row && Table.RowLine == LineOf(draft) && FieldsBeyond(draft).empty();
    modFileSystem::CloseTable();
    return state;
}

Text PutBack(const Draft& draft) {
    Text why = OpenRow(draft);
    if (why.empty()) {
        modQuorin::SaveTexts(draft.Texts);
        if (Table.RowLine != LineOf(draft))
            why = platform::ErrorText(Table.TableFile.error);
    }
    modFileSystem::CloseTable();
    return why;
}

Text DraftTime(const platform::DateTime& moment) {
    using modStringTools::TwoDigits;
    const Text year = modStringTools::WithZeros(modStringTools::NumberText(moment.Date.Year), 4);
    return year + u"-" + TwoDigits(moment.Date.Month) + u"-" + TwoDigits(moment.Date.Day) + u" " + TimeText(moment);
}

Text WordsOf(const Draft& draft, const Text& today) {
    const std::size_t blank = draft.Time.find(u' ');
    const Text day = draft.Time.substr(0, blank);
    const Text time = blank == Text::npos ? Text() : draft.Time.substr(blank + 1, 5);
    const bool isToday = day == today.substr(0, today.find(u' '));
    const Text record = draft.Row > 0 ? u", record " + modStringTools::NumberText(draft.Row) : Text();
    return u"A record of " + (isToday ? time : day + u" " + time) + u" was not saved: " + draft.File + record + u".";
}

std::vector<DraftField> FieldsOf(const Draft& draft) {
    const std::vector<Text> columns = Fields(draft.Header);
    const std::vector<Text> saved = Fields(draft.Line);
    std::vector<DraftField> fields;
    for (std::size_t i = 0; i < draft.Texts.size(); ++i)
        fields.push_back({FieldAt(columns, i), draft.Texts[i], FieldAt(saved, i)});
    return fields;
}

} // namespace companion
