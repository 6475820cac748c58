// SPDX-License-Identifier: MIT
// Packages that are wrong in every way that a file can be: what is told, what is written, and what is left alone.
#include "drivers/installation.h"

#include "storage/line_files.h"
#include "storage/settings.h"
#include "tests/support/program.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <ostream>

namespace modQuorin {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string Drivers = "NAME|INFFILE\nOld|old.txt\n";
const std::string InfHeaderLine = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
const std::string Inf = InfHeaderLine + "Place|1||||||\n";
const std::size_t Megabyte = 1U << 20U;

const Text Installed = u"Driver installed";
const Text NoInfFile = u"Error creating driver inf file";

/// Where temporary folders are made for the length of a test, so that all that lies around the device can be watched.
class OwnTemporary {
protected:
    OwnTemporary() {
        if (const char* old = std::getenv("TMPDIR"))
            Before = old;
        ::setenv("TMPDIR", Around.Path().c_str(), 1);
    }
    ~OwnTemporary() {
        if (Before)
            ::setenv("TMPDIR", Before->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
    }
    OwnTemporary(const OwnTemporary&) = delete;
    OwnTemporary& operator=(const OwnTemporary&) = delete;

    const support::TemporaryFolder Around;

private:
    std::optional<std::string> Before;
};

/// Each name below a folder with what it holds.
using Contents = std::map<std::string, std::string>;

std::string BytesOf(const fs::path& path) {
    if (fs::is_symlink(path))
        return "-> " + fs::read_symlink(path).string();
    if (fs::is_directory(path))
        return "a folder";
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The names that are not in both with the same contents; a long text is not printed.
std::vector<std::string> Differences(const Contents& expected, const Contents& found) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : expected) {
        const auto other = found.find(name);
        if (other == found.end())
            names.push_back("missing " + name.substr(0, 300));
        else if (other->second != bytes)
            names.push_back(name.substr(0, 300) + " holds " + other->second.substr(0, 300));
    }
    for (const auto& [name, bytes] : found) {
        if (expected.count(name) == 0)
            names.push_back("new " + name.substr(0, 300) + ": " + bytes.substr(0, 300));
    }
    return names;
}

class FaultyPackage : protected OwnTemporary, public support::Program {
protected:
    explicit FaultyPackage(const platform::headless::DeviceOptions& options = {}) : Program(options) {}

    /// A device in use, with files beside the data folder and beside the device.
    void FillDevice() {
        Around.Put("beside.txt", "mine\n");
        Around.Put("beside/rest.txt", "mine\n");
        Device.Folder.Put("outside.txt", "mine\n");
        Put("drivers.txt", Drivers);
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nOld|qrn0001.txt|20070301|\n");
        Put("old.txt", Inf);
        Put("qrn0001.txt", "Place\nHall\n");
        Put("sub/kept.txt", "mine\n");
    }

    /// All there is on the device and around it, by its path from the device's root.
    Contents Everything() {
        Contents all;
        for (const auto& entry : fs::recursive_directory_iterator(Around.Path()))
            all[entry.path().lexically_relative(Device.Folder.Path()).string()] = BytesOf(entry.path());
        return all;
    }

    void Install(const std::string& content) {
        Put("new.qvd", content);
        MenuEvent(u"Add Driver...");
        Before = Everything();
        Choose(u"Install...");
    }

    std::vector<Text> Told() { return Device.Did.Messages(); }

    /// What was told, and all that is different from before: the drivers table is longer, and files were written.
    void ExpectOutcome(const std::vector<Text>& told, const std::string& driverRow, const Contents& written = {}) {
        EXPECT_EQ(Told(), told);
        Contents expected = Before;
        expected["Quorin/drivers.txt"] += driverRow;
        for (const auto& [name, bytes] : written)
            expected[name] = bytes;
        EXPECT_THAT(Differences(expected, Everything()), IsEmpty());
        ExpectUsableAgain();
    }

    void ExpectUsableAgain() {
        EXPECT_THAT(Device.Did.Status, ElementsAre(u"Busy", u""));
        EXPECT_TRUE(Device.Main().Enabled());
        EXPECT_TRUE(Device.Title().Enabled());
        for (const auto& title : Device.Platform.menuTitles)
            EXPECT_TRUE(title.Enabled());
        EXPECT_THAT(modFileSystem::Slots.SlotState, Each(0)) << "a file was left open";
        EXPECT_EQ(Screen(), ScrAddDriver);
    }

    void ExpectDriverListOpens() {
        Choose(u"Back");
        MenuEvent(u"Start...");
        Repaint();
        EXPECT_EQ(Screen(), ScrDrivers);
        EXPECT_EQ(TitleCell(), u"Drivers");
    }

    Contents Before;
};

struct PackageRow {
    const char* What;
    std::string Content;
    std::vector<Text> Told;
    std::string DriverRow; ///< added to the drivers table
    Contents Written;
};

void PrintTo(const PackageRow& row, std::ostream* out) {
    *out << row.What;
}

class PackageWith : public FaultyPackage, public testing::WithParamInterface<PackageRow> {
protected:
    PackageWith() { FillDevice(); }
};

TEST_P(PackageWith, TellsWritesAndLeavesAloneWhatItShould) {
    Install(GetParam().Content);
    ExpectOutcome(GetParam().Told, GetParam().DriverRow, GetParam().Written);
    ExpectDriverListOpens();
}

/// "a|a|...", with no bar at the end.
std::string Columns(std::size_t count, const std::string& column = "a") {
    std::string line = column;
    for (std::size_t i = 1; i < count; ++i)
        line += "|" + column;
    return line;
}

std::string Letters(std::size_t count) {
    return std::string(count, 'x');
}

// clang-format off: a row a package
INSTANTIATE_TEST_SUITE_P(
    Shapes, PackageWith,
    testing::Values(
        PackageRow{"nothing", "", {Installed}, "", {}}, PackageRow{"a line end alone", "\n", {Installed}, "", {}},
        PackageRow{"comments alone", "# Meter|meter.txt\n#\n", {Installed}, "", {}},
        PackageRow{"a first line alone", "M|m.txt", {Installed}, "M|m.txt\n", {}},
        PackageRow{"no bar", "Meter\n" + Inf, {NoInfFile}, "", {}},
        PackageRow{"no bar and one line more", "Meter\n" + InfHeaderLine, {NoInfFile, Installed}, "", {}},
        PackageRow{"an empty first line", "\nM|m.txt\n" + Inf, {NoInfFile}, "", {}},
        PackageRow{"a blank before the comment's sign", " # Meter\n" + Inf, {NoInfFile}, "", {}},
        PackageRow{"no driver name", "|m.txt\n" + Inf, {Installed}, "|m.txt\n", {{"Quorin/m.txt", Inf}}},
        PackageRow{"no last line end", "M|m.txt\nH\na", {Installed}, "M|m.txt\n", {{"Quorin/m.txt", "H\na\n"}}},
        PackageRow{"line ends of another system",
                   "M|m.txt\r\nH|J\r\na|b\r\n",
                   {Installed},
                   "M|m.txt\n",
                   {{"Quorin/m.txt", "H|J\na|b\n"}}},
        PackageRow{"carriage returns in its lines",
                   "M|m.txt\nH\rJ\na\r\r\n",
                   {Installed},
                   "M|m.txt\n",
                   {{"Quorin/m.txt", "H\rJ\na\r\r\n"}}},
        PackageRow{"no inf header", "M|m.txt\nany\n\n", {Installed}, "M|m.txt\n", {{"Quorin/m.txt", "any\n\n"}}},
        PackageRow{"a name that is there in other case", "oLD|m.txt\n" + Inf, {u"Driver already exists"}, "", {}}));

INSTANTIATE_TEST_SUITE_P(
    Sizes, PackageWith,
    testing::Values(
        PackageRow{
            "a thousand columns in the first line", Columns(1000) + "\n" + Inf, {NoInfFile}, Columns(1000) + "\n", {}},
        PackageRow{"a thousand empty columns in the first line",
                   Columns(1000, "") + "\n" + Inf,
                   {NoInfFile},
                   Columns(1000, "") + "\n",
                   {}},
        PackageRow{"a thousand columns in the inf lines",
                   "M|m.txt\n" + Columns(1000, "H") + "\n" + Columns(1000) + "\n",
                   {Installed},
                   "M|m.txt\n",
                   {{"Quorin/m.txt", Columns(1000, "H") + "\n" + Columns(1000) + "\n"}}},
        PackageRow{"a comment of a megabyte",
                   "#" + Letters(Megabyte) + "\nM|m.txt\n" + Inf,
                   {Installed},
                   "M|m.txt\n",
                   {{"Quorin/m.txt", Inf}}},
        PackageRow{"a name of a megabyte",
                   Letters(Megabyte) + "|m.txt\n" + Inf,
                   {Installed},
                   Letters(Megabyte) + "|m.txt\n",
                   {{"Quorin/m.txt", Inf}}},
        PackageRow{"an inf name of a megabyte",
                   "M|" + Letters(Megabyte) + "\n" + Inf,
                   {NoInfFile},
                   "M|" + Letters(Megabyte) + "\n",
                   {}},
        PackageRow{"inf lines of a megabyte",
                   "M|m.txt\n" + Letters(Megabyte) + "\n" + Letters(Megabyte) + "y\n",
                   {Installed},
                   "M|m.txt\n",
                   {{"Quorin/m.txt", Letters(Megabyte) + "\n" + Letters(Megabyte) + "y\n"}}}));

INSTANTIATE_TEST_SUITE_P(
    Bytes, PackageWith,
    testing::Values(
        PackageRow{"bytes that are no text",
                   "M\xFF\x80|m\xFE.txt\n\xC3(\n\xED\xA0\x80\xE2\x82\n",
                   {Installed},
                   "M\xFF\x80|m\xFE.txt\n",
                   {{"Quorin/m\xFE.txt", "\xC3(\n\xED\xA0\x80\xE2\x82\n"}}},
        PackageRow{
            "NULs", "M\0e|m.txt\n\0\na\0|b\n"s, {Installed}, "M\0e|m.txt\n"s, {{"Quorin/m.txt", "\0\na\0|b\n"s}}},
        PackageRow{"controls",
                   "M\x01\x1B\t|m.txt\n\x7F\x0B\n",
                   {Installed},
                   "M\x01\x1B\t|m.txt\n",
                   {{"Quorin/m.txt", "\x7F\x0B\n"}}},
        PackageRow{"letters of all the world",
                   "Größe 湿度 😀|feuchte 湿.txt\nH😀\n",
                   {Installed},
                   "Größe 湿度 😀|feuchte 湿.txt\n",
                   {{"Quorin/feuchte 湿.txt", "H😀\n"}}},
        // Two bytes a character, as some editors save: the bar is found, the name behind it is none.
        PackageRow{"characters of two bytes",
                   "\xFF\xFEM\0|\0m\0\n\0H\0\n\0a\0\n\0"s,
                   {NoInfFile},
                   "\xFF\xFEM\0|\0m\0\n"s,
                   {}}));

// What the package calls its inf file is replaced, whatever it was before.
INSTANTIATE_TEST_SUITE_P(
    InfFilesThatAreThere, PackageWith,
    testing::Values(
        PackageRow{"the drivers table", "M|drivers.txt\n" + Inf, {Installed}, "", {{"Quorin/drivers.txt", Inf}}},
        PackageRow{"the register of downloads",
                   "M|qrnctrl.txt\n" + Inf,
                   {Installed},
                   "M|qrnctrl.txt\n",
                   {{"Quorin/qrnctrl.txt", Inf}}},
        PackageRow{
            "another driver's inf file", "M|old.txt\nH\n", {Installed}, "M|old.txt\n", {{"Quorin/old.txt", "H\n"}}},
        PackageRow{
            "a download", "M|qrn0001.txt\n" + Inf, {Installed}, "M|qrn0001.txt\n", {{"Quorin/qrn0001.txt", Inf}}},
        PackageRow{"a file of a folder in the data folder",
                   "M|sub\\kept.txt\n" + Inf,
                   {Installed},
                   "M|sub\\kept.txt\n",
                   {{"Quorin/sub/kept.txt", Inf}}}));
// clang-format on

class InfNameRefused : public FaultyPackage, public testing::WithParamInterface<std::string> {
protected:
    InfNameRefused() {
        FillDevice();
        fs::create_symlink("../../beside.txt", Device.Folder.Path() / "Quorin/link.txt");
        fs::create_symlink("../../made.txt", Device.Folder.Path() / "Quorin/dangling.txt");
    }
};

TEST_P(InfNameRefused, LeavesItsDriverRowAndNoFile) {
    Install("Meter|" + GetParam() + "\n" + Inf);
    ExpectOutcome({NoInfFile}, "Meter|" + GetParam() + "\n");
    ExpectDriverListOpens();
}

INSTANTIATE_TEST_SUITE_P(Names, InfNameRefused,
                         testing::Values("", ".", "..", "../x.txt", "..\\x.txt", "..\\..\\beside.txt",
                                         "../../beside.txt", "..\\..\\..\\..\\tmp\\x.txt", "/", "/x.txt", "/tmp/x.txt",
                                         "sub/kept.txt", "\\", "\\x.txt", "\\\\server\\x.txt", "x.txt\\", "none\\x.txt",
                                         "sub\\..\\x.txt", "sub", "sub\\", "link.txt", "dangling.txt", "C:", "C:x.txt",
                                         "C:\\x.txt", "C:/x.txt", "m\0.txt"s, "\0"s, "m.txt\0"s, "n256" + Letters(252),
                                         "n5000" + Letters(4995), "pdb" + Letters(5000) + ".pdb", "a/b.pdb", ".pdb",
                                         "..pdb", "m\0.pdb"s));

class PackageOnADevice : public FaultyPackage {
protected:
    PackageOnADevice() { FillDevice(); }
};

TEST_F(PackageOnADevice, AbsolutePathOfTheHostIsNoInfName) {
    const std::string path = (Around.Path() / "made.txt").string();
    Install("Meter|" + path + "\n" + Inf);
    ExpectOutcome({NoInfFile}, "Meter|" + path + "\n");
}

/// From its second line on the package is the inf file, and has no further lines to be read.
TEST_F(PackageOnADevice, PackageThatIsItsOwnInfFileLosesItsRows) {
    Install("Meter|new.qvd\nHeader\na|1\nb|1\n");
    ExpectOutcome({Installed}, "Meter|new.qvd\n", {{"Quorin/new.qvd", "Header\n\n\n"}});
}

/// A drivers table that can't be opened is made anew with its register, as at the first run; here not even that works.
TEST_F(PackageOnADevice, DriversTableThatIsAFolderIsToldAndStopsTheWalk) {
    fs::remove(Device.Folder.Path() / "Quorin/drivers.txt");
    Device.Folder.Put("Quorin/drivers.txt/kept.txt", "mine\n");
    Install("Meter|meter.txt\n" + Inf);
    EXPECT_THAT(Told(), ElementsAre(u"Error updating drivers file"));
    Contents expected = Before;
    expected["Quorin/qrnctrl.txt"] = "DRIVER|FILE|DATE|ALIAS\n";
    EXPECT_THAT(Differences(expected, Everything()), IsEmpty());
    ExpectUsableAgain();
}

TEST_F(PackageOnADevice, DatabaseAsInfFileLiesWithTheDatabases) {
    Install("Meter|..\\..\\meter.pdb\n" + Inf);
    EXPECT_THAT(Told(), ElementsAre(Installed));
    Contents after = Everything();
    EXPECT_EQ(after.erase("Databases/meter.sqlite"), 1U);
    EXPECT_EQ(after.erase("Databases"), 1U);
    Contents expected = Before;
    expected["Quorin/drivers.txt"] += "Meter|..\\..\\meter.pdb\n";
    EXPECT_THAT(Differences(expected, after), IsEmpty());
    ExpectUsableAgain();
}

TEST_F(PackageOnADevice, AnyNumberOfFaultyOnesCanFollowEachOther) {
    for (int i = 0; i < 10; ++i) {
        Put("new.qvd", "Driver " + std::to_string(i) + "|..\\x\n" + Inf);
        MenuEvent(u"Add Driver...");
        Choose(u"Install...");
    }
    EXPECT_EQ(Told(), std::vector<Text>(10, NoInfFile));
    Put("new.qvd", "Meter|meter.txt\n" + Inf);
    MenuEvent(u"Add Driver...");
    Choose(u"Install...");
    EXPECT_EQ(Told().back(), Installed);
    EXPECT_EQ(File("meter.txt"), Inf);
}

// A device whose memory holds databases alone.

using Lines = std::vector<Text>;

class PalmPackage : public FaultyPackage {
protected:
    explicit PalmPackage(const Text& dataVolume = u"Device:\\") : FaultyPackage(WithCard()) {
        SaveSetting(u"StorageVolume", dataVolume);
    }
    static platform::headless::DeviceOptions WithCard() {
        platform::headless::DeviceOptions options = support::OfType(1);
        options.Volumes = {{u"Device:\\", 1000}, {u"Card:\\", 500}};
        return options;
    }
    static void PutDatabase(const Text& name, const Lines& lines) {
        modFileSystem::FileHandle file;
        modFileSystem::OpenFile(file, u"Device:\\" + name, u"w", DataType, DataCreator);
        for (const Text& line : lines)
            modFileSystem::WriteFileLine(file, line);
        modFileSystem::CloseFile(file);
    }
    static Lines Database(const Text& name) {
        modFileSystem::FileHandle file;
        modFileSystem::OpenFile(file, u"Device:\\" + name, u"r", DataType, DataCreator);
        EXPECT_TRUE(file.valid);
        Lines lines;
        for (std::int32_t line = 1; line <= modFileSystem::FileLineCount(file); ++line)
            lines.push_back(modFileSystem::ReadFileLine(file, line));
        modFileSystem::CloseFile(file);
        return lines;
    }
    /// Installs the only package there is.
    void Install(const Text& listedAs) {
        MenuEvent(u"Add Driver...");
        EXPECT_THAT(Column(0), ElementsAre(listedAs));
        Before = Everything();
        Choose(u"Install...");
    }
};

TEST_F(PalmPackage, InMemoryBringsItsDatabases) {
    PutDatabase(u"meterqvd", {u"# a comment", u"Meter|meter.txt", u"H|J", u"a|", u"b|"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
    EXPECT_THAT(Database(u"meter"), ElementsAre(u"H|J", u"a|", u"b|"));
    ExpectUsableAgain();
}

TEST_F(PalmPackage, InMemoryIsAskedForByTheEndOfItsNameAlone) {
    PutDatabase(u"QVD", {u"Meter|meter.txt", u"H"});
    PutDatabase(u"qvd2", {u"Other|other.txt", u"H"});
    Install(u"Device:\\QVD");
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
}

TEST_F(PalmPackage, InMemoryOfNoLinesInstallsNothingAndSaysItDid) {
    PutDatabase(u"meterqvd", {});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE"));
}

/// "meter.qvd" is opened as the database "meter", as any name with a full stop is.
TEST_F(PalmPackage, InMemoryWithAFullStopInItsNameCantBeOpened) {
    PutDatabase(u"xqvd", {u"Meter|meter.txt", u"H"});
    fs::rename(Device.Folder.Path() / "Databases/xqvd.sqlite", Device.Folder.Path() / "Databases/meter.qvd.sqlite");
    Install(u"Device:\\meter.qvd");
    EXPECT_THAT(Told(), ElementsAre(u"Error installing driver."));
    EXPECT_THAT(Differences(Before, Everything()), IsEmpty());
}

class ShortInfNameOnAPalm : public PalmPackage, public testing::WithParamInterface<const char16_t*> {};

TEST_P(ShortInfNameOnAPalm, WithAFullStopCantLoseItsEndingWhichStopsTheProgram) {
    const Text name = GetParam();
    PutDatabase(u"meterqvd", {u"Meter|" + name, u"H"});
    MenuEvent(u"Add Driver...");
    EXPECT_EQ(support::FailureOf([] { MenuEvent(u"Install..."); }),
              u"The file name \"" + name + u"\" is too short to lose its ending");
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|" + name));
}

INSTANTIATE_TEST_SUITE_P(Names, ShortInfNameOnAPalm, testing::Values(u"a.b", u"..", u"."));

class InfNameOnAPalm : public PalmPackage, public testing::WithParamInterface<const char16_t*> {};

TEST_P(InfNameOnAPalm, NeverLeadsOutOfTheDatabases) {
    PutDatabase(u"drivers", {u"NAME|INFFILE"});
    PutDatabase(u"meterqvd", {u"Meter|" + Text(GetParam()), u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(NoInfFile));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|" + Text(GetParam())));
    Contents expected = Before;
    expected["Databases/drivers.sqlite"] = Everything()["Databases/drivers.sqlite"];
    EXPECT_THAT(Differences(expected, Everything()), IsEmpty());
    ExpectUsableAgain();
}

INSTANTIATE_TEST_SUITE_P(Names, InfNameOnAPalm,
                         testing::Values(u"", u"..\\..", u"../../x.txt", u"/x.txt", u"sub\\x.txt", u"\\x.txt",
                                         u"C:\\x.txt", u".txt", u"....txt"));

TEST_F(PalmPackage, OnACardIsInstalledIntoTheMemory) {
    Device.Folder.Put("Card/new.qvd", "Meter|meter.txt\nH\xFF\na\n");
    Install(u"Card:\\new.qvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
    EXPECT_THAT(Database(u"meter"), ElementsAre(modStringTools::FromBytes("H\xFF"), u"a"));
    ExpectUsableAgain();
}

class PalmWithItsDataOnACard : public PalmPackage {
protected:
    PalmWithItsDataOnACard() : PalmPackage(u"Card:\\") { SetFilePaths(); }
    std::string OnCard(const std::string& name) { return Device.Folder.Bytes("Card/PALM/Programs/Quorin/" + name); }
};

TEST_F(PalmWithItsDataOnACard, PackageInMemoryIsInstalledOntoTheCard) {
    PutDatabase(u"meterqvd", {u"Meter|meter.txt", u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_EQ(OnCard("drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
    EXPECT_EQ(OnCard("meter.txt"), "H\na\n");
}

TEST_F(PalmWithItsDataOnACard, InfFileThatWouldBeADatabaseIsATextFile) {
    PutDatabase(u"meterqvd", {u"Meter|meter.PDB", u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_EQ(OnCard("drivers.txt"), "NAME|INFFILE\nMeter|meter.PDB\n");
    EXPECT_EQ(OnCard("meter.txt"), "H\na\n");
}

} // namespace
} // namespace modQuorin
