// SPDX-License-Identifier: MIT
#include "src/app/commands.h"

#include "src/app/lists.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using platform::BoxAnswer;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

class Command : public support::Program {};

/// A command that goes to a screen from any other one. The case of its letters does not matter.
struct Move {
    const char16_t* Text;
    const ScreenId* Screen;
    const char16_t* ListKind; ///< null if it stays as it is
};

class CommandThatMoves : public Command, public testing::WithParamInterface<Move> {};

TEST_P(CommandThatMoves, ShowsItsScreen) {
    GotoScreen(ScrFileSelect);
    MenuEvent(GetParam().Text);
    EXPECT_EQ(Screen(), *GetParam().Screen);
    EXPECT_EQ(Screens.ListKind, GetParam().ListKind == nullptr ? u"" : GetParam().ListKind);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, CommandThatMoves,
                         testing::Values(Move{u"Select Storage Volume...", &ScrList, u"STORAGEVOLUME"},
                                         Move{u"test list", &ScrList, u"TESTLIST"},
                                         Move{u"Bluetooth Debug...", &ScrBluetoothDebug, nullptr},
                                         Move{u"File Debug...", &ScrFileDebug, nullptr},
                                         Move{u"Dir...", &ScrList, u"DIR"}, Move{u"FONTS...", &ScrList, u"FONT"},
                                         Move{u"sTART...", &ScrDrivers, nullptr},
                                         Move{u"Preferences...", &ScrPreferences, nullptr},
                                         Move{u"inf editor...", &ScrInstalledDrivers, nullptr},
                                         Move{u"Driver Properties...", &ScrInstalledDrivers, nullptr},
                                         Move{u"Bluetooth Serial Setup...", &ScrList, u"COMMPORT"},
                                         Move{u"Show/Hide Columns...", &ScrColumns, nullptr},
                                         Move{u"Add Driver...", &ScrAddDriver, nullptr}));

/// Scripts can give commands that no menu offers. Here a record command would write the screen's cells over a record.
TEST_F(Command, OfRecordsHasNoPlaceOffTheRecordScreens) {
    for (const char16_t* const record : {u"Next Record", u"PREVIOUS RECORD", u"First Record", u"Last Record",
                                         u"new record", u"Insert Record", u"Delete Record"}) {
        for (const ScreenId screen : {ScrMain, ScrDrivers, ScrDownloads, ScrColumns, ScrInput}) {
            Screens.CurrentScreen = screen;
            EXPECT_NE(CommandRefusal(record), u"");
        }
        for (const ScreenId screen : {ScrInfRecord, ScrDriverProperties}) {
            Screens.CurrentScreen = screen;
            EXPECT_EQ(CommandRefusal(record), u"");
        }
    }
}

TEST_F(Command, HasAPlaceOnItsScreenAlone) {
    Screens.CurrentScreen = ScrDownloads;
    for (const char16_t* const text : {u"Open", u"rename", u"New", u"Delete", u"Back", u"Zoom", u"Preferences..."})
        EXPECT_EQ(CommandRefusal(text), u"");
    for (const char16_t* const text : {u"Ok", u"Save", u"Edit"})
        EXPECT_EQ(CommandRefusal(text), u"is not available on this screen");
    EXPECT_EQ(CommandRefusal(u"Nonsense"), u""); // MenuEvent reports it
}

TEST_F(Command, ButForOkAndBackHasNoPlaceWhileAPromptWaits) {
    Screens.CurrentScreen = ScrInput;
    EXPECT_EQ(CommandRefusal(u"ok"), u"");
    EXPECT_EQ(CommandRefusal(u"BACK"), u"");
    for (const char16_t* const text : {u"Zoom", u"Start...", u"Enter Custom Serial ID...", u"Open", u"Nonsense", u""})
        EXPECT_EQ(CommandRefusal(text), u"a prompt is open, only Ok and Back are possible");
}

/// A command of one screen: on any other screen it does nothing and shows no message.

class CommandOfOneScreen : public Command, public testing::WithParamInterface<const char16_t*> {};

TEST_P(CommandOfOneScreen, DoesNothingElsewhere) {
    GotoScreen(ScrFileSelect);
    MenuEvent(GetParam());
    EXPECT_EQ(Screen(), ScrFileSelect);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, CommandOfOneScreen,
                         testing::Values(u"Rename", u"Edit", u"Save", u"Ok", u"Open", u"New", u"Delete"));

TEST_F(Command, OkMeansAnotherThingOnEachOfItsScreens) {
    InstallMeter();
    MenuEvent(u"Start...");
    MenuEvent(u"OK");
    EXPECT_EQ(Screen(), ScrDownloads);
    MenuEvent(u"Ok");
    EXPECT_EQ(Screen(), ScrDownloads);
}

/// The commands of one screen, on that screen. There is a driver with a download.
class CommandOnItsScreen : public Command {
protected:
    CommandOnItsScreen() {
        InstallMeter();
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    }
    void ShowDownloads() {
        MenuEvent(u"Start...");
        MenuEvent(u"Ok");
    }
    void ShowDrivers() { MenuEvent(u"inf editor..."); }
    void WillConfirm() {
        Device.WillAnswer(BoxAnswer::Yes);
        Device.WillAnswer(BoxAnswer::Yes);
    }
};

TEST_F(CommandOnItsScreen, RenameNamesTheDownload) {
    ShowDownloads();
    Device.WillDo([this] { Type(u"Cellar"); });
    Device.WillDo([] { MenuEvent(u"ok"); });
    MenuEvent(u"reNAME");
    EXPECT_EQ(Column(0), std::vector<Text>{u"Cellar"});
}

TEST_F(CommandOnItsScreen, NewRegistersADownload) {
    ShowDownloads();
    MenuEvent(u"new");
    EXPECT_THAT(Column(0), ElementsAre(u"qrn0001.txt", u"qrn0002.txt"));
}

TEST_F(CommandOnItsScreen, DeleteRemovesTheDownload) {
    ShowDownloads();
    WillConfirm();
    MenuEvent(u"delete");
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\n");
}

TEST_F(CommandOnItsScreen, OpenShowsTheDownload) {
    ShowDownloads();
    MenuEvent(u"oPEN");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(), u"Download");
}

TEST_F(CommandOnItsScreen, EditShowsTheDriver) {
    ShowDrivers();
    MenuEvent(u"edit");
    EXPECT_EQ(Screen(), ScrDriverProperties);
    EXPECT_EQ(Cell(0, 1), u"Meter");
}

TEST_F(CommandOnItsScreen, SaveStoresTheDriverAndShowsItsFields) {
    ShowDrivers();
    MenuEvent(u"Edit");
    Tap(1, 1);
    Type(u"other.txt");
    MenuEvent(u"save");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nMeter|other.txt\n");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(), u"Inf Editor");
}

TEST_F(CommandOnItsScreen, NewAddsADriver) {
    ShowDrivers();
    MenuEvent(u"New");
    EXPECT_EQ(Screen(), ScrDriverProperties);
    EXPECT_EQ(Cell(0, 1), u"Untitled Driver");
}

TEST_F(CommandOnItsScreen, DeleteRemovesTheDriver) {
    ShowDrivers();
    WillConfirm();
    MenuEvent(u"DELETE");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
}

TEST_F(CommandOnItsScreen, ColumnsAndNewDriversAreReachedFromTheDrivers) {
    ShowDrivers();
    Choose(u"Show/Hide Columns...");
    EXPECT_EQ(Screen(), ScrColumns);
    EXPECT_THAT(Column(0), ElementsAre(u"Place", u"Moisture", u"Remark"));
    GoBack();
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
    Choose(u"Add Driver...");
    EXPECT_EQ(Screen(), ScrAddDriver);
    GoBack();
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
}

/// Commands that go from record to record, starting at the second of three.
struct RecordStep {
    const char16_t* Text;
    const char16_t* Position;
};

class RecordCommandOf : public Command, public testing::WithParamInterface<RecordStep> {};

TEST_P(RecordCommandOf, MovesInTheRecords) {
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\na|b|c\nd|e|f\ng|h|i\n");
    MenuEvent(u"Next Record");
    for (int i = 0; i < 2; ++i)
        Device.WillAnswer(BoxAnswer::Yes);
    MenuEvent(GetParam().Text);
    EXPECT_EQ(TitleCell(1), GetParam().Position);
}

INSTANTIATE_TEST_SUITE_P(Table, RecordCommandOf,
                         testing::Values(RecordStep{u"next record", u"3/3"}, RecordStep{u"PREVIOUS Record", u"1/3"},
                                         RecordStep{u"First Record", u"1/3"}, RecordStep{u"last recorD", u"3/3"},
                                         RecordStep{u"New Record", u"4/4"}, RecordStep{u"Insert Record", u"2/4"},
                                         RecordStep{u"Delete Record", u"2/2"}));

TEST_F(Command, ZoomKeepsTheSize) {
    MenuEvent(u"zOOm");
    EXPECT_EQ(platform::Device().settings.Get(u"Quorin", u"Settings", u"FONTSIZE", u""), u"14");
}

TEST_F(Command, DirListsTheDataFolder) {
    Put("a.txt", "");
    MenuEvent(u"dir...");
    EXPECT_EQ(Column(0), std::vector<Text>{u".\\Quorin\\a.txt"});
}

/// The page may have been scrolled since the row was chosen.
TEST_F(Command, SelectScrollsToItsRow) {
    std::string rows;
    for (int row = 0; row < 60; ++row)
        rows += "F" + std::to_string(row) + "|1||||||\n";
    InstallMeter(rows);
    MenuEvent(u"inf editor...");
    MenuEvent(u"Show/Hide Columns...");
    Repaint();
    auto& grid = Device.Main();
    ASSERT_EQ(grid.Row(), 0);
    grid.SetTopRow(30);
    SelectCurrentRow();
    EXPECT_EQ(grid.TopRow(), 0);
}

TEST_F(Command, InstallWithNothingToInstallStays) {
    MenuEvent(u"inf editor...");
    MenuEvent(u"Add Driver...");
    MenuEvent(u"INSTALL...");
    EXPECT_EQ(Screen(), ScrAddDriver);
}

/// A driver, a download and a table are selected, so that each command could do something.
class CommandOffItsScreen : public CommandOnItsScreen, public testing::WithParamInterface<const char16_t*> {};

TEST_P(CommandOffItsScreen, DoesNothingToWhatIsInHand) {
    Put("qrn0001.txt", "Place|Moisture|Remark\na|b|c\n");
    ShowDownloads();
    GoBack();
    GoBack();
    ShowDrivers();
    MenuEvent(u"Edit");
    ASSERT_EQ(Selection.SelectedDriver, u"Meter");
    ASSERT_EQ(Selection.SelectedDownload, u"qrn0001.txt");
    ASSERT_TRUE(modFileSystem::Table.TableFile.valid);
    for (const ScreenId screen : {ScrFileSelect, ScrMessage, ScrAddDriver}) {
        GotoScreen(screen);
        MenuEvent(GetParam());
        EXPECT_EQ(Screen(), screen);
        EXPECT_THAT(Device.Did.Boxes, IsEmpty());
    }
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|c\n");
}

INSTANTIATE_TEST_SUITE_P(Table, CommandOffItsScreen,
                         testing::Values(u"Rename", u"Edit", u"Save", u"Ok", u"Open", u"New", u"Delete"));

TEST_F(Command, EditOnTheDownloadsAndRenameOnTheDriversDoNothing) {
    InstallMeter();
    GotoScreen(ScrDownloads);
    MenuEvent(u"Edit");
    EXPECT_EQ(Screen(), ScrDownloads);
    GotoScreen(ScrInstalledDrivers);
    MenuEvent(u"Rename");
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
}

class UnknownCommand : public Command, public testing::WithParamInterface<const char16_t*> {};

TEST_P(UnknownCommand, IsToldWithItsOwnWords) {
    MenuEvent(GetParam());
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(Text(u"MenuEvent: ERROR Menu does not exist: ") + GetParam()));
    EXPECT_EQ(Device.Did.Boxes[0].Buttons, platform::BoxButtons::Ok);
    EXPECT_EQ(Screen(), ScrMain);
}

INSTANTIATE_TEST_SUITE_P(Texts, UnknownCommand,
                         testing::Values(u"Exit", u"Close", u"Ok ", u"", u"File Selector...", u"Select a volume",
                                         u"Start"));

TEST_F(Command, BackEndsTheProgramOnTheMainScreen) {
    EXPECT_TRUE(support::EndsProgram([] { MenuEvent(u"Back"); }));
}

TEST_F(Command, ExitEndsItWithoutAQuestion) {
    EXPECT_TRUE(support::EndsProgram([] { MenuClick(1, 2); }));
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(Command, ColourIsTurnedOverByEitherText) {
    MenuEvent(u"Toggle Colour: On");
    EXPECT_FALSE(modPDAUI::Display.ColourOn);
    MenuEvent(u"Toggle Colour: On");
    EXPECT_TRUE(modPDAUI::Display.ColourOn);
    MenuEvent(u"Toggle Colour: Off");
    EXPECT_FALSE(modPDAUI::Display.ColourOn);
}

TEST_F(Command, DebugChecksTheStringToolsOffTheFileScreen) {
    MenuEvent(u"Debug");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"this is a-a-a-a string", u"this is a very long string"));
}

class MenuClicks : public support::Program {};

TEST_F(MenuClicks, RunTheEntrysText) {
    MenuClick(1, 1);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(MenuClicks, AnyOtherMenuNumberMeansTheSecond) {
    MenuClick(5, 2);
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
}

TEST_F(MenuClicks, IndexBeyondTheMenuStopsTheProgram) {
    support::FailureOf([] { MenuClick(1, 6); });
    support::FailureOf([] { MenuClick(2, -1); });
}

TEST_F(MenuClicks, AnyOtherMarkerMakesAnEntryDoNothing) {
    MenuRow(MenuMain).Marker1[1] = EntryMarker{5};
    MenuClick(1, 1);
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(MenuClicks, OnACaptionDoNothingWhereMenusAreNoKeys) {
    GotoScreen(ScrDrivers);
    frmQuorin::mnuButton2_Click();
    EXPECT_EQ(Screen(), ScrDrivers);
}

class SoftKeys : public support::Program {
protected:
    SoftKeys() : Program(support::OfType(5)) {}
};

TEST_F(SoftKeys, CaptionWithItemsIsNoCommand) {
    frmQuorin::mnuButton1_Click();
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(SoftKeys, LoneCaptionIsACommand) {
    MenuEvent(u"Start...");
    frmQuorin::mnuButton1_Click();
    EXPECT_EQ(Screen(), ScrDownloads);
    frmQuorin::mnuButton2_Click();
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(SoftKeys, BothRoutesOfBackEndInTheSamePlace) {
    MenuEvent(u"Preferences...");
    frmQuorin::mnuButton1_Click();
    EXPECT_EQ(Screen(), ScrMain);
    MenuEvent(u"File Debug...");
    frmQuorin::mnuButton1_Click();
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(SoftKeys, SecondCaptionGoesByTheFirstMenusEmptyItem) {
    GotoScreen(ScrDownloads);
    Device.Platform.menuItems[1][0].SetCaption(u"another");
    Device.Platform.menuItems[0][0].SetCaption(u"");
    frmQuorin::mnuButton2_Click();
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(SoftKeys, CanBePressedPastTheCaptions) {
    MenuEvent(u"Start...");
    frmQuorin::SoftKey2Pressed();
    EXPECT_EQ(Screen(), ScrMain);
}

class Selecting : public support::Program {};

TEST_F(Selecting, OnTheMainScreenStarts) {
    Tap(0);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(Selecting, ADriverShowsItsDownloads) {
    InstallMeter();
    MenuEvent(u"Start...");
    Tap(0);
    EXPECT_EQ(Screen(), ScrDownloads);
}

TEST_F(Selecting, AListEntryStoresItAndLeaves) {
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Tap(3);
    EXPECT_EQ(Screen(), ScrPreferences);
    EXPECT_EQ(platform::Device().settings.Get(u"Quorin", u"Settings", u"ComPort", u""), u"Com3");
}

TEST_F(Selecting, APreferenceRunsItsText) {
    MenuEvent(u"Preferences...");
    Tap(2);
    EXPECT_EQ(Screens.ListKind, u"COMMPORT");
}

TEST_F(Selecting, OnlyTheValueColumnOfARecordIsEdited) {
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\na|b|c\n");
    Tap(0, 0);
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
    Tap(0, 1);
    EXPECT_TRUE(Device.Platform.txtInputField.Visible());
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"a");
}

TEST_F(Selecting, ADateAsksForADate) {
    InstallMeter("Day|1|||||date|\n");
    OpenDownload("Day\n05/03/2007\n");
    Tap(0, 1);
    EXPECT_EQ(Screen(), ScrInput);
    EXPECT_EQ(TitleCell(), u"Day");
    EXPECT_EQ(Device.Platform.dteInputField.Date(), (platform::CalendarDate{2007, 3, 5}));
    EXPECT_TRUE(modFileSystem::Table.RecordDirty);
}

TEST_F(Selecting, ATimeIsEditedInPlace) {
    InstallMeter("At|1|||||TIME|\n");
    OpenDownload("At\n09:30\n");
    Tap(0, 1);
    EXPECT_TRUE(Device.Platform.txtInputField.Visible());
}

TEST_F(Selecting, AColumnChoiceTurnsItsMarkOver) {
    InstallMeter();
    MenuEvent(u"Start...");
    MenuEvent(u"Show/Hide Columns...");
    EXPECT_EQ(Cell(1, 1), u"X");
    Tap(1);
    EXPECT_EQ(Cell(1, 1), u"");
    Tap(1);
    EXPECT_EQ(Cell(1, 1), u"X");
}

TEST_F(Selecting, DoesNothingWhileTheGridIsLocked) {
    modPDAUI::Grids.GridLocked = true;
    SelectCurrentRow();
    EXPECT_EQ(Screen(), ScrMain);
}

} // namespace
} // namespace modQuorin
