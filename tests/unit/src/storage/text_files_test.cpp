// SPDX-License-Identifier: MIT
// What is special about line files that are text files: the rewrite through the scratch file, and bytes.
#include "src/storage/line_files.h"

#include "src/storage/settings.h"
#include "tests/support/test_device.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace modFileSystem {
namespace {

using testing::HasSubstr;

class TextFile : public testing::Test {
protected:
    TextFile() { modQuorin::SetFilePaths(); }
    ~TextFile() override { CloseFile(File); }

    void Put(const std::string& bytes) { Device.Folder.Put("Quorin/file.txt", bytes); }
    std::string Bytes() { return Device.Folder.Bytes("Quorin/file.txt"); }
    void Open(const char16_t* mode) { OpenFile(File, u".\\Quorin\\file.txt", mode, u"TEXT", u"QVRN"); }
    std::vector<std::string> OtherFiles() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Device.Folder.Path() / "Quorin")) {
            if (entry.path().filename() != "file.txt")
                names.push_back(entry.path().filename().string());
        }
        return names;
    }

    support::TestDevice Device;
    FileHandle File;
};

/// Other tools recognise UTF-8 by it.
TEST_F(TextFile, KeepsTheByteOrderMarkAtItsHeadAndNowhereElse) {
    const std::string mark = "\xEF\xBB\xBF";
    Put(mark + "a\nb\n");
    Open(u"a");
    EXPECT_TRUE(ChangeFileLine(File, 2, u"B"));
    EXPECT_EQ(Bytes(), mark + "a\nB\n");
    EXPECT_TRUE(InsertFileLine(File, 1, InsertPosition::After, u"c"));
    EXPECT_EQ(Bytes(), mark + "a\nc\nB\n");
    std::int32_t line = 1;
    EXPECT_EQ(ReadFileLine(File, line), u"a");
    EXPECT_TRUE(InsertFileLine(File, 1, InsertPosition::Before, u"first"));
    EXPECT_EQ(Bytes(), "first\na\nc\nB\n");
    CloseFile(File);
    Put(mark + "a\nb\n");
    Open(u"a");
    EXPECT_TRUE(DeleteFileLine(File, 1));
    EXPECT_EQ(Bytes(), "b\n");
}

/// NULs are also replaced in lines that are only copied.
TEST_F(TextFile, IsFreeOfNulsOnceItIsRewritten) {
    Put(std::string("a\0b\nc\nd\0\n", 9));
    Open(u"a");
    EXPECT_TRUE(ChangeFileLine(File, 2, Text(u"C\0", 2)));
    EXPECT_EQ(Bytes(), "a b\nC \nd \n");
}

TEST_F(TextFile, WithALineOfMoreThan64MegabytesIsNotOpened) {
    Put("a\n");
    std::filesystem::resize_file(Device.Folder.Path() / "Quorin/file.txt", 65U << 20U);
    Open(u"a");
    EXPECT_FALSE(File.valid);
    EXPECT_TRUE(File.kept); // so the callers do not create it again
}

TEST_F(TextFile, WritesOneLineFeedALine) {
    Open(u"w");
    WriteFileLine(File, u"a");
    WriteFileLine(File, u"");
    WriteFileLine(File, u"\u00E4");
    CloseFile(File);
    EXPECT_EQ(Bytes(), "a\n\n\xC3\xA4\n");
}

TEST_F(TextFile, RewriteKeepsTheBytesOfEveryOtherLine) {
    Put("one\r\ntwo\xFF\xFE\nthr\xC3\n\nlast\rline");
    Open(u"r");
    EXPECT_TRUE(ChangeFileLine(File, 1, u"1"));
    CloseFile(File);
    EXPECT_EQ(Bytes(), "1\ntwo\xFF\xFE\nthr\xC3\n\nlast\rline\n");
}

TEST_F(TextFile, ReadsLinesEndedByEitherLineEnd) {
    Put("a\r\nb\nc");
    Open(u"r");
    std::int32_t line = 1;
    EXPECT_EQ(FileLineCount(File), 3);
    EXPECT_EQ(ReadFileLine(File, line), u"a");
    line = 3;
    EXPECT_EQ(ReadFileLine(File, line), u"c");
}

TEST_F(TextFile, AppendingAfterALineWithoutAnEndJoinsNothing) {
    Put("a\nb");
    Open(u"a");
    WriteFileLine(File, u"c");
    EXPECT_EQ(FileLineCount(File), 3);
    CloseFile(File);
    EXPECT_EQ(Bytes(), "a\nb\nc\n");
}

TEST_F(TextFile, OfOneEmptyLineHasALine) {
    Put("\n");
    Open(u"r");
    EXPECT_EQ(FileLineCount(File), 1);
    EXPECT_EQ(SeekFileLine(File, 1), 1);
    EXPECT_EQ(SeekFileLine(File, 2), 0);
}

TEST_F(TextFile, ThatIsEmptyHasNone) {
    Put("");
    Open(u"r");
    ASSERT_TRUE(File.valid);
    EXPECT_EQ(FileLineCount(File), 0);
    EXPECT_EQ(SeekFileLine(File, 1), 0);
    EXPECT_FALSE(InsertFileLine(File, 1, InsertPosition::Before, u"x"));
}

TEST_F(TextFile, CountLeavesItBehindTheLastLine) {
    Put("a\nb\n");
    Open(u"r");
    FileLineCount(File);
    EXPECT_EQ(File.nextLine, 3);
    std::int32_t line = -1;
    EXPECT_EQ(ReadFileLine(File, line), u"");
    EXPECT_EQ(line, 3);
}

TEST_F(TextFile, WriteMovesTheNextLineOn) {
    Open(u"w");
    EXPECT_EQ(File.nextLine, 1);
    WriteFileLine(File, u"a");
    EXPECT_EQ(File.nextLine, 2);
    CloseFile(File);
    Open(u"a");
    EXPECT_EQ(File.nextLine, 2);
}

TEST_F(TextFile, IsOpenForAppendingAfterAnEdit) {
    Put("a\nb\n");
    Open(u"r");
    EXPECT_TRUE(ChangeFileLine(File, 1, u"x"));
    EXPECT_TRUE(File.valid);
    EXPECT_EQ(File.mode, u"a");
    EXPECT_EQ(File.fileType, u"TEXT");
}

TEST_F(TextFile, PositionIsLostAfterAnEdit) {
    Put("a\nb\n");
    Open(u"r");
    ChangeFileLine(File, 1, u"x");
    EXPECT_EQ(File.nextLine, 0);
    EXPECT_EQ(SeekFileLine(File, 2), 2);
}

TEST_F(TextFile, MayStandInAnotherSlotAfterAnEdit) {
    Put("a\n");
    FileHandle first;
    OpenFile(first, u".\\Quorin\\file.txt", u"r", u"TEXT", u"QVRN");
    Open(u"r");
    EXPECT_EQ(File.slot, 2);
    CloseFile(first);
    ChangeFileLine(File, 1, u"x");
    EXPECT_EQ(File.slot, 1);
}

TEST_F(TextFile, InsertAtAnUnknownPositionLeavesTheScratchFile) {
    Put("a\n");
    Open(u"r");
    EXPECT_FALSE(InsertFileLine(File, 1, InsertPosition{3}, u"x"));
    CloseFile(File);
    EXPECT_EQ(Bytes(), "a\n");
    EXPECT_EQ(OtherFiles().size(), 1U);
}

TEST_F(TextFile, EditLeavesNoScratchFileBehind) {
    Put("a\nb\n");
    Open(u"r");
    EXPECT_TRUE(DeleteFileLine(File, 1));
    EXPECT_TRUE(OtherFiles().empty());
}

TEST_F(TextFile, ScratchFileHasANameOfEightDigitsThatIsNotTaken) {
    Put("a\n");
    Open(u"r");
    InsertFileLine(File, 1, InsertPosition{3}, u"x");
    InsertFileLine(File, 1, InsertPosition{3}, u"x"); // the clock does not move, so the first name is tried again
    const std::vector<std::string> names = OtherFiles();
    ASSERT_EQ(names.size(), 2U);
    for (const std::string& name : names) {
        EXPECT_EQ(name.size(), 12U);
        EXPECT_EQ(name.find_first_not_of("0123456789"), 8U);
        EXPECT_EQ(name.substr(8), ".txt");
    }
}

TEST_F(TextFile, ScratchFileThatCantBeMadeMakesTheEditFail) {
    Put("a\n");
    Open(u"r");
    Device.Host.faults.FailNext(1);
    EXPECT_FALSE(ChangeFileLine(File, 1, u"x"));
    EXPECT_EQ(Bytes(), "a\n");
    EXPECT_TRUE(ChangeFileLine(File, 1, u"x"));
}

/// Each write operation of an edit fails in turn. In each case the file is the old one or the new one.
TEST_F(TextFile, FullDiskDuringAnEditLeavesTheOldFileOrTheNewOne) {
    const std::string before = "a\nb\nc\n";
    const std::string after = "a\nB\nc\n";
    bool done = false;
    for (std::int32_t good = 0; !done; ++good) {
        SCOPED_TRACE(good);
        ASSERT_LT(good, 20);
        Put(before);
        Open(u"r");
        Device.Host.faults.FailNext(-1, good);
        bool failed = false;
        try {
            done = ChangeFileLine(File, 2, u"B");
        } catch (const support::ProgramOver& over) {
            EXPECT_THAT(modStringTools::ToBytes(over.Failure), HasSubstr("the disk is full"));
            failed = true;
        }
        Device.Host.faults.FailNext(0);
        Slots = {};
        File = {};
        EXPECT_EQ(Bytes(), done ? after : before);
        EXPECT_EQ(failed, !done && good > 0); // with 0 the scratch file can't even be created
    }
}

TEST_F(TextFile, FailedCopyLeavesTheNewStateInTheScratchFile) {
    Put("a\n");
    Open(u"r");
    Device.Host.faults.FailNext(1, 3); // creation, line and closing succeed; the copy fails
    support::FailureOf([this] { ChangeFileLine(File, 1, u"new"); });
    EXPECT_EQ(Bytes(), "a\n");
    const std::vector<std::string> scratch = OtherFiles();
    ASSERT_EQ(scratch.size(), 1U);
    EXPECT_EQ(Device.Folder.Bytes("Quorin/" + scratch[0]), "new\n");
    File = {};
}

/// Each read operation of an edit fails once, in turn.
TEST_F(TextFile, ReadThatFailsNeverCostsALine) {
    std::string whole;
    for (int line = 1; line <= 40; ++line)
        whole += "line " + std::to_string(line) + "\n";
    int failures = 0;
    for (std::int32_t good = 0;; ++good) {
        Put(whole);
        Open(u"r");
        Device.Host.faults.FailNextReads(1, good);
        bool failed = false;
        try {
            ChangeFileLine(File, 2, u"another line");
        } catch (const support::ProgramOver& over) {
            failed = over.Why == support::ProgramOver::Reason::Failed;
            EXPECT_THAT(modStringTools::ToBytes(over.Failure),
                        testing::AnyOf(HasSubstr("Can't read"), HasSubstr("Can't open")));
        }
        Device.Host.faults.FailNextReads(0);
        EXPECT_TRUE(failed || File.valid) << "what is written next would go nowhere, after " << good << " good reads";
        CloseFile(File);
        CloseFile(Slots.TempFile);
        for (const std::string& scratch : OtherFiles())
            std::filesystem::remove(Device.Folder.Path() / "Quorin" / scratch);
        std::string changed = whole;
        changed.replace(changed.find("line 2\n"), 6, "another line");
        EXPECT_THAT(Bytes(), testing::AnyOf(whole, changed)) << "after " << good << " good reads";
        if (!failed && Bytes() == changed)
            break; // all reads have succeeded
        failures += failed ? 1 : 0;
    }
    EXPECT_GT(failures, 40); // each line is read at least once
}

/// At each moment of an edit in turn, another program cuts the file. The rest of the file stays, and what was copied
/// until then is kept in the scratch file.
TEST_F(TextFile, CutWhileItIsCopiedStaysSoAndLeavesTheScratchFile) {
    const std::string cut = "A|B\n1|one\n2|two\n";
    std::string whole = cut;
    while (whole.size() < 1'000'000)
        whole += "3|a line of some length, so that the whole is read in more than one piece\n";
    std::size_t halfCopied = 0;
    for (int moment = 1;; ++moment) {
        Put(whole);
        Open(u"r");
        int passed = 0;
        Device.Host.faults.Working = [&] {
            if (++passed == moment)
                std::filesystem::resize_file(Device.Folder.Path() / "Quorin/file.txt", cut.size());
        };
        const bool changed = ChangeFileLine(File, 2, u"another line");
        Device.Host.faults.Working = nullptr;
        CloseFile(File);
        for (const std::string& scratch : OtherFiles()) {
            halfCopied += Device.Folder.Bytes("Quorin/" + scratch).find("another line") != std::string::npos ? 1 : 0;
            std::filesystem::remove(Device.Folder.Path() / "Quorin" / scratch);
        }
        if (passed < moment)
            break; // the edit ended earlier
        EXPECT_TRUE(changed || Bytes() == cut) << moment;
    }
    EXPECT_GT(halfCopied, 0U);
}

/// It is not opened for appending, which would write into its middle, and not treated as missing, because it would be
/// created again.
TEST_F(TextFile, ThatAFailingDiskKeepsFromUsIsNotOpened) {
    Put("one\ntwo\nthree\n");
    for (const std::int32_t good : {0, 1}) { // the opening fails, or the count after it
        Device.Host.faults.FailNextReads(1, good);
        Open(u"a");
        EXPECT_FALSE(File.valid);
        EXPECT_TRUE(File.kept);
        EXPECT_EQ(Bytes(), "one\ntwo\nthree\n");
    }
    Open(u"a");
    EXPECT_EQ(WriteFileLine(File, u"four"), 4);
    CloseFile(File);
    EXPECT_EQ(Bytes(), "one\ntwo\nthree\nfour\n");
}

/// The position where the last line ended is wrong once another program has written the file again, even with the same
/// length.
TEST_F(TextFile, ChangedByAnotherIsReadFromItsHeadAgain) {
    Put("A|B\naaaa|bb\ncc|dd\nee|ff\n");
    Open(u"r");
    std::int32_t line = 3;
    EXPECT_EQ(ReadFileLine(File, line), u"cc|dd");
    std::this_thread::sleep_for(std::chrono::milliseconds(30)); // the time of a file changes in steps
    Put("A|B\na|b\ncc|dd\neeeeee|ff\n");
    line = 4;
    EXPECT_EQ(ReadFileLine(File, line), u"eeeeee|ff");
}

} // namespace
} // namespace modFileSystem
