// SPDX-License-Identifier: MIT
#include "src/drivers/downloads.h"

#include "src/drivers/selection.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/table_lack.h"
#include "src/storage/volumes.h"
#include "src/text/digits.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/questions.h"

#include <algorithm>

namespace modQuorin {

using namespace modFileSystem;
using platform::Device;

namespace {

const Text FilePrefix = u"qrn";
const Text FirstFile = u"qrn0001.txt";
constexpr std::size_t NumberDigits = 4;
constexpr std::size_t EndingLength = 4;

/// Opens the register. It is created again if it is missing or has no header.
void OpenControl() {
    const TableLack lack = LookAtTable(Paths.ControlFile);
    if (lack == TableLack::File || lack == TableLack::Header)
        MakeTable(Paths.ControlFile, ControlHeader);
}

/// Makes the row of a download current and returns its number, counted from 1, or 0 if there is none.
std::int32_t FindDownload(const Text& driver, const Text& file) {
    FirstRow();
    const std::int32_t count = TableRowCount();
    for (std::int32_t row = 1; row <= count; ++row) {
        if (GetField(u"FILE") == file && GetField(u"DRIVER") == driver)
            return row;
        NextRow();
    }
    return 0;
}

bool BearsOurName(const Text& file) {
    return file.substr(0, FilePrefix.size()) == FilePrefix;
}

/// Returns the file name that follows the given one. The number is the four characters after the prefix, so 9999 is
/// followed by 10000, and 10000, whose first four characters are 1000, by 1001.
Text NameBehind(const Text& file) {
    const Text digits = file.substr(FilePrefix.size(), NumberDigits);
    const auto number = modStringTools::NumberFromText(digits);
    if (!number)
        platform::RuntimeFailure(u"The download file \"" + file + u"\" has no number in its name");
    const std::size_t ending = file.size() < EndingLength ? 0 : file.size() - EndingLength;
    return FilePrefix + PadNumber(*number + 1, NumberDigits) + file.substr(ending);
}

/// Returns the file that follows the last one of the open register; empty if that one has the name of another program,
/// from which numbering does not continue.
Text NextFile() {
    if (TableRowCount() <= 0)
        return FirstFile;
    LastRow();
    const Text last = GetField(u"FILE");
    return BearsOurName(last) ? NameBehind(last) : Text();
}

/// Adds a row to the open register.
void AddDownload(const Text& driver, const Text& file, const Text& alias) {
    if (!AddRow(-1))
        return;
    SetField(u"DRIVER", driver);
    SetField(u"FILE", file);
    SetField(u"DATE", Today());
    if (!alias.empty())
        SetField(u"ALIAS", alias);
    SaveRow();
}

/// Returns the number in the name of a download; 0 if it has none.
std::int32_t NumberIn(const Text& file) {
    if (!BearsOurName(file))
        return 0;
    const std::size_t end = std::min(file.find_first_not_of(u"0123456789", FilePrefix.size()), file.size());
    return modStringTools::NumberFromText(file.substr(FilePrefix.size(), end - FilePrefix.size())).value_or(0);
}

/// Returns the row of the open register before which a number belongs; one behind the last row if it is the highest.
std::int32_t RowBehind(std::int32_t number) {
    const std::int32_t count = TableRowCount();
    FirstRow();
    for (std::int32_t row = 1; row <= count; ++row) {
        const bool isWhole = HeldFields() == static_cast<std::int32_t>(Table.TableColumns.size());
        if (isWhole && NumberIn(GetField(u"FILE")) > number)
            return row;
        NextRow();
    }
    return count + 1;
}

/// Returns a download as a line of the open register.
Text LineOf(const RegisteredDownload& download) {
    Text line;
    for (const Text& column : Table.TableColumns) {
        const Text name = modStringTools::UpperCase(column);
        line += &column == &Table.TableColumns.front() ? u"" : u"|";
        line += name == u"DRIVER"  ? download.Driver
                : name == u"FILE"  ? download.File
                : name == u"DATE"  ? download.Date
                : name == u"ALIAS" ? download.Alias
                                   : Text();
    }
    return line;
}

void StoreAlias(std::int32_t row, const Text& alias) {
    OpenControl();
    GotoRow(row);
    SetField(u"ALIAS", alias);
    SaveRow();
}

void ShowScreenAfresh() {
    GotoScreen(Screens.CurrentScreen);
}

} // namespace

Text Today() {
    const platform::CalendarDate date = Device().clock.Now().Date;
    return PadNumber(date.Year, 4) + PadNumber(date.Month, 2) + PadNumber(date.Day, 2);
}

void LoadDownloadList(const Text& driver) {
    Downloads.DownloadFiles.clear();
    Downloads.DownloadAliases.clear();
    Downloads.DownloadLines.clear();
    LookAtTable(Paths.ControlFile);
    FirstRow();
    const std::int32_t count = TableRowCount();
    for (std::int32_t i = 0; i < count; ++i) {
        if (GetField(u"DRIVER") == driver) {
            Downloads.DownloadFiles.push_back(GetField(u"FILE"));
            Downloads.DownloadAliases.push_back(GetField(u"ALIAS"));
            Downloads.DownloadLines.append(Table.RowLine).push_back(u'\n');
        }
        NextRow();
    }
    CloseTable();
}

void ShowDownloadList(const Text& driver) {
    LoadDownloadList(driver);
    Device().grdTitle.SetCell(0, 0, u"Downloads");
    std::vector<Text> names = Downloads.DownloadAliases;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].empty())
            names[i] = Downloads.DownloadFiles[i];
    }
    modPDAUI::ShowList(names);
    if (!Downloads.DownloadFiles.empty()) {
        Selection.SelectedDownload = Downloads.DownloadFiles.front();
        Selection.DownloadOwner = driver;
    }
    modPDAUI::RepaintGridsSoon();
}

void NewDownload(const Text& driver) {
    OpenControl();
    const Text file = NextFile();
    if (file.empty()) {
        CloseTable();
        return;
    }
    AddDownload(driver, file, {});
    ShowScreenAfresh();
}

Text NextDownload() {
    Text file = FirstFile;
    if (LookAtTable(Paths.ControlFile) == TableLack::Nothing)
        file = NextFile();
    CloseTable();
    return file;
}

bool RegisterDownload(const Text& driver, const Text& file, const Text& alias) {
    OpenControl();
    AddDownload(driver, file, alias);
    CloseTable();
    return !RegisterLineOf(file).empty();
}

bool TakeUpDownload(const RegisteredDownload& download) {
    OpenControl();
    const std::int32_t place = RowBehind(NumberIn(download.File));
    const Text line = LineOf(download);
    if (place > TableRowCount()) // the header is line 1
        InsertFileLine(Table.TableFile, place, InsertPosition::After, line);
    else
        InsertFileLine(Table.TableFile, place + 1, InsertPosition::Before, line);
    CloseTable();
    return RegisterLineOf(download.File) == line;
}

void EraseDownload(const Text& driver, const Text& file) {
    const Text folder = GetDataPath(u"");
    OpenControl();
    if (FindDownload(driver, file) != 0) {
        DeleteFile(folder + file);
        DeleteRow();
    }
    CloseTable();
}

void RenameDownload(Text driver, Text file) {
    OpenControl();
    const std::int32_t row = FindDownload(driver, file);
    if (row != 0) {
        const Text alias = GetField(u"ALIAS");
        const Text oldName = alias.empty() ? file : alias;
        Text answer = oldName;
        modPDAUI::AskForLine(u"Rename", answer);
        if (answer != oldName && !answer.empty())
            StoreAlias(row, answer);
    }
    CloseTable();
    ShowScreenAfresh();
}

void DeleteDownload(Text driver, Text file) {
    if (!modPDAUI::AskTwice(u"Delete Download File?"))
        return;
    EraseDownload(driver, file);
    ShowScreenAfresh();
}

Text ListedLineOf(const Text& file) {
    TextView lines = Downloads.DownloadLines;
    for (const Text& listed : Downloads.DownloadFiles) {
        const std::size_t end = lines.find(u'\n');
        if (listed == file)
            return Text(lines.substr(0, end));
        lines.remove_prefix(end + 1);
    }
    return {};
}

std::vector<RegisteredDownload> RegisteredDownloads() {
    std::vector<RegisteredDownload> all;
    if (LookAtTable(Paths.ControlFile) == TableLack::Nothing) {
        FirstRow();
        const std::int32_t count = TableRowCount();
        for (std::int32_t row = 1; row <= count; ++row) {
            if (HeldFields() == static_cast<std::int32_t>(Table.TableColumns.size())) // a field of a shorter row would
                all.push_back({GetField(u"DRIVER"), GetField(u"FILE"), GetField(u"ALIAS"), // stop the program
                               GetField(u"DATE")});
            NextRow();
        }
    }
    CloseTable();
    return all;
}

Text RegisterLineOf(const Text& file) {
    LookAtTable(Paths.ControlFile);
    FirstRow();
    Text line;
    const std::int32_t count = TableRowCount();
    for (std::int32_t row = 1; line.empty() && row <= count; ++row) {
        if (GetField(u"FILE") == file)
            line = Table.RowLine;
        NextRow();
    }
    CloseTable();
    return line;
}

Text PadNumber(std::int32_t value, std::int16_t width) {
    return modStringTools::WithZeros(modStringTools::NumberText(value), width);
}

} // namespace modQuorin
