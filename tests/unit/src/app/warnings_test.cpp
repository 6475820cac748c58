// SPDX-License-Identifier: MIT
// What a person should know although the form has no message for it.
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/view/inf_fields.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Text ReadingOf(const Text& value) {
    return u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + value +
           u"\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
}
const Text Reading = ReadingOf(u"23.4");
const Text Waits = u"A reading of 09:30 is still waiting and will go into this record.";

class Warnings : public support::Program {
protected:
    Warnings() { SaveSetting(u"ComPort", u"Com1"); }
    void Open(const std::string& content = "Place|Moisture|Remark\na||c\n") {
        InstallMeter();
        OpenDownload(content);
        Device.Tick(500);
    }
    void Arrive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
    }
    /// Returns the texts of the warnings with this short name.
    std::vector<std::string> About(const Text& name) {
        std::vector<std::string> texts;
        for (const auto& [about, text] : Device.Did.Warnings) {
            if (about == name)
                texts.push_back(modStringTools::ToBytes(text));
        }
        return texts;
    }
    Text InTheLine() {
        const auto standing = Device.Platform.onlooker.notices.Sorted();
        return standing.empty() ? Text() : standing.front().Words;
    }
};

// A reading that waits.

TEST_F(Warnings, AReadingLeftByCloseIsReportedAtTheNextOpening) {
    Open();
    Arrive(Reading);
    Choose(u"Close");
    Device.Tick(5000);
    EXPECT_EQ(InTheLine(), u"");
    MenuEvent(u"Open");
    Settle();
    EXPECT_EQ(InTheLine(), Waits);
    EXPECT_THAT(About(u"waiting"), ElementsAre(modStringTools::ToBytes(Waits)));
    Device.Tick(1000);
    EXPECT_EQ(Cell(1, 1), u"23.4 %");
    EXPECT_EQ(InTheLine(), Waits); // for a person who comes back to the screen
    Choose(u"Close");
    EXPECT_EQ(InTheLine(), u"");
}

TEST_F(Warnings, AReadingThatANewRecordHasOvertakenIsTold) {
    Open();
    Arrive(Reading);
    Choose(u"New Record");
    EXPECT_EQ(InTheLine(), Waits);
    Device.Tick(1000);
    Choose(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na||c\n|23.4 %|\n");
}

TEST_F(Warnings, ResultsBehindARefusedOneOfTheirBurstAreTold) {
    Open();
    Arrive(Reading + u"[BLob]\r\n[ORIGIN \"other\"]\r\n[/BLob]\r\n");
    Device.Tick(1000);
    EXPECT_EQ(Cell(1, 1), u"");
    Choose(u"New Record");
    EXPECT_EQ(InTheLine(), Waits);
}

TEST_F(Warnings, NothingIsToldWhereNoReadingWaits) {
    Open();
    Arrive(Reading);
    Device.Tick(1000);
    Arrive(u"noise\r\n[BLob]\r\n");
    Choose(u"New Record");
    Choose(u"Close");
    MenuEvent(u"Open");
    Settle();
    EXPECT_THAT(Device.Did.Warnings, IsEmpty());
}

/// No reading goes into a record there: the waiting one is for the next download that is opened.
TEST_F(Warnings, NothingIsToldInTheInfEditorAndOnADriversName) {
    Open();
    Arrive(Reading);
    for (int back = 0; back < 3; ++back)
        GoBack();
    ASSERT_EQ(Screen(), ScrMain);
    MenuEvent(u"inf editor...");
    MenuEvent(u"Edit");
    ASSERT_EQ(Screen(), ScrDriverProperties);
    MenuEvent(u"Next Record");
    MenuEvent(u"Save");
    ASSERT_EQ(TitleCell(0), u"Inf Editor");
    Choose(u"Next Record");
    Choose(u"New Record");
    EXPECT_THAT(About(u"waiting"), IsEmpty());
    EXPECT_EQ(InTheLine(), u"");
}

// Another driver's record.

class OfTwoDrivers : public Warnings {
protected:
    OfTwoDrivers() {
        InstallMeter();
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\nScale|scale.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Put("scale.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMass|1||Mass||||\n");
        Put("qrn0001.txt", "Place|Moisture|Remark\na||c\n");
        MenuEvent(u"Start...");
        Settle();
    }
    void Take(std::int32_t driver) {
        Device.Main().SetRow(driver);
        Settle();
        MenuEvent(u"Ok");
        Settle();
    }
};

TEST_F(OfTwoDrivers, ARecordShownWithTheOtherOneIsReportedWhileOpen) {
    Take(0);
    GoBack();
    Take(1);
    EXPECT_THAT(Column(0), IsEmpty());
    MenuEvent(u"Open");
    Settle();
    ASSERT_EQ(Screen(), ScrInfRecord);
    const Text words = u"This record belongs to driver Meter, it is shown with driver Scale: readings may land in the "
                       u"wrong columns. Go Back and make a new download.";
    EXPECT_EQ(InTheLine(), words);
    EXPECT_THAT(About(u"driver"), ElementsAre(modStringTools::ToBytes(words)));
    Device.Platform.onlooker.notices.Act(u"driver");
    Device.Tick(2000);
    EXPECT_EQ(InTheLine(), words);
    GoBack();
    Settle();
    EXPECT_EQ(InTheLine(), u"");
}

TEST_F(OfTwoDrivers, ARecordOfTheirOwnIsNotTold) {
    Take(1);
    GoBack();
    Take(0);
    MenuEvent(u"Open");
    Settle();
    EXPECT_THAT(Device.Did.Warnings, IsEmpty());
}

TEST_F(OfTwoDrivers, ADownloadThatNoListNamesAnyMoreIsTold) {
    Take(0);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    MenuEvent(u"Delete");
    MenuEvent(u"Open");
    Settle();
    EXPECT_THAT(About(u"driver"),
                ElementsAre("No list contains the download qrn0001.txt any more. Go Back and make a new download."));
}

// The link and a screen that do not fit together.

TEST_F(Warnings, BackOutOfACalendarIsToldToHaveTakenTheLinkDown) {
    InstallMeter("Day|1|||||DATE|\nMoisture|1||Moisture||||\n");
    OpenDownload("Day|Moisture\n01/03/2007|\n");
    Device.Tick(500);
    Repaint();
    ASSERT_EQ(TitleCell(0), u"Bluetooth :-)");
    Tap(0, 1);
    ASSERT_EQ(Screen(), ScrInput);
    EXPECT_THAT(Device.Did.Warnings, IsEmpty());
    GoBack();
    Settle();
    Device.Tick(1000);
    EXPECT_EQ(TitleCell(0), u"Bluetooth :-)");
    EXPECT_FALSE(modBluetooth::Ports.LinkOpen);
    EXPECT_EQ(InTheLine(),
              u"Back has closed the link of this record, although the title still shows it. Go Back and open the "
              u"download again.");
    EXPECT_THAT(About(u"linkoff"), testing::SizeIs(1));
    GoBack();
    Settle();
    EXPECT_EQ(InTheLine(), u"");
}

/// It sends a character each half second.
TEST_F(Warnings, ALinkThatAnInstrumentKeepsUpIntoTheInfEditorIsTold) {
    Open();
    const auto hears = [this] { Arrive(u"."); };
    for (int i = 0; i < 3; ++i) {
        GoBack();
        Settle();
        hears();
        Device.Tick(500);
    }
    ASSERT_EQ(Screen(), ScrMain);
    EXPECT_THAT(Device.Did.Warnings, IsEmpty());
    MenuEvent(u"inf editor...");
    MenuEvent(u"Edit");
    MenuEvent(u"Save");
    Settle();
    hears();
    Device.Tick(500);
    ASSERT_EQ(Screen(), ScrInfRecord);
    EXPECT_THAT(About(u"linkon"), testing::SizeIs(1));
    EXPECT_NE(InTheLine(), u"");
}

// A port that will end the program.

TEST_F(Warnings, APortThatWillEndTheProgramIsToldAtOnce) {
    EXPECT_EQ(InTheLine(), u"");
    for (const char16_t* const none : {u"Com1:", u"off", u"", u"/dev/ttyUSB0"}) {
        SaveSetting(u"ComPort", none);
        Settle();
        EXPECT_EQ(InTheLine().find(u"The setting ComPort "), 0U);
        EXPECT_NE(InTheLine().find(u"choose a port under Preferences, Bluetooth Serial Setup..."), Text::npos);
        for (const char16_t* const port : {u"Com1", u"7", u"OFF", u"SERVER"}) {
            SaveSetting(u"ComPort", port);
            Settle();
            EXPECT_EQ(InTheLine(), u"");
        }
    }
    EXPECT_THAT(About(u"port"), testing::SizeIs(4));
}

// A reading of which a part is missing.

TEST_F(Warnings, AReadingWhoseValueALoneReturnHasEmptiedIsTold) {
    Open();
    Arrive(ReadingOf(u"23\r.4"));
    Device.Tick(1000);
    EXPECT_EQ(Cell(1, 1), u" %");
    EXPECT_EQ(Device.Did.Tones.back().first, 1046);
    EXPECT_THAT(About(u"value"),
                ElementsAre("09:30:01  A reading came with a unit and without a value: check Moisture."));
}

} // namespace
} // namespace modQuorin
