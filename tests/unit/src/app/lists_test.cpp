// SPDX-License-Identifier: MIT
#include "src/app/lists.h"

#include "src/drivers/downloads.h"
#include "src/storage/settings.h"
#include "src/view/grids.h"
#include "src/view/prompt.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;
using testing::ElementsAre;

class SelectionList : public support::Program {
protected:
    explicit SelectionList(const backends::DeviceOptions& options = {}) : Program(options) {}
    std::int32_t Row() { return Device.Main().Row(); }
    Text Stored(const char16_t* key) { return GetSetting(key, u"(none)"); }
};

/// A device with two volumes, of which the second has more space.
class VolumeListing : public SelectionList {
protected:
    static backends::DeviceOptions TwoVolumes() {
        backends::DeviceOptions options = support::OfType(6);
        options.Volumes = {{u"C:\\", 1000}, {u"E:\\", 2000}};
        return options;
    }
    VolumeListing() : SelectionList(TwoVolumes()) {}
};

TEST_F(VolumeListing, HighlightsTheBestOneWhenNoneIsStored) {
    MenuEvent(u"Select Storage Volume...");
    EXPECT_EQ(TitleCell(), u"Select Volume");
    EXPECT_THAT(Column(0), ElementsAre(u"C:\\", u"E:\\"));
    EXPECT_EQ(Row(), 1);
}

TEST_F(VolumeListing, HighlightsTheStoredOneAndLeavesItSo) {
    SaveSetting(u"StorageVolume", u"C:\\");
    MenuEvent(u"Select Storage Volume...");
    EXPECT_EQ(Row(), 0);
    Repaint();
    EXPECT_EQ(Stored(u"StorageVolume"), u"C:\\");
}

TEST_F(VolumeListing, StoresTheOneThatIsTapped) {
    SaveSetting(u"StorageVolume", u"E:\\");
    MenuEvent(u"Preferences...");
    Tap(1);
    Tap(0);
    EXPECT_EQ(Stored(u"StorageVolume"), u"C:\\");
    EXPECT_EQ(Screen(), ScrPreferences);
}

/// If the stored name is not in the list, no row is highlighted. The grid's first row is current and can still be
/// chosen.
TEST_F(SelectionList, StoresAHighlightedRowWhenItIsTapped) {
    SaveSetting(u"ComPort", u"BT1");
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Repaint();
    ASSERT_EQ(Row(), 0);
    EXPECT_EQ(Stored(u"ComPort"), u"BT1");
    Tap(0);
    EXPECT_EQ(Stored(u"ComPort"), u"OFF");
    EXPECT_EQ(Screen(), ScrPreferences);
}

/// Each list that stores a choice. The stored name is in none of them.
struct StoringList {
    const char16_t* Command;
    const char16_t* Key;
};

class ListOf : public VolumeListing, public testing::WithParamInterface<StoringList> {};

TEST_P(ListOf, ThatIsLookedAtStoresNothing) {
    SaveSetting(GetParam().Key, u"Strange");
    const std::string before = Device.Folder.Bytes("settings.ini");
    MenuEvent(u"Preferences...");
    MenuEvent(GetParam().Command);
    Repaint();
    Device.Tick(1000);
    GoBack();
    Repaint();
    EXPECT_EQ(Device.Folder.Bytes("settings.ini"), before);
}

TEST_P(ListOf, ThatIsWalkedByKeyStoresEachRowOnTheWay) {
    SaveSetting(GetParam().Key, u"Strange");
    MenuEvent(GetParam().Command);
    Repaint();
    Device.Main().SetRow(1);
    EXPECT_EQ(Stored(GetParam().Key), Cell(1));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ListOf,
                         testing::Values(StoringList{u"Select Storage Volume...", u"StorageVolume"},
                                         StoringList{u"Test List", u"DummyTest"}, StoringList{u"Fonts...", u"Font"},
                                         StoringList{u"Bluetooth Serial Setup...", u"ComPort"}));

TEST_F(VolumeListing, LooksForACardThatHasComeOrGone) {
    const auto card = Device.Folder.Path() / "E";
    MenuEvent(u"Select Storage Volume...");
    ASSERT_TRUE(std::filesystem::exists(card));
    std::filesystem::rename(card, Device.Folder.Path() / "away");
    GoBack();
    MenuEvent(u"Select Storage Volume...");
    EXPECT_THAT(Column(0), ElementsAre(u"C:\\"));
    std::filesystem::rename(Device.Folder.Path() / "away", card);
    GoBack();
    MenuEvent(u"Select Storage Volume...");
    EXPECT_THAT(Column(0), ElementsAre(u"C:\\", u"E:\\"));
}

TEST_F(VolumeListing, LeavingThePreferencesMovesTheDataThere) {
    SaveSetting(u"StorageVolume", u"E:\\");
    MenuEvent(u"Preferences...");
    MenuEvent(u"Select Storage Volume...");
    Tap(0);
    GoBack();
    EXPECT_EQ(Paths.DriversFile, u"C:\\documents\\Quorin\\drivers.txt");
}

TEST_F(SelectionList, OfTheTestHasTenLongRows) {
    MenuEvent(u"Test List");
    EXPECT_EQ(TitleCell(), u"Dummy Test List");
    EXPECT_EQ(Device.Main().Rows(), 10);
    EXPECT_EQ(Cell(0), u"This is list item number 1 and is long");
    EXPECT_EQ(Cell(9), u"This is list item number 10 and is long");
}

TEST_F(SelectionList, OfTheTestIsLockedUntilItIsPainted) {
    MenuEvent(u"Test List");
    Device.Main().SetRow(4);
    EXPECT_EQ(Stored(u"DummyTest"), u"(none)");
    SelectCurrentRow();
    EXPECT_EQ(Screen(), ScrList);
    Repaint();
    Device.Main().SetRow(5);
    EXPECT_EQ(Stored(u"DummyTest"), u"This is list item number 6 and is long");
    MenuEvent(u"Test List");
    EXPECT_EQ(Row(), 5);
}

TEST_F(SelectionList, OfTheFontsMarksTheStoredOneAndChangesNoFont) {
    SaveSetting(u"Font", u"Tahoma");
    MenuEvent(u"Fonts...");
    EXPECT_EQ(TitleCell(), u"Available Fonts");
    EXPECT_THAT(Column(0), ElementsAre(u"AFPalm", u"AFPalmHR", u"AFSE UIQ Standard", u"Microsoft Sans Serif CMF",
                                       u"Nokia Sans S60", u"Tahoma"));
    EXPECT_EQ(Row(), 5);
    Device.Main().SetRow(0);
    EXPECT_EQ(Stored(u"Font"), u"AFPalm");
    EXPECT_EQ(Device.Main().FontName(), u"Tahoma");
}

TEST_F(SelectionList, OfTheFontsShowsARunOfEqualNamesOnce) {
    Device.Platform.fonts.OfferFonts({u"A", u"A", u"A", u"B", u"A", u"C", u"C"});
    SaveSetting(u"Font", u"C");
    MenuEvent(u"Fonts...");
    EXPECT_THAT(Column(0), ElementsAre(u"A", u"B", u"A", u"C"));
    EXPECT_EQ(Row(), 3);
}

TEST_F(SelectionList, OfTheFontsEndsAfterAThousand) {
    std::vector<Text> names;
    for (std::int32_t i = 1; i <= 1500; ++i)
        names.push_back(modStringTools::NumberText(i));
    Device.Platform.fonts.OfferFonts(names);
    MenuEvent(u"Fonts...");
    EXPECT_EQ(Device.Main().Rows(), 1000);
    EXPECT_EQ(Cell(999), u"1000");
}

TEST_F(SelectionList, OfADeviceWithoutFontsHasNoRow) {
    Device.Platform.fonts.OfferFonts({});
    MenuEvent(u"Fonts...");
    EXPECT_EQ(Device.Main().Rows(), 0);
    EXPECT_EQ(Stored(u"Font"), u"(none)");
}

TEST_F(SelectionList, OfThePortsHighlightsTheStoredOne) {
    SaveSetting(u"ComPort", u"Com4");
    MenuEvent(u"Bluetooth Serial Setup...");
    EXPECT_EQ(TitleCell(), u"Com Port");
    EXPECT_EQ(Cell(0), u"OFF");
    EXPECT_EQ(Cell(Row()), u"Com4");
}

TEST_F(SelectionList, OfThePortsHighlightsNothingForAFreeName) {
    SaveSetting(u"ComPort", u"my own port");
    MenuEvent(u"Bluetooth Serial Setup...");
    EXPECT_EQ(Row(), 0);
}

TEST_F(SelectionList, OfFilesStoresNothing) {
    Put("a.txt", "");
    Put("b.txt", "");
    SaveSetting(u"ComPort", u"OFF");
    MenuEvent(u"Dir...");
    Device.Main().SetRow(1);
    EXPECT_EQ(Device.Folder.Bytes("settings.ini").find("b.txt"), std::string::npos);
}

class RowChange : public support::Program {};

TEST_F(RowChange, OnThePackagesTakesThePackage) {
    GotoScreen(ScrAddDriver);
    Device.Main().SetRows(2);
    Device.Main().SetCell(1, 0, u"climate.qvd");
    Device.Main().SetRow(1);
    EXPECT_EQ(Selection.SelectedPackage, u"climate.qvd");
}

TEST_F(RowChange, OnThePreferencesRemembersTheRow) {
    GotoScreen(ScrPreferences);
    Device.Main().SetRow(3);
    EXPECT_EQ(Lists.PreferenceRow, 3);
}

TEST_F(RowChange, OnOtherScreensDoesNothing) {
    GotoScreen(ScrFileDebug);
    Selection.SelectedDriver = u"untouched";
    Device.Main().SetRow(3);
    EXPECT_EQ(Selection.SelectedDriver, u"untouched");
    EXPECT_EQ(Lists.PreferenceRow, 0);
}

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

TEST_F(RowChange, OpeningAListAndGoingBackKeepsAStrangeStoredName) {
    SaveSetting(u"ComPort", u"my own port");
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Repaint();
    GoBack();
    Repaint();
    EXPECT_EQ(GetSetting(u"ComPort", u""), u"my own port");
}

/// A record whose first, third and last fields are hidden.
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

/// A hidden grid raises no event and moves nothing by itself, so that each step of the handler can be tested
/// separately.
TEST_F(HiddenFields, AreLeftOneStepATimeAndAtTheEndsByASearch) {
    Device.Main().SetVisible(false);
    modPDAUI::Grids.LastVisibleRow = 1;
    const auto rowAfter = [this](std::int32_t row) {
        Device.Main().SetRow(row);
        RowChanged(ScrInfRecord);
        return Row();
    };
    EXPECT_EQ(rowAfter(2), 3);
    EXPECT_EQ(rowAfter(4), 3);
    EXPECT_EQ(rowAfter(0), 1);
    EXPECT_EQ(modPDAUI::Grids.LastVisibleRow, 1);
    EXPECT_EQ(rowAfter(3), 3);
    EXPECT_EQ(modPDAUI::Grids.LastVisibleRow, 3);
    EXPECT_EQ(rowAfter(2), 1);
}

TEST_F(HiddenFields, BeforeTheFirstShownOneLeadBackToIt) {
    Device.Main().SetRow(0);
    EXPECT_EQ(Row(), 1);
}

/// A date prompt restores the current row without an event.
TEST_F(HiddenFields, ArePassedOverFromTheRowThatAPromptWasFor) {
    Device.Main().SetRow(3);
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Date, value, u"", false, false);
    modPDAUI::EndInput(true);
    EXPECT_EQ(Row(), 3);
    EXPECT_EQ(modPDAUI::Grids.LastVisibleRow, 3);
    Device.Main().SetRow(2); // as a result for a hidden field does
    EXPECT_EQ(Row(), 1);
}

TEST_F(HiddenFields, AreNoRowToGoByAfterAPrompt) {
    for (std::int32_t row = 0; row < Device.Main().Rows(); ++row)
        Device.Main().SetRowHeight(row, 0);
    modPDAUI::SaveGrids();
    modPDAUI::Prompt.SavedMain.Row = 2;
    modPDAUI::Grids.LastVisibleRow = 1;
    modPDAUI::RestoreGrids();
    EXPECT_EQ(Row(), 2);
    EXPECT_EQ(modPDAUI::Grids.LastVisibleRow, 1);
}

/// An event would store a choice that the technician has not made.
TEST_F(RowChange, IsNotToldOfARowThatComesBackAfterAPrompt) {
    static int told = 0;
    GotoScreen(ScrTextFile);
    Device.Main().SetRows(4);
    Device.Main().SetRow(3);
    ScreenRow(ScrTextFile).Behaviour.RowChanged = [] { ++told; };
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Date, value, u"", false, false);
    told = 0;
    modPDAUI::EndInput(true);
    EXPECT_EQ(Device.Main().Row(), 3);
    EXPECT_EQ(told, 0);
}

TEST_F(HiddenFields, CantBeTapped) {
    EXPECT_NE(backends::Tap(Device.Hand, 2, 1), "");
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
