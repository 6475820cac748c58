// SPDX-License-Identifier: MIT
#include "apps/quorin/arriving.h"

#include "tests/support/in_a_window.h"
#include "tests/support/temporary_root.h"

#include <filesystem>

namespace quorin {
namespace {

const std::string Package =
    "Meter|other.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n";

/// A device on which a driver "Meter" is installed.
class ArrivalAtAWindow : public windowtest::InAWindow {
protected:
    ArrivalAtAWindow() {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Elsewhere.Put("twice.qvd", Package);
    }
    /// Gives the package to the window, and answers the form's message.
    void Install() {
        Arriving_.Arrive({Elsewhere.Path("twice.qvd")}, "/");
        Step();
    }
    void Step() {
        Device.WillDo([this] {
            Messages.push_back(Device.Platform.boxes.Dialog()->text().toStdString());
            Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
        });
        Arriving_.Step();
    }
    bool HasCopy() const { return std::filesystem::exists(Device.Folder.Path() / "Quorin/twice.qvd"); }

    TemporaryRoot Elsewhere;
    std::vector<std::string> Messages;
    DataFolder Data{Device.Platform, Device.Folder.Path()};
    Arriving Arriving_{Device.Platform, Data};
};

TEST_F(ArrivalAtAWindow, LeavesNoCopyOfARefusedPackage) {
    Install();
    EXPECT_THAT(Messages, testing::ElementsAre("Driver already exists"));
    EXPECT_FALSE(HasCopy());
}

TEST_F(ArrivalAtAWindow, LeavesARefusedPackageThatWasThere) {
    Put("twice.qvd", Package);
    Install();
    EXPECT_THAT(Messages, testing::ElementsAre("Driver already exists"));
    EXPECT_EQ(File("twice.qvd"), Package);
}

TEST_F(ArrivalAtAWindow, LeavesAPackageThatWasInstalled) {
    Arriving_.ArriveSample();
    Step();
    EXPECT_THAT(Messages, testing::ElementsAre("Driver installed"));
    EXPECT_NE(File("climate.qvd"), "");
}

} // namespace
} // namespace quorin
