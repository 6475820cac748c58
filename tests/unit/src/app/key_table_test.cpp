// SPDX-License-Identifier: MIT
// The table of keys, one row a key: what each does to a record on the screen, to one with an open field, and to a list.
#include "src/app/keys.h"

#include "tests/support/program.h"

namespace modQuorin {
namespace {

enum class Where { Record, OpenField, List };

constexpr std::int32_t Desktop = 0, Palm = 1, WindowsMobile = 7;

struct KeyRow {
    const char* Name;
    std::int32_t DeviceType;
    Where Place;
    bool GoesDown; ///< false: it is released
    std::int32_t Code;
    const char* Seen; ///< the program's state afterwards
};

std::ostream& operator<<(std::ostream& out, const KeyRow& row) {
    return out << row.Name << ", type " << row.DeviceType << ", key " << row.Code << (row.GoesDown ? " down" : " up");
}

class KeyTable : public support::Program, public testing::WithParamInterface<KeyRow> {
protected:
    KeyTable() : Program(support::OfType(GetParam().DeviceType)) {
        if (GetParam().DeviceType == Desktop)
            InstallFiles("Quorin/");
        else if (GetParam().DeviceType == WindowsMobile)
            InstallFiles("My Documents/Quorin/");
        else
            InstallDatabases();
        MenuEvent(u"Start...");
        Repaint();
        if (GetParam().Place != Where::List)
            OpenTheSecondRecord();
        Device.Did.KeyOrder.clear();
    }

    void OpenTheSecondRecord() {
        MenuEvent(u"Ok");
        MenuEvent(u"Open");
        MenuEvent(u"Next Record");
        Repaint();
        Device.Platform.grdMain.SetCurrentCell(1, 1);
        if (GetParam().Place == Where::OpenField)
            Tap(1, 1);
    }

    void InstallFiles(const std::string& folder) {
        for (const auto& [name, lines] : Files)
            Device.Folder.Put(folder + name + ".txt", lines);
    }
    void InstallDatabases() {
        for (const auto& [name, lines] : Files) {
            modFileSystem::FileHandle file;
            modFileSystem::OpenFile(file, u"Device:\\" + modStringTools::FromBytes(name), u"w", u"TEXT", u"QVRN");
            std::istringstream in(lines);
            for (std::string line; std::getline(in, line);)
                modFileSystem::WriteFileLine(file, modStringTools::FromBytes(line));
            modFileSystem::CloseFile(file);
        }
    }

    void Press() {
        std::int32_t key = GetParam().Code;
        if (GetParam().GoesDown)
            frmQuorin::Form_KeyDown(key, 0);
        else
            frmQuorin::Form_KeyUp(key, 0);
        Swallowed = key == 0;
        Repaint();
    }

    std::string Seen() {
        std::string seen = ScreenRow(Screen()).Name;
        if (Screen() == ScrInfRecord)
            seen += " " + modStringTools::ToBytes(TitleCell(1));
        seen += " row " + std::to_string(Device.Main().Row()) + " col " + std::to_string(Device.Main().Col());
        for (const auto& [is, word] :
             {std::pair{Device.Platform.txtInputField.Visible(), " field"},
              std::pair{Device.Platform.tmrHoldEvent.Enabled(), " press"}, std::pair{Swallowed, " swallowed"}})
            seen += is ? word : "";
        for (const std::string& step : Device.Did.KeyOrder)
            seen += ", " + step;
        return seen;
    }

    bool Swallowed = false;
    const std::vector<std::pair<std::string, std::string>> Files = {
        {"drivers", "NAME|INFFILE\nMeter|meter.txt\nOther|other.txt\n"},
        {"qrnctrl", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n"},
        {"meter", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                  "Place|1||||||\nMoisture|1||||||\nRemark|1||||||\n"},
        {"qrn0001", "Place|Moisture|Remark\na|b|c\nd|e|f\ng|h|i\n"},
    };
};

TEST_P(KeyTable, DoesWhatItsRowSays) {
    ASSERT_EQ(Screen(), GetParam().Place == Where::List ? ScrDrivers : ScrInfRecord);
    Press();
    EXPECT_EQ(Seen(), GetParam().Seen);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(GoingDown, KeyTable, testing::Values(
    KeyRow{"left",        Desktop, Where::Record, true, 37,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"up",          Desktop, Where::Record, true, 38,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"right",       Desktop, Where::Record, true, 39,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"down",        Desktop, Where::Record, true, 40,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"enter",       Desktop, Where::Record, true, 13,   "ScrInfRecord 2/3 row 1 col 1 press"},
    KeyRow{"enter",       Palm,    Where::Record, true, 13,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"enter",       Desktop, Where::OpenField, true, 13, "ScrInfRecord 2/3 row 1 col 1 swallowed"},
    KeyRow{"enter",       Palm,    Where::OpenField, true, 13, "ScrInfRecord 2/3 row 1 col 1 swallowed"},
    KeyRow{"power off",   Palm,    Where::Record, true, 276,  "ScrInfRecord 2/3 row 1 col 1, release 276, send 276, grab 276"},
    KeyRow{"power",       Palm,    Where::Record, true, 520,  "ScrInfRecord 2/3 row 1 col 1, release 520, send 520, grab 520"},
    KeyRow{"application", Palm,    Where::Record, true, 264,  "ScrDownloads row 0 col 0, release 264, send 264, grab 264"},
    KeyRow{"application", Palm,    Where::Record, true, 266,  "ScrDownloads row 0 col 0, release 266, send 266, grab 266"},
    KeyRow{"application", Palm,    Where::Record, true, 267,  "ScrDownloads row 0 col 0, release 267, send 267, grab 267"},
    KeyRow{"application", Palm,    Where::Record, true, 516,  "ScrDownloads row 0 col 0, release 516, send 516, grab 516"},
    KeyRow{"application", Palm,    Where::Record, true, 517,  "ScrDownloads row 0 col 0, release 517, send 517, grab 517"},
    KeyRow{"application", Palm,    Where::Record, true, 518,  "ScrDownloads row 0 col 0, release 518, send 518, grab 518"},
    KeyRow{"application", Palm,    Where::Record, true, 519,  "ScrDownloads row 0 col 0, release 519, send 519, grab 519"},
    KeyRow{"application", Palm,    Where::Record, true, 1280, "ScrDownloads row 0 col 0, release 1280, send 1280, grab 1280"},
    KeyRow{"application", Palm,    Where::List,   true, 516,  "ScrDrivers row 0 col 0, release 516, send 516, grab 516"},
    KeyRow{"menu",        Palm,    Where::Record, true, 261,  "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"palm left",   Palm,    Where::Record, true, 308,  "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"a letter",    Desktop, Where::Record, true, 65,   "ScrInfRecord 2/3 row 1 col 1"}));

INSTANTIATE_TEST_SUITE_P(ComingUp, KeyTable, testing::Values(
    KeyRow{"enter",       Desktop, Where::Record, false, 13,  "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"backspace",   Desktop, Where::Record, false, 8,   "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"escape",      Desktop, Where::Record, false, 27,  "ScrDownloads row 0 col 0 swallowed"},
    KeyRow{"escape",      WindowsMobile, Where::Record, false, 27, "ScrDownloads row 0 col 0 swallowed"},
    KeyRow{"escape",      Desktop, Where::OpenField, false, 27, "ScrDownloads row 0 col 0 swallowed"},
    KeyRow{"escape",      WindowsMobile, Where::OpenField, false, 27, "ScrInfRecord 2/3 row 1 col 1 field, send 8"},
    KeyRow{"right",       Desktop, Where::Record, false, 39,  "ScrInfRecord 3/3 row 1 col 1"},
    KeyRow{"palm right",  Palm,    Where::Record, false, 309, "ScrInfRecord 3/3 row 1 col 1"},
    KeyRow{"left",        Desktop, Where::Record, false, 37,  "ScrInfRecord 1/3 row 1 col 1"},
    KeyRow{"palm left",   Palm,    Where::Record, false, 308, "ScrInfRecord 1/3 row 1 col 1"},
    KeyRow{"right",       Desktop, Where::OpenField, false, 39, "ScrInfRecord 2/3 row 1 col 1 field"},
    KeyRow{"left",        Desktop, Where::OpenField, false, 37, "ScrInfRecord 2/3 row 1 col 1 field"},
    KeyRow{"right",       Desktop, Where::List,   false, 39,  "ScrDrivers row 0 col 0"},
    KeyRow{"down",        Desktop, Where::Record, false, 40,  "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"up",          Desktop, Where::Record, false, 38,  "ScrInfRecord 2/3 row 1 col 1"},
    KeyRow{"down",        Desktop, Where::OpenField, false, 40, "ScrInfRecord 2/3 row 2 col 1"},
    KeyRow{"up",          Desktop, Where::OpenField, false, 38, "ScrInfRecord 2/3 row 0 col 1"},
    KeyRow{"down",        Desktop, Where::List,   false, 40,  "ScrDrivers row 0 col 0"},
    KeyRow{"page down",   Desktop, Where::Record, false, 34,  "ScrInfRecord 2/3 row 2 col 1 swallowed"},
    KeyRow{"page up",     Desktop, Where::Record, false, 33,  "ScrInfRecord 2/3 row 0 col 1 swallowed"},
    KeyRow{"page down",   Palm,    Where::Record, false, 34,  "ScrInfRecord 2/3 row 0 col 1"},
    KeyRow{"page up",     Palm,    Where::OpenField, false, 33, "ScrInfRecord 2/3 row 0 col 1"},
    KeyRow{"page down",   Desktop, Where::List,   false, 34,  "ScrDrivers row 1 col 0 swallowed"},
    KeyRow{"select",      Desktop, Where::Record, false, 310, "ScrInfRecord 2/3 row 1 col 1 field"},
    KeyRow{"select",      Palm,    Where::List,   false, 310, "ScrDownloads row 0 col 0"},
    KeyRow{"a letter",    Desktop, Where::Record, false, 65,  "ScrInfRecord 2/3 row 1 col 1"}));
// clang-format on

} // namespace
} // namespace modQuorin
