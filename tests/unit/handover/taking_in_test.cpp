// SPDX-License-Identifier: MIT
#include "tests/unit/handover/file_calls.h"
#include "tests/unit/handover/two_devices.h"

#include <csignal>
#include <sys/wait.h>

namespace handover {

namespace {

using file_calls::Blow;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TakenIn = TwoDevices;

TEST_F(TakenIn, AnEmptyDeviceIsAsTheOtherOne) {
    const TakeResult taken = Move();
    EXPECT_EQ(Content(Other), Content(Root));
    EXPECT_EQ(taken.Taken, 5u);
    EXPECT_EQ(taken.Records, 3u);
    EXPECT_EQ(Fates.back(), "qrnctrl.txt new") << "the register comes last";
}

TEST_F(TakenIn, ASecondTimeChangesNothing) {
    Move();
    const auto before = Content(Other);
    const TakeResult again = Import();
    EXPECT_EQ(again.There, 5u);
    EXPECT_EQ(again.Taken + again.Left + again.Failed + again.Differing, 0u);
    EXPECT_EQ(Content(Other), before);
}

TEST_F(TakenIn, NewRecordsComeBehindThoseHere) {
    Move();
    Root.Put("Quorin/qrn0001.txt", First + "West|14\nEast|15\n");
    EXPECT_EQ(Move().Records, 2u);
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), First + "West|14\nEast|15\n");
    EXPECT_THAT(Fates, Contains("qrn0001.txt grown"));
}

TEST_F(TakenIn, ALastLineWithoutItsEndGetsIt) {
    Move();
    Other.Put("Quorin/qrn0001.txt", First.substr(0, First.size() - 1));
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), First + "West|14\n");
}

TEST_F(TakenIn, MoreRecordsHereStay) {
    Move();
    Other.Put("Quorin/qrn0001.txt", First + "West|14\n");
    EXPECT_EQ(Import().Taken, 0u);
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), First + "West|14\n");
    EXPECT_THAT(Differences, IsEmpty());
}

TEST_F(TakenIn, ARecordThatDiffersStaysAndBothAreTold) {
    Move();
    Other.Put("Quorin/qrn0001.txt", "Place|Moisture\nNorth|99\nSouth|13\n");
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    EXPECT_EQ(Move().Differing, 1u);
    EXPECT_THAT(Differences, ElementsAre("qrn0001.txt 1: North|99 / North|12"));
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), "Place|Moisture\nNorth|99\nSouth|13\nWest|14\n");
    const auto before = Content(Other);
    EXPECT_EQ(Import().Taken, 0u);
    EXPECT_THAT(Differences, ElementsAre("qrn0001.txt 1: North|99 / North|12")) << "it is told each time";
    EXPECT_EQ(Content(Other), before);
}

TEST_F(TakenIn, WhereRecordsWereDeletedNothingIsPutBehind) {
    Move();
    Other.Put("Quorin/qrn0001.txt", "Place|Moisture\nSouth|13\n");
    const TakeResult taken = Import();
    EXPECT_EQ(taken.Left, 1u);
    EXPECT_THAT(Differences, ElementsAre("qrn0001.txt 1: South|13 / North|12", "qrn0001.txt 2: - / South|13"));
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), "Place|Moisture\nSouth|13\n") << "South would be there twice";
}

TEST_F(TakenIn, ANewDownloadComesInWithItsRow) {
    Move();
    Root.Put("Quorin/qrn0003.txt", First);
    Root.Put("Quorin/qrnctrl.txt", Root.Bytes("Quorin/qrnctrl.txt") + "Meter|qrn0003.txt|20261125|Roof\n");
    Other.Put("Quorin/qrnctrl.txt", Register + "Meter|qrn0001.txt|20261123|Hall\nMeter|qrn0002.txt|20261124|Loft\n");
    EXPECT_EQ(Move().Records, 2u);
    EXPECT_THAT(Other.Bytes("Quorin/qrnctrl.txt"), HasSubstr("|Hall\n"));
    EXPECT_THAT(Other.Bytes("Quorin/qrnctrl.txt"), HasSubstr("Meter|qrn0003.txt|20261125|Roof\n"));
    EXPECT_THAT(Differences, ElementsAre("qrnctrl.txt 1: Meter|qrn0001.txt|20261123|Hall / "
                                         "Meter|qrn0001.txt|20261123|"));
}

TEST_F(TakenIn, AnotherDownloadOfThatNameGetsTheNextOne) {
    const std::string rows = Register + "Meter|qrn0001.txt|20260101|\n";
    Other.Put("Quorin/qrnctrl.txt", rows);
    Other.Put("Quorin/qrn0001.txt", First + "Ours|1\n");
    Move();
    EXPECT_THAT(Fates, Contains("qrn0003.txt new"));
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), First + "Ours|1\n");
    EXPECT_EQ(Other.Bytes("Quorin/qrn0003.txt"), First);
    EXPECT_EQ(Other.Bytes("Quorin/qrnctrl.txt"),
              rows + "Meter|qrn0002.txt|20261124|Loft\nMeter|qrn0003.txt|20261123|\n");
    const auto before = Content(Other);
    EXPECT_EQ(Import().Taken, 0u) << "it is known again under its new name";
    EXPECT_EQ(Content(Other), before);
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/qrn0003.txt"), First + "West|14\n");
}

TEST_F(TakenIn, OneWithAnotherHeaderIsAnotherDownload) {
    Move();
    Other.Put("Quorin/qrn0001.txt", "Place|Temperature\nNorth|7\n");
    Import();
    EXPECT_THAT(Fates, Contains("qrn0003.txt new"));
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), "Place|Temperature\nNorth|7\n");
}

TEST_F(TakenIn, AForeignFileUnderTheNextNameIsNotTouched) {
    Move();
    Other.Put("Quorin/qrn0001.txt", "Place|Temperature\nNorth|7\n");
    Other.Put("Quorin/qrn0003.txt", "mine\n");
    EXPECT_EQ(Import().Failed, 1u);
    EXPECT_EQ(Other.Bytes("Quorin/qrn0003.txt"), "mine\n");
}

TEST_F(TakenIn, AnEmptyDownloadOfThatDayIsNotFilled) {
    Other.Put("Quorin/qrnctrl.txt", Register + "Meter|qrn0001.txt|20260101|\nMeter|qrn0007.txt|20261123|\n");
    Other.Put("Quorin/qrn0001.txt", First + "Ours|1\n");
    Other.Put("Quorin/qrn0007.txt", "Place|Moisture\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/qrn0007.txt"), "Place|Moisture\n") << "it waits for readings of its own";
    EXPECT_EQ(Other.Bytes("Quorin/qrn0001.txt"), First + "Ours|1\n");
}

TEST_F(TakenIn, ADownloadThatCantBeWrittenHasNoRow) {
    std::filesystem::create_directories(Other.Path("Quorin/qrn0002.txt"));
    EXPECT_EQ(Move().Failed, 1u);
    EXPECT_EQ(Other.Bytes("Quorin/qrnctrl.txt"), Register + "Meter|qrn0001.txt|20261123|\n");
    std::filesystem::remove(Other.Path("Quorin/qrn0002.txt"));
    EXPECT_EQ(Import().Failed, 0u);
    EXPECT_EQ(Content(Other), Content(Root));
}

TEST_F(TakenIn, ARowThatNamesATableIsNoDownload) {
    Other.Put("Quorin/qrnctrl.txt", Register + "Meter|qrn0009.txt|20261123|\n");
    Other.Put("Quorin/drivers.txt", "NAME|INFFILE\n");
    Root.Put("Quorin/qrnctrl.txt", Register + "Meter|drivers.txt|20261123|\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/qrnctrl.txt"), Register + "Meter|qrn0009.txt|20261123|\n");
    EXPECT_THAT(Differences, ElementsAre("qrnctrl.txt 1: - / Meter|drivers.txt|20261123|"));
}

TEST_F(TakenIn, ADriverThatDiffersStaysAndIsTold) {
    Move();
    Other.Put("Quorin/meter.txt", "FIELDNAME|BLOB\nSite|\n");
    EXPECT_EQ(Import().Left, 1u);
    EXPECT_THAT(Differences, ElementsAre("meter.txt 1: Site| / Place|", "meter.txt 2: - / Moisture|Moisture"));
    EXPECT_EQ(Other.Bytes("Quorin/meter.txt"), "FIELDNAME|BLOB\nSite|\n");
}

TEST_F(TakenIn, ADriverWithMoreFieldsElsewhereStaysAsItIs) {
    Move();
    Other.Put("Quorin/meter.txt", "FIELDNAME|BLOB\nPlace|\n");
    Import();
    EXPECT_THAT(Differences, ElementsAre("meter.txt 2: - / Moisture|Moisture"));
    EXPECT_EQ(Other.Bytes("Quorin/meter.txt"), "FIELDNAME|BLOB\nPlace|\n") << "downloads here have these fields";
}

TEST_F(TakenIn, ANewDriverWithTheFileOfAnotherStaysOut) {
    Other.Put("Quorin/drivers.txt", "NAME|INFFILE\nGauge|meter.txt\n");
    Other.Put("Quorin/meter.txt", "FIELDNAME|BLOB\nSite|\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nGauge|meter.txt\n");
    EXPECT_THAT(Differences, Contains("drivers.txt 1: - / Meter|meter.txt"));
}

TEST_F(TakenIn, ANewDriverComesIn) {
    Other.Put("Quorin/drivers.txt", "NAME|INFFILE\nGauge|gauge.txt\n");
    Move();
    EXPECT_EQ(Other.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nGauge|gauge.txt\nMeter|meter.txt\n");
}

TEST_F(TakenIn, AJournalDayThatDiffersIsPutBeside) {
    Root.Put("journal/2026-11-23-1.jsonl", "{\"a\":1}\n{\"a\":2}\n");
    Other.Put("journal/2026-11-23-1.jsonl", "{\"b\":1}\n");
    Move();
    EXPECT_EQ(Other.Bytes("journal/2026-11-23-1.jsonl"), "{\"b\":1}\n");
    EXPECT_EQ(Other.Bytes("journal/2026-11-23-1-2.jsonl"), "{\"a\":1}\n{\"a\":2}\n");
    Import();
    EXPECT_EQ(Other.Entries("journal"), 2);
    Root.Put("journal/2026-11-23-1.jsonl", "{\"a\":1}\n{\"a\":2}\n{\"a\":3}\n");
    Move();
    EXPECT_EQ(Other.Bytes("journal/2026-11-23-1-2.jsonl"), "{\"a\":1}\n{\"a\":2}\n{\"a\":3}\n");
}

TEST_F(TakenIn, ADatabaseIsTakenAsAWhole) {
    Root.Put("d.sqlite", "one"); // its bytes are enough here
    const auto exported = [this](const std::string& zip) {
        return ExportZip({.Zip = Stick.Path(zip), .Root = Root.Path(), .List = [this] {
                              return Listing{{{"Databases/d.sqlite", Root.Path("d.sqlite"), Kind::Table}}, {}};
                          }});
    };
    exported("a.zip");
    Import();
    EXPECT_EQ(Other.Bytes("Databases/d.sqlite"), "one");
    Root.Put("d.sqlite", "one two");
    exported("b.zip");
    EXPECT_EQ(Import("b.zip").Left, 1u);
    EXPECT_THAT(Differences, ElementsAre(HasSubstr("d.sqlite 0: sha256 ")));
    EXPECT_EQ(Other.Bytes("Databases/d.sqlite"), "one");
}

class CutImport : public TwoDevices {
protected:
    /// Beside what the zip file has: a download of another device under one of its names.
    void PutOurs() {
        std::filesystem::remove_all(Other.Path("Quorin"));
        Other.Put("Quorin/qrnctrl.txt", Register + "Meter|qrn0001.txt|20260101|\n");
        Other.Put("Quorin/qrn0001.txt", "Ours\n1\n");
    }

    /// What is there is whole: a file under its own name is as before, or as in the end.
    void ExpectWhole(const std::map<std::string, std::string>& before, const std::map<std::string, std::string>& end,
                     int number) {
        for (const auto& [name, bytes] : Content(Other)) {
            const auto old = before.find(name);
            const bool isOld = old != before.end() && old->second == bytes;
            const bool isPart = name == "qrnctrl.txt" && end.at(name).starts_with(bytes); // row by row
            EXPECT_TRUE(isOld || isPart || end.at(name) == bytes) << number << ": " << name;
        }
        for (const KeyedRow& row : KeyedRowsOf(Other.Bytes("Quorin/qrnctrl.txt")))
            EXPECT_TRUE(Other.Has("Quorin/" + FieldOf(row, "FILE"))) << number;
    }
};

TEST_F(CutImport, AKilledOneIsWholeAndCompletedByTheNext) {
    Export(Root);
    PutOurs();
    const auto before = Content(Other);
    file_calls::Strike(Blow::None, 0);
    Import();
    const int calls = file_calls::Counted();
    const auto end = Content(Other);
    ASSERT_EQ(end.size(), 6u);
    ASSERT_GT(calls, 20);
    for (int number = 1; number <= calls; ++number) {
        PutOurs();
        const pid_t child = ::fork();
        if (child == 0) {
            file_calls::Strike(Blow::Kill, number);
            Import();
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << number;
        ExpectWhole(before, end, number);
        const TakeResult again = Import();
        EXPECT_EQ(again.Failed, 0u) << number;
        EXPECT_EQ(Content(Other), end) << number;
        EXPECT_EQ(Other.Entries("Quorin"), 6) << number << ": nothing hidden is left";
    }
}

TEST_F(CutImport, AFullDiskIsToldAndCompletedLater) {
    Export(Root);
    PutOurs();
    const auto before = Content(Other);
    file_calls::Strike(Blow::None, 0);
    Import();
    const int calls = file_calls::Counted();
    const auto end = Content(Other);
    for (int number = 1; number <= calls; ++number) {
        PutOurs();
        file_calls::Strike(Blow::Full, number);
        EXPECT_GT(Import().Failed, 0u) << number;
        file_calls::Counted();
        ExpectWhole(before, end, number);
        EXPECT_EQ(Import().Failed, 0u) << number;
        EXPECT_EQ(Content(Other), end) << number;
    }
}

} // namespace

} // namespace handover
