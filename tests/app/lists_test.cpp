// SPDX-License-Identifier: MIT
#include "app/lists.h"

#include "drivers/downloads.h"
#include "storage/settings.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::ElementsAre;

class RowChange : public support::Program {};

TEST_F(RowChange, OnADriverScreenTakesTheDriver) {
    Put("drivers.txt", "NAME|INFFILE\na|1\nb|2\n");
    for (const char16_t* command : {u"Start...", u"inf editor..."}) {
        MenuEvent(command);
        EXPECT_EQ(Selection.SelectedDriver, u"a");
        Device.Main().SetRow(1);
        EXPECT_EQ(Selection.SelectedDriver, u"b");
    }
}

TEST_F(RowChange, OnTheDownloadsTakesTheFile) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|x|\nMeter|qrn0002.txt|x|Alias\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    EXPECT_THAT(Column(0), ElementsAre(u"qrn0001.txt", u"Alias"));
    Device.Main().SetRow(1);
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0002.txt");
}

TEST_F(RowChange, BeyondTheDownloadsLeavesTheSelection) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|x|\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    Device.Main().SetRows(3);
    Device.Main().SetRow(2);
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0001.txt");
}

TEST_F(RowChange, OnAListStoresTheChoiceButNeverAnEmptyOne) {
    MenuEvent(u"Bluetooth Serial Setup...");
    Device.Main().SetRow(2);
    EXPECT_EQ(GetSetting(u"ComPort", u""), u"Com2");
    Device.Main().SetCell(3, 0, u"");
    Device.Main().SetRow(3);
    EXPECT_EQ(GetSetting(u"ComPort", u""), u"Com2");
}

TEST_F(RowChange, OpeningAListWithAStrangeStoredNameAndGoingBackLeavesIt) {
    SaveSetting(u"ComPort", u"my own port");
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Repaint();
    GoBack();
    Repaint();
    EXPECT_EQ(GetSetting(u"ComPort", u""), u"my own port");
}

/// A record of which the first, third and last field are hidden.
class HiddenFields : public support::Program {
protected:
    HiddenFields() {
        InstallMeter("a|0||||||\nb|1||||||\nc|-1||||||\nd|1||||||\ne|true||||||\n");
        OpenDownload("a|b|c|d|e\n1|2|3|4|5\n");
        Repaint();
    }
    std::int32_t Row() { return Device.Main().Row(); }
};

TEST_F(HiddenFields, AreNotWhereTheRecordOpens) {
    EXPECT_EQ(Row(), 1);
    EXPECT_EQ(Device.Main().RowHeight(0), 0);
    EXPECT_EQ(Device.Main().RowHeight(2), 0);
    EXPECT_GT(Device.Main().RowHeight(1), 0);
}

TEST_F(HiddenFields, ArePassedOverInTheDirectionOfTravel) {
    Device.Main().SetRow(2);
    EXPECT_EQ(Row(), 3);
    Device.Main().SetRow(2);
    EXPECT_EQ(Row(), 1);
}

TEST_F(HiddenFields, PastTheLastShownOneLeadBackToIt) {
    Device.Main().SetRow(3);
    Device.Main().SetRow(4);
    EXPECT_EQ(Row(), 3);
}

TEST_F(HiddenFields, BeforeTheFirstShownOneLeadBackToIt) {
    Device.Main().SetRow(0);
    EXPECT_EQ(Row(), 1);
}

TEST_F(HiddenFields, CantBeTapped) {
    EXPECT_NE(platform::headless::Tap(Device.Platform, 2, 1), "");
}

TEST_F(HiddenFields, AreSavedWithTheOthers) {
    Tap(1, 1);
    Type(u"two");
    GoBack();
    EXPECT_EQ(File("qrn0001.txt"), "a|b|c|d|e\n1|two|3|4|5\n");
}

class OneShownField : public support::Program {};

TEST_F(OneShownField, IsWhereEveryMoveLands) {
    InstallMeter("a|0||||||\nb|0||||||\nc|1||||||\nd|0||||||\n");
    OpenDownload("a|b|c|d\n1|2|3|4\n");
    Repaint();
    for (const std::int32_t row : {0, 1, 3, 2}) {
        Device.Main().SetRow(row);
        EXPECT_EQ(Device.Main().Row(), 2);
    }
}

TEST_F(OneShownField, WithNoneShownTheSelectionRestsAnywhere) {
    InstallMeter("a|0||||||\nb|0||||||\n");
    OpenDownload("a|b\n1|2\n");
    Repaint();
    Device.Main().SetRow(1);
    GoBack();
    EXPECT_EQ(Screen(), ScrDownloads);
}

} // namespace
} // namespace modQuorin
