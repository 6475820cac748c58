// SPDX-License-Identifier: MIT
// What a text file and a line database have in common: one suite, run over both.
#include "src/storage/line_files.h"

#include "src/storage/settings.h"
#include "tests/support/test_device.h"
#include "tests/unit/src/storage/line_kinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modFileSystem {
namespace {

using modStringTools::NumberText;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

class LineFile : public testing::TestWithParam<LineKind> {
protected:
    LineFile() { modQuorin::SetFilePaths(); }
    ~LineFile() override { CloseFile(File); }

    Text Name() const { return GetParam().File; }
    void Open(const char16_t* mode) { OpenFile(File, Name(), mode, u"TEXT", u"QVRN"); }
    void Write(const std::vector<Text>& lines) {
        Open(u"w");
        for (const Text& line : lines)
            WriteFileLine(File, line);
    }
    void WriteTen() {
        Open(u"w");
        for (std::int32_t i = 1; i <= 10; ++i)
            WriteFileLine(File, u"This is Line " + NumberText(i));
    }
    Text Read(std::int32_t line) { return ReadFileLine(File, line); }
    std::vector<Text> Lines() {
        std::vector<Text> lines;
        const std::int32_t count = FileLineCount(File);
        for (std::int32_t line = 1; line <= count; ++line)
            lines.push_back(Read(line));
        return lines;
    }

    support::TestDevice Device;
    FileHandle File;
};

TEST_P(LineFile, SelfTestOfTheDeviceGoesAsExpected) {
    WriteTen();
    EXPECT_EQ(FileLineCount(File), 10);
    EXPECT_TRUE(ChangeFileLine(File, 3, u"A brand new line 3!"));
    EXPECT_TRUE(DeleteFileLine(File, 5));
    EXPECT_FALSE(InsertFileLine(File, 10, InsertPosition::After, u"Inserted after 10"));
    EXPECT_TRUE(InsertFileLine(File, 2, InsertPosition::Before, u"Inserted before 2"));
    EXPECT_THAT(Lines(), ElementsAre(u"This is Line 1", u"Inserted before 2", u"This is Line 2", u"A brand new line 3!",
                                     u"This is Line 4", u"This is Line 6", u"This is Line 7", u"This is Line 8",
                                     u"This is Line 9", u"This is Line 10"));
}

TEST_P(LineFile, WriteGivesTheNumberOfCharacters) {
    Open(u"w");
    EXPECT_EQ(WriteFileLine(File, u"abc"), 3);
    EXPECT_EQ(WriteFileLine(File, u""), 0);
    EXPECT_EQ(FileLineCount(File), 2);
}

TEST_P(LineFile, LinesOutsideAreEmptyLikeAnEmptyLine) {
    Write({u"a", u"", u"c"});
    EXPECT_EQ(Read(0), u"");
    EXPECT_EQ(Read(2), u"");
    EXPECT_EQ(Read(4), u"");
    EXPECT_EQ(Read(3), u"c");
}

TEST_P(LineFile, SeekReachesTheLastLineAndNoFurther) {
    Write({u"a", u"b", u"c"});
    EXPECT_EQ(SeekFileLine(File, 3), 3);
    EXPECT_EQ(File.nextLine, 3);
    EXPECT_EQ(SeekFileLine(File, 4), 0);
    EXPECT_EQ(File.nextLine, 0);
    EXPECT_EQ(SeekFileLine(File, 0), 0);
    EXPECT_EQ(SeekFileLine(File, -1), 0);
}

TEST_P(LineFile, ReadOfMinusOneGoesOnAndTellsTheLine) {
    Write({u"a", u"b", u"c"});
    SeekFileLine(File, 2);
    std::int32_t line = -1;
    EXPECT_EQ(ReadFileLine(File, line), u"b");
    EXPECT_EQ(line, 2);
    line = -1;
    EXPECT_EQ(ReadFileLine(File, line), u"c");
    EXPECT_EQ(line, 3);
}

TEST_P(LineFile, OpenedForReadingItReadsNothingBeforeASeek) {
    Write({u"a"});
    CloseFile(File);
    Open(u"r");
    ASSERT_TRUE(File.valid);
    std::int32_t line = -1;
    EXPECT_EQ(ReadFileLine(File, line), u"");
    EXPECT_EQ(line, 0);
    EXPECT_EQ(Read(1), u"a");
}

TEST_P(LineFile, MissingOneIsMadeForAppendingAndNotForReading) {
    Open(u"r");
    EXPECT_FALSE(File.valid);
    Open(u"a");
    EXPECT_TRUE(File.valid);
    CloseFile(File);
    Open(u"r");
    EXPECT_TRUE(File.valid);
    EXPECT_EQ(FileLineCount(File), 0);
}

TEST_P(LineFile, OpenedForAppendingItGoesOnBehindTheLastLine) {
    Write({u"a"});
    CloseFile(File);
    Open(u"a");
    WriteFileLine(File, u"b");
    EXPECT_THAT(Lines(), ElementsAre(u"a", u"b"));
}

TEST_P(LineFile, OpenedForWritingItBeginsAnew) {
    Write({u"a", u"b"});
    CloseFile(File);
    Write({u"c"});
    EXPECT_THAT(Lines(), ElementsAre(u"c"));
}

TEST_P(LineFile, ChangeOfALineThatIsNotThereIsRefused) {
    Write({u"a"});
    EXPECT_FALSE(ChangeFileLine(File, 2, u"x"));
    EXPECT_FALSE(DeleteFileLine(File, 2));
    EXPECT_FALSE(InsertFileLine(File, 2, InsertPosition::Before, u"x"));
    EXPECT_THAT(Lines(), ElementsAre(u"a"));
}

TEST_P(LineFile, InsertsBeforeTheFirstAndBehindTheLast) {
    Write({u"b"});
    EXPECT_TRUE(InsertFileLine(File, 1, InsertPosition::Before, u"a"));
    EXPECT_TRUE(InsertFileLine(File, 2, InsertPosition::After, u"c"));
    EXPECT_THAT(Lines(), ElementsAre(u"a", u"b", u"c"));
}

TEST_P(LineFile, WithoutItsOnlyLineRefusesEveryEdit) {
    Write({u"a"});
    EXPECT_TRUE(DeleteFileLine(File, 1));
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(SeekFileLine(File, 1), 0);
    EXPECT_FALSE(ChangeFileLine(File, 1, u"x"));
    EXPECT_FALSE(InsertFileLine(File, 1, InsertPosition::Before, u"x"));
    EXPECT_FALSE(DeleteFileLine(File, 1));
}

TEST_P(LineFile, KeepsAnyText) {
    const std::vector<Text> lines = {u"|", u"\"quoted\"", u"\u00E4\u20AC \U0001F600", Text{0xDCFF, 0xDC80} + u" raw",
                                     u"tab\tand blank "};
    Write(lines);
    CloseFile(File);
    Open(u"r");
    EXPECT_EQ(Lines(), lines);
}

TEST_P(LineFile, IsDeletedByItsName) {
    Write({u"a"});
    CloseFile(File);
    EXPECT_TRUE(DeleteFile(Name()));
    EXPECT_FALSE(DeleteFile(Name()));
    Open(u"r");
    EXPECT_FALSE(File.valid);
}

TEST_P(LineFile, FiveAreOpenAtATimeAndASixthStaysAsItWas) {
    Write({u"a"});
    CloseFile(File);
    FileHandle five[5];
    for (FileHandle& handle : five) {
        OpenFile(handle, Name(), u"r", u"TEXT", u"QVRN");
        EXPECT_TRUE(handle.valid);
    }
    FileHandle sixth;
    sixth.name = u"untouched";
    OpenFile(sixth, Name(), u"r", u"TEXT", u"QVRN");
    EXPECT_FALSE(sixth.valid);
    EXPECT_EQ(sixth.name, u"untouched");
    for (FileHandle& handle : five)
        CloseFile(handle);
    OpenFile(sixth, Name(), u"r", u"TEXT", u"QVRN");
    EXPECT_TRUE(sixth.valid);
    CloseFile(sixth);
}

TEST_P(LineFile, OperationsOnAClosedHandleDoNothing) {
    EXPECT_EQ(WriteFileLine(File, u"a"), 0);
    EXPECT_EQ(SeekFileLine(File, 1), 0);
    EXPECT_EQ(Read(1), u"");
    EXPECT_FALSE(ChangeFileLine(File, 1, u"a"));
    EXPECT_EQ(FileLineCount(File), 0);
}

TEST_P(LineFile, ClosingKeepsTypeAndCreatorAlone) {
    Write({u"a"});
    CloseFile(File);
    EXPECT_FALSE(File.valid);
    EXPECT_EQ(File.name, u"");
    EXPECT_EQ(File.path, u"");
    EXPECT_EQ(File.mode, u"");
    EXPECT_EQ(File.nextLine, 0);
    EXPECT_EQ(File.fileType, u"TEXT");
    EXPECT_EQ(File.creator, u"QVRN");
}

TEST_P(LineFile, OpeningAndClosingLeaveNothingOfTheFileBefore) {
    const auto expectEmpty = [this](const char* after) {
        EXPECT_EQ(File.name, u"") << after;
        EXPECT_EQ(File.path, u"") << after;
        EXPECT_EQ(File.mode, u"") << after;
        EXPECT_EQ(File.slot, 0) << after;
        EXPECT_EQ(File.nextLine, 0) << after;
        EXPECT_EQ(File.recordNumber, 0) << after;
        EXPECT_FALSE(File.isDatabase) << after;
    };
    const FileHandle used{3, u"old", u".\\Old\\", true, 7, 8, false, u"a", u"TEXT", u"QVRN"};
    File = used;
    Open(u"r");
    expectEmpty("an opening");
    EXPECT_EQ(File.error, platform::FileNotFound);
    File = used;
    CloseFile(File);
    expectEmpty("a close");
    EXPECT_EQ(File.fileType, u"TEXT");
    Write({u"a"});
    CloseFile(File);
    File = used;
    File.kept = true;
    Open(u"r");
    EXPECT_TRUE(File.valid);
    EXPECT_FALSE(File.kept);
    EXPECT_EQ(File.nextLine, 0) << "a read of the next line would find one";
    EXPECT_EQ(File.recordNumber, 0);
}

/// The slot of the scratch file holds no other file, because a rewrite would use that file's lines as its own.
TEST_P(LineFile, IsTheScratchFileByTypeAndCreatorTogether) {
    struct Row {
        const char16_t* Type;
        const char16_t* Creator;
        bool IsScratch;
    };
    for (const Row& row : {Row{u"temp", u"QVRN", false}, Row{u"TEXT", u"temp", false}, Row{u"temp", u"temp", true}}) {
        OpenFile(File, Name(), u"w", row.Type, row.Creator);
        ASSERT_TRUE(File.valid);
        EXPECT_EQ(File.slot == 0, row.IsScratch);
        CloseFile(File);
    }
}

INSTANTIATE_TEST_SUITE_P(On, LineFile, testing::ValuesIn(LineKinds), KindName);

TEST(LineFileNames, WithoutAFolderNeverOpen) {
    support::TestDevice device;
    FileHandle file;
    OpenFile(file, u"bare.txt", u"w", u"TEXT", u"QVRN");
    EXPECT_FALSE(file.valid);
    EXPECT_FALSE(device.Folder.Has("bare.txt"));
}

struct NameRow {
    std::int32_t DeviceType;
    const char16_t* FullName;
    bool Database;
    const char16_t* Name;
};

class NameOfALineFile : public testing::TestWithParam<NameRow> {};

TEST_P(NameOfALineFile, DecidesWhereItLies) {
    backends::DeviceOptions options;
    options.DeviceType = GetParam().DeviceType;
    support::TestDevice device(options);
    for (const char* folder : {"Card/keep", "DEVICE/keep", "device/keep"})
        device.Folder.Put(folder, "");
    FileHandle file;
    OpenFile(file, GetParam().FullName, u"w", u"TEXT", u"QVRN");
    ASSERT_TRUE(file.valid);
    EXPECT_EQ(file.isDatabase, GetParam().Database);
    EXPECT_EQ(file.name, GetParam().Name);
    CloseFile(file);
}

// A file as a whole.

class WholeFile : public LineFile {
protected:
    platform::ErrorNumber Put(const std::vector<Text>& lines) { return PutLines(Name(), u"TEXT", u"QVRN", lines); }
    std::vector<Text> InFile() {
        std::vector<Text> lines;
        ReadError = ReadLines(Name(), u"TEXT", u"QVRN", lines);
        return lines;
    }
    platform::ErrorNumber ReadError = platform::NoError;
};

TEST_P(WholeFile, IsReadAsItWasPut) {
    EXPECT_EQ(Put({u"a", u"", u"c"}), platform::NoError);
    EXPECT_THAT(InFile(), ElementsAre(u"a", u"", u"c"));
    EXPECT_EQ(Put({u"shorter"}), platform::NoError);
    EXPECT_THAT(InFile(), ElementsAre(u"shorter"));
    EXPECT_EQ(Put({}), platform::NoError);
    EXPECT_THAT(InFile(), IsEmpty());
}

TEST_P(WholeFile, IsOpenedAndAppendedLikeAnyOther) {
    ASSERT_EQ(Put({u"a"}), platform::NoError);
    Open(u"a");
    EXPECT_EQ(WriteFileLine(File, u"b"), 1);
    EXPECT_THAT(Lines(), ElementsAre(u"a", u"b"));
}

TEST_P(WholeFile, IsMissingUntilItIsPut) {
    EXPECT_THAT(InFile(), IsEmpty());
    EXPECT_EQ(ReadError, platform::FileNotFound);
}

TEST_P(WholeFile, IsTheOldOneWhicheverStepFails) {
    for (const bool isNew : {true, false}) {
        const std::vector<Text> old = isNew ? std::vector<Text>() : std::vector<Text>{u"old", u"older"};
        bool failed = true;
        for (std::int32_t good = 0; failed; ++good) {
            DeleteFile(Name());
            if (!isNew) {
                ASSERT_EQ(Put(old), platform::NoError);
            }
            Device.Host.faults.FailNext(1, good);
            failed = Put({u"new", u"newer", u"newest"}) != platform::NoError;
            Device.Host.faults.FailNext(0);
            EXPECT_EQ(InFile(), failed ? old : std::vector<Text>({u"new", u"newer", u"newest"})) << good;
            EXPECT_EQ(ReadError == platform::NoError, !isNew || !failed) << good;
            EXPECT_THAT(Device.Did.Unsaved, IsEmpty());
            ASSERT_LT(good, 100);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeFile, testing::ValuesIn(LineKinds), KindName);

INSTANTIATE_TEST_SUITE_P(Names, NameOfALineFile,
                         testing::Values(NameRow{0, u".\\drivers.txt", false, u"drivers.txt"},
                                         NameRow{0, u".\\test.PDB", true, u"test"},
                                         NameRow{3, u"Card:\\test.pdb", true, u"test"},
                                         NameRow{1, u"Device:\\drivers.txt", true, u"drivers"},
                                         NameRow{1, u"Device:\\drivers", true, u"drivers"},
                                         NameRow{1, u"Device:\\test.pdb", true, u"test"},
                                         NameRow{1, u"DEVICE:\\drivers.txt", false, u"drivers.txt"},
                                         NameRow{1, u"device:\\test.pdb", false, u"test.txt"},
                                         NameRow{1, u"Card:\\test.pdb", false, u"test.txt"},
                                         NameRow{1, u"Card:\\test.Pdb", false, u"test.txt"},
                                         NameRow{1, u"Card:\\drivers.txt", false, u"drivers.txt"}));

/// A deletion finds a file as an opening does: on a card of a Palm OS device all files are text files.
TEST(LineFileNames, OfADeletionMeanTheFileThatAnOpeningMeans) {
    backends::DeviceOptions options;
    options.DeviceType = 1;
    support::TestDevice device(options);
    device.Folder.Put("Card/test.txt", "a\n");
    device.Folder.Put("Card/test.pdb", "b\n");
    EXPECT_TRUE(DeleteFile(u"Card:\\test.pdb"));
    EXPECT_FALSE(device.Folder.Has("Card/test.txt"));
    EXPECT_TRUE(device.Folder.Has("Card/test.pdb"));
}

TEST(LineFileNames, TooShortToLoseTheirEndingStopTheProgram) {
    backends::DeviceOptions options;
    options.DeviceType = 1;
    support::TestDevice device(options);
    FileHandle file;
    EXPECT_NE(support::FailureOf([&file] { OpenFile(file, u"Device:\\a.b", u"w", u"TEXT", u"QVRN"); }), u"");
}

} // namespace
} // namespace modFileSystem
