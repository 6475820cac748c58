// SPDX-License-Identifier: MIT
#include "apps/quorin/window_place.h"

#include "tests/support/in_a_window.h"

namespace quorin {
namespace {

class PlaceOfTheWindow : public windowtest::InAWindow {
protected:
    std::string File() const { return Device.Folder.Path() / "settings.ini"; }
    /// Returns where a window of a later run is put.
    QRect Later() {
        WindowSettings settings(File());
        backends::qt::Window window(1);
        window.LetSize();
        window.show();
        WindowPlace place(window, settings);
        place.Restore();
        return window.geometry();
    }
    WindowSettings Remembered{File()};
    WindowPlace Place{Form(), Remembered};
};

TEST_F(PlaceOfTheWindow, IsThatOfTheRunBefore) {
    Place.Restore();
    Form().setGeometry(40, 60, 500, 400);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Remembered.Get("Place").empty(); }, 10'000));
    EXPECT_EQ(Later(), QRect(40, 60, 500, 400));
}

TEST_F(PlaceOfTheWindow, IsOnAScreenThatIsThere) {
    Remembered.Save("Place", "99000 60 500 400");
    EXPECT_LT(Later().x(), 90'000);
    Remembered.Save("Place", "something else");
    EXPECT_GT(Later().width(), 0);
}

TEST_F(PlaceOfTheWindow, IsNotLargerThanTheScreen) {
    Remembered.Save("Place", "0 0 5000 4000");
    const QRect later = Later();
    const QSize screen = Form().screen()->size();
    EXPECT_LE(later.width(), screen.width());
    EXPECT_LE(later.height(), screen.height());
}

TEST_F(PlaceOfTheWindow, IsNotPartlyOutsideOfTheScreen) {
    const QRect screen = Form().screen()->availableGeometry();
    Remembered.Save("Place", std::to_string(screen.right() - 350) + " 300 600 400");
    const QRect later = Later();
    EXPECT_TRUE(screen.contains(later)) << later.x() << " " << later.y();
    EXPECT_EQ(later.size(), QSize(600, 400));
}

TEST_F(PlaceOfTheWindow, IsRememberedAtTheEnd) {
    Place.Restore();
    Form().setGeometry(40, 60, 500, 400);
    Place.Remember();
    EXPECT_EQ(Later(), QRect(40, 60, 500, 400));
}

TEST_F(PlaceOfTheWindow, OfADeviceOfFixedSizeIsNot) {
    WindowSettings settings(File());
    backends::qt::Window device(1);
    device.HoldSize();
    device.show();
    WindowPlace place(device, settings);
    place.Restore();
    place.Remember();
    EXPECT_EQ(settings.Get("Place"), "");
}

TEST_F(PlaceOfTheWindow, TheFirstWindowFitsTheScreen) {
    const QSize screen = Form().screen()->availableGeometry().size(); // 800x800 offscreen
    Form().Screen().SetWish({3000, 2000});
    Form().Fit();
    EXPECT_LE(Form().width(), screen.width());
    EXPECT_LT(Form().height(), screen.height()) << "there is a frame, too";
}

} // namespace
} // namespace quorin
