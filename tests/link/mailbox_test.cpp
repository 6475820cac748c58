// SPDX-License-Identifier: MIT
#include "link/mailbox.h"

#include "link/ports.h"
#include "link/receive.h"
#include "storage/settings.h"
#include "tests/support/program.h"

namespace modBluetooth {
namespace {

const std::string Reading =
    "[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"23.4\"]\n[RESULT_UNIT \"%\"]\n[/BLob]\n";

/// A driver that listens, its download open, and a server that runs.
class Mailbox : public support::Program {
protected:
    Mailbox() {
        modQuorin::SaveSetting(u"ComPort", u"SERVER");
        Device.Folder.Put("c/rfcomm.run", "");
        InstallMeter();
        OpenDownload("");
        Device.Tick(500);
    }
    void Deliver(const std::string& bytes) { Device.Folder.Put("c/ipcout.txt", bytes); }
    bool Waits() { return Device.Folder.Has("c/ipcout.txt"); }
    Text Moisture() { return Cell(1, 1); }
};

TEST_F(Mailbox, ResultIsTakenAndTheFileIsGone) {
    Deliver(Reading);
    Device.Tick(500);
    EXPECT_FALSE(Waits());
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

TEST_F(Mailbox, LineEndsOfAnyKindAreTaken) {
    Deliver("[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]");
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"1 %");
}

TEST_F(Mailbox, NothingIsReadWhileTheServerWrites) {
    Device.Folder.Put("c/ipcout.lock", "");
    Deliver(Reading);
    Device.Tick(5000);
    EXPECT_TRUE(Waits());
    EXPECT_EQ(Moisture(), u"");
    std::filesystem::remove(Device.Folder.Path() / "c/ipcout.lock");
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_FALSE(Waits());
}

TEST_F(Mailbox, LinkToAFileOutsideDeliversNothingOfIt) {
    const support::TemporaryFolder outside;
    outside.Put("results.txt", Reading);
    std::filesystem::create_symlink(outside.Path() / "results.txt", Device.Folder.Path() / "c/ipcout.txt");
    Device.Tick(3000);
    EXPECT_EQ(Moisture(), u"");
    EXPECT_EQ(outside.Bytes("results.txt"), Reading);
}

TEST_F(Mailbox, EmptyFileIsDeletedAndDeliversNothing) {
    Deliver("");
    Device.Tick(500);
    EXPECT_FALSE(Waits());
    EXPECT_FALSE(Receive.BlobEndSeen);
    EXPECT_EQ(Receive.RxText, u"");
}

TEST_F(Mailbox, BlobSplitOverTwoFilesComesTogether) {
    Deliver("[BLob]\n[RESULT_TYPE \"Moisture\"]\n");
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"");
    Deliver("[RESULT_VALUE \"7\"]\n[RESULT_UNIT \"%\"]\n[/BLOB]\n"); // on this road any case of the tag will do
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"7 %");
}

TEST_F(Mailbox, EndOfTheServerGoesUnnoticed) {
    std::filesystem::remove(Device.Folder.Path() / "c/rfcomm.run");
    Deliver(Reading);
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

TEST_F(Mailbox, NothingButTheDeliveryIsTouched) {
    Deliver(Reading);
    Device.Folder.Put("c/other.txt", "keep");
    Device.Tick(1500);
    EXPECT_EQ(Device.Folder.Bytes("c/other.txt"), "keep");
    EXPECT_TRUE(Device.Folder.Has("c/rfcomm.run"));
}

TEST_F(Mailbox, BackLeavesTheRoadOpenForTheNextTime) {
    modQuorin::GoBack();
    Device.Tick(1000);
    EXPECT_TRUE(Ports.NamedLinkOpen);
    EXPECT_TRUE(Ports.ServerMode);
    Deliver(Reading);
    Device.Tick(2000);
    EXPECT_TRUE(Waits()); // nobody wants it
}

} // namespace
} // namespace modBluetooth
