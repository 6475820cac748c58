// SPDX-License-Identifier: MIT
#include "src/view/navigation.h"

#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;

struct Leaving {
    const char* Name;
    const ScreenId* From;
    const ScreenId* To;
};

/// Back from a screen that was reached from the file selector. Only a Back to "the previous screen" leads there.
class BackFrom : public support::Program, public testing::WithParamInterface<Leaving> {};

TEST_P(BackFrom, LeadsWhereItShould) {
    GotoScreen(ScrFileSelect);
    GotoScreen(*GetParam().From);
    modBluetooth::Receive.LinkWanted = true;
    GoBack();
    EXPECT_EQ(Screen(), *GetParam().To);
    EXPECT_FALSE(modBluetooth::Receive.LinkWanted);
}

INSTANTIATE_TEST_SUITE_P(Each, BackFrom,
                         testing::Values(Leaving{"ScrDrivers", &ScrDrivers, &ScrMain},
                                         Leaving{"ScrPreferences", &ScrPreferences, &ScrMain},
                                         Leaving{"ScrInstalledDrivers", &ScrInstalledDrivers, &ScrMain},
                                         Leaving{"ScrFileDebug", &ScrFileDebug, &ScrMain},
                                         Leaving{"ScrDownloads", &ScrDownloads, &ScrDrivers},
                                         Leaving{"ScrDownload", &ScrDownload, &ScrDownloads},
                                         Leaving{"ScrDriverProperties", &ScrDriverProperties, &ScrFileSelect},
                                         Leaving{"ScrInfRecord", &ScrInfRecord, &ScrFileSelect},
                                         Leaving{"ScrColumns", &ScrColumns, &ScrFileSelect},
                                         Leaving{"ScrList", &ScrList, &ScrFileSelect},
                                         Leaving{"ScrBluetoothDebug", &ScrBluetoothDebug, &ScrFileSelect},
                                         Leaving{"ScrTextFile", &ScrTextFile, &ScrFileSelect},
                                         Leaving{"ScrAddDriver", &ScrAddDriver, &ScrFileSelect},
                                         Leaving{"ScrMessage", &ScrMessage, &ScrFileSelect}),
                         [](const auto& each) { return each.param.Name; });

class Navigation : public support::Program {};

TEST_F(Navigation, BackOnTheMainScreenEndsTheProgram) {
    EXPECT_TRUE(support::EndsProgram(GoBack));
}

TEST_F(Navigation, RemembersWhereItCameFrom) {
    GotoScreen(ScrPreferences);
    EXPECT_EQ(Screens.PreviousScreen, ScrMain);
    GotoScreen(ScrPreferences);
    EXPECT_EQ(Screens.PreviousScreen, ScrPreferences);
}

TEST_F(Navigation, BackAfterAZoomOfPreferencesLeadsToTheMainScreen) {
    GotoScreen(ScrPreferences);
    MenuEvent(u"Zoom");
    GoBack();
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(Navigation, BackAfterARefreshOfDownloadsLeadsToTheDrivers) {
    InstallMeter();
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    MenuEvent(u"New");
    GoBack();
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(Navigation, BackAfterADownloadWasRenamedStillLeadsToTheDrivers) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    Repaint();
    Device.WillDo([this] {
        Type(u"North");
        MenuEvent(u"Ok");
    });
    MenuEvent(u"Rename");
    EXPECT_EQ(Cell(0), u"North");
    GoBack();
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(Navigation, BackAfterADownloadWasDeletedStillLeadsToTheDrivers) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\nMeter|qrn0002.txt|20070301|\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    MenuEvent(u"Delete");
    EXPECT_THAT(Column(0), testing::ElementsAre(u"qrn0002.txt"));
    GoBack();
    EXPECT_EQ(Screen(), ScrDrivers);
}

class NavigationOnAPhone : public support::Program {
protected:
    NavigationOnAPhone() : Program(support::OfType(9)) {}
};

/// At the first visit the column has the form's earlier width, at the second one the width of the grid, which was
/// changed between them.
TEST_F(NavigationOnAPhone, ColumnMayBeOfAnotherWidthAtTheNextVisit) {
    GotoScreen(ScrPreferences);
    EXPECT_EQ(ScreenRow(ScrPreferences).ColumnPixels, 240 - 2);
    GoBack();
    Device.Platform.system.SetScreen({320, 240}); // the device is turned
    frmQuorin::mykb_statechanged(0, 0, 0, 0, 0);
    GotoScreen(ScrPreferences);
    EXPECT_EQ(ScreenRow(ScrPreferences).ColumnPixels, 320 - 2);
}

TEST_F(Navigation, ListReturnsToThePreferencesWithTheirRow) {
    MenuEvent(u"Preferences...");
    Tap(2);
    GoBack();
    EXPECT_EQ(Screen(), ScrPreferences);
    EXPECT_EQ(Device.Main().Row(), 2);
}

TEST_F(Navigation, DriverPropertiesGoBackUntilARecordWasOpen) {
    InstallMeter();
    GotoScreen(ScrInstalledDrivers);
    MenuEvent(u"Edit");
    GoBack();
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
    OpenDownload("Place|Moisture|Remark\na|b|c\n");
    GoBack();
    EXPECT_EQ(Screen(), ScrDownloads);
    GotoScreen(ScrInstalledDrivers);
    MenuEvent(u"Edit");
    GoBack();
    EXPECT_EQ(Screen(), ScrDownloads); // odd, but required: the screen keeps its old way back
}

TEST_F(Navigation, LeavingARecordSavesWhatWasEdited) {
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\na|b|c\n");
    Tap(0, 1);
    Type(u"Hall");
    GoBack();
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\nHall|b|c\n");
}

TEST_F(Navigation, LeavingAnUntouchedRecordWritesNothing) {
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\r\na|b|c");
    GoBack();
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\r\na|b|c");
}

TEST_F(Navigation, LeavingThePreferencesComputesThePathsAgain) {
    GotoScreen(ScrPreferences);
    Paths.DriversFile = u"old";
    GoBack();
    EXPECT_EQ(Paths.DriversFile, u".\\Quorin\\drivers.txt");
}

TEST_F(Navigation, ShowingAScreenEndsTheEditOfARecord) {
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\na|b|c\n");
    EXPECT_TRUE(Screens.GridEditMode);
    GotoScreen(ScrMain);
    EXPECT_FALSE(Screens.GridEditMode);
}

TEST_F(Navigation, ListOfAnUnknownKindStaysEmpty) {
    Screens.ListKind = u"NONSENSE";
    GotoScreen(ScrList);
    EXPECT_EQ(Device.Main().Rows(), 1);
    EXPECT_EQ(Cell(0), u"");
}

} // namespace
} // namespace modQuorin
