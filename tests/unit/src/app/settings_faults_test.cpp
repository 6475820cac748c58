// SPDX-License-Identifier: MIT
// Settings with meaningless values, as in a file that was edited by hand or damaged.
#include "src/link/mailbox.h"
#include "src/link/ports.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/display_state.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

#include <ostream>

namespace modQuorin {
namespace {

using modBluetooth::Mailbox;
using modBluetooth::Ports;
using namespace std::string_literals;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const Keys[] = {"COLOUR", "FONTSIZE", "StorageVolume", "ComPort", "RFCOMM_Path", "Font", "DummyTest"};

/// A settings file that exists before the program starts.
class OwnSettings {
protected:
    explicit OwnSettings(const std::string& bytes) { Own.Put("settings.ini", bytes); }
    backends::DeviceOptions Options(std::int32_t deviceType = 0) const {
        backends::DeviceOptions options = support::OfType(deviceType);
        if (deviceType == 6)
            options.Volumes = {{u"C:\\", 1000}, {u"E:\\", 2000}};
        options.Settings = (Own.Path() / "settings.ini").string();
        return options;
    }
    std::string Stored() const { return Own.Bytes("settings.ini"); }

    const support::TemporaryFolder Own;
};

struct Sane {
    const char* Key;
    const char* Value;
};

/// All keys with possible values, except one.
std::string With(const std::string& key, const std::string& written) {
    std::string bytes = "# mine\n[Settings]\n";
    for (const Sane& sane : {Sane{"COLOUR", "0"}, Sane{"FONTSIZE", "14"}, Sane{"StorageVolume", ".\\"},
                             Sane{"ComPort", "OFF"}, Sane{"RFCOMM_Path", "\\mail\\"}, Sane{"Font", "Tahoma"},
                             Sane{"DummyTest", "This is list item number 3 and is long"}})
        bytes += sane.Key + "="s + (key == sane.Key ? written : sane.Value) + "\n";
    return bytes;
}

/// A value as the file has it, and as the program reads it.
struct Nonsense {
    const char* What;
    std::string Written;
    Text Value;
};

void PrintTo(const Nonsense& row, std::ostream* out) {
    *out << row.What;
}

const Nonsense Empty = {"nothing", "", u""};
const Nonsense Blanks = {"blanks", "%20%20", u"  "};
const Nonsense Solid[] = {
    {"letters", "nonsense", u"nonsense"},
    {"a huge number", "99999999999999999999", u"99999999999999999999"},
    {"a huge negative number", "-99999999999999999999", u"-99999999999999999999"},
    {"a NUL", "%00", Text(1, u'\0')},
    {"controls", "\x01\x1B\x7F", u"\x01\x1B\x7F"},
    {"line ends", "a%0D%0Ab", u"a\r\nb"},
    {"ten thousand letters", std::string(10000, 'x'), Text(10000, u'x')},
    {"ten thousand digits", std::string(10000, '9'), Text(10000, u'9')},
    {"letters of other languages", "Größe 湿😀", u"Größe 湿😀"},
    {"digits of another language", "١٤", u"١٤"},
    {"bytes that are no text", "\xFF\xC3", u"\xDCFF\xDCC3"},
    {"signs of the file itself", "[Settings]=;#%", u"[Settings]=;#%"},
    {"a way out", "..\\..\\", u"..\\..\\"},
    {"a fraction", "1.5", u"1.5"},
    {"a hexadecimal number", "0x10", u"0x10"},
    {"a number with a letter behind", "12a", u"12a"},
};

std::vector<Nonsense> AllNonsense() {
    std::vector<Nonsense> rows = {Empty, Blanks};
    rows.insert(rows.end(), std::begin(Solid), std::end(Solid));
    return rows;
}

// Any key.

using AnyKeyRow = std::tuple<const char*, Nonsense>;

class NonsenseInAKey : protected OwnSettings, public support::Program, public testing::WithParamInterface<AnyKeyRow> {
protected:
    NonsenseInAKey() : OwnSettings(With(Key(), Row().Written)), Program(Options()) {}
    static std::string Key() { return std::get<0>(GetParam()); }
    static const Nonsense& Row() { return std::get<1>(GetParam()); }
    /// An empty volume counts as not chosen: when the data folder is first used, the best volume is stored.
    static std::string AfterTheStart() {
        const bool chosen = Key() == "StorageVolume" && Row().Value.empty();
        return With(Key(), chosen ? ".\\" : Row().Written);
    }
};

TEST_P(NonsenseInAKey, LeavesAProgramThatStartsAndChangesNoSetting) {
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_TRUE(Device.Main().Visible());
    EXPECT_EQ(Device.Platform.menuTitles[0].Caption(), u"Main");
    Device.Tick(5000);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
    EXPECT_EQ(Stored(), AfterTheStart());
    if (AfterTheStart() == With(Key(), Row().Written)) {
        EXPECT_EQ(GetSetting(modStringTools::FromBytes(Key()), u"(none)"), Row().Value);
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, NonsenseInAKey,
                         testing::Combine(testing::ValuesIn(Keys), testing::ValuesIn(AllNonsense())));

class NonsenseInUse : public NonsenseInAKey {};

TEST_P(NonsenseInUse, SurvivesALookAtAllLists) {
    for (const char16_t* list :
         {u"Select Storage Volume...", u"Bluetooth Serial Setup...", u"Fonts...", u"Test List", u"Dir..."}) {
        MenuEvent(u"Preferences...");
        MenuEvent(list);
        Repaint();
        GoBack();
        Repaint();
        GoBack();
    }
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_EQ(Stored(), AfterTheStart());
}

TEST_P(NonsenseInUse, LeavesAProgramThatTakesAResultOnceItsPortIsRight) {
    InstallMeter();
    SaveSetting(u"ComPort", u"Com1");
    OpenDownload("");
    Device.Tick(500);
    Device.Platform.serial.Arrive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n"
                                  u"[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Settle();
    Device.Tick(1000);
    EXPECT_EQ(Cell(1, 1), u"23.4 %");
}

INSTANTIATE_TEST_SUITE_P(Keys, NonsenseInUse,
                         testing::Combine(testing::ValuesIn(Keys),
                                          testing::Values(Empty, Solid[0], Solid[1], Solid[3], Solid[6])));

// One key each.

class AnyNonsense : protected OwnSettings, public testing::TestWithParam<Nonsense> {
protected:
    explicit AnyNonsense(const char* key) : OwnSettings(With(key, GetParam().Written)) {}
};

class ColourOfNonsense : public AnyNonsense {
protected:
    ColourOfNonsense() : AnyNonsense("COLOUR") {}
};

TEST_P(ColourOfNonsense, IsOffUntilItIsToggledWhichMendsTheKey) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    EXPECT_FALSE(modPDAUI::Display.ColourOn);
    MenuEvent(u"Preferences...");
    MenuEvent(device.Main().Cell(3, 0));
    EXPECT_TRUE(modPDAUI::Display.ColourOn);
    EXPECT_EQ(Stored(), With("COLOUR", "-1"));
}

INSTANTIATE_TEST_SUITE_P(Rows, ColourOfNonsense, testing::ValuesIn(AllNonsense()));
INSTANTIATE_TEST_SUITE_P(NearMisses, ColourOfNonsense,
                         testing::Values(Nonsense{"a blank behind", "-1%20", u"-1 "},
                                         Nonsense{"a blank before", "%20-1", u" -1"},
                                         Nonsense{"a leading zero", "-01", u"-01"}, Nonsense{"one", "1", u"1"},
                                         Nonsense{"the minus sign of print", "−1", u"−1"}));

struct SizeRow {
    const char* Written;
    std::int32_t Size;
};

class FontSizeOf : public testing::TestWithParam<SizeRow>, protected OwnSettings {
protected:
    FontSizeOf() : OwnSettings(With("FONTSIZE", GetParam().Written)) {}
};

TEST_P(FontSizeOf, IsTakenWhereTheGridHasItAndElseLeftAsDesigned) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    EXPECT_EQ(device.Main().FontSize(), GetParam().Size);
    EXPECT_EQ(device.Title().FontSize(), GetParam().Size);
    EXPECT_EQ(Stored(), With("FONTSIZE", GetParam().Written));
}

INSTANTIATE_TEST_SUITE_P(Numbers, FontSizeOf,
                         testing::Values(SizeRow{"1", 1}, SizeRow{"127", 127}, SizeRow{"00014", 14}, SizeRow{"+14", 14},
                                         SizeRow{"%2014%20", 14}, SizeRow{"128", 8}, SizeRow{"32767", 8},
                                         SizeRow{"32768", 8}, SizeRow{"65550", 8}, SizeRow{"4294967310", 8},
                                         SizeRow{"0", 8}, SizeRow{"-0", 8}, SizeRow{"-1", 8}, SizeRow{"-32768", 8},
                                         SizeRow{"--14", 8}, SizeRow{"1 4", 8}, SizeRow{"14%00", 8}, SizeRow{"14.0", 8},
                                         SizeRow{"1e1", 8}));

class FontSizeOfNonsense : public AnyNonsense {
protected:
    FontSizeOfNonsense() : AnyNonsense("FONTSIZE") {}
};

TEST_P(FontSizeOfNonsense, IsTheOneOfTheDesignAndZoomMendsTheKey) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    EXPECT_EQ(device.Main().FontSize(), 8);
    MenuEvent(u"Zoom");
    EXPECT_EQ(Stored(), With("FONTSIZE", "14"));
}

INSTANTIATE_TEST_SUITE_P(Rows, FontSizeOfNonsense, testing::ValuesIn(AllNonsense()));

/// A device with two volumes, of which the second has more space.
class VolumeOfNonsense : public AnyNonsense {
protected:
    VolumeOfNonsense() : AnyNonsense("StorageVolume") {}
};

TEST_P(VolumeOfNonsense, IsTheOneWithTheMostSpace) {
    support::TestDevice device(Options(6));
    device.Platform.StartProgram();
    EXPECT_EQ(Paths.DriversFile, u"E:\\Media Files\\Quorin\\drivers.txt");
    EXPECT_EQ(Paths.ControlFile, u"E:\\Media Files\\Quorin\\qrnctrl.txt");
    std::vector<std::string> made;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(device.Folder.Path()))
        made.push_back(entry.path().lexically_relative(device.Folder.Path()).string());
    EXPECT_THAT(made, testing::UnorderedElementsAre("C", "E", "E/Media Files", "E/Media Files/Quorin"));
    EXPECT_EQ(Stored(), With("StorageVolume", GetParam().Value.empty() ? "E:\\" : GetParam().Written));
}

INSTANTIATE_TEST_SUITE_P(Rows, VolumeOfNonsense, testing::ValuesIn(AllNonsense()));
INSTANTIATE_TEST_SUITE_P(NearMisses, VolumeOfNonsense,
                         testing::Values(Nonsense{"other case", "c:\\", u"c:\\"}, Nonsense{"no backslash", "C:", u"C:"},
                                         Nonsense{"a folder of the volume", "C:\\documents\\", u"C:\\documents\\"},
                                         Nonsense{"a blank before", "%20C:\\", u" C:\\"},
                                         Nonsense{"a NUL behind", "C:\\%00", Text(u"C:\\\0", 4)}));

/// The link is armed, and the next tick opens it.
class PortOf : protected OwnSettings, public testing::TestWithParam<Nonsense> {
protected:
    PortOf() : OwnSettings(With("ComPort", GetParam().Written)) {}
};

class PortOfNonsense : public PortOf {};

TEST_P(PortOfNonsense, StopsTheProgramWithAMessageOnceTheLinkIsWanted) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    MenuEvent(u"Bluetooth Debug...");
    const Text what = GetParam().Value.empty()
                          ? u"is empty"
                          : u"holds \"" + GetParam().Value + u"\", which is not the number of a port";
    const Text failure = support::FailureOf([&device] { device.Tick(500); });
    EXPECT_EQ(failure,
              u"The setting ComPort " + what + u": choose a port under Preferences, Bluetooth Serial Setup...");
    EXPECT_EQ(modBluetooth::PortFailure(), failure);
    EXPECT_FALSE(device.Platform.serial.PortOpen());
    EXPECT_EQ(Stored(), With("ComPort", GetParam().Written));
}

INSTANTIATE_TEST_SUITE_P(Rows, PortOfNonsense, testing::ValuesIn(AllNonsense()));
INSTANTIATE_TEST_SUITE_P(NearMisses, PortOfNonsense,
                         testing::Values(Nonsense{"a prefix alone", "Com", u"Com"},
                                         Nonsense{"a letter for the number", "Comx", u"Comx"},
                                         Nonsense{"the prefix twice", "ComCom1", u"ComCom1"},
                                         Nonsense{"off in small letters", "off", u"off"},
                                         Nonsense{"a colon behind", "Com1:", u"Com1:"}, Nonsense{"nothing", "", u""},
                                         Nonsense{"a path", "/dev/ttyUSB0", u"/dev/ttyUSB0"},
                                         Nonsense{"the server in small letters", "server", u"server"},
                                         Nonsense{"a number above 32 bits", "2147483648", u"2147483648"},
                                         Nonsense{"a NUL in the number", "Com1%00", Text(u"Com1\0", 5)}));

class PortThatIsANumberAllTheSame : public PortOf {};

TEST_P(PortThatIsANumberAllTheSame, IsOpened) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    MenuEvent(u"Bluetooth Debug...");
    device.Tick(500);
    EXPECT_TRUE(Ports.LinkOpen);
    EXPECT_EQ(modBluetooth::PortFailure(), u"");
    EXPECT_EQ(device.Title().Cell(0, 0), u"Bluetooth :-)");
}

INSTANTIATE_TEST_SUITE_P(Rows, PortThatIsANumberAllTheSame,
                         testing::Values(Nonsense{"a negative one", "-7", u"-7"},
                                         Nonsense{"a negative one with the prefix", "Com-7", u"Com-7"},
                                         Nonsense{"a blank behind the prefix", "Com 7", u"Com 7"},
                                         Nonsense{"none", "0", u"0"},
                                         Nonsense{"the largest", "2147483647", u"2147483647"}));

class NameOfNonsense : public PortOf {};

TEST_P(NameOfNonsense, IsAConnectionByNameWhereTheDeviceHasThem) {
    support::TestDevice device(Options(9));
    device.Platform.StartProgram();
    MenuEvent(u"Bluetooth Debug...");
    device.Host.connections.SetOutcome(platform::ErrorNumber{42});
    device.Tick(2000);
    EXPECT_THAT(device.Did.Messages(), ElementsAre(u"Failed: 42"));
    EXPECT_EQ(Ports.LinkPortName, GetParam().Value);
    EXPECT_EQ(device.Title().Cell(0, 0), u"Bluetooth Debug");
}

INSTANTIATE_TEST_SUITE_P(Blanks, NameOfNonsense, testing::Values(Blanks));
INSTANTIATE_TEST_SUITE_P(Rows, NameOfNonsense, testing::ValuesIn(Solid));

/// No message is shown for the name of the last failure. That name is empty at first, so an empty name shows none.
TEST(ConnectionWithoutAName, FailsWithoutAWord) {
    support::TestDevice device(support::OfType(9));
    device.Platform.StartProgram();
    SaveSetting(u"ComPort", u"");
    MenuEvent(u"Bluetooth Debug...");
    device.Host.connections.SetOutcome(platform::ErrorNumber{42});
    device.Tick(2000);
    EXPECT_THAT(device.Did.Boxes, IsEmpty());
    EXPECT_FALSE(Ports.LinkOpen);
}

class MailboxOfNonsense : protected OwnSettings, public testing::TestWithParam<Nonsense> {
protected:
    MailboxOfNonsense() : OwnSettings(With("RFCOMM_Path", GetParam().Written)) {}
};

TEST_P(MailboxOfNonsense, IsAServerThatDoesNotRun) {
    support::TestDevice device(Options(3));
    device.Folder.Put("rfcomm.run", "");
    device.Folder.Put("mail/rfcomm.run", "");
    device.Platform.StartProgram();
    SaveSetting(u"ComPort", u"SERVER");
    MenuEvent(u"Bluetooth Debug...");
    device.Tick(2000);
    EXPECT_THAT(device.Did.Messages(), ElementsAre(u"RFCOMM Server not running"));
    EXPECT_EQ(Mailbox.MailboxPath, GetParam().Value);
    EXPECT_FALSE(Ports.LinkOpen);
}

INSTANTIATE_TEST_SUITE_P(Rows, MailboxOfNonsense, testing::ValuesIn(AllNonsense()));
INSTANTIATE_TEST_SUITE_P(NearMisses, MailboxOfNonsense,
                         testing::Values(Nonsense{"no backslash behind", "\\mail", u"\\mail"},
                                         Nonsense{"slashes", "/mail/", u"/mail/"},
                                         Nonsense{"a way up and down again", "\\x\\..\\mail\\", u"\\x\\..\\mail\\"},
                                         Nonsense{"backslashes twice", "\\\\mail\\\\", u"\\\\mail\\\\"}));

// The file as a whole.

class DamagedSettings : protected OwnSettings, public testing::TestWithParam<Nonsense> {
protected:
    DamagedSettings() : OwnSettings(GetParam().Written) {}
};

TEST_P(DamagedSettings, AreAllDefaultsAndKeepTheirLines) {
    support::TestDevice device(Options());
    device.Platform.StartProgram();
    EXPECT_EQ(Screens.CurrentScreen, ScrMain);
    EXPECT_TRUE(modPDAUI::Display.ColourOn);
    EXPECT_EQ(device.Main().FontSize(), 8);
    MenuEvent(u"Bluetooth Debug...");
    device.Tick(2000);
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_THAT(device.Did.Boxes, IsEmpty());
    EXPECT_EQ(Stored().substr(0, GetParam().Written.size()), GetParam().Written);
    EXPECT_NE(Stored().find("\n[Settings]\nStorageVolume=.\\\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Files, DamagedSettings,
                         testing::Values(Nonsense{"NULs", std::string(4096, '\0'), u""},
                                         Nonsense{"half a section", "[Settings\nCOLOUR=0\n", u""},
                                         Nonsense{"keys of no section", "COLOUR=0\nFONTSIZE=20\n", u""},
                                         Nonsense{"bytes that are no text", "\xFF\xFE[\0S\0"s, u""},
                                         Nonsense{"a line of a megabyte", std::string(1U << 20U, '['), u""}));

TEST(SettingsThatAreAFolder, AreAllDefaultsAndNothingIsTold) {
    const support::TemporaryFolder own;
    own.Put("settings.ini/kept.txt", "mine\n");
    backends::DeviceOptions options;
    options.Settings = (own.Path() / "settings.ini").string();
    support::TestDevice device(options);
    device.Platform.StartProgram();
    MenuEvent(u"Preferences...");
    MenuEvent(u"Zoom");
    GoBack();
    EXPECT_EQ(Screens.CurrentScreen, ScrMain);
    EXPECT_THAT(device.Did.Boxes, IsEmpty());
    EXPECT_EQ(own.Bytes("settings.ini/kept.txt"), "mine\n");
}

} // namespace
} // namespace modQuorin
