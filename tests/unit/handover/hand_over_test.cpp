// SPDX-License-Identifier: MIT
#include "backends/files/sql.h"
#include "tests/unit/handover/a_device.h"

#include <sqlite3.h>

namespace handover {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using HandedOver = ADevice;

TEST_F(HandedOver, EachFileIsUnderTheNameAndTheDay) {
    const Result result = Run();
    EXPECT_EQ(result.Copied, 4u);
    EXPECT_EQ(result.Records, 3u);
    EXPECT_EQ(Stick.Bytes(Day("qrn0001.txt")), First);
    EXPECT_EQ(Stick.Bytes(Day("qrn0002.txt")), Second);
    EXPECT_EQ(Stick.Bytes(Day("drivers.txt")), Root.Bytes("Quorin/drivers.txt"));
    EXPECT_EQ(Stick.Bytes(Day("qrnctrl.txt")), Root.Bytes("Quorin/qrnctrl.txt"));
    EXPECT_THAT(Told, IsEmpty());
}

TEST_F(HandedOver, AReceiptStaysOnBothSides) {
    Run();
    const std::string line = "\"as\":\"2026-11-23/qrn0001.txt\",\"bytes\":33,\"records\":2,\"sha256\":\"";
    EXPECT_THAT(Stick.Bytes("shed/hand-over.jsonl"), HasSubstr(line));
    EXPECT_THAT(Root.Bytes("hand-over.jsonl"), HasSubstr(line));
}

TEST_F(HandedOver, OnlyWhatIsNewIsCopiedAnotherDay) {
    Run();
    Time = "2026-11-24T08:00:00";
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    const Result result = Run();
    EXPECT_EQ(result.Copied, 1u);
    EXPECT_EQ(result.Records, 1u);
    EXPECT_EQ(Stick.Entries("shed/2026-11-24"), 1);
    EXPECT_EQ(Stick.Bytes("shed/2026-11-24/qrn0001.txt"), First + "West|14\n");
}

TEST_F(HandedOver, WhatGrewTakesTheNameOfTheSameDay) {
    Run();
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    Run();
    EXPECT_EQ(Stick.Bytes(Day("qrn0001.txt")), First + "West|14\n");
    EXPECT_FALSE(Stick.Has(Day("qrn0001-2.txt")));
}

TEST_F(HandedOver, WhatWasChangedIsPutBesideIt) {
    Run();
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\nNorth|99\n");
    Run();
    EXPECT_EQ(Stick.Bytes(Day("qrn0001.txt")), First);
    EXPECT_EQ(Stick.Bytes(Day("qrn0001-2.txt")), "Place|Moisture\nNorth|99\n");
}

TEST_F(HandedOver, AnEarlierStateThatWasReplacedComesAgain) {
    Run();
    Root.Put("Quorin/qrn0001.txt", First + "West|14\n");
    Run();
    Root.Put("Quorin/qrn0001.txt", First); // the new record was deleted again
    Run();
    EXPECT_EQ(Stick.Bytes(Day("qrn0001.txt")), First + "West|14\n");
    EXPECT_EQ(Stick.Bytes(Day("qrn0001-2.txt")), First);
}

TEST_F(HandedOver, AnotherStickGetsEverything) {
    Run();
    const TemporaryRoot other(support::PlaceInMemory());
    Plan plan = ThePlan();
    plan.Target = other.Path();
    const Result result = HandOver(plan, [](const FileResult&) {});
    EXPECT_EQ(result.Copied, 4u);
    EXPECT_EQ(result.Records, 0u) << "they were handed over before";
    EXPECT_EQ(other.Bytes(Day("qrn0001.txt")), First);
}

TEST_F(HandedOver, RecordsNotHandedOverAreCounted) {
    EXPECT_EQ(NotHandedOver(), 3u);
    Run();
    EXPECT_EQ(NotHandedOver(), 0u);
    Root.Put("Quorin/qrn0001.txt", First + "West|14\nEast|15\n");
    EXPECT_EQ(NotHandedOver(), 2u);
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\nNorth|99\nSouth|13\n");
    EXPECT_EQ(NotHandedOver(), 2u) << "one was changed: the whole download counts";
}

TEST_F(HandedOver, AFileThatCantBeReadIsTold) {
    std::filesystem::remove(Root.Path("Quorin/qrn0001.txt"));
    const Result result = Run();
    EXPECT_EQ(result.Failed, 1u);
    EXPECT_EQ(result.Copied, 3u);
    EXPECT_THAT(Told, ElementsAre("qrn0001.txt: can't be read: No such file or directory"));
}

TEST_F(HandedOver, AStickThatIsNotThereIsTold) {
    Plan plan = ThePlan();
    plan.Target = Stick.Path("none");
    EXPECT_THAT(HandOver(plan, [](const FileResult&) {}).WhyNot, HasSubstr("is the stick plugged in"));
    EXPECT_FALSE(Stick.Has("none")) << "it would be filled in place of the stick";
}

TEST_F(HandedOver, ATargetWithinTheDataIsRefused) {
    Plan plan = ThePlan();
    plan.Target = Root.Path("Quorin");
    EXPECT_THAT(HandOver(plan, [](const FileResult&) {}).WhyNot, HasSubstr("choose one outside of"));
    EXPECT_FALSE(Root.Has("Quorin/shed"));
}

TEST_F(HandedOver, ANewerReceiptIsRefused) {
    Stick.Put("shed/hand-over.jsonl", "{\"hand-over\":2}\n");
    EXPECT_THAT(Run().WhyNot, HasSubstr("a newer program has written it"));
    EXPECT_EQ(Stick.Bytes("shed/hand-over.jsonl"), "{\"hand-over\":2}\n");
    EXPECT_FALSE(Stick.Has(Day("")));
}

/// "New" and "Open" of the form, between the two looks at the device.
TEST_F(HandedOver, NoRegisterNamesADownloadThatIsNotThere) {
    const std::string before = Root.Bytes("Quorin/qrnctrl.txt");
    Plan plan = ThePlan();
    int looks = 0;
    plan.List = [&] {
        if (++looks == 2) {
            Root.Put("Quorin/qrnctrl.txt", before + "Meter|qrn0003.txt|20261123|\n");
            Root.Put("Quorin/qrn0003.txt", "Place\n");
        }
        std::vector<Source> sources = Sources();
        if (looks == 2)
            sources.push_back({"qrn0003.txt", Root.Path("Quorin/qrn0003.txt"), Kind::Download});
        return Listing{sources, {}};
    };
    HandOver(plan, [](const FileResult&) {});
    EXPECT_EQ(Stick.Bytes(Day("qrnctrl.txt")), before);
    EXPECT_EQ(Stick.Bytes(Day("qrn0003.txt")), "Place\n");
}

TEST_F(HandedOver, AFolderThatCantBeListedIsTold) {
    Plan plan = ThePlan();
    plan.List = [this] { return Listing{Sources(), {"The folder x can't be read: it is locked."}}; };
    std::vector<std::string> told;
    EXPECT_EQ(HandOver(plan,
                       [&told](const FileResult& file) {
                           if (!file.Why.empty())
                               told.push_back(file.Why);
                       })
                  .Failed,
              1u);
    EXPECT_THAT(told, ElementsAre("The folder x can't be read: it is locked."));
}

TEST_F(HandedOver, AJournalEndsWithItsLastWholeLine) {
    Root.Put("day.jsonl", "{\"event\":\"start\"}\n{\"eve");
    HandOver(PlanOf({{"journal/day.jsonl", Root.Path("day.jsonl"), Kind::Journal}}), [](const FileResult&) {});
    EXPECT_EQ(Stick.Bytes(Day("journal/day.jsonl")), "{\"event\":\"start\"}\n");
}

TEST_F(HandedOver, ADatabaseInUseIsConsistent) {
    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(Root.Path("d.sqlite").c_str(), &writer), SQLITE_OK);
    const auto run = [&](const char* sql) {
        EXPECT_EQ(sqlite3_exec(writer, sql, nullptr, nullptr, nullptr), 0) << sql;
    };
    run("CREATE TABLE TEXT(Position INTEGER PRIMARY KEY, LineNumber INTEGER, LineData TEXT)");
    run("INSERT INTO TEXT VALUES (0, 1, 'Place'), (1, 2, 'North')");
    run("BEGIN IMMEDIATE");
    run("INSERT INTO TEXT VALUES (2, 3, 'half')"); // not committed
    const Plan plan = PlanOf({{"Databases/d.sqlite", Root.Path("d.sqlite"), Kind::DownloadDatabase}});
    EXPECT_EQ(HandOver(plan, [](const FileResult&) {}).Records, 1u);
    sqlite3_close(writer);
    sqlite3* copy = nullptr;
    ASSERT_EQ(sqlite3_open(Stick.Path(Day("Databases/d.sqlite")).c_str(), &copy), SQLITE_OK);
    sqlite3_stmt* count = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(copy, "SELECT count(*) FROM TEXT", -1, &count, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_step(count), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(count, 0), 2);
    sqlite3_finalize(count);
    sqlite3_close(copy);
}

TEST(FolderNames, HaveNoCharacterThatAFileSystemRefuses) {
    EXPECT_EQ(FolderNameOf("shed"), "shed");
    EXPECT_EQ(FolderNameOf("../a:b"), "_._a_b");
    EXPECT_EQ(FolderNameOf("name. "), "name");
    EXPECT_EQ(FolderNameOf(""), "device");
    const std::string longName(99, 'a');
    EXPECT_EQ(FolderNameOf(longName + "\u00e4b"), longName) << "it is not cut within a character";
}

} // namespace

} // namespace handover
