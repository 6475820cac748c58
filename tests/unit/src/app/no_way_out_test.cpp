// SPDX-License-Identifier: MIT
// No name leads to anything outside of the root folder, whether it comes from a package, a table, a setting or another
// program.
#include "src/storage/settings.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using platform::BoxAnswer;
using testing::ElementsAre;

const std::string InfHeaderLine = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
const std::string Secret = "NAME|INFFILE\nthe secret of another program\n";

struct Trick {
    const char* What;
    std::string Name; ///< a `*` at its start means the path of the folder outside
};

void PrintTo(const Trick& trick, std::ostream* out) {
    *out << trick.What;
}

/// Beside the root folder is another one, with a file that the program must not read, write or delete. Links in the
/// root and in the data folder lead there.
class OutsideTheRoot : public support::Program {
protected:
    explicit OutsideTheRoot(const backends::DeviceOptions& options = {}) : Program(options) {
        Outside.Put("secret.txt", Secret);
        Outside.Put("rfcomm.run", "");
        for (const char* folder : {"Quorin", "c"})
            std::filesystem::create_directories(Device.Folder.Path() / folder);
        for (const char* folder : {"link", "Quorin/link", "c/link"})
            std::filesystem::create_symlink(Outside.Path(), Device.Folder.Path() / folder);
        std::filesystem::create_symlink(Outside.Path() / "secret.txt", Device.Folder.Path() / "Quorin/link.txt");
        std::filesystem::create_symlink(Outside.Path() / "new.txt", Device.Folder.Path() / "Quorin/dangling.txt");
    }
    ~OutsideTheRoot() override {
        EXPECT_EQ(Outside.Bytes("secret.txt"), Secret);
        std::vector<std::string> there;
        for (const auto& entry : std::filesystem::directory_iterator(Outside.Path()))
            there.push_back(entry.path().filename().string());
        EXPECT_THAT(there, testing::UnorderedElementsAre("secret.txt", "rfcomm.run"));
    }

    void OpenTheOnlyDownload() {
        MenuEvent(u"Start...");
        MenuEvent(u"Ok");
        MenuEvent(u"Open");
        Settle();
    }

    support::TemporaryFolder Outside;
};

using NoWayOutOfTheDriversTable = OutsideTheRoot;

class NoWayOut : public OutsideTheRoot, public testing::WithParamInterface<Trick> {
protected:
    explicit NoWayOut(const backends::DeviceOptions& options = {}) : OutsideTheRoot(options) {}

    std::string Name() const {
        const std::string& name = GetParam().Name;
        return name[0] == '*' ? Outside.Path().string() + name.substr(1) : name;
    }
};

TEST_P(NoWayOut, ForTheInfFileOfAPackage) {
    Put("drivers.txt", "NAME|INFFILE\n");
    Put("new.qvd", "Meter|" + Name() + "\n" + InfHeaderLine + "a|1||||||\n");
    MenuEvent(u"Add Driver...");
    MenuEvent(u"Install...");
    const bool hasNul = Name().find('\0') != std::string::npos; // replaced by a blank: an ordinary name
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(hasNul ? u"Driver installed" : u"Error creating driver inf file"));
}

TEST_P(NoWayOut, ForTheInfFileInTheDriversTable) {
    InstallMeter();
    Put("drivers.txt", "NAME|INFFILE\nMeter|" + Name() + "\n");
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    try {
        OpenTheOnlyDownload();
    } catch (const support::ProgramOver& over) { // the inf file exists, but can't be read
        EXPECT_EQ(over.Why, support::ProgramOver::Reason::Failed);
    }
    EXPECT_NE(Screen(), ScrInfRecord);
}

/// A drivers table that can't be reached is not a missing one: the register is not created again with it.
TEST_F(NoWayOutOfTheDriversTable, KeepsTheRegister) {
    const std::string downloads = "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n";
    Put("qrnctrl.txt", downloads);
    std::filesystem::create_symlink(Outside.Path() / "secret.txt", Device.Folder.Path() / "Quorin/drivers.txt");
    EXPECT_NE(support::FailureOf([] { MenuEvent(u"Start..."); }), u"");
    EXPECT_EQ(File("qrnctrl.txt"), downloads);
}

TEST_P(NoWayOut, ForTheDownloadsInTheRegister) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|" + Name() + "|20070301|\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    try {
        MenuEvent(u"Open");
        MenuEvent(u"New Record");
        MenuEvent(u"Back");
    } catch (const support::ProgramOver& over) {
        EXPECT_EQ(over.Why, support::ProgramOver::Reason::Failed);
    }
}

TEST_P(NoWayOut, ForADownloadThatIsDeleted) {
    InstallMeter();
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|" + Name() + "|20070301|\n");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    MenuEvent(u"Delete");
}

INSTANTIATE_TEST_SUITE_P(
    Tricks, NoWayOut,
    testing::Values(Trick{"a name of the folder above", "..\\..\\new.txt"},
                    Trick{"the same with slashes", "../../new.txt"}, Trick{"a path of the host", "*/secret.txt"},
                    Trick{"a new path of the host", "*/new.txt"}, Trick{"a path from the root", "\\..\\new.txt"},
                    Trick{"a volume", "c:\\link\\secret.txt"}, Trick{"a volume without a folder", "C:new.txt"},
                    Trick{"a network path", "\\\\server\\share\\new.txt"},
                    Trick{"a device of another system", "\\\\.\\PhysicalDrive0"},
                    Trick{"a second stream", "new.txt:stream"}, Trick{"a link to a folder", "link\\secret.txt"},
                    Trick{"a new file over a link to a folder", "link\\new.txt"}, Trick{"a link to a file", "link.txt"},
                    Trick{"a link to nothing", "dangling.txt"}, Trick{"a NUL", std::string("link.txt\0.txt", 13)},
                    Trick{"a name that ends with a NUL", std::string("new.txt\0", 8)},
                    Trick{"a name of 5,000 characters", std::string(5000, 'x')},
                    Trick{"a path of 5,000 characters up",
                          [] {
                              std::string up;
                              while (up.size() < 5000)
                                  up += "..\\";
                              return up + "new.txt";
                          }()},
                    Trick{"a path of 5,000 characters down", [] {
                              std::string down = "link";
                              while (down.size() < 5000)
                                  down += "\\link";
                              return down + "\\new.txt";
                          }()}));

class NoWayOutOfAMailbox : public NoWayOut {
protected:
    NoWayOutOfAMailbox() : NoWayOut(support::OfType(3)) {
        InstallMeter();
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        std::filesystem::create_directories(Device.Folder.Path() / "My Documents");
        std::filesystem::rename(Device.Folder.Path() / "Quorin", Device.Folder.Path() / "My Documents/Quorin");
    }
};

TEST_P(NoWayOutOfAMailbox, ForTheFolderThatASettingNames) {
    SaveSetting(u"ComPort", u"SERVER");
    SaveSetting(u"RFCOMM_Path", modStringTools::FromBytes(Name()));
    OpenTheOnlyDownload();
    Device.Tick(2000);
    EXPECT_THAT(Device.Did.Messages(), testing::Contains(u"RFCOMM Server not running"));
}

INSTANTIATE_TEST_SUITE_P(Tricks, NoWayOutOfAMailbox,
                         testing::Values(Trick{"a path of the host", "*/"}, Trick{"a link", "\\link\\"},
                                         Trick{"a link on a volume", "c:\\link\\"},
                                         Trick{"the folder above", "\\link\\..\\"}, Trick{"no folder", ""}));

} // namespace
} // namespace modQuorin
