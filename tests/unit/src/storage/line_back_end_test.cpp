// SPDX-License-Identifier: MIT
// A kind of storage is one row of routines: the layers above it use nothing else of it.
#include "src/storage/line_back_end.h"

#include "src/storage/line_files.h"
#include "tests/support/test_device.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace modFileSystem {
namespace {

std::vector<Text> KeptTexts;
int OpenReadings = 0;

std::int32_t KeptCount() {
    return static_cast<std::int32_t>(KeptTexts.size());
}

const LineBackEnd KeptLines = {
    .IsDatabase = false,
    .Takes = [](const FileHandle&) { return true; },
    .Name = [](FileHandle&) {},
    .Open = [](FileHandle&) { return true; },
    .Close = [](FileHandle&) { KeptTexts = {u"closed"}; },
    .DropAll = [] {},
    .Append =
        [](FileHandle&, const Text& text) {
            KeptTexts.push_back(text);
            return true;
        },
    .Seek = [](FileHandle&, std::int32_t line) { return line <= KeptCount() ? line : 0; },
    .Read =
        [](FileHandle& handle, std::int32_t line, Text& text) {
            text = KeptTexts[static_cast<std::size_t>(line) - 1];
            handle.nextLine = line + 1;
        },
    .Count = [](FileHandle&) { return KeptCount(); },
    .Change =
        [](FileHandle&, std::int32_t line, const Text& text) {
            KeptTexts[static_cast<std::size_t>(line) - 1] = text;
            return true;
        },
    .Insert =
        [](FileHandle&, std::int32_t line, InsertPosition position, const Text& text) {
            KeptTexts.insert(KeptTexts.begin() + line - (position == InsertPosition::Before ? 1 : 0), text);
            return true;
        },
    .Delete =
        [](FileHandle&, std::int32_t line) {
            KeptTexts.erase(KeptTexts.begin() + line - 1);
            return true;
        },
    .BeginReading =
        [](FileHandle&) {
            ++OpenReadings;
            return platform::NoError;
        },
    .EndReading = [](const FileHandle&) { --OpenReadings; },
    .Stamp = [](const FileHandle&) { return platform::FileStamp{.Identity = 7}; },
    .AnotherHasChanged = [](const FileHandle&) { return true; },
    .Put =
        [](const FileHandle&, const std::vector<Text>& lines) {
            KeptTexts = lines;
            return platform::NoError;
        },
    .Remove = [](const FileHandle&) { return platform::NoError; },
    .List = [](const Text&, const Text&, const Text&) { return true; },
};

class ThirdKindOfLines : public testing::Test {
protected:
    ThirdKindOfLines() {
        KeptTexts.clear();
        OpenReadings = 0;
        Open();
    }
    void Open() {
        File.backEnd = &KeptLines;
        File.slot = 1;
        File.valid = true;
    }
    support::TestDevice Device;
    FileHandle File;
};

TEST_F(ThirdKindOfLines, TakesEveryOperation) {
    EXPECT_EQ(WriteFileLine(File, u"one"), 3);
    EXPECT_EQ(WriteFileLine(File, u"two"), 3);
    EXPECT_TRUE(ChangeFileLine(File, 1, u"first"));
    EXPECT_TRUE(InsertFileLine(File, 1, InsertPosition::After, u"second"));
    EXPECT_TRUE(DeleteFileLine(File, 3));
    EXPECT_EQ(KeptTexts, (std::vector<Text>{u"first", u"second"}));
    EXPECT_EQ(FileLineCount(File), 2);
    EXPECT_EQ(SeekFileLine(File, 3), 0);
    std::int32_t line = 2;
    EXPECT_EQ(ReadFileLine(File, line), u"second");
    EXPECT_EQ(FileStampOf(File).Identity, 7U);
    EXPECT_TRUE(AnotherHasChanged(File));
}

TEST_F(ThirdKindOfLines, IsPutAsAWhole) {
    EXPECT_EQ(File.backEnd->Put(File, {u"a", u"b"}), platform::NoError);
    EXPECT_EQ(KeptTexts, (std::vector<Text>{u"a", u"b"}));
}

TEST_F(ThirdKindOfLines, IsReadBetweenABeginningAndAnEnd) {
    {
        const FileReading reading(File);
        EXPECT_EQ(OpenReadings, 1);
    }
    EXPECT_EQ(OpenReadings, 0);
}

TEST_F(ThirdKindOfLines, MayBeClosedWhileItIsRead) {
    {
        const FileReading reading(File);
        CloseFile(File);
    }
    EXPECT_EQ(OpenReadings, 1) << "the closing has ended it";
}

TEST_F(ThirdKindOfLines, IsNotEndedByAReadingOfTheFileBefore) {
    {
        const FileReading reading(File);
        CloseFile(File);
        Open();
    }
    EXPECT_EQ(OpenReadings, 1);
}

TEST_F(ThirdKindOfLines, IsClosed) {
    CloseFile(File);
    EXPECT_EQ(KeptTexts, std::vector<Text>{u"closed"});
    EXPECT_FALSE(File.valid);
}

TEST(LineBackEnds, TheLastOneTakesWhateverNoOtherDoes) {
    const support::TestDevice device;
    FileHandle file;
    file.path = u"nowhere\\";
    EXPECT_TRUE(LineBackEnds.back()->Takes(file));
}

} // namespace
} // namespace modFileSystem
