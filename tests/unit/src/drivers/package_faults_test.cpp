// SPDX-License-Identifier: MIT
// Packages with every kind of fault that a file can have: which messages are shown, what is written, and what stays
// unchanged.
#include "tests/unit/src/drivers/faulty_package.h"

namespace modQuorin {
namespace {

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
        PackageRow{"an empty first line", "\nM|m.txt\n" + Inf, {Installed}, "M|m.txt\n", {{"Quorin/m.txt", Inf}}},
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
        PackageRow{"no inf header", "M|m.txt\nany\n\n", {Installed}, "M|m.txt\n", {{"Quorin/m.txt", "any\n"}}},
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
        PackageRow{"NULs", "M\0e|m.txt\n\0\na\0|b\n"s, {Installed}, "M e|m.txt\n", {{"Quorin/m.txt", " \na |b\n"}}},
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
        // Two bytes a character, as some editors save: every second byte is a NUL.
        PackageRow{"characters of two bytes",
                   "\xFF\xFEM\0|\0m\0\n\0H\0\n\0a\0\n\0"s,
                   {Installed},
                   "\xFF\xFEM | m \n",
                   {{"Quorin/ m ", " H \n a \n \n"}}}));

// The file that the package names as its inf file is replaced, whatever it contains.
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
                                         "C:\\x.txt", "C:/x.txt", "n256" + Letters(252), "n5000" + Letters(4995),
                                         "pdb" + Letters(5000) + ".pdb", "a/b.pdb", ".pdb", "..pdb"));

class PackageOnADevice : public FaultyPackage {
protected:
    PackageOnADevice() { FillDevice(); }
};

TEST_F(PackageOnADevice, AbsolutePathOfTheHostIsNoInfName) {
    const std::string path = (Around.Path() / "made.txt").string();
    Install("Meter|" + path + "\n" + Inf);
    ExpectOutcome({NoInfFile}, "Meter|" + path + "\n");
}

/// The inf file takes its name once it is complete; until then the package can be read.
TEST_F(PackageOnADevice, PackageThatIsItsOwnInfFileBecomesIt) {
    Install("Meter|new.qvd\nHeader\na|1\nb|1\n");
    ExpectOutcome({Installed}, "Meter|new.qvd\n", {{"Quorin/new.qvd", "Header\na|1\nb|1\n"}});
}

/// A drivers table that can't be opened is created again with its register, as at the first run. Here that fails, too.
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

} // namespace
} // namespace modQuorin
