// SPDX-License-Identifier: MIT
// The folder of the data: named at the window's foot, and opened from there.
#include "apps/quorin/data_folder.h"
#include "apps/quorin/window_entries.h"
#include "apps/quorin/window_watch.h"
#include "src/app/commands.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QLabel>
#include <QMessageBox>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DeviceOptions WithTwoVolumes() {
    DeviceOptions options = OfType(1);
    options.Volumes = {{u"Device:\\", 4000}, {u"Card:\\", 9000}};
    return options;
}

class FolderOfTheData : public InAWindow {
protected:
    explicit FolderOfTheData(const DeviceOptions& options = OfType(0)) : InAWindow(options) {
        Watch_.Attach(Device.Platform);
        Watch_.FolderWanted = [this] { Data.Open(); };
        Data.Opener = [this](const std::string& folder) {
            Opened.push_back(folder);
            return HasFileManager;
        };
        Settle();
    }
    QLabel& Line() { return *Form().findChild<QLabel*>(QStringLiteral("warning")); }
    std::string Root() { return Device.Folder.Path().string(); }
    std::string Told() {
        const auto* const box = Form().findChild<QMessageBox*>(QStringLiteral("windowBox"));
        return box == nullptr || !box->isVisible() ? "" : box->text().toStdString();
    }

    std::vector<std::string> Opened;
    bool HasFileManager = true;
    quorin::DataFolder Data{Device.Platform, Device.Folder.Path().string()};

private:
    quorin::WindowWatch Watch_;
};

TEST_F(FolderOfTheData, IsNamedInFull) {
    EXPECT_EQ(Line().accessibleName().toStdString(), "Data: " + Root() + "/Quorin");
}

TEST_F(FolderOfTheData, OpensByAClickOnItsName) {
    Click(Line(), Line().rect().center());
    EXPECT_THAT(Opened, ElementsAre(Root() + "/Quorin"));
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(Line().accessibleName().toStdString(), "Data: " + Root() + "/Quorin") << "it can be opened again";
}

TEST_F(FolderOfTheData, OpensByAKeyAndFromTheMenu) {
    quorin::Arriving files(Device.Platform, Data);
    quorin::WindowSettings remembered((Device.Folder.Path() / "window.ini").string());
    quorin::WindowPorts ports(Device.Platform, remembered, [] { return false; });
    quorin::WindowHints hints(Device.Platform, remembered, [] { return std::string(); });
    quorin::WindowExport exports(Device.Platform, remembered, {});
    quorin::WindowHandOver handOver(Device.Platform, remembered, {}, "");
    quorin::WindowHelp help(Device.Platform, Data, {});
    quorin::WindowZoom zoom(Device.Platform, remembered, 1);
    quorin::FillWindowMenu(Device.Platform, Data, files, ports, hints, exports, handOver, help, zoom);
    Press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(Opened, ElementsAre(Root() + "/Quorin"));
}

TEST_F(FolderOfTheData, SaysWhereItIsIfNothingOpensFolders) {
    HasFileManager = false;
    Click(Line(), Line().rect().center());
    EXPECT_EQ(Told(), "No program of this desktop opens folders. The data is in " + Root() + "/Quorin");
    Data.Open(); // while the box is open
    EXPECT_EQ(Opened.size(), 1U);
}

TEST_F(FolderOfTheData, SaysThatItIsGone) {
    std::filesystem::remove_all(Device.Folder.Path() / "Quorin");
    Click(Line(), Line().rect().center());
    EXPECT_EQ(Told(), "The data folder is not there: " + Root() + "/Quorin");
    EXPECT_THAT(Opened, IsEmpty());
}

class FolderOnAVolume : public FolderOfTheData {
protected:
    FolderOnAVolume() : FolderOfTheData(WithTwoVolumes()) {}
};

TEST_F(FolderOnAVolume, FollowsTheVolumeThatIsChosen) {
    EXPECT_EQ(Data.Path(), Root() + "/Card/PALM/Programs/Quorin") << "the largest volume";
    modQuorin::MenuEvent(u"Preferences...");
    modQuorin::SaveSetting(u"StorageVolume", u"Device:\\");
    modQuorin::MenuEvent(u"Back");
    Settle();
    EXPECT_EQ(Data.Path(), Root() + "/Device");
    const auto& notices = Device.Platform.onlooker.notices.Standing();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(modStringTools::ToBytes(notices.front().Words), "Data: " + Root() + "/Device");
}

} // namespace
} // namespace windowtest
