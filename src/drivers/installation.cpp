// SPDX-License-Identifier: MIT
#include "src/drivers/installation.h"

#include "src/drivers/package_lines.h"
#include "src/drivers/registry.h"
#include "src/drivers/selection.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"
#include "src/view/questions.h"
#include "src/view/status_strip.h"

#include <algorithm>

namespace modQuorin {

using namespace modFileSystem;
using platform::Device;

namespace {

constexpr std::size_t VolumesSearched = 3;

void AddPackagesOf(const Text& folder) {
    ListFiles(folder, DataType, DataCreator);
    for (const Text& name : Storage.FileList) {
        if (IsPackageName(name))
            Registry.DriverNames.push_back(name);
    }
}

/// The state of one installation. If a step fails, it sets Failure and returns false.
struct Installation {
    PackageLines Lines;
    Text InfFile;
    FileHandle Output;
    bool Exists = false; ///< a driver of that name is installed already
    Text Failure;        ///< the message of the step that failed
    bool RowComesLast = false;
    Text Row;            ///< the driver's row, if RowComesLast
    bool Written = true; ///< true if every line of the inf file so far was written
};

bool DriverExists(const Text& name) {
    for (const Text& driver : Registry.DriverNames) {
        if (modStringTools::SameIgnoringCase(driver, name))
            return true;
    }
    return false;
}

bool WriteDriverRow(const Text& line) {
    FileHandle drivers;
    OpenFile(drivers, GetDataPath(u"") + u"drivers.txt", u"a", DataType, DataCreator);
    const bool isOpen = drivers.valid;
    if (isOpen)
        WriteFileLine(drivers, line);
    CloseFile(drivers);
    return isOpen;
}

bool AddDriverRow(Installation& work, const Text& line) {
    const auto row = DriverRowOf(line);
    if (!row)
        return true;
    work.InfFile = row->InfFile;
    if (DriverExists(row->Name)) {
        work.Exists = true;
        return false;
    }
    if (work.RowComesLast)
        work.Row = line;
    else if (!WriteDriverRow(line))
        work.Failure = u"Error updating drivers file";
    return work.Failure.empty();
}

bool BeginInfFile(Installation& work, const Text& line) {
    OpenFile(work.Output, GetDataPath(u"") + work.InfFile, u"w", DataType, DataCreator);
    if (!work.Output.valid) {
        work.Failure = u"Error creating driver inf file";
        return false;
    }
    work.Written = WriteFileLine(work.Output, line) > 0;
    return true;
}

bool TakeCountedLine(Installation& work, const Text& line) {
    ++work.Lines.CountedLines;
    if (work.Lines.CountedLines == 1)
        return AddDriverRow(work, line);
    if (work.Lines.CountedLines == 2)
        return BeginInfFile(work, line);
    work.Written = WriteFileLine(work.Output, line) > 0 && work.Written;
    return true;
}

bool TakeLine(Installation& work, const Text& line) {
    if (!LineCounts(work.Lines, line))
        return true;
    for (; work.Lines.EmptyLines > 0; --work.Lines.EmptyLines) {
        if (!TakeCountedLine(work, u""))
            return false;
    }
    return TakeCountedLine(work, line);
}

bool IsEmptyFrom(FileHandle& package, std::int32_t number, std::int32_t total) {
    while (number <= total) {
        std::int32_t line = number++;
        if (!ReadFileLine(package, line).empty())
            return false;
    }
    return true;
}

/// Copies the package into the data folder, up to the first failure.
void Install(FileHandle& package) {
    Installation work;
    const std::int32_t total = FileLineCount(package);
    std::int32_t number = 1;
    for (; number <= total; ++number) {
        std::int32_t line = number;
        if (!TakeLine(work, ReadFileLine(package, line))) {
            if (!work.Failure.empty())
                modPDAUI::Tell(work.Failure);
            break;
        }
    }
    // Only the line number decides: a failure at the very last line is followed by "Driver installed" as well. If empty
    // lines were still held back, the failure was at one of them, and a counted line follows it.
    const bool atTheEnd = number > total || (work.Lines.EmptyLines == 0 && IsEmptyFrom(package, number + 1, total));
    CloseFile(work.Output);
    if (work.Exists)
        modPDAUI::Tell(u"Driver already exists");
    else if (atTheEnd)
        modPDAUI::Tell(u"Driver installed");
}

/// Returns the name of the file on the first volume; empty if there is no volume.
Text InfoFileName() {
    EnumVolumesOnce();
    if (Storage.VolumeList.empty())
        return {};
    Text root = Storage.VolumeList.front();
    if (root.empty() || root.back() != u'\\')
        root += u'\\';
    return root + u"QVRN.info";
}

} // namespace

Text PackageName(const Text& fileName, const Text& dataFolder) {
    const Text refused = u"/\\:";
    constexpr char16_t FirstPrintable = u' ';
    Text name = fileName;
    std::replace_if(
        name.begin(), name.end(),
        [&refused](char16_t each) { return each < FirstPrintable || refused.find(each) != Text::npos; }, u'_');
    if (platform::Traits().IsMemory(dataFolder))
        std::erase(name, u'.');
    else if (!name.empty() && name.front() == u'.') // hidden from every list
        name.front() = u'_';
    return name;
}

void EnumAddDrivers() {
    Registry.DriverNames.clear();
    EnumVolumesAnew(); // a card may have been inserted
    const Text dataFolder = GetDataPath(u"");
    AddPackagesOf(dataFolder);
    AddPackagesOf(u"");
    if (!platform::Traits().OnlyVolume.empty())
        return;
    const std::vector<Text> volumes = Storage.VolumeList;
    for (std::size_t i = 0; i < volumes.size() && i < VolumesSearched; ++i) {
        if (volumes[i] != dataFolder)
            AddPackagesOf(volumes[i]);
    }
}

void ShowDriverPackages(const Text& title) {
    EnumAddDrivers();
    Device().grdTitle.SetCell(0, 0, title);
    modPDAUI::ShowList(Registry.DriverNames);
    Selection.SelectedDriver = Device().grdMain.Cell(Device().grdMain.Row(), 0);
    modPDAUI::RepaintGridsSoon();
    if (!Registry.DriverNames.empty())
        Selection.SelectedPackage = Registry.DriverNames.front();
}

bool FollowDriverPackages() {
    auto& grdMain = Device().grdMain;
    std::vector<Text> shown;
    for (std::int32_t row = 0; row < grdMain.Rows(); ++row)
        shown.push_back(grdMain.Cell(row, 0));
    const std::vector<Text> before = Registry.DriverNames; // an installation leaves the drivers there
    EnumAddDrivers();
    if (Registry.DriverNames == shown) {
        Registry.DriverNames = before;
        return false;
    }
    const Text selected = grdMain.Cell(grdMain.Row(), 0);
    FillScreen(ScrAddDriver);
    const std::vector<Text>& found = Registry.DriverNames;
    const auto place = std::find(found.begin(), found.end(), selected);
    if (found.empty())
        return true;
    grdMain.SetRow(place == found.end() ? 0 : static_cast<std::int32_t>(place - found.begin()));
    Selection.SelectedPackage = grdMain.Cell(grdMain.Row(), 0); // a hidden grid raises no change of its row
    return true;
}

void InstallDriver() {
    if (Selection.SelectedPackage.empty())
        return;
    FileHandle package;
    OpenFile(package, Selection.SelectedPackage, u"r", DataType, DataCreator);
    if (!package.valid) {
        modPDAUI::Tell(u"Error installing driver.");
        return;
    }
    modPDAUI::ShowBusy(true);
    LoadDriverList();
    Install(package);
    CloseFile(package);
    modPDAUI::ShowBusy(false);
}

bool InstallLines(const std::vector<Text>& package) {
    LoadDriverList();
    Installation work;
    work.RowComesLast = true;
    bool taken = true;
    for (std::size_t i = 0; taken && i < package.size(); ++i)
        taken = TakeLine(work, package[i]);
    CloseFile(work.Output);
    return taken && work.Written && !work.Row.empty() && WriteDriverRow(work.Row);
}

void WriteInfoFile() {
    const Text name = InfoFileName();
    FileHandle file;
    OpenFileByName(file, name, u"r");
    if (!file.valid)
        return;
    CloseFile(file);
    OpenFileByName(file, name, u"a");
    const Text line = u"path=" + GetDataPath(u"");
    if (FileLineCount(file) < 2)
        WriteFileLine(file, line);
    else if (!ChangeFileLine(file, 2, line))
        Device().saveWatcher.NotSaved(file.name, platform::ErrorText(file.error));
    CloseFile(file);
}

} // namespace modQuorin
