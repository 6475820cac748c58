// SPDX-License-Identifier: MIT
#include "src/link/mailbox.h"

#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/heard_readings.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

#include <fstream>

namespace modBluetooth {
namespace {

using support::PrintTo;

const std::string Reading =
    "[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"23.4\"]\n[RESULT_UNIT \"%\"]\n[/BLob]\n";

/// A driver that takes readings, its download open, and a running server.
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
    Deliver("[RESULT_VALUE \"7\"]\n[RESULT_UNIT \"%\"]\n[/BLOB]\n"); // a mailbox ignores the case of the tag
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"7 %");
}

TEST_F(Mailbox, DeliveryIsReportedAsOne) {
    const support::HeardReadings heard(Device);
    Deliver("a line\n");
    Device.Tick(500);
    ASSERT_EQ(heard.Texts.size(), 1U);
    EXPECT_EQ(heard.Texts[0].first, platform::TextSource::Mailbox);
    EXPECT_EQ(heard.Texts[0].second, u"a line\r\n");
}

/// Whoever records a delivery has it before the only copy is gone.
TEST_F(Mailbox, DeliveryIsReportedBeforeItsFileIsDeleted) {
    support::HeardReadings heard(Device);
    std::vector<bool> waited;
    heard.AtText = [&] { waited.push_back(Waits()); };
    Deliver("a line\n");
    Device.Tick(500);
    EXPECT_EQ(waited, std::vector<bool>{true});
    EXPECT_FALSE(Waits());
}

/// The half line came over the port that was used before.
TEST_F(Mailbox, EndOfAHalfLineLetsAReadingComeAgain) {
    Receive.RxText = u"half";
    TakeAgain(u"[BLob]\r[RESULT_TYPE \"Moisture\"]\r[RESULT_VALUE \"7\"]\r[RESULT_UNIT \"%\"]\r[/BLob]\r");
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"");
    Deliver(" a line\n");
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

TEST_F(Mailbox, BackLeavesTheLinkOpenForTheNextTime) {
    modQuorin::GoBack();
    Device.Tick(1000);
    EXPECT_TRUE(Ports.NamedLinkOpen);
    EXPECT_TRUE(Ports.ServerMode);
    Deliver(Reading);
    Device.Tick(2000);
    EXPECT_TRUE(Waits()); // no download is open that would take it
}

/// The folder into which a server puts its files.
struct Place {
    std::int32_t DeviceType;
    const char* Folder; ///< of the host
};

class MailboxOfADevice : public support::Program, public testing::WithParamInterface<Place> {
protected:
    MailboxOfADevice() : Program(support::OfType(GetParam().DeviceType)) {
        modQuorin::SaveSetting(u"ComPort", u"SERVER");
        Put("rfcomm.run", "");
    }
    void Put(const std::string& name, const std::string& bytes) { Device.Folder.Put(GetParam().Folder + name, bytes); }
    bool Has(const std::string& name) { return Device.Folder.Has(GetParam().Folder + name); }
};

TEST_P(MailboxOfADevice, IsReadOnceTheServerHasLetGoOfIt) {
    ASSERT_TRUE(OpenLink());
    Put("ipcout.lock", "");
    Put("ipcout.txt", "a line\n");
    PollMailbox(modBluetooth::Mailbox.MailboxPath + u"ipcout.txt");
    EXPECT_EQ(Receive.ReadyText, u"");
    EXPECT_TRUE(Has("ipcout.txt"));
    std::filesystem::remove(Device.Folder.Path() / (GetParam().Folder + std::string("ipcout.lock")));
    PollMailbox(modBluetooth::Mailbox.MailboxPath + u"ipcout.txt");
    EXPECT_EQ(Receive.ReadyText, u"a line\r\n");
    EXPECT_FALSE(Has("ipcout.txt"));
}

INSTANTIATE_TEST_SUITE_P(Types, MailboxOfADevice,
                         testing::Values(Place{0, "c/"}, Place{1, "c/"}, Place{2, "c/"},
                                         Place{3, "Application Data/Volatile/RFCOMM/"}, Place{5, "c/"}, Place{6, "c/"},
                                         Place{7, "Application Data/Volatile/RFCOMM/"}, Place{9, "d/"}),
                         [](const auto& row) { return "Of" + std::to_string(row.param.DeviceType); });

// A delivery that can't be deleted.

/// The folder belongs to the server: the program can't delete the server's files in it.
class MailboxOfAnotherUser : public Mailbox {
protected:
    MailboxOfAnotherUser() {
        namespace files = std::filesystem;
        files::permissions(Device.Folder.Path(), files::perms(0755));
        files::permissions(Device.Folder.Path() / "c", files::perms(0755));
    }
    void Pass(std::int64_t milliseconds) {
        const OrdinaryUser user;
        Device.Tick(milliseconds);
    }
    std::size_t Results() { return Device.Did.Tones.size(); }
};

TEST_F(MailboxOfAnotherUser, DeliversAFileThatCantBeDeletedOnceAndTellsItOnce) {
    Deliver(Reading);
    Pass(10000);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_EQ(Results(), 1U);
    EXPECT_TRUE(Waits());
    EXPECT_THAT(Device.Did.Boxes, testing::IsEmpty());
    EXPECT_THAT(Device.Did.Warnings,
                testing::ElementsAre(testing::Pair(
                    u"mailbox", u"c:\\ipcout.txt can't be deleted: permission denied. It was read once, and is "
                                u"ignored until it changes.")));
}

/// A change that makes another delivery of a file that was not deleted.
struct Change {
    const char* Name;
    void (*Make)(const std::filesystem::path& file);
};

class ChangedDelivery : public MailboxOfAnotherUser, public testing::WithParamInterface<Change> {};

TEST_P(ChangedDelivery, IsTaken) {
    Deliver(Reading);
    Pass(3000);
    ASSERT_EQ(Results(), 1U);
    GetParam().Make(Device.Folder.Path() / "c/ipcout.txt");
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Pass(5000);
    EXPECT_EQ(Results(), 2U);
    EXPECT_THAT(Device.Did.Boxes, testing::SizeIs(1));
}

void WriteOver(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

/// Performs the action and restores the file's time, as on a file system with coarse times.
void PutBackTime(const std::filesystem::path& file, const std::function<void()>& act) {
    const auto before = std::filesystem::last_write_time(file);
    act();
    std::filesystem::last_write_time(file, before);
}

std::string With(const std::string& value) {
    return "[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"" + value + "\"]\n[RESULT_UNIT \"%\"]\n[/BLob]\n";
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ChangedDelivery,
    testing::Values(Change{"SameTextAnew", [](const auto& file) { WriteOver(file, Reading); }},
                    Change{"OtherTextOfTheSameSize", [](const auto& file) { WriteOver(file, With("23.5")); }},
                    Change{"OtherTextAtTheSameTime",
                           [](const auto& file) { PutBackTime(file, [&] { WriteOver(file, With("23.5")); }); }},
                    Change{"AnotherFileOfThatName",
                           [](const auto& file) {
                               const auto beside = file.parent_path() / "beside";
                               WriteOver(beside, Reading);
                               std::filesystem::last_write_time(beside, std::filesystem::last_write_time(file));
                               std::filesystem::rename(beside, file);
                           }}),
    [](const auto& row) { return row.param.Name; });

/// As on a file system both of whose times are too coarse to show the change.
TEST_F(MailboxOfAnotherUser, TakesOtherBytesOfAFileThatLooksTheSame) {
    Deliver(Reading);
    Pass(3000);
    ASSERT_EQ(Results(), 1U);
    WriteOver(Device.Folder.Path() / "c/ipcout.txt", With("23.5"));
    modFileSystem::FileHandle file;
    modFileSystem::OpenFile(file, u"c:\\ipcout.txt", u"r", u"", u"");
    modBluetooth::Mailbox.Left->Stamp = modFileSystem::FileStampOf(file);
    modFileSystem::CloseFile(file);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Pass(3000);
    EXPECT_EQ(Moisture(), u"23.5 %");
}

TEST_F(MailboxOfAnotherUser, IsForgottenOnceTheServerHasTakenItsFileAway) {
    Deliver(Reading);
    Pass(3000);
    std::filesystem::remove(Device.Folder.Path() / "c/ipcout.txt");
    Pass(1000);
    EXPECT_THAT(Device.Platform.onlooker.notices.Standing(), testing::IsEmpty());
    Deliver(Reading);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Pass(3000);
    EXPECT_EQ(Results(), 2U);
}

TEST_F(MailboxOfAnotherUser, TellsOfAFileThatCantBeRead) {
    Deliver(Reading);
    std::filesystem::permissions(Device.Folder.Path() / "c/ipcout.txt", std::filesystem::perms(0));
    Pass(5000);
    EXPECT_EQ(Moisture(), u"");
    EXPECT_THAT(Device.Did.Warnings,
                testing::ElementsAre(testing::Pair(
                    u"mailbox", u"c:\\ipcout.txt can't be read: permission denied. Nothing of it was read.")));
    std::filesystem::permissions(Device.Folder.Path() / "c/ipcout.txt", std::filesystem::perms(0644));
    Device.Tick(2000);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_THAT(Device.Platform.onlooker.notices.Standing(), testing::IsEmpty());
}

TEST_F(Mailbox, TellsOfADeliveryThatIsNoFileUntilItIsGone) {
    const auto place = Device.Folder.Path() / "c/ipcout.txt";
    std::filesystem::create_directory(place);
    Device.Tick(3000);
    EXPECT_THAT(
        Device.Did.Warnings,
        testing::ElementsAre(testing::Pair(
            u"mailbox", u"c:\\ipcout.txt can't be read: it is damaged, or a file of another kind. Nothing of it "
                        u"was read.")));
    std::filesystem::remove(place);
    Device.Tick(1000);
    EXPECT_THAT(Device.Platform.onlooker.notices.Standing(), testing::IsEmpty());
    Deliver(Reading);
    Device.Tick(2000);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

// How the bytes of a delivery are read.

struct Bytes {
    const char* Name;
    std::string Unit;
    Text Shown;
};

class BytesOfADelivery : public Mailbox, public testing::WithParamInterface<Bytes> {};

TEST_P(BytesOfADelivery, AreReadAsThoseOfTheLine) {
    Deliver("[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"21\"]\n[RESULT_UNIT \"" + GetParam().Unit +
            "\"]\n[/BLob]\n");
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"21 " + GetParam().Shown);
    modQuorin::GoBack();
    EXPECT_EQ(Device.Folder.Bytes("Quorin/qrn0001.txt"),
              "Place|Moisture|Remark\n|" + modStringTools::ToBytes(u"21 " + GetParam().Shown) + "|\n");
}

INSTANTIATE_TEST_SUITE_P(Of, BytesOfADelivery,
                         testing::Values(Bytes{"Utf8",
                                               "\xC2\xB0"
                                               "C",
                                               u"\u00B0C"},
                                         Bytes{"Windows1252",
                                               "\xB0"
                                               "C",
                                               u"\u00B0C"},
                                         Bytes{"ANul", std::string("a\0b", 3), u"a b"},
                                         Bytes{"BothInOneLine", "\xC2\xB5\xB5\x80", u"\u00B5\u00B5\u20AC"},
                                         Bytes{"ACharacterBeyondTheFirstPlane", "\xF0\x9F\x92\x80\xB0",
                                               u"\xD83D\xDC80\u00B0"}),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Mailbox, ByteOrderMarkAtTheHeadIsNoText) {
    Deliver("\xEF\xBB\xBF" + Reading);
    Device.Tick(1500);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

} // namespace
} // namespace modBluetooth
