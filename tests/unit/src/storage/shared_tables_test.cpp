// SPDX-License-Identifier: MIT
// An open text table whose file other programs replace, cut, move or delete: nothing of theirs is overwritten, and each
// loss is reported.
#include "src/storage/keyed_tables.h"

#include "src/storage/settings.h"
#include "tests/support/heard_readings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modFileSystem {
namespace {

namespace files = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class SharedTable : public testing::Test {
protected:
    SharedTable() {
        modQuorin::SetFilePaths();
        Device.Folder.Put("Quorin/t.txt", "A|B\na|1\nb|2\nc|3\n");
        OpenTable(u".\\Quorin\\t.txt", u"r", u"TEXT", u"QVRN");
        GotoRow(2);
    }

    std::string Bytes() { return Device.Folder.Bytes("Quorin/t.txt"); }
    files::path Path(const std::string& name) const { return Device.Folder.Path() / name; }
    /// Replaces the file as editors, sync tools and `sed -i` do.
    void ReplaceBy(const std::string& bytes) {
        Device.Folder.Put("Quorin/new", bytes);
        files::rename(Path("Quorin/new"), Path("Quorin/t.txt"));
    }
    static void Save(const Text& value) {
        SetField(u"A", value);
        SaveRow();
    }
    std::string Told() {
        EXPECT_THAT(Device.Did.Unsaved, SizeIs(1));
        if (Device.Did.Unsaved.empty())
            return {};
        EXPECT_EQ(Device.Did.Unsaved.back().first, u"t.txt");
        return modStringTools::ToBytes(Device.Did.Unsaved.back().second);
    }
    /// Returns the name and contents of the only scratch file in the data folder.
    std::string Kept() {
        std::string kept;
        for (const auto& entry : files::directory_iterator(Path("Quorin"))) {
            const std::string name = entry.path().filename().string();
            if (name != "t.txt") {
                EXPECT_EQ(kept, "");
                kept = name + ": " + Device.Folder.Bytes("Quorin/" + name);
            }
        }
        return kept;
    }

    support::TestDevice Device;
};

TEST_F(SharedTable, ReplacedByAnotherProgramKeepsItsRowsAndTakesOurs) {
    ReplaceBy("A|B\nother|9\nb|2\nc|3\nmore|8\n");
    Save(u"new");
    EXPECT_EQ(Bytes(), "A|B\nother|9\nnew|2\nc|3\nmore|8\n");
    EXPECT_EQ(TableRowCount(), 4);
    EXPECT_EQ(Table.TableRowIndex, 2);
    EXPECT_THAT(Device.Did.Unsaved, IsEmpty());
    EXPECT_EQ(Kept(), "");
}

/// The row that the saved one was made from is not there any more.
TEST_F(SharedTable, WithAnotherRowInThePlaceIsLeftAndTheRowIsKept) {
    const support::HeardReadings heard(Device);
    const std::string theirs = "A|B\na|1\nmoved|9\nb|2\nc|3\n";
    ReplaceBy(theirs);
    Save(u"new");
    EXPECT_EQ(Bytes(), theirs);
    EXPECT_THAT(heard.RowLines(), ElementsAre("saved t.txt 2: b|2 -> new|2 failed: " + Told()));
    const std::string kept = Kept();
    EXPECT_THAT(kept, HasSubstr(".txt: new|2\n"));
    EXPECT_EQ(Told(), "another program has changed it; the row is kept in " + kept.substr(0, kept.find(':')));
    EXPECT_EQ(TableRowCount(), 4);
    EXPECT_THAT(Table.TableValues, ElementsAre(u"moved", u"9")) << "the form goes on with what is there";
}

TEST_F(SharedTable, ThatIsTooShortOrHasOtherColumnsIsLeftAsItIs) {
    for (const std::string theirs : {"A|B\na|1\n", "", "A|C|B\na||1\nb|2\nc||3\n"}) {
        SCOPED_TRACE(theirs);
        Device.Did.Unsaved.clear();
        Device.Folder.Put("Quorin/t.txt", "A|B\na|1\nb|2\nc|3\n");
        OpenTable(u".\\Quorin\\t.txt", u"r", u"TEXT", u"QVRN");
        GotoRow(2);
        ReplaceBy(theirs);
        Save(u"new");
        EXPECT_EQ(Bytes(), theirs);
        const std::string kept = Kept();
        EXPECT_THAT(kept, HasSubstr(": new|2\n"));
        EXPECT_THAT(Told(), HasSubstr(kept.substr(0, kept.find(':'))));
        files::remove(Path("Quorin/" + kept.substr(0, kept.find(':'))));
    }
}

TEST_F(SharedTable, EmptiedOrCutInPlaceIsLeftAsItIsAndTold) {
    for (const std::string theirs : {"", "A|B\n"}) {
        SCOPED_TRACE(theirs);
        Device.Did.Unsaved.clear();
        Device.Folder.Put("Quorin/t.txt", "A|B\na|1\nb|2\nc|3\n");
        OpenTable(u".\\Quorin\\t.txt", u"r", u"TEXT", u"QVRN");
        GotoRow(2);
        Device.Folder.Put("Quorin/t.txt", theirs);
        Save(u"new");
        EXPECT_EQ(Bytes(), theirs);
        const std::string kept = Kept();
        EXPECT_THAT(Told(), HasSubstr(kept.substr(0, kept.find(':'))));
        files::remove(Path("Quorin/" + kept.substr(0, kept.find(':'))));
    }
}

TEST_F(SharedTable, AppendedToInPlaceTakesTheRowAndCountsTheOthers) {
    Device.Folder.Put("Quorin/t.txt", "A|B\na|1\nb|2\nc|3\nd|4\n");
    Save(u"new");
    EXPECT_EQ(Bytes(), "A|B\na|1\nnew|2\nc|3\nd|4\n");
    EXPECT_EQ(TableRowCount(), 4);
    EXPECT_THAT(Device.Did.Unsaved, IsEmpty());
}

TEST_F(SharedTable, DeletedByAnotherProgramIsNotPutBack) {
    files::remove(Path("Quorin/t.txt"));
    Save(u"new");
    EXPECT_FALSE(Device.Folder.Has("Quorin/t.txt"));
    EXPECT_THAT(Kept(), HasSubstr(": new|2\n"));
    EXPECT_THAT(Told(), HasSubstr("the row is kept in"));
}

TEST_F(SharedTable, HasARowDeletedOnlyWhereItIsTheOneOnTheScreen) {
    ReplaceBy("A|B\na|1\nother|9\nb|2\n");
    DeleteRow();
    EXPECT_EQ(Bytes(), "A|B\na|1\nother|9\nb|2\n");
    EXPECT_EQ(Told(), "another program has changed it");
    EXPECT_EQ(Kept(), "");
    GotoRow(3);
    ReplaceBy("A|B\nmore|0\nother|9\nb|2\n");
    DeleteRow();
    EXPECT_EQ(Bytes(), "A|B\nmore|0\nother|9\n");
    EXPECT_EQ(TableRowCount(), 2);
}

TEST_F(SharedTable, GetsItsNewRowsBehindThoseOfOthers) {
    ReplaceBy("A|B\na|1\nb|2\nc|3\nd|4\n");
    EXPECT_TRUE(AddRow(-1));
    EXPECT_EQ(Bytes(), "A|B\na|1\nb|2\nc|3\nd|4\n|\n");
    EXPECT_EQ(Table.TableRowIndex, 5);
    ReplaceBy("OTHER\nx\n");
    EXPECT_FALSE(AddRow(-1));
    EXPECT_EQ(Bytes(), "OTHER\nx\n");
    EXPECT_EQ(Told(), "another program has changed it");
}

// The folder.

TEST_F(SharedTable, WhoseRootIsMovedAwayTellsAndMakesNothing) {
    files::rename(Path(""), Device.Folder.Path().string() + ".away");
    Save(u"new");
    EXPECT_FALSE(files::exists(Device.Folder.Path()));
    files::rename(Device.Folder.Path().string() + ".away", Device.Folder.Path());
    EXPECT_EQ(Told(), "its folder is gone");
    EXPECT_EQ(Bytes(), "A|B\na|1\nb|2\nc|3\n");
    EXPECT_EQ(Kept(), "");
    Save(u"again"); // the same folder is back
    EXPECT_EQ(Bytes(), "A|B\na|1\nagain|2\nc|3\n");
}

/// As with a mount point, which is an empty folder when the card is out.
TEST_F(SharedTable, WhoseFolderIsAnotherOneNowTellsAndMakesNothingInIt) {
    for (const char* folder : {"Quorin", ""}) {
        SCOPED_TRACE(folder);
        Device.Did.Unsaved.clear();
        const files::path there = Device.Folder.Path() / folder;
        const files::path here = *folder == 0 ? Device.Folder.Path() : there;
        const std::string away = Device.Folder.Path().string() + ".away";
        files::rename(here, away);
        files::create_directory(here);
        Save(u"new");
        EXPECT_TRUE(files::is_empty(here));
        EXPECT_TRUE(AddRow(-1) == false);
        DeleteRow();
        EXPECT_TRUE(files::is_empty(here));
        EXPECT_THAT(Device.Did.Unsaved, SizeIs(3));
        EXPECT_THAT(Device.Did.Unsaved, testing::Each(testing::Pair(u"t.txt", u"its folder is gone")));
        files::remove(here);
        files::rename(away, here);
        EXPECT_EQ(Bytes(), "A|B\na|1\nb|2\nc|3\n");
        GotoRow(2);
    }
}

/// Another card is another folder: a table belongs to the folder that it was opened in last.
TEST_F(SharedTable, OpenedAnewBelongsToTheFolderThatIsThereThen) {
    files::rename(Path("Quorin"), Path("away"));
    Device.Folder.Put("Quorin/t.txt", "A|B\nx|1\n");
    OpenTable(u".\\Quorin\\t.txt", u"r", u"TEXT", u"QVRN");
    FirstRow();
    Save(u"new");
    EXPECT_EQ(Bytes(), "A|B\nnew|1\n");
    EXPECT_THAT(Device.Did.Unsaved, IsEmpty());
}

TEST_F(SharedTable, KeepsNoFolderOpenBetweenTwoOperations) {
    int folders = 0;
    for (const auto& entry : files::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        const files::path target = files::read_symlink(entry.path(), ignored);
        folders += target == Path("Quorin") ? 1 : 0;
    }
    EXPECT_EQ(folders, 0);
}

/// SQLite would go on writing into a file that was moved. The program must not.
TEST(SharedDatabase, WhoseRootIsAnotherOneNowTellsAndIsLeftAsItIs) {
    support::TestDevice device;
    modQuorin::SetFilePaths();
    const Text name = u".\\Quorin\\t.pdb";
    CreateTable(name, u"A|B", u"r", u"TEXT", u"QVRN");
    ASSERT_TRUE(AddRow(-1));
    SetField(u"A", u"old");
    SaveRow();
    const std::string away = device.Folder.Path().string() + ".away";
    files::rename(device.Folder.Path(), away);
    files::create_directory(device.Folder.Path());
    SetField(u"A", u"new");
    SaveRow();
    EXPECT_FALSE(AddRow(-1));
    DeleteRow();
    EXPECT_THAT(device.Did.Unsaved, SizeIs(3));
    EXPECT_THAT(device.Did.Unsaved, testing::Each(testing::Pair(u"t", u"its folder is gone")));
    EXPECT_TRUE(files::is_empty(device.Folder.Path()));
    CloseTable();
    files::remove(device.Folder.Path());
    files::rename(away, device.Folder.Path());
    OpenTable(name, u"r", u"TEXT", u"QVRN");
    EXPECT_EQ(TableRowCount(), 1);
    FirstRow();
    EXPECT_EQ(GetField(u"A"), u"old");
}

} // namespace
} // namespace modFileSystem
