// SPDX-License-Identifier: MIT
// What every file system must do.
#include "tests/conformance/storage_suites.h"

namespace conformance {

using testing::ElementsAre;

namespace {

std::vector<Text> Listing(FileSystem& files, const Text& path) {
    std::unique_ptr<Folder> folder;
    std::vector<Text> names;
    if (files.OpenFolder(path, false, folder) != NoError)
        return {u"no folder"};
    for (Text name = folder->FirstFile(0); !name.empty(); name = folder->NextFile())
        names.push_back(name);
    return names;
}

} // namespace

TEST_P(FilesSuite, MakesAMissingFolderWithThoseAboveIt) {
    Store->MakeFolder(u"Card:\\");
    EXPECT_EQ(ErrorOfOpeningFolder(u"Card:\\PALM\\Programs\\Quorin\\", true), NoError);
    EXPECT_TRUE(Store->HasFolder(u"Card:\\PALM\\Programs\\Quorin\\"));
    EXPECT_EQ(ErrorOfOpeningFolder(u"Card:\\PALM\\Programs\\Quorin\\", true), NoError) << "a second time";
}

/// The card is out: a folder that is created in its place would not be on it.
TEST_P(FilesSuite, MakesNoFolderOnAVolumeThatHasNone) {
    EXPECT_EQ(ErrorOfOpeningFolder(u"Card:\\PALM\\Programs\\Quorin\\", true), FileNotFound);
    EXPECT_EQ(ErrorOfOpeningFolder(u"Card:\\", true), FileNotFound);
    EXPECT_FALSE(Store->HasFolder(u"Card:\\"));
}

TEST_P(FilesSuite, OpensNoMissingFolderWithoutBeingToldToMakeIt) {
    EXPECT_EQ(ErrorOfOpeningFolder(u"Card:\\none\\", false), FileNotFound);
    EXPECT_FALSE(Store->HasFolder(u"Card:\\"));
}

TEST_P(FilesSuite, MakesNoFolderInPlaceOfAFile) {
    Store->Put(u".\\Card", "a file");
    EXPECT_NE(ErrorOfOpeningFolder(u"Card:\\", true), NoError);
    EXPECT_NE(ErrorOfOpeningFolder(u"Card:\\below\\", true), NoError);
    EXPECT_EQ(Store->Bytes(u".\\Card"), "a file");
}

TEST_P(FilesSuite, RefusesAFolderOutside) {
    for (const char16_t* path : {u"..\\outside\\", u".\\..\\outside\\", u"Card:\\..\\..\\outside\\"})
        EXPECT_EQ(ErrorOfOpeningFolder(path, true), PathRefused) << modStringTools::ToBytes(path);
    EXPECT_EQ(ErrorOfOpeningFolder(u"", true), PathRefused);
}

TEST_P(FilesSuite, ListsFullNamesInByteOrder) {
    for (const char16_t* name : {u"b.txt", u"a.txt", u"B.txt", u"\u00E4.txt", u"a b.txt"})
        Store->Put(u"Card:\\" + Text(name), "");
    EXPECT_THAT(Listing(Files(), u"Card:\\"),
                ElementsAre(u"Card:\\B.txt", u"Card:\\a b.txt", u"Card:\\a.txt", u"Card:\\b.txt", u"Card:\\ä.txt"));
}

TEST_P(FilesSuite, ListsNoFolders) {
    Store->Put(u"Card:\\folder\\inner.txt", "");
    Store->Put(u"Card:\\x.txt", "");
    EXPECT_THAT(Listing(Files(), u"Card:\\"), ElementsAre(u"Card:\\x.txt"));
}

TEST_P(FilesSuite, ListsNothingInAnEmptyFolder) {
    Store->MakeFolder(u"Card:\\");
    EXPECT_THAT(Listing(Files(), u"Card:\\"), ElementsAre());
}

TEST_P(FilesSuite, BeginsAListingAnewWithTheFirstFile) {
    Store->Put(u".\\a", "");
    Store->Put(u".\\b", "");
    std::unique_ptr<Folder> folder;
    ASSERT_EQ(Files().OpenFolder(u".\\", false, folder), NoError);
    EXPECT_EQ(folder->FirstFile(0), u".\\a");
    EXPECT_EQ(folder->FirstFile(0), u".\\a");
    EXPECT_EQ(folder->NextFile(), u".\\b");
    EXPECT_EQ(folder->NextFile(), u"");
    EXPECT_EQ(folder->NextFile(), u"");
}

TEST_P(FilesSuite, ListsNamesThatOpenTheFiles) {
    Store->Put(u"Card:\\Gr\xDCF6\xDCDF"
               u"e \u20AC.qvd",
               "x\n"); // two bytes that are not UTF-8
    const auto names = Listing(Files(), u"Card:");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_THAT(AllLines(names[0]), ElementsAre(u"x"));
}

TEST_P(FilesSuite, WritesLinesWithALineFeed) {
    WriteAll(u".\\x.txt", {u"one", u"", u"größer €\xD83D\xDE00"});
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\n\ngr\xC3\xB6\xC3\x9F"
                                         "er \xE2\x82\xAC\xF0\x9F\x98\x80\n");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"one", u"", u"größer €\xD83D\xDE00"));
}

TEST_P(FilesSuite, ReadsBothLineEndsAndALastLineWithoutOne) {
    Store->Put(u".\\x.txt", "one\r\ntwo\nthree\r\n\r\n\nlast");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"one", u"two", u"three", u"", u"", u"last"));
}

TEST_P(FilesSuite, TakesALoneCarriageReturnForAPartOfTheLine) {
    Store->Put(u".\\x.txt", "a\rb\n\r\r\nc\r");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"a\rb", u"\r", u"c\r"));
}

TEST_P(FilesSuite, ReadsNothingAtTheEndOfTheFile) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line = u"old";
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(stream->ReadLine(line), FileNotFound);
    EXPECT_EQ(line, u"");
}

TEST_P(FilesSuite, CountsPositionsInBytes) {
    Store->Put(u".\\x.txt", "\xC3\xA4\r\nb\nc");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line;
    std::vector<std::int64_t> places = {stream->Position()};
    while (stream->ReadLine(line) == NoError)
        places.push_back(stream->Position());
    EXPECT_THAT(places, ElementsAre(0, 4, 6, 7));
    EXPECT_EQ(stream->Size(), 7);
}

TEST_P(FilesSuite, SeeksFromTheStartAndFromTheEnd) {
    Store->Put(u".\\x.txt", "one\ntwo\nthree\n");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line;
    EXPECT_EQ(stream->Seek(0, Origin::End), NoError);
    EXPECT_EQ(stream->Position(), 14);
    EXPECT_EQ(stream->Seek(4, Origin::Start), NoError);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"two");
    EXPECT_EQ(stream->Seek(-6, Origin::End), NoError);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"three");
}

TEST_P(FilesSuite, SeeksNowhereOutsideTheFile) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    ASSERT_EQ(stream->Seek(2, Origin::Start), NoError);
    EXPECT_NE(stream->Seek(5, Origin::Start), NoError);
    EXPECT_NE(stream->Seek(-1, Origin::Start), NoError);
    EXPECT_NE(stream->Seek(1, Origin::End), NoError);
    EXPECT_NE(stream->Seek(-5, Origin::End), NoError);
    EXPECT_EQ(stream->Position(), 2);
}

TEST_P(FilesSuite, SkipsLines) {
    Store->Put(u".\\x.txt", "one\ntwo\r\nthree\nlast");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line;
    EXPECT_EQ(Skipped(*stream, 2), 2);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"three");
    EXPECT_EQ(Skipped(*stream, 10), 1);
    EXPECT_EQ(stream->Position(), stream->Size());
    EXPECT_EQ(Skipped(*stream, 1), 0);
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    EXPECT_EQ(Skipped(*stream, 0), 0);
    EXPECT_EQ(stream->Position(), 0);
}

TEST_P(FilesSuite, TakesLinesAsWritingThemAnewMakesThem) {
    Store->Put(u".\\x.txt", "one\r\n\r\r\n\r\ntwo\xFF\n\nlast\r");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    std::string all;
    std::int64_t count = 0;
    std::string_view lines;
    for (std::int64_t taken = 1; taken > 0; count += taken) {
        ASSERT_EQ(stream->ReadLines(2, lines, taken), NoError);
        all += lines;
    }
    EXPECT_EQ(all, "one\n\r\r\n\ntwo\xFF\n\nlast\r\r\n");
    EXPECT_EQ(count, 6);
    EXPECT_EQ(stream->Position(), stream->Size());
}

TEST_P(FilesSuite, WritesWhatItHasTaken) {
    Store->Put(u".\\from.txt", "one\ntwo\nthree\n");
    Store->Put(u".\\to.txt", "first");
    const auto from = Open(u".\\from.txt", StreamMode::Existing);
    const auto to = Open(u".\\to.txt", StreamMode::Existing);
    std::string_view lines;
    std::int64_t taken = 0;
    ASSERT_EQ(from->ReadLines(2, lines, taken), NoError);
    ASSERT_EQ(to->Seek(0, Origin::End), NoError);
    EXPECT_EQ(to->WriteLines(lines), NoError);
    EXPECT_EQ(to->WriteLine(u"last"), NoError);
    EXPECT_EQ(to->Close(), NoError);
    EXPECT_EQ(Store->Bytes(u".\\to.txt"), "first\none\ntwo\nlast\n");
    Text line;
    EXPECT_EQ(from->ReadLine(line), NoError);
    EXPECT_EQ(line, u"three");
}

TEST_P(FilesSuite, AddsLinesAtTheEnd) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    ASSERT_EQ(stream->Seek(0, Origin::End), NoError);
    EXPECT_EQ(stream->WriteLine(u"two"), NoError);
    EXPECT_EQ(stream->Position(), 8);
    EXPECT_EQ(stream->Size(), 8);
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\ntwo\n");
}

TEST_P(FilesSuite, NeverLetsTwoLinesRunTogether) {
    Store->Put(u".\\x.txt", "one\nlast");
    AppendAndClose(*Open(u".\\x.txt"), {u"new", u"newer"});
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\nlast\nnew\nnewer\n");
}

TEST_P(FilesSuite, KeepsALastLineThatEndsInACarriageReturn) {
    Store->Put(u".\\x.txt", "a\r");
    AppendAndClose(*Open(u".\\x.txt"), {u"b"});
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"a\r", u"b"));
}

TEST_P(FilesSuite, ReadsWhatItHasJustWritten) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    Text line;
    for (const char16_t* text : {u"one", u"two"})
        ASSERT_EQ(stream->WriteLine(text), NoError);
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"one");
    ASSERT_EQ(stream->Seek(0, Origin::End), NoError);
    ASSERT_EQ(stream->WriteLine(u"three"), NoError);
    ASSERT_EQ(stream->Seek(4, Origin::Start), NoError);
    EXPECT_EQ(Skipped(*stream, 9), 2);
}

TEST_P(FilesSuite, OverwritesInTheMiddle) {
    Store->Put(u".\\x.txt", "one\ntwo\nthree\n");
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line;
    ASSERT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(stream->WriteLine(u"TWO"), NoError);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"three");
    EXPECT_EQ(stream->Size(), 14);
    ASSERT_EQ(stream->Seek(4, Origin::Start), NoError);
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"TWO");
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\nTWO\nthree\n");
}

TEST_P(FilesSuite, MakesAStreamAnewInPlaceOfOldContent) {
    Store->Put(u".\\x.txt", "old\n");
    WriteAll(u".\\x.txt", {u"n"});
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "n\n");
}

TEST_P(FilesSuite, OpensNoMissingFileAndMakesNone) {
    EXPECT_EQ(ErrorOfOpening(u".\\none.txt"), FileNotFound);
    EXPECT_FALSE(Store->Has(u".\\none.txt"));
}

TEST_P(FilesSuite, MakesNoFileInAMissingFolder) {
    EXPECT_EQ(ErrorOfOpening(u"Card:\\x.txt", StreamMode::Create), FileNotFound);
}

TEST_P(FilesSuite, OpensNoFolderAsAFile) {
    Store->MakeFolder(u".\\folder\\");
    for (const StreamMode mode : {StreamMode::Existing, StreamMode::Create}) {
        EXPECT_NE(ErrorOfOpening(u".\\folder", mode), NoError);
        EXPECT_NE(ErrorOfOpening(u".\\folder\\", mode), NoError);
        EXPECT_NE(ErrorOfOpening(u".\\", mode), NoError);
    }
}

TEST_P(FilesSuite, RefusesAFileOutside) {
    for (const char16_t* name : {u"..\\x.txt", u".\\..\\x.txt", u"Card:\\..\\..\\x.txt", u".\\a\\..\\x.txt"}) {
        EXPECT_EQ(ErrorOfOpening(name), PathRefused) << modStringTools::ToBytes(name);
        EXPECT_EQ(ErrorOfOpening(name, StreamMode::Create), PathRefused) << modStringTools::ToBytes(name);
    }
}

TEST_P(FilesSuite, MovesOverAnOldFile) {
    Store->Put(u".\\new.txt", "new\r\nbytes \xFF");
    Store->Put(u".\\folder\\old.txt", "old");
    EXPECT_EQ(Files().MoveFile(u".\\new.txt", u".\\folder\\old.txt"), NoError);
    EXPECT_EQ(Store->Bytes(u".\\folder\\old.txt"), "new\r\nbytes \xFF");
    EXPECT_FALSE(Store->Has(u".\\new.txt"));
    EXPECT_EQ(Store->Entries(u".\\folder\\"), 1);
}

TEST_P(FilesSuite, MovesToANewName) {
    Store->Put(u".\\new.txt", "text");
    EXPECT_EQ(Files().MoveFile(u".\\new.txt", u".\\other.txt"), NoError);
    EXPECT_EQ(Store->Bytes(u".\\other.txt"), "text");
    EXPECT_EQ(Store->Entries(u".\\"), 1);
}

TEST_P(FilesSuite, LeavesBothWhereTheyAreWhenAMoveFails) {
    Store->Put(u".\\new.txt", "new");
    Store->Put(u".\\folder\\x.txt", "");
    EXPECT_EQ(Files().MoveFile(u".\\none.txt", u".\\new.txt"), FileNotFound);
    EXPECT_EQ(Files().MoveFile(u".\\new.txt", u".\\none\\x.txt"), FileNotFound);
    EXPECT_EQ(Files().MoveFile(u".\\new.txt", u".\\folder"), PathRefused);
    EXPECT_EQ(Files().MoveFile(u".\\folder", u".\\new.txt"), PathRefused);
    EXPECT_EQ(Files().MoveFile(u"..\\x.txt", u".\\new.txt"), PathRefused);
    EXPECT_EQ(Files().MoveFile(u".\\new.txt", u"..\\x.txt"), PathRefused);
    EXPECT_EQ(Store->Bytes(u".\\new.txt"), "new");
}

TEST_P(FilesSuite, DeletesAFile) {
    Store->Put(u".\\x.txt", "");
    EXPECT_EQ(Files().DeleteFile(u".\\x.txt"), NoError);
    EXPECT_FALSE(Store->Has(u".\\x.txt"));
    EXPECT_EQ(Files().DeleteFile(u".\\x.txt"), FileNotFound);
}

TEST_P(FilesSuite, DeletesNoFolder) {
    Store->MakeFolder(u".\\folder\\");
    EXPECT_NE(Files().DeleteFile(u".\\folder"), NoError);
    EXPECT_NE(Files().DeleteFile(u".\\folder\\"), NoError);
    EXPECT_TRUE(Store->HasFolder(u".\\folder\\"));
}

/// Lines that must be read as they were written.
const std::vector<Text> AwkwardLines = {
    u"",
    u" ",
    u"\t x \t",
    u"ends in a return\r",
    u"\r",
    u"\r\r",
    u"a\rb",
    u"\xFEFFmark",
    u"\x2028",
    u"|a||b|",
    u"\xDC80\xDCFF"
    u"no UTF-8",
    u"\xD83D\xDE00",
    Text(70000, u'x'),
    u"ä" + Text(65535, u'y'),
};

TEST_P(FilesSuite, GivesAwkwardLinesBackAsTheyWere) {
    WriteAll(u".\\x.txt", AwkwardLines);
    EXPECT_EQ(AllLines(u".\\x.txt"), AwkwardLines);
}

/// Other tools treat a file with a NUL as binary, and end a line at it.
TEST_P(FilesSuite, ReadsANulAsABlank) {
    Store->Put(u".\\x.txt", std::string("a\0b\n\0", 5));
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"a b", u" "));
}

TEST_P(FilesSuite, WritesANulAsABlank) {
    WriteAll(u".\\x.txt", {Text(u"a\0b", 3), Text(1, u'\0')});
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "a b\n \n");
}

TEST_P(FilesSuite, TakesNoByteOrderMarkForPartOfTheFirstLine) {
    Store->Put(u".\\x.txt", "\xEF\xBB\xBFone\n\xEF\xBB\xBFtwo\n");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"one", u"\xFEFFtwo"));
    Store->Put(u".\\x.txt", "\xEF\xBB\xBF");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u""));
    Store->Put(u".\\x.txt", "\xEF\xBB");
    EXPECT_THAT(AllLines(u".\\x.txt"), ElementsAre(u"\xDCEF\xDCBB"));
}

TEST_P(FilesSuite, GivesAnyBytesBackAsTheyWere) {
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += value == '\n' || value == 0 ? std::string() : std::string(3, static_cast<char>(value)) + "\xC3";
    Store->Put(u".\\x.txt", bytes + "\n" + bytes + "\n");
    WriteAll(u".\\y.txt", AllLines(u".\\x.txt"));
    EXPECT_EQ(Store->Bytes(u".\\y.txt"), Store->Bytes(u".\\x.txt"));
}

TEST_P(FilesSuite, LeavesTheFileAsItWasUntilItIsClosed) {
    for (const StreamMode mode : {StreamMode::Create, StreamMode::Existing}) {
        Store->Put(u".\\x.txt", "old\n");
        const auto stream = Open(u".\\x.txt", mode);
        ASSERT_EQ(stream->Seek(0, Origin::End), NoError);
        ASSERT_EQ(stream->WriteLine(u"one"), NoError);
        ASSERT_EQ(stream->WriteLine(u"two"), NoError);
        EXPECT_EQ(Store->Bytes(u".\\x.txt"), "old\n");
        EXPECT_EQ(stream->Close(), NoError);
        EXPECT_EQ(Store->Bytes(u".\\x.txt"), mode == StreamMode::Create ? "one\ntwo\n" : "old\none\ntwo\n");
    }
    EXPECT_EQ(Store->Entries(u".\\"), 1) << "something was left beside it";
}

TEST_P(FilesSuite, ThatIsDroppedLeavesTheFileAsItWas) {
    Store->Put(u".\\x.txt", "old\n");
    for (const StreamMode mode : {StreamMode::Create, StreamMode::Existing}) {
        auto stream = Open(u".\\x.txt", mode);
        ASSERT_EQ(stream->WriteLine(u"one"), NoError);
        stream.reset();
        EXPECT_EQ(Store->Bytes(u".\\x.txt"), "old\n");
    }
    EXPECT_EQ(Store->Entries(u".\\"), 1) << "something was left beside it";
}

TEST_P(FilesSuite, HasEachLineOfAScratchFileInItAsSoonAsItIsWritten) {
    const auto stream = Open(u".\\x.txt", StreamMode::Scratch);
    ASSERT_EQ(stream->WriteLine(u"one"), NoError);
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\n");
}

TEST_P(FilesSuite, WritesALineFeedInsideATextAsABlank) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    EXPECT_EQ(stream->WriteLine(u"23\n4 \u00B0C\r\n"), NoError);
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "23 4 \xC2\xB0"
                                         "C\r \n");
}

TEST_P(FilesSuite, DoesNothingOnceItIsClosed) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    Text line;
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_NE(stream->ReadLine(line), NoError);
    EXPECT_NE(stream->WriteLine(u"two"), NoError);
    EXPECT_NE(stream->Seek(0, Origin::Start), NoError);
    std::int64_t passed = -1;
    EXPECT_NE(stream->SkipLines(1, passed), NoError);
    EXPECT_EQ(passed, 0);
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\n");
}

// Other programs.

TEST_P(OtherProgramsSuite, SeesFromTheNextSeekOnWhatAnotherWriterAdded) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    Text line;
    ASSERT_EQ(stream->ReadLine(line), NoError);
    Store->Put(u".\\x.txt", "one\ntwo\n");
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    EXPECT_EQ(stream->Size(), 8);
    EXPECT_EQ(Skipped(*stream, 9), 2);
}

TEST_P(OtherProgramsSuite, AddsBehindWhatAnotherWriterAdded) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    Store->Put(u".\\x.txt", "one\ntwo");
    AppendAndClose(*stream, {u"three"});
    EXPECT_EQ(Store->Bytes(u".\\x.txt"), "one\ntwo\nthree\n");
}

TEST_P(ReplacedFilesSuite, IsFoundByTheNameThatWasOpened) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    EXPECT_EQ(stream->CheckName(), NoError);
    Store->Remove(u".\\x.txt");
    EXPECT_EQ(stream->CheckName(), FileNotFound);
    Store->Put(u".\\x.txt", "one\n");
    EXPECT_EQ(stream->CheckName(), FileChanged);
}

TEST_P(OtherProgramsSuite, HasAnotherRevisionAfterASeekThatFindsAChange) {
    Store->Put(u".\\x.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    const std::int64_t revision = stream->Revision();
    ASSERT_EQ(stream->Seek(0, Origin::End), NoError);
    EXPECT_EQ(stream->Revision(), revision);
    Store->Put(u".\\x.txt", "one\ntwo\n");
    ASSERT_EQ(stream->Seek(0, Origin::Start), NoError);
    EXPECT_NE(stream->Revision(), revision);
}

TEST_P(OtherProgramsSuite, HasTheStampOfTheFileAsItIsNow) {
    Store->Put(u".\\x.txt", "one\n");
    Store->Put(u".\\y.txt", "one\n");
    const auto stream = Open(u".\\x.txt");
    const FileStamp before = stream->Stamp();
    EXPECT_EQ(Open(u".\\x.txt")->Stamp(), before);
    EXPECT_NE(Open(u".\\y.txt")->Stamp(), before) << "another file";
    Store->Put(u".\\x.txt", "one\ntwo\n");
    EXPECT_NE(stream->Stamp(), before);
}

} // namespace conformance
