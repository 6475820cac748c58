// SPDX-License-Identifier: MIT
// The program with --export and --import, as a person calls it.
#include "backends/files/root_lock.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

namespace {

using testing::HasSubstr;

class ArchiveCommand : public testing::Test {
protected:
    ArchiveCommand() {
        Place.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Place.Put("root/Quorin/meter.txt", "FIELDNAME|BLOB\nPlace|\nMoisture|Moisture\n");
        Place.Put("root/Quorin/meter.qvd", "Meter|meter.txt\n");
        Place.Put("root/Quorin/qrnctrl.txt", ZipRows);
        Place.Put("root/Quorin/qrn0001.txt", Table);
        Place.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
        std::filesystem::create_directory(Place.Path("stick"));
    }

    /// Returns the exit status. What was written is in the files "out" and "told".
    int Run(const std::string& root, const std::string& words) {
        const std::string command = "XDG_STATE_HOME='" + Place.Path("state") + "' '" QUORIN_CONSOLE "' --root '" +
                                    Place.Path(root) + "' " + words + " > '" + Place.Path("out") + "' 2> '" +
                                    Place.Path("told") + "' < /dev/null";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    int Export() { return Run("root", "--export '" + Place.Path("stick/a.zip") + "'"); }
    int Import(const std::string& more = "") {
        return Run("new", "--import '" + Place.Path("stick/a.zip") + "' " + more);
    }

    const std::string ZipRows = "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261123|Roof\n";
    const std::string Table = "Place|Moisture\nNorth|12\nSouth|13\n";
    TemporaryRoot Place{support::PlaceInMemory()};
};

TEST_F(ArchiveCommand, MovesAllDataToAnotherDevice) {
    EXPECT_EQ(Export(), 0) << Place.Bytes("told");
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"file\":\"qrn0001.txt\",\"bytes\":33,\"records\":2,\"sha256\":\""));
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"exported\":5,\"records\":2,\"bytes\":"));
    EXPECT_EQ(Import(), 0) << Place.Bytes("told");
    EXPECT_THAT(Place.Bytes("out"),
                HasSubstr("{\"file\":\"qrn0001.txt\",\"as\":\"qrn0001.txt\",\"fate\":\"new\",\"records\":2}"));
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"taken\":5,\"there_already\":0,\"left\":0,\"failed\":0,"));
    for (const char* const name : {"drivers.txt", "meter.txt", "meter.qvd", "qrnctrl.txt", "qrn0001.txt"})
        EXPECT_EQ(Place.Bytes(std::string("new/Quorin/") + name), Place.Bytes(std::string("root/Quorin/") + name));
    EXPECT_EQ(Import("--text"), 0);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("qrn0001.txt is there already\n"));
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("0 files of "));
}

TEST_F(ArchiveCommand, ARecordThatDiffersIsToldWithFive) {
    Export();
    Import();
    const std::string ours = "Place|Moisture\nNorth|99\nSouth|13\n";
    Place.Put("new/Quorin/qrn0001.txt", ours);
    EXPECT_EQ(Import(), 5);
    EXPECT_THAT(Place.Bytes("out"),
                HasSubstr("{\"differs\":\"qrn0001.txt\",\"record\":1,\"here\":\"North|99\",\"zip\":\"North|12\"}\n"));
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("1 records differ from those here, which stay"));
    EXPECT_EQ(Import("--text"), 5);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("qrn0001.txt, record 1 differs\n  here: North|99\n  zip:  North|12\n"));
    EXPECT_EQ(Place.Bytes("new/Quorin/qrn0001.txt"), ours);
}

TEST_F(ArchiveCommand, ANewDownloadGoesToItsPlaceInTheRegister) {
    Export();
    Place.Put("new/Quorin/drivers.txt", "NAME|INFFILE\nGauge|gauge.txt\n");
    Place.Put("new/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nGauge|qrn0002.txt|20260101|\n");
    EXPECT_EQ(Import(), 0) << Place.Bytes("told");
    EXPECT_EQ(Place.Bytes("new/Quorin/qrnctrl.txt"),
              "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261123|Roof\nGauge|qrn0002.txt|20260101|\n");
    EXPECT_EQ(Place.Bytes("new/Quorin/drivers.txt"), "NAME|INFFILE\nGauge|gauge.txt\nMeter|meter.txt\n");
    EXPECT_EQ(Import(), 0);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"taken\":0,\"there_already\":5,"));
}

TEST_F(ArchiveCommand, AnotherDownloadOfThatNameGetsTheNextOne) {
    Export();
    Place.Put("new/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20260101|\n");
    Place.Put("new/Quorin/qrn0001.txt", "Place\nEast\n");
    EXPECT_EQ(Import(), 0) << Place.Bytes("told");
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"file\":\"qrn0001.txt\",\"as\":\"qrn0002.txt\",\"fate\":\"new\""));
    EXPECT_EQ(Place.Bytes("new/Quorin/qrn0001.txt"), "Place\nEast\n");
    EXPECT_EQ(Place.Bytes("new/Quorin/qrn0002.txt"), Table);
    EXPECT_EQ(Place.Bytes("new/Quorin/qrnctrl.txt"),
              "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20260101|\nMeter|qrn0002.txt|20261123|Roof\n");
}

TEST_F(ArchiveCommand, TheJournalComesAlong) {
    Place.Put("script", "quit\n");
    ASSERT_EQ(Run("root", "--journal '" + Place.Path("journal") + "' '" + Place.Path("script") + "'"), 0);
    EXPECT_EQ(Run("root", "--export '" + Place.Path("stick/a.zip") + "' --journal '" + Place.Path("journal") + "'"), 0);
    EXPECT_EQ(Import("--journal '" + Place.Path("other") + "'"), 0) << Place.Bytes("told");
    EXPECT_EQ(Place.Entries("other"), 1);
    EXPECT_EQ(Import("--no-journal"), 5);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("there is no folder for a journal"));
}

TEST_F(ArchiveCommand, ExportsBesideAProgramAndImportsAlone) {
    backends::RootLock lock;
    ASSERT_EQ(lock.Take(Place.Path("root"), "window"), backends::LockResult::Held);
    EXPECT_EQ(Export(), 0);
    ASSERT_EQ(lock.Take(Place.Path("new"), "window"), backends::LockResult::Held);
    EXPECT_EQ(Import(), 2);
    EXPECT_FALSE(Place.Has("new/Quorin"));
}

TEST_F(ArchiveCommand, ADamagedZipFileIsToldWithTwo) {
    Export();
    const std::string whole = Place.Bytes("stick/a.zip");
    Place.Put("stick/a.zip", whole.substr(0, whole.size() / 2));
    EXPECT_EQ(Import(), 2);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("nothing is taken in. "));
    EXPECT_FALSE(Place.Has("new/Quorin"));
}

TEST_F(ArchiveCommand, AnExportThatCantBeginOrEndIsTold) {
    EXPECT_EQ(Export(), 0);
    EXPECT_EQ(Export(), 2) << "a file of that name is there";
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("nothing is exported. There is "));
    std::filesystem::remove(Place.Path("stick/a.zip"));
    std::filesystem::create_symlink("nowhere", Place.Path("root/Quorin/qrn0002.txt"));
    Place.Put("root/Quorin/qrnctrl.txt", ZipRows + "Meter|qrn0002.txt|20261123|\n");
    EXPECT_EQ(Export(), 1);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("qrn0002.txt can't be read: "));
    EXPECT_EQ(Place.Entries("stick"), 0);
    EXPECT_EQ(Run("none", "--export '" + Place.Path("stick/a.zip") + "'"), 2);
}

} // namespace
