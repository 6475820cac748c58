// SPDX-License-Identifier: MIT
#include "src/app/debug_screens.h"

#include "src/link/receive.h"
#include "src/view/grids.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DebugScreens : public support::Program {
protected:
    void ShowFileDebug() { MenuEvent(u"File Debug..."); }
};

TEST_F(DebugScreens, LinkTraceTakesTheFocusWithItsRepaint) {
    MenuEvent(u"Bluetooth Debug...");
    EXPECT_TRUE(modPDAUI::Grids.RepaintPending);
    Repaint();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
}

TEST_F(DebugScreens, LinkTraceArmsTheLink) {
    MenuEvent(u"Bluetooth Debug...");
    EXPECT_EQ(TitleCell(), u"Bluetooth Debug");
    EXPECT_TRUE(modBluetooth::Receive.LinkWanted);
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open);
    GoBack();
    EXPECT_FALSE(modBluetooth::Receive.LinkWanted);
}

TEST_F(DebugScreens, FileScreenOffersItsCommands) {
    ShowFileDebug();
    EXPECT_EQ(TitleCell(), u"File Debug");
    EXPECT_THAT(Column(0), ElementsAre(u"File Selector...", u"Dir...", u"Save sample Text File",
                                       u"Load sample Text File", u"Debug"));
}

TEST_F(DebugScreens, FileSelectorIsNoCommand) {
    ShowFileDebug();
    Tap(0);
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"MenuEvent: ERROR Menu does not exist: File Selector..."));
    EXPECT_EQ(Screen(), ScrFileDebug);
}

TEST_F(DebugScreens, DirListsTheDataFolder) {
    Put("drivers.txt", "NAME|INFFILE\n");
    ShowFileDebug();
    Tap(1);
    EXPECT_EQ(Screen(), ScrList);
    EXPECT_EQ(TitleCell(), u"File List");
    EXPECT_THAT(Column(0), ElementsAre(u".\\Quorin\\drivers.txt"));
    Tap(0);
    EXPECT_EQ(Screen(), ScrFileDebug);
}

class SampleFile : public DebugScreens {
protected:
    void Load(const Text& name = u"sample.txt") { LoadSampleFile(name); }
};

TEST_F(SampleFile, TellsWhenAndWhereItWasMade) {
    MenuEvent(u"Save sample Text File");
    EXPECT_EQ(File("sample.txt"), "Sample.txt\n\nCreated at 05/03/2007 09:30:00\nOn Device type # 0\n"
                                  "Device Version: 5.2\nUser=user\n");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"sample.txt created"));
}

TEST_F(SampleFile, IsShownLineByLine) {
    MenuEvent(u"Save sample Text File");
    ShowFileDebug();
    Tap(3);
    EXPECT_EQ(Screen(), ScrTextFile);
    EXPECT_EQ(TitleCell(), u"View Text File");
    EXPECT_THAT(Column(0), ElementsAre(u"Sample.txt", u"", u"Created at 05/03/2007 09:30:00", u"On Device type # 0",
                                       u"Device Version: 5.2", u"User=user"));
    GoBack();
    EXPECT_EQ(Screen(), ScrFileDebug);
}

TEST_F(SampleFile, ThatIsNotThereIsTold) {
    Load();
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"File not found!"));
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(SampleFile, ThatIsEmptyIsToldAndTheScreenStays) {
    Put("sample.txt", "");
    Load();
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"File is empty!"));
    EXPECT_EQ(Screen(), ScrMain);
}

/// At most five files can be open.
TEST_F(SampleFile, CanBeLookedAtAnyNumberOfTimes) {
    Put("sample.txt", "one\ntwo\n");
    for (int time = 0; time < 10; ++time) {
        Load();
        EXPECT_THAT(Column(0), ElementsAre(u"one", u"two"));
        GotoScreen(ScrFileDebug);
    }
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(SampleFile, WithAPathIsTakenFromThere) {
    Device.Folder.Put("Elsewhere/a.txt", "one\ntwo\n");
    Load(u".\\Elsewhere\\a.txt");
    EXPECT_THAT(Column(0), ElementsAre(u"one", u"two"));
}

using Checks = DebugScreens;

TEST_F(Checks, OfTheFilesEndAtTheInsertBehindTheEnd) {
    ShowFileDebug();
    Tap(4);
    EXPECT_THAT(Device.Did.Messages(),
                ElementsAre(u"path=.\\Quorin\\", u"FH1.valid=-1", u"LineCount=10", u"Insert(s) Failed"));
    EXPECT_EQ(Screen(), ScrFileDebug);
    LoadSampleFile(u"test.pdb");
    EXPECT_THAT(Column(0), ElementsAre(u"This is Line 1", u"Inserted before 2", u"This is Line 2",
                                       u"A brand new line 3!", u"This is Line 4", u"This is Line 6", u"This is Line 7",
                                       u"This is Line 8", u"This is Line 9", u"This is Line 10"));
}

TEST_F(Checks, OfTheFilesStopWhereNoneCanBeMade) {
    ShowFileDebug();
    Device.Host.faults.FailNext(-1);
    FileApiCheck();
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"path=.\\Quorin\\", u"FH1.valid=0"));
}

} // namespace
} // namespace modQuorin
