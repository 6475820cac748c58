// SPDX-License-Identifier: MIT
#include "tests/unit/handover/file_calls.h"
#include "tests/unit/handover/two_devices.h"

#include <random>

namespace handover {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Exported = TwoDevices;

/// Returns the exit status of Python on a zip file, which it has as z.
int Python(const std::string& zip, const std::string& condition) {
    return std::system(
        ("python3 -c 'import sys, zipfile; z = zipfile.ZipFile(\"" + zip + "\"); sys.exit(not (" + condition + "))'")
            .c_str());
}

std::string RandomBytes(std::mt19937& random) {
    static const std::string some = std::string("|\"\r\n\0\xff\xc3\xa4, aA1", 13);
    std::string bytes;
    for (std::size_t left = random() % 400; left > 0; --left)
        bytes += some[random() % some.size()];
    return bytes;
}

TEST_F(Exported, TheZipFileOpensInOtherTools) {
    EXPECT_EQ(Export(Root).Files.size(), 5u);
    EXPECT_EQ(Python(Stick.Path("a.zip"), "z.testzip() is None and len(z.namelist()) == 5"), 0);
    EXPECT_EQ(Python(Stick.Path("a.zip"), "z.namelist() == sorted(z.namelist())"), 0);
    EXPECT_EQ(Python(Stick.Path("a.zip"), "len(z.read(\"qrn0001.txt\")) == " + std::to_string(First.size())), 0);
}

TEST_F(Exported, TheSameDataIsTheSameBytes) {
    Export(Root);
    Root.Put("Quorin/qrn0001.txt", First); // at another time
    std::filesystem::permissions(Root.Path("Quorin/qrn0002.txt"), std::filesystem::perms::owner_read);
    Export(Root, "b.zip");
    EXPECT_EQ(Stick.Bytes("a.zip"), Stick.Bytes("b.zip"));
    EXPECT_EQ(Python(Stick.Path("a.zip"), "all(i.date_time[0] == 1980 for i in z.infolist())"), 0);
}

TEST_F(Exported, AnyDataFolderComesBackByteForByte) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const TemporaryRoot from(support::PlaceInMemory());
        std::string rows = Register;
        for (unsigned i = random() % 8; i > 0; --i) {
            const std::string name = "qrn000" + std::to_string(i) + ".txt";
            from.Put("Quorin/" + name, RandomBytes(random));
            rows += "M|" + name + "|20261123|" + (random() % 2 == 0 ? "\"a\xff\"\r" : "") + "\n";
        }
        from.Put("Quorin/qrnctrl.txt", random() % 5 == 0 ? RandomBytes(random) : rows);
        from.Put("Quorin/drivers.txt", "NAME|INFFILE\n" + RandomBytes(random));
        from.Put("Quorin/notes.txt", RandomBytes(random));
        from.Put("journal/2026-11-23-0123456789abcdef.jsonl", RandomBytes(random) + "\n");
        std::filesystem::remove_all(Other.Path("Quorin"));
        std::filesystem::remove_all(Other.Path("journal"));
        std::filesystem::remove(Stick.Path("a.zip"));
        std::filesystem::remove(Stick.Path("b.zip"));
        ASSERT_THAT(Export(from).Failed, IsEmpty()) << seed;
        const TakeResult taken = Import();
        EXPECT_EQ(taken.WhyNot, "") << seed;
        EXPECT_EQ(taken.Failed + taken.Left, 0u) << seed;
        EXPECT_EQ(Content(Other), Content(from)) << seed;
        Export(Other, "b.zip");
        EXPECT_EQ(Stick.Bytes("b.zip"), Stick.Bytes("a.zip")) << seed;
    }
}

TEST_F(Exported, ManyFilesNeedTheLargeFormat) {
    constexpr std::size_t Count = 65535; // one more than the small format counts
    Listing all;
    for (std::size_t i = 0; i < Count; ++i)
        all.Sources.push_back({"t" + std::to_string(i) + ".txt", Root.Path("Quorin/meter.txt"), Kind::Table});
    EXPECT_THAT(ExportZip({.Zip = Stick.Path("a.zip"), .Root = Root.Path(), .List = [&] { return all; }}).Failed,
                IsEmpty());
    EXPECT_EQ(Python(Stick.Path("a.zip"), "len(z.namelist()) == " + std::to_string(Count)), 0);
    EXPECT_THAT(Stick.Bytes("a.zip"), HasSubstr("PK\x06\x06")) << "the format asks for it";
}

TEST_F(Exported, AFileThatPacksTooWellIsPutInAsItIs) {
    Root.Put("Quorin/zeros.txt", std::string(20 << 20, '0'));
    EXPECT_THAT(Export(Root).Failed, IsEmpty()) << "it would be refused when it is read";
    EXPECT_EQ(Import().WhyNot, "");
}

TEST_F(Exported, AFileOfThatNameIsNotReplaced) {
    Stick.Put("a.zip", "of a person");
    EXPECT_THAT(Export(Root).WhyNot, HasSubstr("already: take another name"));
    EXPECT_EQ(Stick.Bytes("a.zip"), "of a person");
}

TEST_F(Exported, APlaceWithinTheDataOrNoneIsRefused) {
    const auto list = [this] { return All(Root); };
    EXPECT_THAT(ExportZip({.Zip = Root.Path("Quorin/a.zip"), .Root = Root.Path(), .List = list}).WhyNot,
                HasSubstr("choose a place outside of"));
    EXPECT_THAT(ExportZip({.Zip = Stick.Path("none/a.zip"), .Root = Root.Path(), .List = list}).WhyNot,
                HasSubstr("is the stick plugged in"));
}

TEST_F(Exported, WithoutOneFileThereIsNoZipFile) {
    Root.Link("nowhere", "Quorin/gone.txt");
    EXPECT_THAT(Export(Root).Failed, ElementsAre(HasSubstr("gone.txt can't be read: ")));
    EXPECT_EQ(Stick.Entries(), 0);
}

TEST_F(Exported, ADeviceWithoutDataIsTold) {
    EXPECT_THAT(Export(Other).Failed, ElementsAre("There is nothing to export."));
    EXPECT_EQ(Stick.Entries(), 0);
}

TEST_F(Exported, NamesThatAnotherSystemTakesForOneAreRefused) {
    Root.Put("Quorin/METER.txt", "");
    EXPECT_THAT(Export(Root).Failed, ElementsAre(HasSubstr("differs only in its capitals")));
    EXPECT_EQ(Stick.Entries(), 0);
}

/// "New" and "Open" of the form, after each look at the device.
TEST_F(Exported, NoRegisterNamesADownloadThatIsNotThere) {
    int looks = 2;
    ExportZip({.Zip = Stick.Path("a.zip"), .Root = Root.Path(), .List = [&] {
                   Listing all = All(Root);
                   const std::string next = "qrn000" + std::to_string(++looks) + ".txt";
                   Root.Put("Quorin/qrnctrl.txt", Root.Bytes("Quorin/qrnctrl.txt") + "Meter|" + next + "|20261123|\n");
                   Root.Put("Quorin/" + next, "Place\n");
                   return all;
               }});
    EXPECT_EQ(Import().WhyNot, "");
    const std::vector<KeyedRow> rows = KeyedRowsOf(Other.Bytes("Quorin/qrnctrl.txt"));
    EXPECT_EQ(rows.size(), 3u);
    for (const KeyedRow& row : rows)
        EXPECT_TRUE(Other.Has("Quorin/" + FieldOf(row, "FILE"))) << FieldOf(row, "FILE");
}

TEST_F(Exported, AStickThatSpoilsOrFillsLeavesNoZipFile) {
    file_calls::Strike(file_calls::Blow::Spoilt, 1);
    ExportResult cut = Export(Root);
    file_calls::Counted();
    EXPECT_THAT(cut.Failed, Contains(HasSubstr("read back")));
    EXPECT_EQ(Stick.Entries(), 0);
    file_calls::Strike(file_calls::Blow::None, 0);
    Export(Root, "b.zip");
    const int calls = file_calls::Counted();
    ASSERT_GT(calls, 3);
    for (int number = 1; number <= calls; ++number) {
        file_calls::Strike(file_calls::Blow::Full, number);
        cut = Export(Root);
        file_calls::Counted();
        EXPECT_THAT(cut.Failed, testing::Not(IsEmpty())) << number;
        std::filesystem::remove(Stick.Path("a.zip")); // its last call is the name on the medium
    }
    EXPECT_EQ(Export(Root).Failed.size(), 0u);
}

} // namespace

} // namespace handover
