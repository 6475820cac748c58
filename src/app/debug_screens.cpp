// SPDX-License-Identifier: MIT
#include "src/app/debug_screens.h"

#include "src/link/receive.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/text/digits.h"
#include "src/text/ranges.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/questions.h"

namespace modQuorin {

using namespace modFileSystem;
using modPDAUI::Tell;
using modStringTools::NumberText;
using modStringTools::TwoDigits;
using platform::Device;

namespace {

Text PresentMoment() {
    const platform::DateTime now = Device().clock.Now();
    return TwoDigits(now.Date.Day) + u"/" + TwoDigits(now.Date.Month) + u"/" + NumberText(now.Date.Year) + u" " +
           TwoDigits(now.Hour) + u":" + TwoDigits(now.Minute) + u":" + TwoDigits(now.Second);
}

void WriteTenLines(FileHandle& file) {
    for (std::int32_t i = 1; i <= 10; ++i)
        WriteFileLine(file, u"This is Line " + NumberText(i));
}

/// The edits of the check. The file has nine lines when a line is to be inserted after the tenth, so an ordinary run
/// ends with the message about the inserts.
bool EditLines(FileHandle& file) {
    if (!ChangeFileLine(file, 3, u"A brand new line 3!")) {
        Tell(u"ChangeFileLine failed!");
        return false;
    }
    if (!DeleteFileLine(file, 5)) {
        Tell(u"DeleteFileLine failed!");
        return false;
    }
    const bool behind = InsertFileLine(file, 10, modFileSystem::InsertPosition::After, u"Inserted after 10");
    const bool before = InsertFileLine(file, 2, modFileSystem::InsertPosition::Before, u"Inserted before 2");
    if (!behind || !before) {
        Tell(u"Insert(s) Failed");
        return false;
    }
    return true;
}

void TellLines(FileHandle& file) {
    for (std::int32_t i = 1; i <= 20; ++i) {
        std::int32_t next = -1;
        const Text line = ReadFileLine(file, next);
        Tell(u"Readline(" + NumberText(i) + u")=[" + line + u"]");
    }
}

void ShowLines(FileHandle& file, std::int32_t count) {
    GotoScreen(ScrTextFile);
    Device().grdMain.SetRows(count);
    SeekFileLine(file, 1);
    for (std::int32_t row = 0; row < count; ++row) {
        std::int32_t next = -1;
        Device().grdMain.SetCell(row, 0, ReadFileLine(file, next));
    }
    modPDAUI::RepaintGridsSoon();
}

} // namespace

void FillBluetoothDebug() {
    Device().grdTitle.SetCell(0, 0, u"Bluetooth Debug");
    modBluetooth::ArmLink();
    modPDAUI::RepaintGridsSoon();
}

void FillFileDebug() {
    Device().grdTitle.SetCell(0, 0, u"File Debug");
    modPDAUI::ShowList({u"File Selector...", u"Dir...", u"Save sample Text File", u"Load sample Text File", u"Debug"});
    modPDAUI::RepaintGridsSoon();
}

void SaveSampleFile() {
    FileHandle file;
    OpenFile(file, GetDataPath(u"") + u"sample.txt", u"w", DataType, DataCreator);
    WriteFileLine(file, u"Sample.txt");
    WriteFileLine(file, u"");
    WriteFileLine(file, u"Created at " + PresentMoment());
    WriteFileLine(file, u"On Device type # " + NumberText(Device().myCsys.DeviceType()));
    WriteFileLine(file, u"Device Version: " + Device().myCsys.VersionText());
    WriteFileLine(file, u"User=" + Device().myCsys.UserName());
    CloseFile(file);
    Tell(u"sample.txt created");
}

void LoadSampleFile(const Text& name) {
    const Text fullName = name.find(u'\\') == Text::npos ? GetDataPath(u"") + name : name;
    FileHandle file;
    OpenFile(file, fullName, u"r", DataType, DataCreator);
    if (!file.valid) {
        Tell(u"File not found!");
        return;
    }
    const std::int32_t count = FileLineCount(file);
    if (count == 0)
        Tell(u"File is empty!");
    else
        ShowLines(file, count);
    CloseFile(file);
}

void FileApiCheck() {
    const Text folder = GetDataPath(u"");
    Tell(u"path=" + folder);
    FileHandle file;
    OpenFile(file, folder + u"test.pdb", u"w", DataType, DataCreator);
    Tell(u"FH1.valid=" + Text(file.valid ? u"-1" : u"0"));
    if (!file.valid)
        return;
    WriteTenLines(file);
    Tell(u"LineCount=" + NumberText(FileLineCount(file)));
    if (EditLines(file))
        TellLines(file);
    CloseFile(file);
}

void StringToolsCheck() {
    Text text = u"this is a-a-a-a string";
    Tell(text);
    std::int32_t first = 9;
    std::int32_t last = 15;
    modStringTools::ReplaceRange(text, u"a very long", first, last);
    Tell(text);
}

} // namespace modQuorin
