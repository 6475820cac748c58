// SPDX-License-Identifier: MIT
#include "backends/host/journal.h"

#include "backends/input/keyboard.h"
#include "src/storage/settings.h"
#include "src/view/input_fields.h"
#include "tests/unit/backends/host/journal_run.h"

#include <sys/stat.h>
#include <unistd.h>

namespace backends {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const Text Moist =
    u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";

class JournalOf : public JournalRun {
protected:
    void Arrive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
    }
    void OpenRecord() {
        OpenDownload("");
        Device.Tick(500);
    }
};

TEST_F(JournalOf, ARunBeginsWithTheProgramAndItsDevice) {
    Keep();
    const Line first = LinesIn(Files().at(0)).at(0);
    EXPECT_EQ(first["event"], "start");
    EXPECT_EQ(first["journal"], 1);
    EXPECT_EQ(first["program"], "test");
    EXPECT_EQ(first["words"], Line({"--word"}));
    EXPECT_EQ(first["root"], std::filesystem::canonical(Device.Folder.Path()).string());
    EXPECT_EQ(first["clock"], "virtual");
    EXPECT_EQ(first["pid"], ::getpid());
    EXPECT_EQ(first["screen"], Line({640, 480}));
    EXPECT_EQ(first["ms"], Device.Platform.clock.Milliseconds());
    EXPECT_EQ(first["time"], TextOfMoment(Device.Platform.clock.Now()));
}

TEST_F(JournalOf, ARunIsOfItsOwnerAlone) {
    Keep();
    struct stat file {};
    struct stat folder {};
    ASSERT_EQ(::stat(Files().at(0).c_str(), &file), 0);
    ASSERT_EQ(::stat(Folder().c_str(), &folder), 0);
    EXPECT_EQ(file.st_mode & 0777U, 0600U);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
}

TEST_F(JournalOf, ARunHasWhatCameAndWhatBecameOfIt) {
    Keep();
    OpenRecord();
    Arrive(Moist);
    Device.Tick(1000);
    EXPECT_THAT(
        Events("received"),
        ElementsAre(R"({"from":"port","bytes":"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n)"
                    R"([RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"})"));
    EXPECT_THAT(Events("reading"),
                ElementsAre(R"({"verdict":"taken","types":["Moisture"],"value":"23.4","unit":"%","origin":"","row":1,)"
                            R"("field":"Moisture","file":"qrn0001.txt","variables":["ORIGIN="]})"));
    Choose(u"Close");
    EXPECT_THAT(Events("row"),
                Contains(R"({"what":"saved","file":"qrn0001.txt","row":1,"old":"||","new":"|23.4 %|"})"));
}

TEST_F(JournalOf, ARunHasTheRecordOfARefusedReadingOnce) {
    Keep();
    OpenRecord();
    Arrive(u"[BLob]\r\n[ORIGIN \"A\"]\r\n[RESULT_TYPE \"X\"]\r\n[RESULT_UNIT \"\"]\r\n[RESULT_TYPE \"Y\"]\r\n"
           u"[RESULT_UNIT \"\"]\r\n[/BLob]\r\n");
    Device.Tick(1000);
    const std::vector<std::string> readings = Events("reading");
    ASSERT_THAT(readings, SizeIs(2));
    EXPECT_THAT(readings[0], HasSubstr(R"("blob":"[BLob]\r[ORIGIN \"A\"]\r)"));
    EXPECT_THAT(readings[1], Not(HasSubstr("blob")));
}

TEST_F(JournalOf, BytesAreOnTheDiskBeforeTheirTone) {
    std::vector<std::size_t> tones;
    Keep([&](int file) {
        struct stat found {};
        EXPECT_EQ(::fstat(file, &found), 0);
        EXPECT_THAT(Events("received"), SizeIs(2));
        tones.push_back(Device.Did.Tones.size());
        return 0;
    });
    OpenRecord();
    Arrive(Moist.substr(0, 20));
    Arrive(Moist.substr(20));
    EXPECT_THAT(tones, IsEmpty()); // once for the batch
    Device.Tick(1000);
    EXPECT_THAT(tones, ElementsAre(0U));
    EXPECT_THAT(Device.Did.Tones, SizeIs(1));
}

TEST_F(JournalOf, ADeliveryIsOnTheDiskBeforeItsFileIsDeleted) {
    modQuorin::SaveSetting(u"ComPort", u"SERVER");
    Device.Folder.Put("c/rfcomm.run", "");
    Device.Folder.Put("c/ipcout.txt", "a line\n");
    std::vector<bool> wasThere;
    Keep([&](int) {
        wasThere.push_back(Device.Folder.Has("c/ipcout.txt"));
        return 0;
    });
    OpenRecord();
    Device.Tick(500);
    EXPECT_TRUE(wasThere.at(0));
    EXPECT_FALSE(Device.Folder.Has("c/ipcout.txt"));
    EXPECT_THAT(Events("received"), ElementsAre(R"({"from":"mailbox","text":"a line\r\n"})"));
}

TEST_F(JournalOf, TextDroppedDuringAQuestionIsRecorded) {
    Keep();
    OpenRecord();
    Arrive(Moist);
    Device.Tick(1000);
    Device.WillAnswer(platform::BoxAnswer::No);
    Device.WhileABoxIsOpen([this] { Arrive(Moist); });
    Arrive(Moist);
    Device.Tick(1000);
    EXPECT_THAT(Events("emptied"), SizeIs(1));
    EXPECT_THAT(Acts(), Contains(HasSubstr(R"({"act":"answer","args":"no","about":"Replace: )")));
}

TEST_F(JournalOf, AQuestionIsRecordedWhenItIsAsked) {
    Keep();
    OpenRecord();
    Arrive(Moist);
    Device.Tick(1000);
    Device.WillAnswer(platform::BoxAnswer::No);
    std::vector<std::string> meanwhile;
    Device.WhileABoxIsOpen([&] { meanwhile = Events("question"); });
    Arrive(Moist);
    Device.Tick(1000);
    EXPECT_THAT(meanwhile, ElementsAre(R"({"what":"asked","text":"Replace: \r\n23.4 %\r\nWith:\r\n23.4 %?"})"));
    EXPECT_THAT(Events("question"), SizeIs(1));
}

/// Nobody has answered it.
TEST_F(JournalOf, AQuestionThatTheEndClosesIsRecorded) {
    Keep();
    Device.Platform.loop.BeginEnding();
    Device.Platform.boxes.Show(u"Delete?", platform::BoxButtons::YesNo, platform::BoxIcon::None, u"");
    EXPECT_THAT(Events("question"),
                ElementsAre(R"({"what":"asked","text":"Delete?"})", R"({"what":"unanswered","text":"Delete?"})"));
    EXPECT_THAT(Acts(), IsEmpty());
}

// --- acts ------------------------------------------------------------------------------------------------------------

TEST_F(JournalOf, AnActIsRecordedBeforeItIsDone) {
    Keep();
    OpenRecord();
    Arrive(Moist);
    Device.Tick(1000);
    Choose(u"Close");
    std::vector<std::string> order;
    for (const Line& line : LinesIn(Files().at(0))) {
        if (line.value("about", "") == "Close" || line.value("what", "") == "saved")
            order.push_back(line["event"]);
    }
    EXPECT_THAT(order, ElementsAre("act", "row")); // the record is saved by the command
}

TEST_F(JournalOf, TypedTextIsRecordedAsTheFieldWhenItCloses) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    const std::size_t before = Acts().size();
    for (const char16_t* typed : {u"N", u"No", u"North"}) {
        Type(typed);
        Device.Tick(300);
    }
    EXPECT_THAT(Acts(), SizeIs(before));
    Tap(2, 1);
    EXPECT_EQ(Acts().at(before), R"({"act":"set","text":"North"})");
    EXPECT_EQ(Acts().at(before + 1), R"({"act":"press","args":"2 1","about":"Remark"})");
}

TEST_F(JournalOf, TypedTextIsRecordedBeforeTheRowThatHasIt) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    Type(u"North");
    modQuorin::GoBack(); // by the program, at its end
    std::vector<std::string> order;
    for (const Line& line : LinesIn(Files().at(0))) {
        if (line.value("act", "") == "set" || line.value("what", "") == "saved")
            order.push_back(line["event"]);
    }
    EXPECT_THAT(order, ElementsAre("act", "row"));
}

TEST_F(JournalOf, KeysThatEditAFieldAreNotRecorded) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    const std::size_t before = Acts().size();
    for (const std::int32_t key : {65, 66, 8, 37, 39, 32})
        EXPECT_EQ(PressKey(Device.Hand, key), "");
    EXPECT_THAT(Acts(), SizeIs(before));
    EXPECT_EQ(PressKey(Device.Hand, 13), "");
    EXPECT_THAT(Acts(), SizeIs(before + 2));
    EXPECT_EQ(Acts().back(), R"({"act":"key","args":"13"})");
}

TEST_F(JournalOf, AReadingInAnOpenFieldIsNotTyped) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    Arrive(Moist);
    Device.Tick(1000);
    Tap(2, 1);
    EXPECT_THAT(Events("reading"), ElementsAre(HasSubstr("openfield")));
    EXPECT_THAT(Acts(), Not(Contains(HasSubstr("set"))));
}

/// A reading goes into the open field, and what was typed there is gone.
TEST_F(JournalOf, TypedTextThatAReadingReplacesIsRecorded) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    Type(u"North");
    Arrive(Moist);
    Device.Tick(1000);
    EXPECT_EQ(Acts().back(), R"({"act":"set","text":"North"})");
    EXPECT_THAT(Events("reading"), ElementsAre(HasSubstr("openfield")));
}

TEST_F(JournalOf, TextOfAFieldThatIsOpenAtTheEndIsRecorded) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    Type(u"North");
    Kept->End({ProgramOver::Reason::Failed, u"no disk"});
    EXPECT_EQ(Acts().back(), R"({"act":"set","text":"North"})");
    EXPECT_THAT(Events("end"), ElementsAre(R"({"why":"no disk"})"));
    Kept->End({}, "SIGTERM");
    EXPECT_THAT(Events("end"), Contains(R"({"why":"ended by SIGTERM"})"));
}

// --- ports, links, clocks --------------------------------------------------------------------------------------------

TEST_F(JournalOf, APortThatFailsIsRecordedOnce) {
    Keep();
    Device.Platform.serial.FailOpenings(4);
    OpenRecord();
    Device.Tick(2500);
    Device.Platform.serial.Drop();
    Device.Tick(1000);
    EXPECT_THAT(Events("port"), ElementsAre(HasSubstr("failed"), R"({"what":"opened","address":""})",
                                            R"({"what":"lost","address":""})", R"({"what":"opened","address":""})"));
    Choose(u"Close");
    Device.Tick(1000);
    EXPECT_THAT(Events("link"), ElementsAre(R"({"open":true,"port":"Com1"})", R"({"open":false,"port":"Com1"})"));
}

TEST_F(JournalOf, ATroubleThatComesBackIsRecordedAgain) {
    Keep();
    Device.Platform.serial.FailOpenings(2);
    OpenRecord();
    Device.Tick(1000);
    Device.Platform.serial.Drop();
    Device.Platform.serial.FailOpenings(2);
    Device.Tick(2000);
    EXPECT_THAT(Events("port"), ElementsAre(HasSubstr("failed"), HasSubstr("opened"), HasSubstr("lost"),
                                            HasSubstr("failed"), HasSubstr("opened")));
}

/// A reading that arrives may close a field without an act of the person.
TEST_F(JournalOf, TypedTextOfAFieldThatClosesByItselfIsRecorded) {
    Keep();
    OpenRecord();
    Tap(0, 1);
    Type(u"North");
    Settle();
    modPDAUI::CloseCellEdit();
    Settle();
    EXPECT_EQ(Acts().back(), R"({"act":"set","text":"North"})");
}

TEST_F(JournalOf, AClockThatIsSetIsRecorded) {
    Keep();
    Settle();
    Device.Platform.clock.SetWall(-3600);
    Settle();
    Settle();
    EXPECT_THAT(Events("clock"), ElementsAre(R"({"seconds":-3600})"));
}

TEST_F(JournalOf, MidnightBeginsAFileThatSaysWhoWrites) {
    Keep();
    const std::string before = Files().at(0).filename().string();
    Device.Platform.clock.SetWall(86400);
    Settle();
    ASSERT_THAT(Files(), SizeIs(2));
    EXPECT_NE(Files().at(1).filename().string().substr(0, 10), before.substr(0, 10));
    const Line first = LinesIn(Files().at(1)).at(0);
    EXPECT_EQ(first["event"], "day");
    EXPECT_EQ(first["words"], Line({"--word"}));
}

TEST_F(JournalOf, AFileThatIsRemovedIsBegunAnew) {
    Keep();
    std::filesystem::remove(Files().at(0));
    Choose(u"Start...");
    ASSERT_THAT(Files(), SizeIs(1));
    EXPECT_THAT(Events("day"), SizeIs(1));
    EXPECT_THAT(Acts(), Not(IsEmpty()));
}

/// 10^6 readings are to fit into a gigabyte.
TEST_F(JournalOf, AReadingTakesAtMostAKilobyte) {
    Keep();
    OpenRecord();
    const auto size = [this] { return std::filesystem::file_size(Files().at(0)); };
    const auto before = size();
    Arrive(u"[BLob]\r\n[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n"
           u"[RESULT_TYPE \"Moisture\" \"M1\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Device.Tick(1000);
    Choose(u"New Record");
    EXPECT_THAT(Events("reading"), SizeIs(1));
    EXPECT_THAT(Events("row"), SizeIs(3));
    EXPECT_LT(size() - before, 1000U);
}

// --- faults ----------------------------------------------------------------------------------------------------------

TEST_F(JournalOf, ASlowDiskIsLeftToAThreadAndReported) {
    int syncs = 0;
    Keep([&](int) {
        if (++syncs == 1)
            std::this_thread::sleep_for(SyncWorker::Longest + SyncWorker::Duration(20));
        return 0;
    });
    OpenRecord();
    Arrive(Moist);
    Device.Tick(1000);
    EXPECT_THAT(Events("sync"), SizeIs(1));
    EXPECT_THAT(Device.Did.Warnings, Contains(testing::Pair(Text(u"journal"), testing::_)));
    Kept.reset();
    EXPECT_EQ(syncs, 1);
}

TEST_F(JournalOf, ASlowDiskIsNoSleepOfTheDevice) {
    int syncs = 0;
    Keep([&](int) {
        if (++syncs == 1) {
            std::this_thread::sleep_for(SyncWorker::Duration(520));
            Device.Platform.clock.MoveTo(Device.Platform.clock.Milliseconds() + 3000);
        }
        return 0;
    });
    OpenRecord();
    Arrive(Moist);
    Device.Tick(3000);
    EXPECT_THAT(Events("sync"), SizeIs(1));
    EXPECT_THAT(Events("port"), ElementsAre(HasSubstr("opened"))); // a sleep closes the port and opens it again
}

/// The file of a delivery is deleted next.
TEST_F(JournalOf, ASlowDiskIsWaitedForBeforeADeliveryIsDeleted) {
    modQuorin::SaveSetting(u"ComPort", u"SERVER");
    Device.Folder.Put("c/rfcomm.run", "");
    std::vector<bool> here; // synced by the loop's own thread, with the file still there
    const auto loop = std::this_thread::get_id();
    Keep([&, calls = 0](int) mutable {
        if (++calls == 1)
            std::this_thread::sleep_for(SyncWorker::Longest + SyncWorker::Duration(20));
        else if (std::this_thread::get_id() == loop)
            here.push_back(Device.Folder.Has("c/ipcout.txt"));
        return 0;
    });
    OpenRecord();
    Kept->DecodingBegins(); // the slow one
    Device.Folder.Put("c/ipcout.txt", "a line\n");
    Device.Tick(500);
    EXPECT_EQ(here, std::vector<bool>{true});
}

TEST_F(JournalOf, BeforeTheYearOfTheClockHasItsDay) {
    Device.SetTime("1969-12-31T23:59:59");
    Keep();
    EXPECT_EQ(LinesIn(Files().at(0)).at(0)["time"], "1969-12-31T23:59:59");
}

TEST_F(JournalOf, AFailedDiskStopsTheJournalWithOneNotice) {
    Keep([](int) {
        errno = EIO;
        return -1;
    });
    OpenRecord();
    for (int i = 0; i < 3; ++i) {
        Arrive(Moist);
        Device.Tick(1000);
        Choose(u"New Record");
    }
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\n|23.4 %|\n|23.4 %|\n|23.4 %|\n||\n");
    const auto about = [](const auto& warning) { return warning.first == u"journal"; };
    EXPECT_EQ(std::count_if(Device.Did.Warnings.begin(), Device.Did.Warnings.end(), about), 1);
}

} // namespace
} // namespace backends
